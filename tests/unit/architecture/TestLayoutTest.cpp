// Tests are found by rule: tests/unit mirrors the source tree, and the build takes every test source.
#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <map>
#include <set>

using namespace ::testing;

namespace {

QString Tests() {
    return QStringLiteral(ZR_SOURCE_DIR "/tests/");
}

/// Returns all lines of a text file.
QStringList LinesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

/// Returns the files below `folder` that match `pattern`, relative to it.
std::set<QString> FilesBelow(const QString& folder, const QString& pattern) {
    std::set<QString> found;
    QDirIterator files(folder, {pattern}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        found.insert(QDir(folder).relativeFilePath(files.next()));
    }
    EXPECT_FALSE(found.empty()) << folder.toStdString();
    return found;
}

/// Returns the exceptions with their reasons, by path below tests/unit.
std::map<QString, QString> Exceptions() {
    std::map<QString, QString> exceptions;
    for (const QString& line : LinesOf(Tests() + QStringLiteral("unit/exceptions.txt"))) {
        if (!line.isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            exceptions[line.section(QLatin1Char(':'), 0, 0)] = line.section(QLatin1Char(':'), 1).trimmed();
        }
    }
    return exceptions;
}

bool IsSource(const QString& stem) {
    const auto exists = [&stem](const char* ending) {
        return QFile::exists(QStringLiteral(ZR_SOURCE_DIR "/") + stem + QLatin1String(ending)) ||
               QFile::exists(Tests() + stem + QLatin1String(ending));
    };
    return exists(".cpp") || exists(".h") || exists(".proto");
}

/// Returns whether the path of the test, without its ending and with or without a topic, is that of a source.
bool MirrorsSource(const QString& test) {
    const QString stem = test.left(test.size() - int(strlen("Test.cpp")));
    return IsSource(stem) || (stem.contains(QLatin1Char('_')) && IsSource(stem.section(QLatin1Char('_'), 0, -2)));
}

}  // namespace

TEST(TestLayoutTest, UnitTestHasTheNameAndPathOfItsSourceOrIsAnException) {
    const auto exceptions = Exceptions();
    for (const QString& test : FilesBelow(Tests() + QStringLiteral("unit"), QStringLiteral("*Test.cpp"))) {
        EXPECT_TRUE(MirrorsSource(test) || exceptions.count(test) != 0)
            << "tests/unit/" << test.toStdString()
            << " has no source; name it <Source>Test.cpp or <Source>_<Topic>Test.cpp";
    }
}

TEST(TestLayoutTest, ExceptionIsATestWithoutSourceAndHasAReason) {
    const auto tests = FilesBelow(Tests() + QStringLiteral("unit"), QStringLiteral("*Test.cpp"));
    for (const auto& [test, reason] : Exceptions()) {
        EXPECT_EQ(tests.count(test), 1U) << test.toStdString();
        EXPECT_FALSE(MirrorsSource(test)) << test.toStdString();
        EXPECT_FALSE(reason.isEmpty()) << test.toStdString();
    }
}

// A file that no target lists would silently never run.
TEST(TestLayoutTest, EverySourceInTestsIsCompiled) {
    const QString commands = LinesOf(QStringLiteral(ZR_COMPILE_COMMANDS)).join(QLatin1Char('\n'));
    for (const QString& source : FilesBelow(Tests(), QStringLiteral("*.cpp"))) {
        const bool isSeeded = source.startsWith(QStringLiteral("lint/"));
        EXPECT_EQ(commands.contains(QLatin1String("\"file\": \"") + Tests() + source), !isSeeded)
            << "tests/" << source.toStdString();
    }
}
