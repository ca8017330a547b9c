// The code in docs/embedding.md is that of the project in tests/embedding.
#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace ::testing;

namespace {

QString TextOf(const QString& path) {
    QFile file(QStringLiteral(ZR_SOURCE_DIR "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

TEST(EmbeddingPageTest, CodeOfThePageIsThatOfTheProject) {
    const std::map<QString, QString> sources = {
        {QStringLiteral("cpp"), TextOf(QStringLiteral("tests/embedding/Embedding.cpp"))},
        {QStringLiteral("cmake"), TextOf(QStringLiteral("tests/embedding/CMakeLists.txt"))},
        {QStringLiteral("json"), TextOf(QStringLiteral("tests/embedding/modules.json"))},
    };
    static const QRegularExpression block(QStringLiteral("```(cpp|cmake|json)\\n(.*?\\n)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    auto blocks = block.globalMatch(TextOf(QStringLiteral("docs/embedding.md")));
    int count = 0;
    while (blocks.hasNext()) {
        const auto match = blocks.next();
        EXPECT_TRUE(sources.at(match.captured(1)).contains(match.captured(2))) << match.captured().toStdString();
        ++count;
    }
    EXPECT_EQ(count, 6);
}

}  // namespace
