// The dependency rules of docs/architecture.md, checked on includes and on linked libraries.
#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <cstdio>
#include <set>

using namespace ::testing;

namespace {

const QString kSource = QStringLiteral(ZR_SOURCE_DIR);

struct Include {
    std::string file;
    std::string header;
};

std::ostream& operator<<(std::ostream& stream, const Include& include) {
    return stream << include.file << " includes " << include.header;
}

/// Returns the includes of all sources below `folder`.
std::vector<Include> IncludesOf(const QString& folder) {
    static const QRegularExpression pattern(QStringLiteral("^\\s*#\\s*include\\s*[<\"]([^>\"]+)[>\"]"),
                                            QRegularExpression::MultilineOption);
    std::vector<Include> includes;
    QDirIterator files(kSource + QLatin1Char('/') + folder, {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        auto matches = pattern.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            includes.push_back({QDir(kSource).relativeFilePath(file.fileName()).toStdString(),
                                matches.next().captured(1).toStdString()});
        }
    }
    EXPECT_FALSE(includes.empty());
    return includes;
}

bool Exists(const QString& folder, const std::string& header) {
    return QFile::exists(kSource + QLatin1Char('/') + folder + QLatin1Char('/') + QString::fromStdString(header));
}

bool IsStandard(const std::string& header) {
    static const QRegularExpression pattern(QStringLiteral("^[a-z_]+$"));
    return pattern.match(QString::fromStdString(header)).hasMatch();
}

bool BeginsWithOneOf(const std::string& header, std::initializer_list<const char*> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&header](const char* beginning) { return header.rfind(beginning, 0) == 0; });
}

/// Returns the output of a program of the toolchain, line by line.
QStringList OutputOf(const QString& program, const QStringList& arguments) {
    // A pipe and no QProcess: in virtual time no socket is ever ready.
    const QByteArray command = (program + QLatin1Char(' ') + arguments.join(QLatin1Char(' '))).toUtf8();
    FILE* pipe = popen(command.constData(), "r");
    QByteArray output;
    char part[4096];
    while (const size_t size = fread(part, 1, sizeof(part), pipe)) {
        output.append(part, int(size));
    }
    EXPECT_EQ(pclose(pipe), 0) << command.toStdString();
    return QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The libraries that one needs, without versions, as "libQt5Core".
std::vector<std::string> NeededBy(const char* library) {
    std::vector<std::string> needed;
    static const QRegularExpression pattern(QStringLiteral("NEEDED.*\\[([^.\\]]+)"));
    for (const QString& line :
         OutputOf(QStringLiteral("readelf"), {QStringLiteral("-dW"), QString::fromLatin1(library)})) {
        const auto match = pattern.match(line);
        if (match.hasMatch()) {
            needed.push_back(match.captured(1).toStdString());
        }
    }
    return needed;
}

/// Libraries of the compiler and of the sanitizers, which everything may need.
Matcher<std::string> OfTheCompiler() {
    return AnyOf("libc", "libm", "libstdc++", "libgcc_s", "ld-linux-x86-64", "libasan", "libubsan");
}

TEST(DependencyRulesTest, TheModuleReachesNothingButItsContract) {
    for (const Include& include : IncludesOf(QStringLiteral("ZRGrowth"))) {
        const std::string& header = include.header;
        const bool allowed = Exists(QStringLiteral("ZRGrowth"), header) ||
                             Exists(QStringLiteral("host/contract"), header) || IsStandard(header) ||
                             BeginsWithOneOf(header, {"json/", "fmt/", "google/protobuf/"}) ||
                             (header.size() > 5 && header.compare(header.size() - 5, 5, ".pb.h") == 0) ||
                             (BeginsWithOneOf(header, {"Q"}) &&
                              !BeginsWithOneOf(header, {"QNetwork", "QSql", "QWebEngine", "QWebSocket", "QtNetwork",
                                                        "QtSql", "QtWebEngine", "QtWebSockets", "QTcp", "QUdp"}));
        EXPECT_TRUE(allowed) << include;
    }
}

TEST(DependencyRulesTest, NoIncludeClimbsOutOfItsFolder) {
    for (const char* folder : {"ZRGrowth", "host", "client", "workbench", "devserver"}) {
        for (const Include& include : IncludesOf(QString::fromLatin1(folder))) {
            EXPECT_EQ(include.header.find(".."), std::string::npos) << include;
            // The source root is on the include path of the workbench and its users.
            EXPECT_FALSE(BeginsWithOneOf(include.header,
                                         {"ZRGrowth/", "bench/", "client/", "devserver/", "host/", "proto/", "tests/"}))
                << include;
        }
    }
}

TEST(DependencyRulesTest, EveryConnectionOfTheModuleIsChecked) {
    static const QRegularExpression bare(QStringLiteral("(?<!ConnectChecked)\\b(QObject::)?connect\\s*\\("));
    QDirIterator files(kSource + QStringLiteral("/ZRGrowth"), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(bare.match(QString::fromUtf8(file.readAll())).hasMatch()) << file.fileName().toStdString();
    }
}

struct Call {
    std::string file;
    QStringList arguments;
};

std::ostream& operator<<(std::ostream& stream, const Call& call) {
    return stream << call.file << ": " << call.arguments.join(QStringLiteral(" | ")).toStdString();
}

/// The arguments of a call, from behind its opening bracket.
QStringList ArgumentsAt(const QString& text, int place) {
    QStringList arguments = {QString()};
    for (int depth = 0; place < text.size(); ++place) {
        const QChar sign = text[place];
        depth += QStringLiteral("([{").contains(sign) ? 1 : QStringLiteral(")]}").contains(sign) ? -1 : 0;
        if (depth < 0) {
            break;
        }
        if (depth == 0 && sign == QLatin1Char(',')) {
            arguments.append(QString());
        } else {
            arguments.last().append(sign);
        }
    }
    for (QString& argument : arguments) {
        argument = argument.simplified();
    }
    return arguments;
}

/// The module's calls of what `name`, an expression, matches.
std::vector<Call> CallsInTheModuleOf(const char* name) {
    const QRegularExpression pattern(QLatin1String(name) + QStringLiteral("\\s*\\("));
    std::vector<Call> calls;
    QDirIterator files(kSource + QStringLiteral("/ZRGrowth"), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        auto matches = pattern.globalMatch(text);
        while (matches.hasNext()) {
            calls.push_back({QDir(kSource).relativeFilePath(file.fileName()).toStdString(),
                             ArgumentsAt(text, matches.next().capturedEnd())});
        }
    }
    return calls;
}

// The host drops these arguments, so that no port shows them.

TEST(DependencyRulesTest, EveryMessageOfTheModuleIsSentWithTrueAsItsLastArgument) {
    const std::vector<Call> calls = CallsInTheModuleOf("\\.\\s*Send");
    EXPECT_THAT(calls, SizeIs(Ge(5)));
    for (const Call& call : calls) {
        EXPECT_EQ(call.arguments.size(), 3) << call;
        EXPECT_EQ(call.arguments.last().toStdString(), "true") << call;
    }
}

TEST(DependencyRulesTest, EveryCommandOfTheModuleIsSentWithoutAnExtension) {
    const std::vector<Call> calls = CallsInTheModuleOf("::SendCommand");
    EXPECT_THAT(calls, SizeIs(Ge(3)));
    for (const Call& call : calls) {
        EXPECT_EQ(call.arguments.size(), 5) << call;
        EXPECT_EQ(call.arguments.value(2).toStdString(), "nullptr") << call;
    }
}

TEST(DependencyRulesTest, EveryTaskOfTheModuleIsPostedWithoutAName) {
    const std::vector<Call> calls = CallsInTheModuleOf("::ToMain(?:Delay)?");
    EXPECT_THAT(calls, SizeIs(Ge(5)));
    for (const Call& call : calls) {
        EXPECT_THAT(call.arguments.size(), AnyOf(3, 4)) << call;
        EXPECT_EQ(call.arguments.last().toStdString(), "nullptr") << call;
    }
}

TEST(DependencyRulesTest, TheContractIsHeadersThatNeedNothingOfTheHost) {
    QDirIterator files(kSource + QStringLiteral("/host/contract"), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        EXPECT_TRUE(files.next().endsWith(QStringLiteral(".h"))) << files.filePath().toStdString();
    }
    for (const Include& include : IncludesOf(QStringLiteral("host/contract"))) {
        EXPECT_TRUE(Exists(QStringLiteral("host/contract"), include.header) || IsStandard(include.header) ||
                    BeginsWithOneOf(include.header, {"json/", "Q"}))
            << include;
    }
}

TEST(DependencyRulesTest, TheContractHoldsNoData) {
    static const QRegularExpression data(QStringLiteral("^\\s*(inline |static |extern )+[^(;]*(=|;)"),
                                         QRegularExpression::MultilineOption);
    QDirIterator files(kSource + QStringLiteral("/host/contract"), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        // A class's constant without a value is declared here, and defined in the host's library alone.
        const QString text = QString::fromUtf8(file.readAll()).remove(QStringLiteral("    static const Name "));
        const auto match = data.match(text);
        EXPECT_FALSE(match.hasMatch()) << file.fileName().toStdString() << ": " << match.captured().toStdString();
    }
}

TEST(DependencyRulesTest, TheClientReachesTheModuleThroughItsServiceAlone) {
    for (const char* folder : {"client", "workbench"}) {
        for (const Include& include : IncludesOf(QString::fromLatin1(folder))) {
            EXPECT_FALSE(Exists(QStringLiteral("ZRGrowth"), include.header)) << include;
        }
    }
    EXPECT_THAT(NeededBy(ZR_CLIENT), Not(Contains("libZRGrowth")));
}

TEST(DependencyRulesTest, TheServerSharesNoCodeWithClientAndModule) {
    for (const Include& include : IncludesOf(QStringLiteral("devserver"))) {
        const std::string& header = include.header;
        EXPECT_TRUE(Exists(QStringLiteral("devserver"), header) ||
                    !(Exists(QStringLiteral("ZRGrowth"), header) || Exists(QStringLiteral("host/contract"), header) ||
                      Exists(QStringLiteral("host/runtime"), header) ||
                      Exists(QStringLiteral("host/services"), header) || Exists(QStringLiteral("client/app"), header) ||
                      Exists(QStringLiteral("client/shell"), header)))
            << include;
    }
    EXPECT_THAT(NeededBy(ZR_DEVSERVER), Each(Not(AnyOf("libZRGrowth", "libzrhost"))));
}

// Shell and workbench cannot reach the services: they do not link them.
TEST(DependencyRulesTest, OnlyTheCompositionAndItsOwnerNameTheServices) {
    const auto isService = [](const std::string& header) {
        return Exists(QStringLiteral("host/services"), header) && !Exists(QStringLiteral("host/runtime"), header);
    };
    std::set<std::string> named;
    for (const Include& include : IncludesOf(QStringLiteral("client/app"))) {
        const bool isRoot = BeginsWithOneOf(include.file, {"client/app/Composition.", "client/app/Client."});
        if (isService(include.header) && !isRoot) {
            named.insert(include.header);
        }
    }
    // The wait before a restart of the server, a value without a service.
    EXPECT_THAT(named, ElementsAre("channel/Backoff.h"));
}

TEST(DependencyRulesTest, TheModuleNeedsOfTheHostItsLibraryAlone) {
    EXPECT_THAT(NeededBy(ZR_MODULE),
                AllOf(Contains("libzrhost"), Each(AnyOf("libzrhost", "libQt5Core", "libQt5Gui", "libQt5Widgets",
                                                        "libjsoncpp", "libfmt", "libprotobuf", OfTheCompiler()))));
}

TEST(DependencyRulesTest, TheHostLibraryNeedsNeitherDatabaseNorNetworkNorLog) {
    EXPECT_THAT(NeededBy(ZR_HOST), Each(AnyOf("libQt5Core", "libQt5Gui", "libQt5Widgets", "libQt5Svg", "libjsoncpp",
                                              "libfmt", "libprotobuf", OfTheCompiler())));
}

std::vector<std::string> SymbolsOf(const char* library) {
    std::vector<std::string> symbols;
    for (const QString& line : OutputOf(QStringLiteral("nm"), {QStringLiteral("-D"), QStringLiteral("--defined-only"),
                                                               QStringLiteral("-P"), QString::fromLatin1(library)})) {
        symbols.push_back(line.section(QLatin1Char(' '), 0, 0).toStdString());
    }
    return symbols;
}

TEST(DependencyRulesTest, TheModuleExportsItsFiveSymbolsAndNothingElse) {
    EXPECT_THAT(
        SymbolsOf(ZR_MODULE),
        UnorderedElementsAre("CreateZRPluginModule", "DestroyZRPluginModule", "CreateZRPluginModuleCZRGrowthModule",
                             "DestroyZRPluginModuleCZRGrowthModule", "LoadPluginModuleCZRGrowthModule"));
}

TEST(DependencyRulesTest, TheWebEngineExportsOneSymbolAndNothingNeedsIt) {
    EXPECT_THAT(SymbolsOf(ZR_WEBENGINE), ElementsAre("ZRCreateWebEngine"));
    const auto isEngine = AnyOf(HasSubstr("webengine"), HasSubstr("WebEngine"), HasSubstr("WebChannel"));
    for (const char* library : {ZR_MODULE, ZR_HOST, ZR_CLIENT}) {
        EXPECT_THAT(NeededBy(library), Each(Not(isEngine))) << library;
    }
    EXPECT_THAT(NeededBy(ZR_WEBENGINE), Contains("libQt5WebEngineWidgets"));
}

TEST(DependencyRulesTest, TheModuleIsNeverUnmapped) {
    EXPECT_THAT(OutputOf(QStringLiteral("readelf"), {QStringLiteral("-dW"), QStringLiteral(ZR_MODULE)})
                    .join(QLatin1Char('\n'))
                    .toStdString(),
                HasSubstr("NODELETE"));
}

}  // namespace
