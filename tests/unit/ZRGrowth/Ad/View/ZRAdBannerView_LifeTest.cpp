// A banner that goes at any moment: with its page, by who listens to it, ahead of its slot or after it.
#include <QPointer>

#include "Ad/AdBannerTest.h"
#include "Ad/Controller/ZRAdManager.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

QString UrlOf(const char* id) {
    return QStringLiteral("https://pictures.test/%1.png").arg(QString::fromLatin1(id));
}

class AdBannerLifeTest : public ScriptedHostTest {
protected:
    AdBannerLifeTest() {
        window.resize(700, 300);
        QObject::connect(view, &CZRAdBannerView::CloseAd,
                         [this](const QString& ad) { told.push_back("close " + ad.toStdString()); });
        window.show();
        time.Settle();
    }
    ~AdBannerLifeTest() override {
        pictures.Forget();
        log.Forget();
    }

    void Add(const char* id) {
        const QString name = QString::fromLatin1(id);
        view->AddAdId(name);
        view->AddSchema(QStringLiteral("zrclient://page/news"));
        view->AddImageUrl(UrlOf(id));  // last: the view may be gone behind it
    }

    template <class Signal>
    void DeleteAt(Signal signal, const char* what) {
        QObject::connect(view, signal, &window, [this, what] {
            told.emplace_back(what);
            delete view;
        });
    }

    CAdWindow window;
    std::vector<std::string> told;
    QPointer<CZRAdBannerView> view = new CZRAdBannerView(&window, QSize(600, 100));
};

TEST_F(AdBannerLifeTest, WhoeverHearsOfTheFirstExposureMayDeleteTheViewAtOnce) {
    DeleteAt(&CZRAdBannerView::ExposeAdStart, "start");

    Add("a");

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("start", "close a"));
    EXPECT_THAT(pictures.Asked(), IsEmpty());
}

TEST_F(AdBannerLifeTest, WhoeverHearsOfALaterExposureMayDeleteTheViewAtOnce) {
    Add("a");
    Add("b");
    DeleteAt(&CZRAdBannerView::ExposeAdStart, "start");

    time.Advance(1min);

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("start", "close b"));
}

TEST_F(AdBannerLifeTest, WhoeverHearsOfAPictureMayDeleteTheViewAtOnce) {
    Add("a");
    Add("b");
    DeleteAt(&CZRAdBannerView::LoadImageSucceeded, "in");

    pictures.SucceedUrl(UrlOf("b").toStdString());

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("in", "close a"));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(AdBannerLifeTest, WhoeverHearsOfAPictureThatIsInAtOnceMayDeleteTheView) {
    pictures.AnswerAtOnce();
    DeleteAt(&CZRAdBannerView::LoadImageSucceeded, "in");

    Add("a");

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("in", "close a"));
}

TEST_F(AdBannerLifeTest, WhoeverHearsOfALossMayDeleteTheViewAtOnce) {
    Add("a");
    Add("b");
    DeleteAt(&CZRAdBannerView::LoadImageFailed, "lost");

    for (int i = 0; i < 3; ++i) {
        pictures.FailUrl(UrlOf("a").toStdString());
    }

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("lost", "close a"));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(AdBannerLifeTest, ABannerGoesWithItsPageAndSaysWhatItClosed) {
    auto* page = new QWidget(&window);
    view->setParent(page);
    Add("a");
    Add("b");
    page->show();
    view->show();
    time.Advance(5s);

    delete page;
    time.Advance(1min);

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("close b"));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(AdBannerLifeTest, ThePageThatAClickOpensMayTakeTheBannersPageAway) {
    auto* page = new QWidget(&window);
    page->resize(600, 100);
    view->setParent(page);
    Add("a");
    page->show();
    view->show();
    time.Settle();
    urls.WhenOpening([page] { delete page; });

    Click(view);

    EXPECT_TRUE(view.isNull());
    EXPECT_THAT(told, ElementsAre("close a"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

// With its slot

class AdBannerSlotLifeTest : public AdBannerControllerTest {};

TEST_F(AdBannerSlotLifeTest, ABannerThatGoesWithItsPageEndsItsExposure) {
    auto* page = new QWidget;
    CZRAdBannerView* banner = Show({"a", "b"});
    ASSERT_TRUE(banner);
    const QPointer<QWidget> alive = banner;
    banner->setParent(page);
    banners.clear();
    page->show();
    time.Advance(6s);
    Forget();

    delete page;

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_THAT(http.Started()[0].request.m_strBody, HasSubstr("\"b\""));
    Forget();
    time.Advance(1min);
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdBannerSlotLifeTest, ABannerThatAnotherListenerDeletesIsReportedInFull) {
    CZRAdBannerView* banner = Show({"a", "b"});
    ASSERT_TRUE(banner);
    banners.clear();
    Forget();
    const QPointer<QWidget> alive = banner;
    QObject::connect(banner, &CZRAdBannerView::ExposeAdStart, &slot, [banner] { delete banner; });

    time.Advance(1min);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd", "StartExposeAd", "ExposeAd"));
    Forget();
}

TEST_F(AdBannerSlotLifeTest, ABannerThatOutlivesTheManagerGoesOnAndReportsNothing) {
    auto manager = std::make_unique<CZRAdManager>();
    manager->GetAdBannerAsync(7, kSize, Taker(), 0, false, {});
    time.Settle();
    http.Answer(http.LastTask(), AnswerOf(DataOf({"a", "b"})).toStyledString());
    time.Settle();
    ASSERT_THAT(banners, SizeIs(1));
    ASSERT_TRUE(banners[0]);
    banners[0]->show();
    time.Settle();
    Forget();

    manager.reset();
    pictures.SucceedUrl(UrlOf("a").toStdString());
    time.Advance(6s);
    Click(banners[0]);
    EXPECT_EQ(Slideshow(banners[0])->currentIndex(), 1);
    delete banners.takeFirst();

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdBannerSlotLifeTest, WhoeverGetsABannerMayEndTheManagerAtOnce) {
    auto manager = std::make_unique<CZRAdManager>();
    manager->GetAdBannerAsync(7, kSize,
                              [&](QWidget* banner) {
                                  manager.reset();
                                  banners.append(banner);
                              },
                              0, false, {});
    time.Settle();

    http.Answer(http.LastTask(), AnswerOf(DataOf({"a", "b"})).toStyledString());
    time.Settle();

    EXPECT_EQ(manager, nullptr);
    ASSERT_THAT(banners, SizeIs(1));
    ASSERT_TRUE(banners[0]);
    Forget();
    time.Advance(6s);
    EXPECT_THAT(reports.Events(), IsEmpty());
}

}  // namespace
