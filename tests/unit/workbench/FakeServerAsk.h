#pragma once

#include <deque>
#include <string>

#include "ServerControl.h"

/// The server's control interface with the test at its other end.
class CFakeServerAsk : public IServerAsk {
public:
    struct Wish {
        std::string verb;
        std::string path;
        std::string json;
        Answered answered;
    };

    void Ask(const char* verb, const QString& path, const QByteArray& json, QObject*, Answered answered) override {
        wishes.push_back({verb, path.toStdString(), json.toStdString(), std::move(answered)});
    }

    /// Answers the last wish with a body, or refuses it.
    void Answer(const QByteArray& json) { wishes.back().answered(CServerControl::ReadAnswer(200, json, QString())); }
    void Refuse(const QByteArray& json) { wishes.back().answered(CServerControl::ReadAnswer(400, json, QString())); }

    std::deque<Wish> wishes;
};
