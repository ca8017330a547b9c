#include "NoticeBanner.h"

#include <QLabel>
#include <QTemporaryDir>

#include "plugin/PluginLoader.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class NoticeBannerTest : public ScriptedHostTest {
protected:
    QString Text() { return banner.findChild<QLabel*>(QStringLiteral("ModuleBannerText"))->text(); }

    CNoticeBanner banner;
};

}  // namespace

TEST_F(NoticeBannerTest, AMissingModuleShowsItsLine) {
    const QTemporaryDir folder;
    const QString failure = host::MapModule({"CZRGrowthModule", QStringLiteral("libGone.so")}, folder.path());
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("Module CZRGrowthModule is not available"))));

    banner.ShowModuleFailures({failure});

    EXPECT_TRUE(banner.isVisible());
    EXPECT_THAT(Text().toStdString(),
                AllOf(StartsWith("The client goes on without a module. Module CZRGrowthModule is not available: "),
                      HasSubstr("libGone.so")));
}

TEST_F(NoticeBannerTest, EachMissingModuleHasALine) {
    banner.ShowModuleFailures({QStringLiteral("First."), QStringLiteral("Second.")});

    EXPECT_EQ(Text(), QStringLiteral("The client goes on without a module. First.\n"
                                     "The client goes on without a module. Second."));
}

TEST_F(NoticeBannerTest, WithAllModulesThereIsNoBanner) {
    banner.ShowModuleFailures({QStringLiteral("First.")});
    banner.ShowModuleFailures({});

    EXPECT_FALSE(banner.isVisible());
}
