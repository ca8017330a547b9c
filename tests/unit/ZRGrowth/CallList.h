#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/IChannel.h"
#include "core/IMessageBus.h"
#include "core/IPoster.h"
#include "framework/ILog.h"
#include "framework/Ports.h"

/// A host that writes down what is asked of it, in one list, beside the lines of the log: for the order of calls.
class CCallList : public IChannel, public IMessageBus, public ILog, public IPoster {
public:
    /// Joins it to the contract, until Uninstall.
    void Install() {
        host::Ports ports;
        ports.log = this;
        ports.channel = this;
        ports.bus = this;
        ports.poster = this;
        host::Install(ports);
    }

    unsigned long SendCommand(const CSProtoData& data, CSCallback callback, QObject*) override {
        calls.push_back("send " + std::to_string(data.m_nCmd));
        reply = std::move(callback);
        return 1;
    }
    void BindCallback(unsigned short commandId, CSCallback callback, QObject*) override {
        calls.push_back("bind push " + std::to_string(commandId));
        push = std::move(callback);
    }
    void UnbindCallback(QObject*) override { calls.emplace_back("unbind pushes"); }
    void Bind(unsigned int messageId, core::MessageCallback, QObject*) override {
        calls.push_back("bind message " + std::to_string(messageId));
    }
    void Send(const char*, unsigned int messageId, unsigned long, std::shared_ptr<core::CMessageBody>) override {
        calls.push_back("send message " + std::to_string(messageId));
    }
    void UnBind(QObject*) override { calls.emplace_back("unbind messages"); }
    void Post(QPointer<QObject>, std::chrono::milliseconds delay, std::function<void()>) override {
        calls.push_back("post after " + std::to_string(delay.count()));
    }
    void Write(const LogRecord& record) override { calls.push_back(record.text.toStdString()); }
    void AssertionFailed(const AssertionRecord& record) override { calls.emplace_back(record.expression); }

    std::vector<std::string> calls;
    CSCallback reply;  // of the last command
    CSCallback push;   // of the last subscription
};
