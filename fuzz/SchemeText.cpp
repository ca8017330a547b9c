// Input: the text of a URL of the client's scheme.
#include <gmock/gmock.h>

#include "FuzzTarget.h"
#include "core/SchemeHooks.h"
#include "core/UrlCheck.h"
#include "core/url.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), int(size));
    CScriptedHost host;

    const core::scheme::SchemeInfo info = host::CSchemeHooks::Parts(text);

    EXPECT_EQ(info.text, text);
    for (const QString& word : info.pathWords) {
        EXPECT_FALSE(word.isEmpty());
        EXPECT_FALSE(word.contains(QLatin1Char('/')));
        // A percent-encoded word is ASCII, and decoding never makes it longer.
        EXPECT_LE(core::url::Decode(word.toStdString()).size(), word.toStdString().size());
        for (const QChar character : word) {
            EXPECT_TRUE(character.unicode() > 0x20 && character.unicode() < 0x7f) << word.toStdString();
        }
    }
    // An opened URL has a host, which is the word that selects hooks.
    const host::UrlVerdict verdict = host::CheckUrl(text, true);
    if (verdict.target == host::EnUrlTarget::kPage) {
        EXPECT_FALSE(info.pathWords.isEmpty());
        EXPECT_EQ(info.pathWords.front(), verdict.url.host(QUrl::FullyEncoded));
    }
    int calls = 0;
    host::CSchemeHooks hooks;
    const auto count = [&](QObject*, const core::scheme::SchemeInfo& scheme, const QVariant&) {
        EXPECT_EQ(scheme.pathWords, info.pathWords);
        EXPECT_EQ(scheme.keys, info.keys);
        ++calls;
        return true;
    };
    hooks.Add(QStringLiteral("url"), count, &calls, core::scheme::kFirstWordEquals);
    UrlRequest request;
    request.url = text;
    const bool selected = !info.pathWords.isEmpty() && info.pathWords.front() == QLatin1String("url");
    EXPECT_EQ(hooks.Handle(request), selected);
    EXPECT_EQ(calls, int(selected));
    return 0;
}
