#include "plugin/PluginLoader.h"

#include <QFile>
#include <QTemporaryDir>

#include "plugin/IZRPluginCenter.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

// Valid and invalid module libraries, built with the tests.
const QString kModules = QStringLiteral(ZR_TEST_MODULES);

class PluginLoaderTest : public ScriptedHostTest {
protected:
    std::string Map(const char* name, const char* library) {
        return host::MapModule({name, QString::fromLatin1(library)}, kModules).toStdString();
    }

    std::string ManifestError(const QByteArray& content) {
        QFile file(folder.filePath(QStringLiteral("modules.json")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        QString error;
        const bool read = host::ReadModuleManifest(file.fileName(), modules, error);
        EXPECT_EQ(read, error.isEmpty());
        return error.remove(folder.path() + QStringLiteral("/")).toStdString();
    }

    QTemporaryDir folder;
    std::vector<host::ModuleEntry> modules{{"kept", QStringLiteral("kept.so")}};
};

TEST_F(PluginLoaderTest, AModuleIsMappedAndItsEntryCalled) {
    EXPECT_EQ(Map("CGood", "libzr_test_good.so"), "");

    // its static initialiser registered this one while the library was loaded
    EXPECT_TRUE(IZRPluginCenter::_CreateInterface("8GoodName"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(AllOf(StartsWith("Module CGood mapped from "), EndsWith("good.so")))));
}

TEST_F(PluginLoaderTest, AMissingLibraryIsOneClearLine) {
    const std::string line = Map("CAbsent", "libzr_test_absent.so");

    EXPECT_THAT(line, StartsWith("Module CAbsent is not available: "));
    EXPECT_THAT(line, HasSubstr("libzr_test_absent.so"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(line)));
}

TEST_F(PluginLoaderTest, ALibraryWithoutTheEntryIsOneClearLine) {
    const std::string line = Map("COther", "libzr_test_good.so");

    EXPECT_EQ(line, "Module COther is not available: its library has no entry LoadPluginModuleCOther");
    EXPECT_THAT(log.Lines(), ElementsAre(Error(line)));
    // what its static initialiser registered is withdrawn
    EXPECT_FALSE(IZRPluginCenter::_CreateInterface("8GoodName"));
}

TEST_F(PluginLoaderTest, AnEntryThatGivesZeroIsOneClearLine) {
    const std::string line = Map("CZero", "libzr_test_zero.so");

    EXPECT_EQ(line, "Module CZero is not available: its entry refused to register it");
    EXPECT_THAT(log.Lines(), ElementsAre(Error(line)));
}

TEST_F(PluginLoaderTest, AnEntryThatThrowsIsOneClearLine) {
    const std::string line = Map("CThrows", "libzr_test_throws.so");

    EXPECT_EQ(line, "Module CThrows is not available: its entry threw: not today");
    EXPECT_THAT(log.Lines(), ElementsAre(Error(line)));
}

TEST_F(PluginLoaderTest, AnEntryThatThrowsWhatIsNoExceptionIsOneClearLine) {
    const std::string line = Map("CThrowsNumber", "libzr_test_throws.so");

    EXPECT_EQ(line, "Module CThrowsNumber is not available: its entry threw something that is no exception");
    EXPECT_THAT(log.Lines(), ElementsAre(Error(line)));
}

TEST_F(PluginLoaderTest, AModuleThatRegisteredItselfAndThenFailedIsWithdrawn) {
    Map("CThrowsLate", "libzr_test_throws.so");
    EXPECT_THAT(log.Lines(), ElementsAre(Error(EndsWith("its entry threw: too late"))));

    host::CModuleLifecycle::Login();

    // its OnLogin would have thrown, and the exception been logged
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

TEST_F(PluginLoaderTest, AModuleThatIsThereStaysWhenAnotherFails) {
    Map("CGood", "libzr_test_good.so");
    Map("CZero", "libzr_test_zero.so");

    EXPECT_TRUE(IZRPluginCenter::_CreateInterface("8GoodName"));
    log.Forget();
}

TEST_F(PluginLoaderTest, AFileThatIsNoLibraryIsOneClearLine) {
    QFile file(folder.filePath(QStringLiteral("libtext.so")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a library\nat all\n");
    file.close();

    const QString line = host::MapModule({"CText", QStringLiteral("libtext.so")}, folder.path());

    EXPECT_THAT(line.toStdString(), AllOf(StartsWith("Module CText is not available: "), Not(HasSubstr("\n"))));
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

TEST_F(PluginLoaderTest, AManifestListsItsModulesInOrder) {
    EXPECT_EQ(ManifestError(R"({"modules":[{"name":"CA","library":"a.so"},{"name":"CB","library":"/b.so"}]})"), "");

    ASSERT_EQ(modules.size(), 2u);
    EXPECT_EQ(modules[0].name, "CA");
    EXPECT_EQ(modules[1].library, QStringLiteral("/b.so"));
}

TEST_F(PluginLoaderTest, AWrongManifestIsRefusedWithFileAndReasonAndNothingIsTakenFromIt) {
    EXPECT_THAT(ManifestError("{"), StartsWith("Module manifest modules.json: "));
    EXPECT_EQ(ManifestError("[]"), "Module manifest modules.json: modules: must be a list");
    EXPECT_EQ(ManifestError("{}"), "Module manifest modules.json: modules: must be a list");
    EXPECT_EQ(ManifestError(R"({"modules":[{"name":"CA","library":"a.so"},{"name":1,"library":"b.so"}]})"),
              "Module manifest modules.json: modules[1]: must have the texts name and library");
    EXPECT_EQ(ManifestError(R"({"modules":["CA"]})"),
              "Module manifest modules.json: modules[0]: must have the texts name and library");
    EXPECT_EQ(ManifestError(R"({"modules":[{"name":"CA","library":"a.so"},{"name":"CA","library":"b.so"}]})"),
              "Module manifest modules.json: modules[1]: CA is listed twice");
    EXPECT_THAT(log.Lines(), SizeIs(6));
    ASSERT_EQ(modules.size(), 1u);
    EXPECT_EQ(modules[0].name, "kept");
}

TEST_F(PluginLoaderTest, AMissingManifestIsRefusedWithItsName) {
    QString error;

    EXPECT_FALSE(host::ReadModuleManifest(folder.filePath(QStringLiteral("none.json")), modules, error));

    EXPECT_THAT(error.toStdString(), HasSubstr("none.json"));
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

}  // namespace
