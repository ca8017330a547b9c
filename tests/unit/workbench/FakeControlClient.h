#pragma once

#include <deque>
#include <string>

#include "workbench/ControlClient.h"

/// Keeps requests to the control API until the test answers them.
class CFakeControlClient : public IControlClient {
public:
    struct Wish {
        std::string verb;
        std::string path;
        std::string json;
        Answered answered;
    };

    void Ask(const char* method, const QString& path, const QByteArray& json, QObject*, Answered answered) override {
        wishes.push_back({method, path.toStdString(), json.toStdString(), std::move(answered)});
    }

    void Refresh() override { ++refreshes; }
    QString Curl(const ControlRequest& request) const override {
        return CurlLine(request, QStringLiteral("http://server") + request.path, QStringLiteral("secret"));
    }

    /// The last request as "method path body".
    std::string Last() const {
        return wishes.empty() ? "" : wishes.back().verb + " " + wishes.back().path + " " + wishes.back().json;
    }

    /// Answers the last request with a body, or refuses it.
    void Answer(const QByteArray& json) { wishes.back().answered(ServerAnswer::Read(200, json, QString())); }
    void Refuse(const QByteArray& json) { wishes.back().answered(ServerAnswer::Read(400, json, QString())); }

    std::deque<Wish> wishes;
    int refreshes = 0;
};
