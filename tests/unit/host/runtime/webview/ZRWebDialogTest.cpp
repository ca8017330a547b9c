#include "webview/ZRWebDialog.h"

#include "WebTest.h"
#include "core/urlhandler.h"
#include "webview/WebHost.h"

using namespace ::testing;
using core::webview::ZRWebDialog;
using core::webview::ZRWebWindowInfo;

namespace {

class ZRWebDialogTest : public WebTest {
protected:
    ~ZRWebDialogTest() override { delete dialog; }

    void LoadInDialog(const char* url) {
        dialog->LoadUrl(QString::fromUtf8(url));
        time.Settle();
        web.View().Succeed();
        time.Settle();
    }

    QPointer<ZRWebDialog> dialog = new ZRWebDialog({});
};

TEST_F(ZRWebDialogTest, PageFillsTheWindow) {
    dialog->Open();
    time.Settle();
    const auto children = dialog->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_THAT(children, SizeIs(1));
    EXPECT_EQ(children[0]->geometry(), dialog->rect());
}

TEST_F(ZRWebDialogTest, LinkIsDispatchedByDefaultAndLoadedWhenThatIsOff) {
    LoadInDialog("https://ours.test/");
    EXPECT_FALSE(web.View().Navigate("https://ours.test/next"));
    time.Settle();
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].url, "https://ours.test/next");

    dialog->SetUrlDispatchSwitch(false);
    EXPECT_TRUE(web.View().Navigate("https://ours.test/next"));
    EXPECT_TRUE(web.View().Navigate("https://other.test/"));
    EXPECT_FALSE(web.View().Navigate("zrclient://page/quotes"));
    dialog->SetUrlDispatchSwitch(true);
    EXPECT_FALSE(web.View().Navigate("https://other.test/"));
    time.Settle();
    EXPECT_THAT(urls.Opened(), SizeIs(2));
    log.Forget();
}

TEST_F(ZRWebDialogTest, PopupIsDispatchedWithItsSizeOrLoadedHere) {
    LoadInDialog("https://ours.test/");
    web.View().OpenPopup("https://other.test/", QSize(500, 400));
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    const auto info = urls.Opened()[0].extra.value<ZRWebWindowInfo>();
    EXPECT_EQ(info.size, QSize(500, 400));
    EXPECT_EQ(info.parent.data(), dialog.data());
    EXPECT_EQ(urls.Opened()[0].businessType, core::urlhandler::kBusinessDefault);
    EXPECT_EQ(urls.Opened()[0].fallbackMode, core::urlhandler::kFallbackWeb);

    dialog->SetUrlDispatchSwitch(false);
    web.View().OpenPopup("https://other.test/2", QSize());
    time.Settle();
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/", "https://other.test/2"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ZRWebDialogTest, LoadEndIsThatOfThePage) {
    QSignalSpy loadEnds(dialog, &ZRWebDialog::LoadEnd);
    LoadInDialog("https://ours.test/");
    ASSERT_EQ(loadEnds.count(), 1);
    EXPECT_EQ(loadEnds[0], QVariantList({true, 200, QStringLiteral("https://ours.test/")}));
}

TEST_F(ZRWebDialogTest, SizesAreTheWishedOnesOrTheHosts) {
    EXPECT_EQ(dialog->size(), QSize(960, 720));
    EXPECT_EQ(dialog->minimumSize(), QSize(320, 240));
    ZRWebWindowInfo info;
    info.size = QSize(100, 700);
    info.minimumSize = QSize(500, 200);
    const std::unique_ptr<ZRWebDialog> wished(new ZRWebDialog(info));
    EXPECT_EQ(wished->size(), QSize(500, 700));
    EXPECT_EQ(wished->minimumSize(), QSize(500, 200));
}

TEST_F(ZRWebDialogTest, OpensCentredOverItsParent) {
    QWidget over;
    over.setGeometry(300, 200, 800, 600);
    ZRWebWindowInfo info;
    info.parent = &over;
    info.size = QSize(400, 300);
    auto* wished = new ZRWebDialog(info);
    wished->Open();
    EXPECT_TRUE(wished->isVisible());
    EXPECT_EQ(wished->pos(), over.frameGeometry().center() - QRect(QPoint(), QSize(400, 300)).center());
    delete wished;
}

TEST_F(ZRWebDialogTest, OpensInFrontOverTheMainWindowWhenItHasNoParent) {
    QWidget frame;
    frame.setGeometry(300, 200, 1200, 900);
    frame.show();
    frame.activateWindow();
    mainFrame.Offer(&frame);
    time.Settle();

    dialog->Open();
    time.Settle();

    EXPECT_EQ(dialog->objectName(), QStringLiteral("ZRWebDialog"));
    EXPECT_EQ(dialog->pos(), frame.frameGeometry().center() - dialog->rect().center());
    EXPECT_TRUE(dialog->isActiveWindow());

    frame.activateWindow();
    time.Settle();
    EXPECT_FALSE(dialog->isActiveWindow());
    dialog->Open();
    time.Settle();
    EXPECT_TRUE(dialog->isActiveWindow());
}

TEST_F(ZRWebDialogTest, TitleIsTheHostOfTheAddress) {
    dialog->LoadUrl(QStringLiteral("https://ours.test:8443/other.test?q"));
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("ours.test"));
}

TEST_F(ZRWebDialogTest, DeletesItselfWhenItIsClosed) {
    dialog->Open();
    EXPECT_EQ(host::web::CWebHost::Instance().WindowCount(), 1);
    dialog->close();
    time.Settle();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_EQ(host::web::CWebHost::Instance().WindowCount(), 0);
}

}  // namespace
