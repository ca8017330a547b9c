#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "Ad/AdSamples.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "support/ScriptedHostTest.h"

/// A client of the ad server. The test answers its requests and receives its signals. The device is "dev", the server's
/// clock shows 1,700,000,000 seconds, and the first three random numbers are 11, 22, 33.
class AdApiClientTest : public ScriptedHostTest {
protected:
    AdApiClientTest() : client(std::make_unique<CZRAdApiClient>(nullptr)) {
        environment.SetDeviceId("dev");
        random.WillReturn({11, 22, 33});
        const auto said = [this](const std::string& words) {
            told.push_back(words);
            const auto lines = log.Lines();
            lineAhead.push_back(lines.empty() ? std::string() : lines.back().text);
        };
        QObject::connect(client.get(), &CZRAdApiClient::RequestAdSucceeded,
                         [this, said](CZRAdModelList* list, qlonglong millis) {
                             lists.emplace_back(list);
                             said("succeeded after " + std::to_string(millis));
                         });
        QObject::connect(client.get(), &CZRAdApiClient::RequestAdFailed,
                         [said](const QString& code, const QString& content, qlonglong millis) {
                             said("failed " + code.toStdString() + ", " + content.toStdString() + ", after " +
                                  std::to_string(millis));
                         });
        QObject::connect(client.get(), &CZRAdApiClient::ExposeAdSuccess,
                         [said](const QList<QString>& ids) { said("exposed " + Words(ids)); });
        QObject::connect(
            client.get(), &CZRAdApiClient::ExposeAdFailed,
            [said](const QString& code, const QString& content, const QList<QString>& ids) {
                said("not exposed " + Words(ids) + ": " + code.toStdString() + ", " + content.toStdString());
            });
    }

    static std::string Words(const QList<QString>& texts) {
        std::string words;
        for (const QString& text : texts) {
            words += (words.empty() ? "" : " ") + text.toStdString();
        }
        return words;
    }

    static std::string Text(const Json::Value& value) { return value.toStyledString(); }

    /// A search for the bottom popup; gives its task.
    unsigned long Search() {
        client->RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, kAdPositionBottomPopup, {});
        return http.LastTask();
    }

    unsigned long Expose(const QList<QString>& ids = {QStringLiteral("18088")}) {
        client->ExposeAd(ZRAdTypePopup, kAdPositionBottomPopup, ids, QStringLiteral("e-1"), 1500, {});
        return http.LastTask();
    }

    std::unique_ptr<CZRAdApiClient> client;
    std::vector<std::string> told;       // the signals, in words
    std::vector<std::string> lineAhead;  // beside each signal, the last log line when it came
    std::vector<std::unique_ptr<CZRAdModelList>> lists;
};
