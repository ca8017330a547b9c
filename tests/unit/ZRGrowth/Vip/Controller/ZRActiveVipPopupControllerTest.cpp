#include "Vip/Controller/ZRActiveVipPopupController.h"

#include <QApplication>
#include <QEvent>
#include <deque>
#include <functional>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "Vip/Controller/ActiveVipPopupTest.h"
#include "WireBytes.h"
#include "premium_svr.pb.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZIconButton.h"

using namespace ::testing;

namespace {

constexpr auto kRight = EnPremiumAccess(101);
const QString kTarget = QStringLiteral("https://target.test/a");
const std::string kPicture = "https://pictures.test/AU/en.png";

/// Runs `act` at each event of one type that an object gets.
class CAtEvent : public QObject {
public:
    CAtEvent(QObject* object, QEvent::Type type, std::function<void()> act) : m_type(type), m_act(std::move(act)) {
        object->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == m_type) {
            m_act();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QEvent::Type m_type;
    std::function<void()> m_act;
};

/// A user of the market AU with English texts, for whom every picture is configured.
class ActiveVipPopupTest : public ScriptedHostTest {
protected:
    ActiveVipPopupTest() {
        account.Set(501, 1, {6});
        config.Set(kPictureConfig, AllPictures());
        language.SetText(kTextActivated, QStringLiteral("Activated"));
        language.SetText(kTextFailed, QStringLiteral("Not activated"));
        window->resize(900, 700);
        window->show();
        time.Settle();
    }

    unsigned long Request(const QString& target = kTarget) {
        controller->RequestActiveVip(kRight, target, window.get());
        return channel.LastSession();
    }

    void Answer(unsigned long session, const std::string& bytes = "") {
        channel.Reply(session, kActivate, bytes);
        time.Settle();
    }

    /// A popup that loads its picture; what led to it is forgotten.
    CZRAdMiddlePopupView* LoadingPopup() {
        Answer(Request());
        log.Forget();
        channel.Forget();
        return Popup();
    }

    CZRAdMiddlePopupView* ShownPopup() {
        CZRAdMiddlePopupView* popup = LoadingPopup();
        pictures.Succeed(pictures.LastLoad());
        log.Forget();
        return popup;
    }

    CZRAdMiddlePopupView* Popup() {
        const auto popups = PopupsOver(*window);
        EXPECT_THAT(popups, SizeIs(1));
        return popups.empty() ? nullptr : popups.front();
    }

    void PictureFails() {
        for (int attempt = 0; attempt < 3; ++attempt) {
            pictures.Fail(pictures.LastLoad());
        }
    }

    static ZIconButton* CloseButton(QWidget* popup) {
        return popup->findChild<ZIconButton*>(QStringLiteral("CZRAdMiddlePopupViewCloseButton"));
    }

    static CZRAdImageView* Image(QWidget* popup) { return popup->findChild<CZRAdImageView*>(); }

    std::vector<std::string> VipLines() {
        std::vector<std::string> lines;
        for (const LogLine& line : log.Lines()) {
            if (line.text.rfind("[Vip] ", 0) == 0) {
                lines.push_back(std::to_string(int(line.severity)) + " " + line.text.substr(6));
            }
        }
        return lines;
    }

    /// The one toast over the window is like this one.
    void ExpectToast(ZToast::ZrStyle style, const char* text) {
        const auto toasts = window->findChildren<ZToast*>();
        ASSERT_THAT(toasts, SizeIs(1));
        EXPECT_TRUE(toasts.first()->isVisible());
        QWidget twin;
        twin.resize(window->size());
        ZToast like(&twin);
        ZToast::ToastInfo info;
        info.style = style;
        info.text = QString::fromUtf8(text);
        like.showToast(info);
        twin.show();
        EXPECT_EQ(toasts.first()->geometry(), like.geometry());
        EXPECT_EQ(toasts.first()->grab().toImage(), like.grab().toImage());
    }

    void ExpectFailureToast() { ExpectToast(ZToast::kFailure, "Not activated"); }
    void ExpectSuccessToast() { ExpectToast(ZToast::kSuccess, "Activated"); }

    std::unique_ptr<CAdWindow> window = std::make_unique<CAdWindow>();
    std::unique_ptr<CZRActiveVipPopupController> controller = std::make_unique<CZRActiveVipPopupController>(nullptr);
};

TEST_F(ActiveVipPopupTest, HasNoSignalsAndItsSlotsInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRActiveVipPopupController::staticMetaObject),
        ElementsAre("slot OnRequestActiveVipCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData, "
                    "const CSResponseExt* pRspExt, QString targetUrl)",
                    "slot OnImageClicked(bool jumpResult)", "slot OnClosed()",
                    "slot OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count)",
                    "slot OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count)"));
}

TEST_F(ActiveVipPopupTest, BelongsToItsParent) {
    QObject parent;

    const auto* child = new CZRActiveVipPopupController(&parent);

    EXPECT_EQ(child->parent(), &parent);
}

TEST_F(ActiveVipPopupTest, RequestNamesTheOperationAndTheOneRight) {
    controller->RequestActiveVip(EnPremiumAccess(201), kTarget, window.get());
    controller->RequestActiveVip(EnPremiumAccess(3), kTarget, window.get());

    ASSERT_THAT(channel.Sent(), SizeIs(2));
    EXPECT_EQ(channel.Sent()[0].cmd, kActivate);
    EXPECT_EQ(channel.Sent()[0].body, Bytes({0x08, 2, 0x10, 0xC9, 0x01}));
    EXPECT_EQ(channel.Sent()[0].context, controller.get());
    EXPECT_EQ(channel.Sent()[1].body, Bytes({0x08, 2, 0x10, 3}));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ActiveVipPopupTest, AnswerIsHandledLaterInAPostedTask) {
    const unsigned long session = Request();
    poster.Forget();

    channel.Reply(session, kActivate, std::string());

    EXPECT_THAT(poster.Delays(), ElementsAre(0));
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    time.Settle();
    EXPECT_THAT(PopupsOver(*window), SizeIs(1));
    log.Forget();
    pictures.Forget();
}

TEST_F(ActiveVipPopupTest, FailedAnswerIsHandledLaterToo) {
    const unsigned long session = Request();

    channel.Fail(session, kCSProtoTimedOut);

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
    time.Settle();
    EXPECT_THAT(ToastsOver(*window), ElementsAre("Not activated"));
    log.Forget();
}

TEST_F(ActiveVipPopupTest, AnswerIsDroppedWhenTheControllerIsGone) {
    const unsigned long first = Request();
    const unsigned long second = Request();
    channel.Reply(first, kActivate, std::string());

    controller.reset();
    channel.Reply(second, kActivate, std::string());
    time.Settle();

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
}

struct RefusalRow {
    const char* name;
    int error;
    uint32_t cmd;
    std::string body;
    const char* line;
};

void PrintTo(const RefusalRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ActiveVipPopupRefusalTest : public ActiveVipPopupTest, public WithParamInterface<RefusalRow> {};

TEST_P(ActiveVipPopupRefusalTest, FailureIsLoggedAndShownInAToast) {
    const RefusalRow& row = GetParam();
    const unsigned long session = Request();

    channel.ReplyWith(session, CSProtoError(row.error), {row.cmd, row.body});
    time.Settle();

    EXPECT_THAT(log.Lines(), ElementsAre(Error(std::string("[Vip] RequestActiveVip callback, ") + row.line)));
    ExpectFailureToast();
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    EXPECT_THAT(pictures.Asked(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Answers, ActiveVipPopupRefusalTest,
    Values(RefusalRow{"Disconnected", -2, 20981, "", "receive cmd error, error = -2, cmd = 20981"},
           RefusalRow{"Error", 7, 20981, "", "receive cmd error, error = 7, cmd = 20981"},
           RefusalRow{"OtherCommand", 0, 20637, "", "receive cmd error, error = 0, cmd = 20637"},
           RefusalRow{"NoCommand", 0, 0, "", "receive cmd error, error = 0, cmd = 0"},
           RefusalRow{"ErrorAndOtherCommand", 9, 1, "", "receive cmd error, error = 9, cmd = 1"},
           RefusalRow{"ErrorAndBadBytes", 4, 20981, "\x08", "receive cmd error, error = 4, cmd = 20981"},
           RefusalRow{"ErrorAndRefusal", 4, 20981, "\x08\x05", "receive cmd error, error = 4, cmd = 20981"},
           RefusalRow{"BadBytes", 0, 20981, "\x08", "receive cmd 20981, data parse failed"},
           RefusalRow{"CutMessage", 0, 20981,
                      "\x12\x05"
                      "abc",
                      "receive cmd 20981, data parse failed"},
           RefusalRow{"Repeat", 0, 20981,
                      "\x08\xE9\x07\x12\x05"
                      "again",
                      "active failed, code = 1001, message = again"},
           RefusalRow{"CodeOne", 0, 20981, "\x08\x01", "active failed, code = 1, message = "},
           RefusalRow{"NegativeCode", 0, 20981, "\x08\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x12\x02no",
                      "active failed, code = -1, message = no"},
           RefusalRow{"LastCode", 0, 20981, std::string("\x08\x00\x08\x05", 4), "active failed, code = 5, message = "}),
    [](const auto& row) { return std::string(row.param.name); });

struct SuccessRow {
    const char* name;
    std::string body;
};

void PrintTo(const SuccessRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ActiveVipPopupSuccessTest : public ActiveVipPopupTest, public WithParamInterface<SuccessRow> {};

TEST_P(ActiveVipPopupSuccessTest, SuccessLeadsToThePicture) {
    Answer(Request(), GetParam().body);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Get ActiveVipPopImageUrl success, imageUrl = " + kPicture),
                                         Info("[Vip] Show popup start, imageUrl = " + kPicture),
                                         Info("[Ad] Set schema, schema = https://target.test/a"),
                                         Info("[Ad] Set image url, imageUrl = " + kPicture)));
    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, kPicture);
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
}

// A code that is absent reads as 0.
INSTANTIATE_TEST_SUITE_P(Answers, ActiveVipPopupSuccessTest,
                         Values(SuccessRow{"CodeZero", std::string("\x08\x00", 2)},
                                SuccessRow{"CodeZeroWithMessage", std::string("\x08\x00\x12\x02ok", 6)},
                                SuccessRow{"NoCode", "\x12\x02ok"}, SuccessRow{"EmptyBody", ""},
                                SuccessRow{"UnknownField", "\x78\x01"}, SuccessRow{"MessageIsNoUtf8", "\x12\x01\xFF"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ActiveVipPopupTest, PopupIsHiddenAndCoversTheWindowUntilItsPictureIsIn) {
    CZRAdMiddlePopupView* popup = LoadingPopup();

    ASSERT_TRUE(popup);
    EXPECT_EQ(popup->parentWidget(), window.get());
    EXPECT_TRUE(popup->isHidden());
    EXPECT_EQ(popup->geometry(), window->rect());

    pictures.Succeed(pictures.LastLoad());

    EXPECT_TRUE(popup->isVisible());
    EXPECT_EQ(popup->geometry(), window->rect());
}

TEST_F(ActiveVipPopupTest, LoadingPopupStaysHiddenWhenItsWindowIsShownLater) {
    window->hide();
    CZRAdMiddlePopupView* popup = LoadingPopup();
    pictures.LastLoad();

    window->show();
    time.Settle();

    EXPECT_FALSE(popup->isVisible());
}

TEST_F(ActiveVipPopupTest, PictureThatIsInIsLogged) {
    CZRAdMiddlePopupView* popup = LoadingPopup();
    time.Advance(std::chrono::milliseconds(1234));

    pictures.Succeed(pictures.LastLoad());

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] OnImageLoadSucceeded, imageUrl = " + kPicture + ", time = 1234, count = 1")));
    EXPECT_TRUE(popup->isVisible());
}

TEST_F(ActiveVipPopupTest, PictureThatIsInInsideTheRequestShowsThePopup) {
    pictures.AnswerAtOnce();

    Answer(Request());

    EXPECT_TRUE(Popup()->isVisible());
    EXPECT_THAT(VipLines(), ElementsAre("4 Get ActiveVipPopImageUrl success, imageUrl = " + kPicture,
                                        "4 Show popup start, imageUrl = " + kPicture,
                                        "4 OnImageLoadSucceeded, imageUrl = " + kPicture + ", time = 0, count = 1"));
}

TEST_F(ActiveVipPopupTest, PopupGoesAndTheSuccessIsInAToastWhenThePictureFails) {
    const QPointer<CZRAdMiddlePopupView> popup = LoadingPopup();
    std::vector<std::string> linesAtClose;
    std::vector<std::string> toastsAtClose{"not closed"};
    const CAtEvent atClose(popup, QEvent::Close, [&] {
        linesAtClose = VipLines();
        toastsAtClose = ToastsOver(*window);
    });
    time.Advance(std::chrono::milliseconds(77));

    PictureFails();

    const std::string line = "4 OnImageLoadFailed, imageUrl = " + kPicture + ", resultContent = , time = 77, count = 3";
    EXPECT_THAT(VipLines(), ElementsAre(line));
    EXPECT_THAT(linesAtClose, ElementsAre(line));
    EXPECT_THAT(toastsAtClose, IsEmpty());
    ExpectSuccessToast();
    time.Settle();
    EXPECT_FALSE(popup);
}

TEST_F(ActiveVipPopupTest, PictureThatComesAtTheThirdAttemptShowsThePopup) {
    CZRAdMiddlePopupView* popup = LoadingPopup();
    pictures.Fail(pictures.LastLoad());
    pictures.Fail(pictures.LastLoad());

    pictures.Succeed(pictures.LastLoad());

    EXPECT_TRUE(popup->isVisible());
    EXPECT_THAT(VipLines(), ElementsAre("4 OnImageLoadSucceeded, imageUrl = " + kPicture + ", time = 0, count = 3"));
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
}

TEST_F(ActiveVipPopupTest, NoticesOfAPictureAreLoggedWithTheirValues) {
    controller->OnImageLoadSucceeded(QStringLiteral("u1"), 5, 7);
    controller->OnImageLoadFailed(QStringLiteral("u2"), QStringLiteral("content"), 9, 11);

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Vip] OnImageLoadSucceeded, imageUrl = u1, time = 5, count = 7"),
                    Info("[Vip] OnImageLoadFailed, imageUrl = u2, resultContent = content, time = 9, count = 11"),
                    Fatal("[Vip] Show toast failed, parent is empty, toastLangId = 292250")));
}

TEST_F(ActiveVipPopupTest, ClickOnThePictureOpensTheTargetAndRemovesThePopup) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();

    Click(Image(popup));

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].url, "https://target.test/a");
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Open schema success, schema = https://target.test/a"),
                                         Info("[Vip] OnImageClicked, jumpResult = true")));
    EXPECT_TRUE(!popup || !popup->isVisible());
    time.Settle();
    EXPECT_FALSE(popup);
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
}

TEST_F(ActiveVipPopupTest, ClickRemovesThePopupWhenTheTargetIsRefused) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();
    urls.RefuseOpens(Failing::Always());

    Click(Image(popup));
    time.Settle();

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(VipLines(), ElementsAre("4 OnImageClicked, jumpResult = false"));
    EXPECT_FALSE(popup);
}

TEST_F(ActiveVipPopupTest, CloseButtonRemovesThePopupAndOpensNothing) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();

    Click(CloseButton(popup));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] OnClosed")));
    EXPECT_TRUE(!popup || !popup->isVisible());
    time.Settle();
    EXPECT_FALSE(popup);
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
}

TEST_F(ActiveVipPopupTest, ClickBesideThePictureLeavesThePopup) {
    CZRAdMiddlePopupView* popup = ShownPopup();

    PressAt(*popup, Qt::LeftButton, QPoint(5, 5));
    Press(*Image(popup), Qt::RightButton);
    time.Settle();

    EXPECT_TRUE(Popup()->isVisible());
    EXPECT_THAT(VipLines(), IsEmpty());
}

TEST_F(ActiveVipPopupTest, ActivationIsPossibleAgainAfterThePopup) {
    Click(CloseButton(ShownPopup()));
    time.Settle();

    Answer(Request());
    pictures.Succeed(pictures.LastLoad());

    EXPECT_TRUE(Popup()->isVisible());
}

enum class End { kClick, kClose, kPictureFailed, kReplaced };

class ActiveVipPopupEndTest : public ActiveVipPopupTest, public WithParamInterface<End> {};

// The removed popup lives until its deferred delete.
TEST_P(ActiveVipPopupEndTest, RemovedPopupIsNotListenedTo) {
    const QPointer<CZRAdMiddlePopupView> old = LoadingPopup();
    std::vector<std::string> heard{"not deleted"};
    const CAtEvent atDelete(old, QEvent::DeferredDelete, [&] {
        log.Forget();
        Q_EMIT old->ClickAd(true);
        Q_EMIT old->Closed();
        Q_EMIT old->LoadImageSucceeded(QStringLiteral("u"), 1, 1);
        Q_EMIT old->LoadImageFailed(QStringLiteral("u"), QString(), 1, 1);
        heard = VipLines();
        EXPECT_FALSE(old->isVisible());
    });
    switch (GetParam()) {
        case End::kClick:
            controller->OnImageClicked(true);
            break;
        case End::kClose:
            controller->OnClosed();
            break;
        case End::kPictureFailed:
            PictureFails();
            break;
        case End::kReplaced:
            Answer(Request());
            break;
    }

    time.Settle();

    EXPECT_FALSE(old);
    EXPECT_THAT(heard, IsEmpty());
    pictures.Forget();
}

std::string EndName(const TestParamInfo<End>& row) {
    constexpr const char* kNames[] = {"Click", "Close", "PictureFailed", "Replaced"};
    return kNames[int(row.param)];
}

INSTANTIATE_TEST_SUITE_P(Ends, ActiveVipPopupEndTest,
                         Values(End::kClick, End::kClose, End::kPictureFailed, End::kReplaced), EndName);

TEST_F(ActiveVipPopupTest, SecondSuccessReplacesThePopup) {
    const unsigned long first = Request(QStringLiteral("https://target.test/first"));
    const unsigned long second = Request(QStringLiteral("https://target.test/second"));
    EXPECT_THAT(channel.Sent(), SizeIs(2));
    Answer(first);
    const QPointer<CZRAdMiddlePopupView> old = Popup();
    const int oldLoad = pictures.LastLoad();
    log.Forget();
    std::vector<std::string> linesAtClose;
    const CAtEvent atClose(old, QEvent::Close, [&] { linesAtClose = VipLines(); });

    Answer(second);

    EXPECT_FALSE(old);
    EXPECT_THAT(linesAtClose, ElementsAre("4 Get ActiveVipPopImageUrl success, imageUrl = " + kPicture));
    EXPECT_THAT(VipLines(), ElementsAre("4 Get ActiveVipPopImageUrl success, imageUrl = " + kPicture,
                                        "4 Show popup start, imageUrl = " + kPicture));
    pictures.Succeed(oldLoad);
    EXPECT_TRUE(Popup()->isHidden());
    pictures.Succeed(pictures.LastLoad());
    EXPECT_TRUE(Popup()->isVisible());
    Click(Image(Popup()));
    EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://target.test/second")));
}

TEST_F(ActiveVipPopupTest, SecondSuccessReplacesAPopupOnScreen) {
    const QPointer<CZRAdMiddlePopupView> old = ShownPopup();

    Answer(Request());

    EXPECT_FALSE(old);
    EXPECT_TRUE(Popup()->isHidden());
    pictures.Forget();
}

TEST_F(ActiveVipPopupTest, SecondSuccessWithoutAPictureLeavesThePopup) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();
    config.Set(kPictureConfig, Json::Value());

    Answer(Request());

    ASSERT_TRUE(popup);
    EXPECT_TRUE(popup->isVisible());
    EXPECT_THAT(VipLines(), ElementsAre("8 Get ActiveVipPopImageUrl failed, image_info is empty",
                                        "8 Show popup failed, imageUrl is empty. Show success toast"));
    ExpectSuccessToast();
    Click(Image(popup));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(ActiveVipPopupTest, RefusedSecondRequestLeavesThePopup) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();

    Answer(Request(), "\x08\xE9\x07");

    ASSERT_TRUE(popup);
    EXPECT_TRUE(popup->isVisible());
    ExpectFailureToast();
    log.Forget();
}

TEST_F(ActiveVipPopupTest, ToastIsEmptyWhenTheLanguageDoesNotKnowItsText) {
    language = CScriptedLanguage();

    Answer(Request(), "\x08\xE9\x07");

    EXPECT_THAT(ToastsOver(*window), ElementsAre(""));
    log.Forget();
}

TEST_F(ActiveVipPopupTest, BothAnswersGoToTheWindowOfTheLatestRequest) {
    QWidget other;
    other.resize(600, 500);
    other.show();
    const unsigned long first = Request();
    controller->RequestActiveVip(kRight, kTarget, &other);
    const unsigned long second = channel.LastSession();

    Answer(first, "\x08\x05");
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
    EXPECT_THAT(ToastsOver(other), ElementsAre("Not activated"));

    Answer(second);
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    EXPECT_THAT(PopupsOver(other), SizeIs(1));
    pictures.Forget();
    log.Forget();
}

TEST_F(ActiveVipPopupTest, FailedPictureIsToldOverTheWindowOfTheLatestRequest) {
    const QPointer<CZRAdMiddlePopupView> popup = LoadingPopup();
    QWidget other;
    other.resize(600, 500);
    other.show();
    controller->RequestActiveVip(kRight, kTarget, &other);
    EXPECT_THAT(channel.Sent(), SizeIs(1));

    PictureFails();
    time.Settle();

    EXPECT_FALSE(popup);
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
    EXPECT_THAT(ToastsOver(other), ElementsAre("Activated"));
}

TEST_F(ActiveVipPopupTest, LaterRequestWithoutAWindowReplacesTheWindow) {
    const unsigned long first = Request();
    controller->RequestActiveVip(kRight, kTarget, nullptr);

    Answer(first);

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Show popup failed, parent is empty")));
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    EXPECT_THAT(channel.Sent(), SizeIs(2));
}

TEST_F(ActiveVipPopupTest, SuccessIsOnlyLoggedWhenTheWindowIsGone) {
    const unsigned long session = Request();
    window.reset();

    Answer(session);

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Show popup failed, parent is empty")));
    EXPECT_THAT(pictures.Asked(), IsEmpty());
}

TEST_F(ActiveVipPopupTest, FailureIsOnlyLoggedWhenTheWindowIsGone) {
    const unsigned long session = Request();
    channel.Fail(session, CSProtoError(8));

    window.reset();
    time.Settle();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Vip] RequestActiveVip callback, receive cmd error, error = 8, cmd = 20981"),
                            Fatal("[Vip] Show toast failed, parent is empty, toastLangId = 292248")));
    for (const QWidget* widget : QApplication::allWidgets()) {
        EXPECT_FALSE(qobject_cast<const ZToast*>(widget));
    }
}

TEST_F(ActiveVipPopupTest, PopupGoesWithItsWindow) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();

    window.reset();
    EXPECT_FALSE(popup);
    controller->OnImageLoadSucceeded(QStringLiteral("u"), 1, 1);
    controller->OnClosed();
    time.Settle();

    EXPECT_THAT(VipLines(), ElementsAre("4 OnImageLoadSucceeded, imageUrl = u, time = 1, count = 1", "4 OnClosed"));
}

TEST_F(ActiveVipPopupTest, WindowMayGoWhileItsTargetOpens) {
    CZRAdMiddlePopupView* popup = ShownPopup();
    urls.WhenOpening([this] { window.reset(); });

    Click(Image(popup));
    time.Settle();

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(VipLines(), IsEmpty());
}

TEST_F(ActiveVipPopupTest, PopupMayGoInsideItsOwnClosedSignal) {
    CZRAdMiddlePopupView* popup = ShownPopup();
    QWidget* holder = new QWidget;
    QObject::connect(popup, &CZRAdMiddlePopupView::Closed, [holder] { delete holder; });
    popup->setParent(holder);
    const QPointer<CZRAdMiddlePopupView> guard(popup);

    Q_EMIT popup->Closed();
    time.Settle();

    EXPECT_FALSE(guard);
    EXPECT_THAT(VipLines(), ElementsAre("4 OnClosed"));
}

TEST_F(ActiveVipPopupTest, PopupMayGoInsideItsOwnCloseEvent) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();
    popup->setAttribute(Qt::WA_DeleteOnClose);
    const CAtEvent atHide(popup, QEvent::Hide, [] {});

    controller->OnClosed();
    time.Settle();

    EXPECT_FALSE(popup);
    log.Forget();
}

TEST_F(ActiveVipPopupTest, EndedPopupIsNotEndedAgain) {
    controller->OnClosed();
    controller->OnImageClicked(false);
    controller->OnImageLoadSucceeded(QString(), 0, 0);

    EXPECT_THAT(VipLines(), ElementsAre("4 OnClosed", "4 OnImageClicked, jumpResult = false",
                                        "4 OnImageLoadSucceeded, imageUrl = , time = 0, count = 0"));
    EXPECT_THAT(ToastsOver(*window), IsEmpty());
}

TEST_F(ActiveVipPopupTest, RemovedPopupIsNotShownAgainByALatePicture) {
    const QPointer<CZRAdMiddlePopupView> popup = ShownPopup();
    controller->OnClosed();

    controller->OnImageLoadSucceeded(QString::fromStdString(kPicture), 1, 1);

    EXPECT_TRUE(!popup || !popup->isVisible());
    time.Settle();
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    log.Forget();
}

TEST_F(ActiveVipPopupTest, ResultIsOverTheGivenWidgetWhenThatIsNoWindow) {
    QWidget page(window.get());
    page.setGeometry(50, 60, 500, 600);
    page.show();
    controller->RequestActiveVip(kRight, kTarget, &page);
    const unsigned long first = channel.LastSession();
    controller->RequestActiveVip(kRight, kTarget, &page);
    const unsigned long second = channel.LastSession();

    Answer(first);
    pictures.Succeed(pictures.LastLoad());
    Answer(second, "\x08\x05");

    ASSERT_THAT(PopupsOver(page), SizeIs(1));
    EXPECT_EQ(PopupsOver(page).front()->parentWidget(), &page);
    EXPECT_EQ(PopupsOver(page).front()->geometry(), page.rect());
    EXPECT_THAT(page.findChildren<ZToast*>(QString(), Qt::FindDirectChildrenOnly), SizeIs(1));
    log.Forget();
}

TEST_F(ActiveVipPopupTest, ToastDisappearsByItself) {
    Answer(Request(), "\x08\x05");
    EXPECT_THAT(ToastsOver(*window), SizeIs(1));
    log.Forget();

    time.Advance(std::chrono::milliseconds(2999));
    EXPECT_THAT(ToastsOver(*window), ElementsAre("Not activated"));
    time.Advance(std::chrono::milliseconds(1));
    time.Settle();

    EXPECT_THAT(window->findChildren<ZToast*>(), IsEmpty());
}

TEST_F(ActiveVipPopupTest, ToastIsEmptyWhenTheLanguageHasNoText) {
    language.SetText(kTextFailed, QString());

    Answer(Request(), "\x08\x05");

    EXPECT_THAT(ToastsOver(*window), ElementsAre(""));
    log.Forget();
}

// The picture of a user.

struct PictureRow {
    const char* name;
    std::vector<int> markets;
    int language;
    std::string place;  // of the picture
};

void PrintTo(const PictureRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ActiveVipPictureTest : public ActiveVipPopupTest, public WithParamInterface<PictureRow> {};

TEST_P(ActiveVipPictureTest, PictureIsOfTheFirstMarketAndTheLanguage) {
    account.Set(501, 1, GetParam().markets);
    language.Set(GetParam().language);

    Answer(Request());

    const std::string url = "https://pictures.test/" + GetParam().place + ".png";
    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, url);
    EXPECT_EQ(VipLines()[0], "4 Get ActiveVipPopImageUrl success, imageUrl = " + url);
}

INSTANTIATE_TEST_SUITE_P(Users, ActiveVipPictureTest,
                         Values(PictureRow{"Market0", {0}, 2, "US/en"}, PictureRow{"Market1", {1}, 2, "US/en"},
                                PictureRow{"Market4", {4}, 2, "US/en"}, PictureRow{"Market5", {5}, 2, "SG/en"},
                                PictureRow{"Market6", {6}, 2, "AU/en"}, PictureRow{"Market7", {7}, 2, "JP/en"},
                                PictureRow{"Market8", {8}, 2, "CA/en"}, PictureRow{"Market9", {9}, 2, "MY/en"},
                                PictureRow{"Market10", {10}, 2, "US/en"}, PictureRow{"MarketMinus1", {-1}, 2, "US/en"},
                                PictureRow{"SixThenFive", {6, 5}, 2, "AU/en"},
                                PictureRow{"FiveThenSix", {5, 6}, 2, "SG/en"},
                                PictureRow{"UnknownThenNine", {3, 9}, 2, "US/en"},
                                PictureRow{"Language0", {7}, 0, "JP/zh-Hans"},
                                PictureRow{"Language1", {7}, 1, "JP/zh-Hant"}, PictureRow{"Language3", {7}, 3, "JP/en"},
                                PictureRow{"Language5", {7}, 5, "JP/ja"}, PictureRow{"Language6", {7}, 6, "JP/en"},
                                PictureRow{"Language7", {7}, 7, "JP/fr"}, PictureRow{"Language8", {7}, 8, "JP/en"},
                                PictureRow{"LanguageMinus1", {7}, -1, "JP/en"}),
                         [](const auto& row) { return std::string(row.param.name); });

struct NoPictureRow {
    const char* name;
    std::string config;
    std::vector<int> markets;
    int language;
    std::string reason;
};

void PrintTo(const NoPictureRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ActiveVipNoPictureTest : public ActiveVipPopupTest, public WithParamInterface<NoPictureRow> {};

TEST_P(ActiveVipNoPictureTest, SuccessIsInAToastWhenThereIsNoPicture) {
    const NoPictureRow& row = GetParam();
    account.Set(501, 1, row.markets);
    language.Set(row.language);
    config.Set(kPictureConfig, JsonOf(row.config));

    EXPECT_NO_THROW(Answer(Request()));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Get ActiveVipPopImageUrl failed, " + row.reason),
                                         Error("[Vip] Show popup failed, imageUrl is empty. Show success toast")));
    ExpectSuccessToast();
    EXPECT_THAT(PopupsOver(*window), IsEmpty());
    EXPECT_THAT(pictures.Asked(), IsEmpty());
}

std::string JsonNested(int depth, const std::string& key) {
    std::string text;
    for (int i = 0; i < depth; ++i) {
        text += "{\"" + key + "\":";
    }
    return text + "5" + std::string(size_t(depth), '}');
}

std::vector<NoPictureRow> NoPictureRows() {
    std::vector<NoPictureRow> rows{
        {"NoMarkets", R"({"image_info":{"US":{"en":"u"}}})", {}, 2, "attrMarkets is empty"},
        {"NoMarketsAndNoEntry", R"({"image_info":{}})", {}, 2, "attrMarkets is empty"},
        {"NoImagesAndNoMarkets", "{}", {}, 2, "image_info is empty"},
        {"MarketMissing", R"({"image_info":{"AU":{"en":"u"}}})", {5}, 2, "attrMarket image is null, attrMarket = SG"},
        {"NoFallbackToAnotherMarket",
         R"({"image_info":{"SG":{"en":"u"}}})",
         {6, 5},
         2,
         "attrMarket image is null, attrMarket = AU"},
        {"UnitedStatesMissing",
         R"({"image_info":{"AU":{"en":"u"}}})",
         {0},
         2,
         "attrMarket image is null, attrMarket = US"},
        {"FrenchMissing", R"({"image_info":{"AU":{"en":"u"}}})", {6}, 7, "language image is null, language = fr"},
        {"JapaneseMissing",
         R"({"image_info":{"AU":{"en":"u","fr":"u"}}})",
         {6},
         5,
         "language image is null, language = ja"},
        {"SimplifiedMissing",
         R"({"image_info":{"AU":{"zh-Hant":"u","en":"u"}}})",
         {6},
         0,
         "language image is null, language = zh-Hans"},
        {"TraditionalMissing",
         R"({"image_info":{"AU":{"zh-Hans":"u","en":"u"}}})",
         {6},
         1,
         "language image is null, language = zh-Hant"},
        {"EnglishMissing", R"({"image_info":{"AU":{"ja":"u"}}})", {6}, 2, "language image is null, language = en"},
        {"OtherCase", R"({"image_info":{"AU":{"EN":"u"}}})", {6}, 2, "language image is null, language = en"},
        {"Deep", JsonNested(900, "image_info"), {6}, 2, "attrMarket image is null, attrMarket = AU"},
    };
    const std::pair<const char*, const char*> values[] = {{"Null", "null"},
                                                          {"True", "true"},
                                                          {"Number", "5"},
                                                          {"Real", "1.5"},
                                                          {"Text", "\"AU\""},
                                                          {"EmptyText", "\"\""},
                                                          {"Array", R"([{"en":"u"}])"},
                                                          {"EmptyArray", "[]"}};
    for (const auto& [name, value] : values) {
        static std::deque<std::string> names;
        const auto add = [&, valueName = name](const char* level, const std::string& text, const char* reason) {
            names.push_back(std::string(level) + valueName);
            rows.push_back({names.back().c_str(), text, {6}, 2, reason});
        };
        const std::string text = value;
        // A reader of streams accepts objects and arrays alone as a root; the others are set below.
        add("Images", R"({"image_info":)" + text + "}", "image_info is empty");
        add("Market", R"({"image_info":{"AU":)" + text + "}}", "attrMarket image is null, attrMarket = AU");
        if (text.front() != '"') {
            add("Language", R"({"image_info":{"AU":{"en":)" + text + "}}}", "language image is null, language = en");
        }
        add("Root", text, "image_info is empty");
    }
    rows.push_back({"ImagesEmpty", R"({"image_info":{}})", {6}, 2, "attrMarket image is null, attrMarket = AU"});
    rows.push_back({"MarketEmpty", R"({"image_info":{"AU":{}}})", {6}, 2, "language image is null, language = en"});
    rows.push_back({"LanguageObject",
                    R"({"image_info":{"AU":{"en":{"en":"u"}}}})",
                    {6},
                    2,
                    "language image is null, language = en"});
    rows.push_back({"RootEmpty", "{}", {6}, 2, "image_info is empty"});
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Configurations, ActiveVipNoPictureTest, ValuesIn(NoPictureRows()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ActiveVipPopupTest, SuccessIsInAToastWhenTheConfigurationIsUnknown) {
    CScriptedConfig unknown;
    config = unknown;
    config.Set("premium_active_popup_images", AllPictures());

    Answer(Request());

    EXPECT_THAT(VipLines(), ElementsAre("8 Get ActiveVipPopImageUrl failed, image_info is empty",
                                        "8 Show popup failed, imageUrl is empty. Show success toast"));
    ExpectSuccessToast();
}

TEST_F(ActiveVipPopupTest, EmptyUrlIsFoundAndCountsAsNoPicture) {
    config.Set(kPictureConfig, JsonOf(R"({"image_info":{"AU":{"en":""}}})"));

    Answer(Request());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Get ActiveVipPopImageUrl success, imageUrl = "),
                                         Error("[Vip] Show popup failed, imageUrl is empty. Show success toast")));
    ExpectSuccessToast();
    EXPECT_THAT(pictures.Asked(), IsEmpty());
}

TEST_F(ActiveVipPopupTest, PictureIsOfTheUserWhoHasItWhenTheAnswerComes) {
    const unsigned long session = Request();
    account.Set(501, 1, {7});
    language.Set(5);

    Answer(session);

    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, "https://pictures.test/JP/ja.png");
}

}  // namespace
