#include <QApplication>
#include <QTimer>

#include "ClientFixture.h"
#include "core/url_data.h"
#include "core/urlhandler.h"
#include "support/EngineProcesses.h"
#include "webview/ZRWebDialog.h"

using namespace ::testing;
using core::webview::ZRWebDialog;
using core::webview::ZRWebWindowInfo;

namespace {

class WebWindowTest : public ClientTest {
protected:
    void LogIn() {
        Start();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
        QObject::connect(client, &CComposition::WebOpened, &watcher,
                         [this](const QUrl& url) { opened.push_back(url.path().toStdString()); });
    }

    static bool Open(const ZRWebWindowInfo& info) {
        const std::string server = core::url_data::GetDomainUrl("api", core::url_data::kDomainBizDefault);
        return core::urlhandler::DispatchUrl(QString::fromStdString(server + "/page"),
                                             core::urlhandler::kBusinessDefault, nullptr, QVariant::fromValue(info),
                                             core::urlhandler::kFallbackWeb);
    }

    static ZRWebDialog* Dialog() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (auto* dialog = qobject_cast<ZRWebDialog*>(top)) {
                return dialog;
            }
        }
        return nullptr;
    }

    std::vector<std::string> opened;
};

TEST_F(WebWindowTest, WebPageOpensInAWindowOfTheWishedSize) {
    options.webEngine = true;
    LogIn();
    ZRWebWindowInfo info;
    info.size = QSize(500, 400);
    ASSERT_TRUE(Open(info));
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_EQ(Dialog()->size(), QSize(500, 400));
    bool ended = false;
    QObject::connect(Dialog(), &ZRWebDialog::LoadEnd, &watcher, [&ended] { ended = true; });
    EXPECT_TRUE(WaitInRealTime([&ended] { return ended; }));
    EXPECT_TRUE(IsMapped(QStringLiteral("libzrhost_webengine")));
    EXPECT_THAT(opened, ElementsAre("/page"));
}

TEST_F(WebWindowTest, WebPageGoesToTheDesktopWhenTheEngineIsSwitchedOff) {
    LogIn();
    ASSERT_TRUE(Open({}));
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_THAT(opened, ElementsAre("/page"));
    EXPECT_FALSE(IsMapped(QStringLiteral("libzrhost_webengine")));
}

TEST_F(WebWindowTest, ClosingTheMainWindowEndsTheClientWhileAWebWindowIsOpen) {
    options.webEngine = true;
    LogIn();
    ASSERT_TRUE(Open({}));
    ASSERT_TRUE(WaitInRealTime([] { return !PageProcesses().empty(); }));
    QTimer::singleShot(0, window, &QWidget::close);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_NE(Dialog(), nullptr);
    End();
    EXPECT_TRUE(WaitInRealTime([] { return PageProcesses().empty(); }));
}

}  // namespace
