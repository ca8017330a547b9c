#include "Ad/View/ZRAdBottomPopupDeveloperView.h"

#include <QLayout>
#include <QPointer>
#include <QSpacerItem>
#include <ctime>
#include <limits>

#include "Ad/AdManagerTest.h"
#include "Ad/MethodsOf.h"
#include "ui/ZButton.h"
#include "ui/ZText.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const std::string kNothing = "无";
const std::string kAdData =
    "ad_type: 2\nad_position: 42\nshow_interval_type: 1\nshow_interval: 3600\nshow_duration: 15\n";

class AdDeveloperViewTest : public AdManagerTest {
protected:
    AdDeveloperViewTest() {
        view.SetGetModelCallback([this] { return list.get(); });
        view.SetSetModelCallback([this](CZRAdModelList* taken) { list.reset(taken); });
        view.show();
        time.Settle();
    }

    template <class Child>
    Child* Find(const char* name) {
        return view.findChild<Child*>(QString::fromLatin1(name));
    }
    std::string LastShow() { return Find<ZText>("LastShowText")->text().toStdString(); }
    std::string CacheData() { return Find<ZText>("CacheDataText")->text().toStdString(); }
    void Press(const char* button) { Click(Find<ZButton>(button)); }

    /// Returns the item of a layout at this index: "text", "[button]", "a row" or "a stretch".
    static std::string WordsAt(QLayout* layout, int index) {
        QLayoutItem* item = layout->itemAt(index);
        if (item->layout()) {
            return "a row";
        }
        if (item->spacerItem()) {
            return item->expandingDirections() ? "a stretch" : "a gap";
        }
        if (auto* button = qobject_cast<ZButton*>(item->widget())) {
            return "[" + button->text().toStdString() + "]";
        }
        auto* text = qobject_cast<ZText*>(item->widget());
        return text ? text->text().toStdString() : "something else";
    }
    static std::vector<std::string> WordsOf(QLayout* layout) {
        std::vector<std::string> words;
        for (int i = 0; i < layout->count(); ++i) {
            words.push_back(WordsAt(layout, i));
        }
        return words;
    }

    static std::string Key(int type) { return "AdLastShowTimeStampKey_2_42_77_" + std::to_string(type); }

    std::unique_ptr<CZRAdModelList> list;
    CZRAdBottomPopupDeveloperView view{nullptr};
};

TEST_F(AdDeveloperViewTest, HasItsSlotsInTheFixedOrder) {
    EXPECT_THAT(MethodsOf(CZRAdBottomPopupDeveloperView::staticMetaObject),
                ElementsAre("slot OnClearLastShowTimestamp()", "slot OnUpdateText()", "slot OnUpdateCacheDataText()",
                            "slot OnGenerateCacheData()"));
    for (int i = view.metaObject()->methodOffset(); i < view.metaObject()->methodCount(); ++i) {
        EXPECT_EQ(view.metaObject()->method(i).access(), QMetaMethod::Protected);
    }
}

TEST_F(AdDeveloperViewTest, ItsParentIsAWidgetOrNone) {
    EXPECT_EQ(view.parent(), nullptr);
    QObject object;
    EXPECT_EQ(CZRAdBottomPopupDeveloperView(&object).parent(), nullptr);
    QWidget widget;
    auto* child = new CZRAdBottomPopupDeveloperView(&widget);
    EXPECT_EQ(child->parentWidget(), &widget);
}

TEST_F(AdDeveloperViewTest, ThePanelStandsAsItIsDrawnUp) {
    EXPECT_EQ(view.minimumWidth(), 1500);
    EXPECT_EQ(view.maximumWidth(), 1500);
    EXPECT_EQ(view.layout()->spacing(), 5);
    std::vector<std::string> words;
    for (QWidget* child : view.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (auto* text = qobject_cast<ZText*>(child)) {
            words.push_back(text->text().toStdString());
        } else if (auto* button = qobject_cast<ZButton*>(child)) {
            words.push_back("[" + button->text().toStdString() + "]");
        }
    }
    EXPECT_THAT(words,
                UnorderedElementsAre("******************************* 广告 - 底部弹窗 *******************************",
                                     "[刷新（调试数据需要手动刷新）]", "上次展示时间：", kNothing, "[清除]",
                                     "缓存广告数据：", kNothing, "[生成测试数据]"));
    const int update = Find<ZButton>("UpdateText")->y();
    const int first = Find<ZButton>("ClearLastShowTimestamp")->y();
    const int second = Find<ZButton>("GenerateCacheData")->y();
    EXPECT_EQ(view.objectName(), QStringLiteral("CZRAdBottomPopupDeveloperView"));
    EXPECT_EQ(Find<ZButton>("UpdateText")->x(), view.layout()->itemAt(0)->geometry().x());
    EXPECT_LT(0, update);
    EXPECT_LT(update, first);
    EXPECT_LT(first, second);
    EXPECT_LT(Find<ZText>("LastShowText")->x(), Find<ZButton>("ClearLastShowTimestamp")->x());
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdDeveloperViewTest, EachRowHasItsLabelItsTextAndItsButtonInThisOrder) {
    QLayout* layout = view.layout();
    EXPECT_THAT(WordsOf(layout),
                ElementsAre("******************************* 广告 - 底部弹窗 *******************************",
                            "[刷新（调试数据需要手动刷新）]", "a row", "a row", "a stretch"));
    EXPECT_THAT(WordsOf(layout->itemAt(2)->layout()), ElementsAre("上次展示时间：", kNothing, "[清除]", "a stretch"));
    EXPECT_THAT(WordsOf(layout->itemAt(3)->layout()),
                ElementsAre("缓存广告数据：", kNothing, "[生成测试数据]", "a stretch"));
    EXPECT_EQ(layout->itemAt(2)->layout()->itemAt(1)->widget(), Find<ZText>("LastShowText"));
    EXPECT_EQ(layout->itemAt(3)->layout()->itemAt(1)->widget(), Find<ZText>("CacheDataText"));
    EXPECT_TRUE(dynamic_cast<QVBoxLayout*>(layout));
}

TEST_F(AdDeveloperViewTest, RoomToSpareIsBelowAndAtTheRightOfTheRows) {
    Press("GenerateCacheData");
    view.resize(1500, 2000);
    time.Settle();

    for (const char* button : {"ClearLastShowTimestamp", "GenerateCacheData"}) {
        EXPECT_LT(Find<ZButton>(button)->geometry().right(), 1000) << button;
        EXPECT_LT(Find<ZButton>(button)->geometry().bottom(), 500) << button;
    }
}

TEST_F(AdDeveloperViewTest, BothTextsWrapWhatIsLongerThanTheirRow) {
    view.resize(1500, 900);
    time.Settle();
    const int before = Find<ZText>("LastShowText")->height();
    for (const char* name : {"LastShowText", "CacheDataText"}) {
        auto* text = Find<ZText>(name);
        text->setText(QStringLiteral("words ").repeated(400));
        time.Settle();
        EXPECT_TRUE(text->hasHeightForWidth()) << name;
        EXPECT_GT(text->height(), 2 * before) << name;
        EXPECT_LE(text->geometry().right(), 1500) << name;
    }
    EXPECT_EQ(view.width(), 1500);
}

TEST_F(AdDeveloperViewTest, BothTextsReportNothingFromTheStartWhenNothingIsThere) {
    EXPECT_EQ(LastShow(), kNothing);
    EXPECT_EQ(CacheData(), kNothing);

    Press("UpdateText");

    EXPECT_EQ(LastShow(), kNothing);
    EXPECT_EQ(CacheData(), kNothing);
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AdDeveloperViewTest, WithoutWhoeverHoldsTheListThereIsNone) {
    view.SetGetModelCallback(nullptr);
    Press("UpdateText");
    EXPECT_EQ(CacheData(), kNothing);
}

// Last-show times

TEST_F(AdDeveloperViewTest, TheKeyIsThatOfThePopupsSlot) {
    EXPECT_EQ(view.GetAdLastShowTimeStampKey(2, 42, 1).toStdString(), kLastShow);
    EXPECT_EQ(view.GetAdLastShowTimeStampKey(-3, 7, 12).toStdString(), "AdLastShowTimeStampKey_-3_7_77_12");

    account.Set(std::numeric_limits<uint64_t>::max());
    EXPECT_EQ(view.GetAdLastShowTimeStampKey(2, 42, 1).toStdString(),
              "AdLastShowTimeStampKey_2_42_18446744073709551615_1");
}

TEST_F(AdDeveloperViewTest, TheTimesOfTenIntervalTypesAreListedInLocalTime) {
    store.SetInt64(Key(0), 1'700'000'000);
    store.SetInt64(Key(3), 0);
    store.SetInt64(Key(9), 1);
    store.SetInt64(Key(10), 5);
    store.SetInt64("AdLastShowTimeStampKey_2_42_78_1", 5);
    const std::string rows =
        "ShowIntervalType:0, time:2023-11-14 22:13:20\nShowIntervalType:9, time:1970-01-01 00:00:01\n";
    EXPECT_EQ(view.GetAdBottomPopupLastShowTimeStamp().toStdString(), rows);

    view.UpdateLastShowTimestampText();
    EXPECT_EQ(LastShow(), rows);

    qputenv("TZ", "UTC-8");
    tzset();
    EXPECT_THAT(view.GetAdBottomPopupLastShowTimeStamp().toStdString(),
                StartsWith("ShowIntervalType:0, time:2023-11-15 06:13:20\n"));
    qputenv("TZ", "UTC");
    tzset();
}

TEST_F(AdDeveloperViewTest, ATimeAheadOfTheBeginningIsATimeToo) {
    store.SetInt64(Key(1), -1);
    EXPECT_EQ(view.GetAdBottomPopupLastShowTimeStamp().toStdString(), "ShowIntervalType:1, time:1969-12-31 23:59:59\n");
}

TEST_F(AdDeveloperViewTest, ClearingWritesNothingUnderTheTenKeysAndShowsIt) {
    store.SetInt64(Key(1), 5);
    Press("UpdateText");
    ASSERT_NE(LastShow(), kNothing);

    Press("ClearLastShowTimestamp");

    EXPECT_EQ(LastShow(), kNothing);
    std::vector<StoreSave> expected;
    for (int type = 0; type < 10; ++type) {
        expected.push_back({std::nullopt, Key(type), "0"});
    }
    EXPECT_EQ(store.Saves(), expected);
}

TEST_F(AdDeveloperViewTest, NothingRefreshesByItself) {
    Press("UpdateText");
    store.SetInt64(Key(1), 5);
    list.reset(ListOf(PopupData()));
    time.Advance(1h);
    EXPECT_EQ(LastShow(), kNothing);
    EXPECT_EQ(CacheData(), kNothing);

    Press("UpdateText");

    EXPECT_EQ(LastShow(), "ShowIntervalType:1, time:1970-01-01 00:00:05\n");
    EXPECT_NE(CacheData(), kNothing);
}

// The list

TEST_F(AdDeveloperViewTest, AListWithoutAdsIsShownByItsRules) {
    list.reset(ListOf(PopupData()));

    Press("UpdateText");

    EXPECT_EQ(CacheData(), kAdData);
}

TEST_F(AdDeveloperViewTest, TypeAndPositionAreTheListsWhenItIsOfAnotherSlot) {
    list.reset(ListOf(BannerData()));

    Press("UpdateText");

    EXPECT_THAT(CacheData(), StartsWith("ad_type: 3\nad_position: 7\n"));
}

TEST_F(AdDeveloperViewTest, AListWithoutTheArrayOfAdsIsShownByItsRules) {
    Json::Value data = PopupData();
    data.removeMember("ad");
    list.reset(ListOf(data));
    ASSERT_EQ(list->GetAdList(), nullptr);

    Press("UpdateText");

    EXPECT_EQ(CacheData(), kAdData);
}

TEST_F(AdDeveloperViewTest, AFirstAdThatIsNoPopupIsPassedOver) {
    list.reset(ListOf(PopupData()));
    auto* plain = new CZRAdModel(list.get());
    ASSERT_TRUE(plain->Decode(PopupAd("plain")));
    for (CZRAdModel* first : {plain, static_cast<CZRAdModel*>(nullptr)}) {
        *list->GetAdList() = {first};

        Press("UpdateText");

        EXPECT_EQ(CacheData(), kAdData);
    }
}

TEST_F(AdDeveloperViewTest, APopupWithoutACardsContentIsShownWithoutIt) {
    list.reset(ListOf(PopupData()));
    auto* half = new CZRAdPopupModel(list.get());
    ASSERT_TRUE(half->CZRAdModel::Decode(PopupAd("half")));
    *list->GetAdList() = {half};

    Press("UpdateText");

    EXPECT_EQ(CacheData(), kAdData + "ad_id: half\nstart_time: 100\nend_time: 300\nexpire_time: 400\npopup_type: 0\n");
}

TEST_F(AdDeveloperViewTest, TheFirstAdIsShownAndNoOther) {
    Json::Value data = PopupData();
    data["ad"].append(PopupAd("1"));
    data["ad"].append(PopupAd("2"));
    list.reset(ListOf(data));

    Press("UpdateText");

    EXPECT_EQ(CacheData(), kAdData +
                               "ad_id: 1\nstart_time: 100\nend_time: 300\nexpire_time: 400\npopup_type: 2\n"
                               "schema: https://www.test/autumn\nimg: https://pictures.test/card.png");
}

TEST_F(AdDeveloperViewTest, TheSampleGoesToTheSlotAndIsShown) {
    Press("GenerateCacheData");

    ASSERT_TRUE(list);
    EXPECT_EQ(list->parent(), nullptr);
    EXPECT_TRUE(list->GetEnableClose());
    CZRAdPopupModel* ad = First(list.get());
    ASSERT_TRUE(ad);
    QList<int> areas;
    for (const ZRAdShowAreaType area : *ad->GetShowAreas()) {
        areas.append(area);
    }
    EXPECT_THAT(areas, ElementsAre(508, 500, 501, 502, 503, 504));
    EXPECT_EQ(ad->GetPushId(), QString());
    EXPECT_THAT(ad->GetBottomPopup()->GetSchema().toStdString(), StartsWith("https://"));
    EXPECT_THAT(ad->GetBottomPopup()->GetImage().toStdString(), StartsWith("https://"));
    EXPECT_EQ(CacheData(),
              "ad_type: 2\nad_position: 42\nshow_interval_type: 1\nshow_interval: 3600\nshow_duration: 10\n"
              "ad_id: 18088\nstart_time: 1674144000\nend_time: 1876822400\nexpire_time: 1875158131\npopup_type: 2\n"
              "schema: " +
                  ad->GetBottomPopup()->GetSchema().toStdString() +
                  "\nimg: " + ad->GetBottomPopup()->GetImage().toStdString());
    EXPECT_EQ(LastShow(), kNothing);
}

TEST_F(AdDeveloperViewTest, ASampleThatNobodyTakesIsNotMade) {
    view.SetSetModelCallback(nullptr);

    Press("GenerateCacheData");

    EXPECT_FALSE(list);
    EXPECT_EQ(CacheData(), kNothing);
}

TEST_F(AdDeveloperViewTest, WhoeverTakesTheSampleMayDeleteThePanelAtOnce) {
    QPointer<CZRAdBottomPopupDeveloperView> panel = new CZRAdBottomPopupDeveloperView(nullptr);
    std::vector<std::string> calls;
    panel->SetGetModelCallback([&] {
        calls.emplace_back("asked");
        return nullptr;
    });
    panel->SetSetModelCallback([panel, &calls](CZRAdModelList* taken) {
        delete panel;
        calls.push_back("given " + std::to_string(taken->GetAdPosition()));
        delete taken;
    });
    panel->show();
    time.Settle();

    Click(panel->findChild<ZButton*>(QStringLiteral("GenerateCacheData")));

    EXPECT_TRUE(panel.isNull());
    EXPECT_THAT(calls, ElementsAre("given 42"));
}

TEST_F(AdDeveloperViewTest, WhoeverIsAskedForTheListMayDeleteThePanelAtOnce) {
    for (const char* button : {"UpdateText", "GenerateCacheData"}) {
        QPointer<CZRAdBottomPopupDeveloperView> panel = new CZRAdBottomPopupDeveloperView(nullptr);
        const auto kept = std::make_unique<CZRAdModelList>(nullptr);
        int asked = 0;
        panel->SetGetModelCallback([panel, &asked, &kept] {
            delete panel;
            ++asked;
            return kept.get();
        });
        panel->SetSetModelCallback([](CZRAdModelList* taken) { delete taken; });
        panel->show();
        time.Settle();

        Click(panel->findChild<ZButton*>(QString::fromLatin1(button)));

        EXPECT_TRUE(panel.isNull()) << button;
        EXPECT_EQ(asked, 1) << button;
    }
}

TEST_F(AdDeveloperViewTest, ACallbackMayReplaceItself) {
    std::vector<std::string> calls;
    view.SetGetModelCallback([this, &calls, word = std::string("the first who is asked, in many words")] {
        view.SetGetModelCallback(nullptr);
        calls.push_back(word);
        return nullptr;
    });
    view.SetSetModelCallback(
        [this, &calls, word = std::string("the first who takes, in many words")](CZRAdModelList* taken) {
            view.SetSetModelCallback(nullptr);
            calls.push_back(word);
            delete taken;
        });

    Press("GenerateCacheData");
    Press("GenerateCacheData");

    EXPECT_THAT(calls, ElementsAre("the first who takes, in many words", "the first who is asked, in many words"));
    EXPECT_EQ(CacheData(), kNothing);
}

// By way of the manager

TEST_F(AdDeveloperViewTest, TheManagersPanelShowsAndFillsThePopupsSlot) {
    time.SetServerTime(1'700'000'000'000);
    Start();
    const std::unique_ptr<QWidget> panel(manager->GetAdBottomPopupDeveloperView());
    EXPECT_TRUE(qobject_cast<CZRAdBottomPopupDeveloperView*>(panel.get()));
    EXPECT_EQ(panel->parent(), nullptr);
    panel->show();
    time.Settle();

    Click(panel->findChild<ZButton*>(QStringLiteral("GenerateCacheData")));

    ASSERT_TRUE(Popup()->GetAdModelList());
    EXPECT_EQ(First(Popup()->GetAdModelList())->GetAdId(), QStringLiteral("18088"));
    EXPECT_THAT(panel->findChild<ZText*>(QStringLiteral("CacheDataText"))->text().toStdString(),
                HasSubstr("ad_id: 18088\n"));
    Popup()->TryShowAdPopup();  // the sample is good for a try without a server
    EXPECT_TRUE(Card());
    pictures.Forget();
}

TEST_F(AdDeveloperViewTest, APanelThatOutlivesTheManagerHasNothingAndTakesNothing) {
    Start();
    const std::unique_ptr<QWidget> panel(manager->GetAdBottomPopupDeveloperView());
    panel->show();
    time.Settle();
    Click(panel->findChild<ZButton*>(QStringLiteral("GenerateCacheData")));
    auto* text = panel->findChild<ZText*>(QStringLiteral("CacheDataText"));
    ASSERT_THAT(text->text().toStdString(), HasSubstr("ad_id: 18088\n"));

    manager.reset();
    Click(panel->findChild<ZButton*>(QStringLiteral("UpdateText")));
    EXPECT_EQ(text->text().toStdString(), kNothing);
    Click(panel->findChild<ZButton*>(QStringLiteral("GenerateCacheData")));

    EXPECT_EQ(text->text().toStdString(), kNothing);
}

TEST_F(AdDeveloperViewTest, ManagersPanelShowsTheWaitingListAndTheLastShowWhenItOpens) {
    store.SetInt64(Key(1), 5);
    StartAndWait();

    const std::unique_ptr<QWidget> panel(manager->GetAdBottomPopupDeveloperView());

    EXPECT_EQ(panel->findChild<ZText*>(QStringLiteral("LastShowText"))->text().toStdString(),
              "ShowIntervalType:1, time:1970-01-01 00:00:05\n");
    EXPECT_THAT(panel->findChild<ZText*>(QStringLiteral("CacheDataText"))->text().toStdString(),
                HasSubstr("ad_id: 18088\n"));
}

TEST_F(AdDeveloperViewTest, EachPanelIsANewOne) {
    const std::unique_ptr<QWidget> first(manager->GetAdBottomPopupDeveloperView());
    const std::unique_ptr<QWidget> second(manager->GetAdBottomPopupDeveloperView());
    EXPECT_NE(first, second);
}

TEST_F(AdDeveloperViewTest, WithoutASlotThePanelHasNothingAndTakesNothing) {
    const std::unique_ptr<QWidget> panel(manager->GetAdBottomPopupDeveloperView());
    panel->show();
    time.Settle();

    Click(panel->findChild<ZButton*>(QStringLiteral("GenerateCacheData")));

    EXPECT_EQ(panel->findChild<ZText*>(QStringLiteral("CacheDataText"))->text().toStdString(), kNothing);
}

}  // namespace
