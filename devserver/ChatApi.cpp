#include "ChatApi.h"

#include <fmt/format.h>

#include <QFile>
#include <map>

#include "JsonMessage.h"
#include "Language.h"

namespace devserver {
namespace {

constexpr std::chrono::milliseconds kPieceDelay{40};
constexpr int kMaxQuestion = 2000;
// A page loads nothing from elsewhere, and nothing inline runs.
constexpr const char* kPolicy = "default-src 'self'; base-uri 'none'; frame-ancestors 'none'";

WebAnswer Page(const std::string& name, const char* type) {
    QFile file(QStringLiteral(":/devserver/chat/") + QString::fromStdString(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return CWebServer::Refusal(404, "path: there is no such page");
    }
    WebAnswer answer;
    answer.type = type;
    answer.body = file.readAll().toStdString();
    answer.headers.emplace_back("Content-Security-Policy", kPolicy);
    answer.headers.emplace_back("X-Content-Type-Options", "nosniff");
    return answer;
}

// The answer's sentences. "{}" is the question.
const std::vector<const char*>& Sentences(Language language) {
    static const std::map<Language, std::vector<const char*>> sentences{
        {Language::SimplifiedChinese,
         {"您的问题是：“{}”。", "这是开发服务器的示例回答。", "它分成多段发送，因此可以停止或重试。",
          "这里不包含行情数据。"}},
        {Language::TraditionalChinese,
         {"您的問題是：「{}」。", "這是開發伺服器的示例回答。", "它分成多段傳送，因此可以停止或重試。",
          "這裡不包含行情資料。"}},
        {Language::English,
         {"You asked: \"{}\". ", "This is a sample answer of the development server. ",
          "It arrives in pieces, so that it can be stopped and tried again. ", "It contains no market data."}},
        {Language::Japanese,
         {"ご質問：「{}」。", "これは開発サーバーのサンプル回答です。", "少しずつ届くため、停止や再試行ができます。",
          "市場データは含みません。"}},
        {Language::French,
         {"Votre question : « {} ». ", "Ceci est un exemple de réponse du serveur de développement. ",
          "Elle arrive par morceaux, afin de pouvoir l'arrêter ou la relancer. ",
          "Elle ne contient aucune donnée de marché."}},
    };
    return sentences.at(language);
}

// Pieces of a few characters. None cuts a character.
std::vector<std::string> Pieces(const QString& text) {
    constexpr int kCharacters = 6;
    std::vector<std::string> pieces;
    for (int at = 0; at < text.size();) {
        int end = qMin(at + kCharacters, text.size());
        if (end < text.size() && text.at(end).isLowSurrogate()) {
            ++end;
        }
        pieces.push_back(text.mid(at, end - at).toStdString());
        at = end;
    }
    return pieces;
}

WebAnswer AnswerQuestion(const WebRequest& request) {
    Errors errors;
    const auto json = ParseJson(request.body, errors);
    if (!json || !json->isObject() || !(*json)["question"].isString()) {
        return CWebServer::Refusal(400, "question: must be a text");
    }
    const QString question = QString::fromStdString((*json)["question"].asString());
    if (question.isEmpty() || question.size() > kMaxQuestion) {
        return CWebServer::Refusal(400, "question: must have 1 to 2000 characters");
    }
    const Json::Value& language = (*json)["language"];
    QString text;
    // A number without a name is English.
    for (const char* sentence : Sentences(LanguageOfNumber(language.isInt() ? language.asInt() : -1))) {
        text += QString::fromUtf8(sentence).replace(QStringLiteral("{}"), question);
    }
    WebAnswer answer;
    answer.type = "text/plain; charset=utf-8";
    answer.pieces = Pieces(text);
    answer.pieceDelay = kPieceDelay;
    return answer;
}

}  // namespace

void CChatApi::AddRoutes(CWebServer& server) {
    const auto page = [&server](const char* path, const std::string& file, const char* type) {
        server.Route("GET", path, [file, type](const WebRequest&) { return Page(file, type); });
    };
    page("/chat", "chat.html", "text/html; charset=utf-8");
    page("/chat/preload", "preload.html", "text/html; charset=utf-8");
    page("/chat/sources", "sources.html", "text/html; charset=utf-8");
    page("/chat/chat\\.css", "chat.css", "text/css; charset=utf-8");
    page("/chat/chat\\.js", "chat.js", "text/javascript; charset=utf-8");
    server.Route("POST", "/chat/answers", AnswerQuestion);
}

}  // namespace devserver
