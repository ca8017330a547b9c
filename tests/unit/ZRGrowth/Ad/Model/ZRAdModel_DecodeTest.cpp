// Decoding of valid answers: values, order, defaults, and ownership.
#include <gmock/gmock.h>

#include <QPointer>
#include <limits>

#include "Ad/AdSamples.h"
#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class AdDecodeTest : public ScriptedHostTest {
protected:
    bool Decode(const Json::Value& answer) {
        const bool decoded = response.Decode(answer);
        if (response.GetData()) {
            response.GetData()->setParent(&response);
        }
        return decoded;
    }

    CZRAdModelList& List() { return *response.GetData(); }

    CZRAdResponseModel response{nullptr};
};

TEST_F(AdDecodeTest, APopupIsReadWhole) {
    ASSERT_TRUE(Decode(PopupAnswer()));

    EXPECT_EQ(response.GetCode(), 0);
    EXPECT_EQ(response.GetMessage(), QStringLiteral("ok"));
    EXPECT_EQ(List().GetAdType(), ZRAdTypePopup);
    EXPECT_EQ(List().GetAdPosition(), 42);
    EXPECT_EQ(List().GetShowDuration(), 15);
    EXPECT_EQ(List().GetShowInterval(), 3600);
    EXPECT_EQ(List().GetShowIntervalType(), 1);
    EXPECT_TRUE(List().GetEnableClose());
    EXPECT_EQ(List().GetBannerPosition(), nullptr);
    ASSERT_THAT(*List().GetAdList(), SizeIs(1));
    auto* ad = qobject_cast<CZRAdPopupModel*>(List().GetAdList()->first());
    ASSERT_TRUE(ad);
    EXPECT_EQ(ad->GetAdId(), QStringLiteral("18088"));
    EXPECT_EQ(ad->GetStartTime(), 100);
    EXPECT_EQ(ad->GetEndTime(), 300);
    EXPECT_EQ(ad->GetExpireTime(), 400);
    EXPECT_EQ(ad->GetPushId(), QStringLiteral("p-1"));
    EXPECT_EQ(ad->GetPopupType(), 2);
    EXPECT_THAT(*ad->GetShowAreas(), ElementsAre(ZRAdShowAreaType(500), ZRAdShowAreaType(501)));
    EXPECT_EQ(ad->GetBottomPopup()->GetImage(), QStringLiteral("https://pictures.test/card.png"));
    EXPECT_EQ(ad->GetBottomPopup()->GetSchema(), QStringLiteral("https://www.test/autumn"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, ABannerIsReadWhole) {
    ASSERT_TRUE(Decode(BannerAnswer()));

    EXPECT_EQ(List().GetAdType(), ZRAdTypeBanner);
    EXPECT_EQ(List().GetAdPosition(), 7);
    EXPECT_FALSE(List().GetEnableClose());
    ASSERT_TRUE(List().GetBannerPosition());
    EXPECT_EQ(List().GetBannerPosition()->GetBannerType(), 2);
    EXPECT_EQ(List().GetBannerPosition()->GetCarouselInterval(), 5);
    EXPECT_EQ(List().GetBannerPosition()->GetMaterialScale(), QStringLiteral("6:1"));
    EXPECT_EQ(List().GetBannerPosition()->GetMaterialCorner(), QStringLiteral("8"));
    auto* ad = qobject_cast<CZRAdBannerModel*>(List().GetAdList()->first());
    ASSERT_TRUE(ad);
    EXPECT_EQ(ad->GetImage(), QStringLiteral("https://pictures.test/strip.png"));
    EXPECT_EQ(ad->GetSchema(), QStringLiteral("zrclient://page/news"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, AdsKeepTheServersOrderAndTheirDuplicates) {
    Json::Value data = BannerData();
    for (const char* id : {"3", "1", "2", "1"}) {
        data["ad"].append(BannerAd(id));
    }

    ASSERT_TRUE(Decode(AnswerOf(data)));

    QStringList ids;
    for (CZRAdModel* ad : qAsConst(*List().GetAdList())) {
        ids.append(ad->GetAdId());
    }
    EXPECT_EQ(ids.join(QLatin1Char(' ')), QStringLiteral("3 1 2 1"));
}

TEST_F(AdDecodeTest, WithoutTheKeyThereIsNoListOfAds) {
    for (const char* ads : {"null", "{}", "5", "\"x\""}) {
        CZRAdModelList list(nullptr);
        Json::Value data = BannerData();
        data["ad"] = JsonOf(ads);
        EXPECT_TRUE(list.Decode(data)) << ads;
        EXPECT_EQ(list.GetAdList(), nullptr) << ads;
    }
    Json::Value data = BannerData();
    data.removeMember("ad");
    ASSERT_TRUE(Decode(AnswerOf(data)));
    EXPECT_EQ(List().GetAdList(), nullptr);
}

TEST_F(AdDecodeTest, AnEmptyArrayIsAnEmptyList) {
    ASSERT_TRUE(Decode(AnswerOf(BannerData())));

    ASSERT_TRUE(List().GetAdList());
    EXPECT_THAT(*List().GetAdList(), IsEmpty());
}

TEST_F(AdDecodeTest, AdsOfAnotherTypeAreSkippedWithoutAWord) {
    Json::Value data = BannerData();
    data["ad_type"] = 7;
    data["ad"] = JsonOf("[{}, {\"x\": 1}, {}]");

    ASSERT_TRUE(Decode(AnswerOf(data)));

    EXPECT_EQ(List().GetAdType(), ZRAdType(7));
    EXPECT_THAT(*List().GetAdList(), IsEmpty());
    EXPECT_THAT(List().findChildren<CZRAdModel*>(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, ABannerNeedsNoneOfThePopupsThreeRules) {
    ASSERT_TRUE(Decode(BannerAnswer()));

    EXPECT_EQ(List().GetShowDuration(), 0);
    EXPECT_EQ(List().GetShowInterval(), 0);
    EXPECT_EQ(List().GetShowIntervalType(), 0);
}

TEST_F(AdDecodeTest, AListOfAnotherTypeTakesThePopupsRulesWhereTheyAreGood) {
    for (const int type : {3, 7}) {
        SCOPED_TRACE(type);
        Json::Value data = BannerData();
        data["ad_type"] = type;
        data["show_duration"] = 9;
        data["show_interval"] = "soon";
        data["show_interval_type"] = 4;
        CZRAdModelList mixed(nullptr);
        EXPECT_TRUE(mixed.Decode(data));
        EXPECT_EQ(mixed.GetShowDuration(), 9);
        EXPECT_EQ(mixed.GetShowInterval(), 0);
        EXPECT_EQ(mixed.GetShowIntervalType(), 4);

        data["show_duration"] = true;
        data["show_interval"] = 3600;
        data["show_interval_type"] = 1.5;
        CZRAdModelList other(nullptr);
        EXPECT_TRUE(other.Decode(data));
        EXPECT_EQ(other.GetShowDuration(), 0);
        EXPECT_EQ(other.GetShowInterval(), 3600);
        EXPECT_EQ(other.GetShowIntervalType(), 0);
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, IntervalsAndTimesHave64Bits) {
    constexpr qint64 kLarge = std::numeric_limits<qint64>::max();
    Json::Value data = PopupData();
    data["show_interval"] = Json::Int64(kLarge);
    data["ad"].append(PopupAd());
    data["ad"][0]["end_time"] = Json::Int64(kLarge);
    data["ad"][0]["start_time"] = Json::Int64(std::numeric_limits<qint64>::min());

    ASSERT_TRUE(Decode(AnswerOf(data)));

    EXPECT_EQ(List().GetShowInterval(), kLarge);
    EXPECT_EQ(List().GetAdList()->first()->GetEndTime(), kLarge);
    EXPECT_EQ(List().GetAdList()->first()->GetStartTime(), std::numeric_limits<qint64>::min());
}

TEST_F(AdDecodeTest, AWholeNumberWithAPointIsAnInteger) {
    Json::Value data = BannerData();
    data["ad_position"] = 42.0;

    ASSERT_TRUE(Decode(AnswerOf(data)));

    EXPECT_EQ(List().GetAdPosition(), 42);
}

TEST_F(AdDecodeTest, ABannerPositionThatIsNoObjectIsIgnored) {
    const auto expectNone = [](const Json::Value& data, const char* how) {
        CZRAdModelList list(nullptr);
        EXPECT_TRUE(list.Decode(data)) << how;
        EXPECT_EQ(list.GetBannerPosition(), nullptr) << how;
        EXPECT_THAT(list.findChildren<CZRAdBannerPosition*>(), IsEmpty()) << how;
    };
    Json::Value data = BannerData();
    for (const char* position : {"5", "null", "[]", "[{}]", "\"6:1\"", "true"}) {
        data["banner_position"] = JsonOf(position);
        expectNone(data, position);
    }
    data.removeMember("banner_position");
    expectNone(data, "absent");
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, AListOfAnyTypeKeepsAGoodBannerPosition) {
    for (const int type : {2, 7}) {
        Json::Value data = PopupData();
        data["ad_type"] = type;
        data["banner_position"] = BannerData()["banner_position"];
        CZRAdModelList list(nullptr);

        ASSERT_TRUE(list.Decode(data)) << type;

        ASSERT_TRUE(list.GetBannerPosition()) << type;
        EXPECT_EQ(list.GetBannerPosition()->GetBannerType(), 2) << type;
    }
}

TEST_F(AdDecodeTest, ACarouselIntervalThatIsNo32BitIntegerStaysZero) {
    const auto expectZero = [](const Json::Value& value, const char* how) {
        CZRAdBannerPosition position(nullptr);
        EXPECT_TRUE(position.Decode(value)) << how;
        EXPECT_EQ(position.GetCarouselInterval(), 0) << how;
    };
    Json::Value value = BannerData()["banner_position"];
    for (const char* interval : {"\"5\"", "null", "2147483648", "-2147483649", "1.5", "true", "[]", "{}"}) {
        value["carousel_interval"] = JsonOf(interval);
        expectZero(value, interval);
    }
    value.removeMember("carousel_interval");
    expectZero(value, "missing");
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, OptionalTextsOfAnotherTypeOrWithoutLengthStayEmpty) {
    for (const char* text : {"\"\"", "12", "null", "[]", "{}"}) {
        Json::Value ad = PopupAd();
        ad["push_id"] = JsonOf(text);
        ad["name"] = JsonOf(text);
        CZRAdPopupModel popup(nullptr);
        EXPECT_TRUE(popup.Decode(ad)) << text;
        EXPECT_EQ(popup.GetPushId(), QString()) << text;

        Json::Value answer = PopupAnswer();
        answer["message"] = JsonOf(text);
        CZRAdResponseModel another(nullptr);
        EXPECT_TRUE(another.Decode(answer)) << text;
        another.GetData()->setParent(&another);
        EXPECT_EQ(another.GetMessage(), QString()) << text;
    }
}

TEST_F(AdDecodeTest, AreaZeroIsDroppedAndDuplicatesStay) {
    Json::Value ad = PopupAd();
    ad["popup_ad"]["show_areas"] = JsonOf("[0, 500, 0, 508, 500, -1]");
    CZRAdPopupModel popup(nullptr);

    ASSERT_TRUE(popup.Decode(ad));

    EXPECT_THAT(*popup.GetShowAreas(),
                ElementsAre(ZRAdShowAreaType(500), ZRAdShowAreaType(508), ZRAdShowAreaType(500), ZRAdShowAreaType(-1)));
}

TEST_F(AdDecodeTest, NoAreasAreAnEmptyList) {
    Json::Value ad = PopupAd();
    ad["popup_ad"]["show_areas"] = JsonOf("[]");
    CZRAdPopupModel popup(nullptr);

    ASSERT_TRUE(popup.Decode(ad));

    ASSERT_TRUE(popup.GetShowAreas());
    EXPECT_THAT(*popup.GetShowAreas(), IsEmpty());
}

TEST_F(AdDecodeTest, TextsAreReadAsUtf8WithZeroBytesInThem) {
    Json::Value ad = BannerAd();
    ad["ad_id"] = std::string("a\0b", 3);
    ad["banner_ad"]["img"] = "\xE5\x9B\xBE";
    ad["banner_ad"]["schema"] = "\xFF";
    CZRAdBannerModel banner(nullptr);

    ASSERT_TRUE(banner.Decode(ad));

    EXPECT_EQ(banner.GetAdId(), QString::fromUtf8("a\0b", 3));
    EXPECT_EQ(banner.GetImage(), QString(QChar(0x56FE)));
    EXPECT_EQ(banner.GetSchema(), QString(QChar(QChar::ReplacementCharacter)));
}

TEST_F(AdDecodeTest, AByteOrderMarkIsNoPartOfAText) {
    const std::string mark = "\xEF\xBB\xBF";
    ASSERT_TRUE(QString::fromUtf8(mark.data(), int(mark.size())).isEmpty());
    Json::Value ad = BannerAd(mark + "18089");
    ad["push_id"] = mark;
    CZRAdBannerModel banner(nullptr);

    ASSERT_TRUE(banner.Decode(ad));

    EXPECT_EQ(banner.GetAdId(), QStringLiteral("18089"));
    EXPECT_EQ(banner.GetPushId(), QString());
}

TEST_F(AdDecodeTest, BlanksAreKeptAndATextOfBlanksAloneIsGood) {
    for (const char* text : {" ", " 1 ", "\t1  2\n"}) {
        CZRAdResponseModel answer(nullptr);
        Json::Value data = PopupData();
        data["ad"].append(PopupAd(text));
        data["ad"][0]["push_id"] = text;
        data["ad"][0]["popup_ad"]["bottom_popup"]["img"] = text;
        data["ad"][0]["popup_ad"]["bottom_popup"]["schema"] = text;
        Json::Value whole = AnswerOf(data);
        whole["message"] = text;

        ASSERT_TRUE(answer.Decode(whole));
        const std::unique_ptr<CZRAdModelList> list(answer.GetData());

        EXPECT_EQ(answer.GetMessage(), QLatin1String(text));
        auto* ad = qobject_cast<CZRAdPopupModel*>(list->GetAdList()->first());
        ASSERT_TRUE(ad);
        EXPECT_EQ(ad->GetAdId(), QLatin1String(text));
        EXPECT_EQ(ad->GetPushId(), QLatin1String(text));
        EXPECT_EQ(ad->GetBottomPopup()->GetImage(), QLatin1String(text));
        EXPECT_EQ(ad->GetBottomPopup()->GetSchema(), QLatin1String(text));
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdDecodeTest, NegativeDurationsAndIntervalsAreKept) {
    Json::Value popups = PopupData();
    popups["show_duration"] = -15;
    popups["show_interval"] = -3600;
    popups["show_interval_type"] = -1;
    CZRAdModelList list(nullptr);
    ASSERT_TRUE(list.Decode(popups));
    EXPECT_EQ(list.GetShowDuration(), -15);
    EXPECT_EQ(list.GetShowInterval(), -3600);
    EXPECT_EQ(list.GetShowIntervalType(), -1);

    Json::Value banners = BannerData();
    banners["banner_position"]["carousel_interval"] = -5;
    ASSERT_TRUE(Decode(AnswerOf(banners)));
    EXPECT_EQ(List().GetBannerPosition()->GetCarouselInterval(), -5);
}

TEST_F(AdDecodeTest, AListOfAreasHasAnyLength) {
    Json::Value data = PopupData();
    data["ad"].append(PopupAd());
    Json::Value& areas = data["ad"][0]["popup_ad"]["show_areas"] = Json::arrayValue;
    for (int area = 1; area <= 5'000; ++area) {
        areas.append(area);
    }

    ASSERT_TRUE(Decode(AnswerOf(data)));

    auto* ad = qobject_cast<CZRAdPopupModel*>(List().GetAdList()->first());
    ASSERT_THAT(*ad->GetShowAreas(), SizeIs(5'000));
    EXPECT_EQ(ad->GetShowAreas()->first(), ZRAdShowAreaType(1));
    EXPECT_EQ(ad->GetShowAreas()->last(), ZRAdShowAreaType(5'000));
}

TEST_F(AdDecodeTest, NonZeroCodeWithDataDecodes) {
    Json::Value answer = PopupAnswer();
    answer["code"] = -3;

    ASSERT_TRUE(Decode(answer));

    EXPECT_EQ(response.GetCode(), -3);
}

// Ownership

TEST_F(AdDecodeTest, TheListOutlivesItsAnswerAndItsAdsGoWithIt) {
    QPointer<CZRAdModelList> list;
    QPointer<CZRAdModel> ad;
    QPointer<CZRAdBottomPopupModel> card;
    {
        CZRAdResponseModel passing(nullptr);
        ASSERT_TRUE(passing.Decode(PopupAnswer()));
        list = passing.GetData();
        ad = list->GetAdList()->first();
        card = static_cast<CZRAdPopupModel*>(ad.data())->GetBottomPopup();
        EXPECT_EQ(list->parent(), nullptr);
        EXPECT_EQ(ad->parent(), list);
        EXPECT_EQ(card->parent(), ad);
    }
    ASSERT_TRUE(list);

    delete list;

    EXPECT_FALSE(ad);
    EXPECT_FALSE(card);
}

TEST_F(AdDecodeTest, TheBannersPositionIsTheListsChild) {
    ASSERT_TRUE(Decode(BannerAnswer()));

    EXPECT_EQ(List().GetBannerPosition()->parent(), &List());
}

TEST_F(AdDecodeTest, AListThatFailedGoesWithItsAnswer) {
    QPointer<CZRAdModelList> list;
    {
        CZRAdResponseModel passing(nullptr);
        Json::Value answer = PopupAnswer();
        Json::Value nameless = PopupAd();
        nameless.removeMember("ad_id");
        answer["data"]["ad"].append(nameless);
        ASSERT_FALSE(passing.Decode(answer));
        list = passing.GetData();
        ASSERT_TRUE(list);
        EXPECT_THAT(*list->GetAdList(), SizeIs(1));  // what was read ahead of the failure
        // The ad that failed stays the list's child.
        EXPECT_THAT(list->findChildren<CZRAdModel*>(QString(), Qt::FindDirectChildrenOnly), SizeIs(2));
    }
    EXPECT_FALSE(list);
    log.Forget();
}

TEST_F(AdDecodeTest, APositionThatFailedIsNotTheListsAndACardThatFailedIsItsPopups) {
    CZRAdModelList list(nullptr);
    Json::Value data = BannerData();
    data["banner_position"].removeMember("material_corner");
    EXPECT_FALSE(list.Decode(data));
    EXPECT_EQ(list.GetBannerPosition(), nullptr);
    EXPECT_THAT(list.findChildren<CZRAdBannerPosition*>(), SizeIs(1));  // it goes with the list

    CZRAdPopupModel popup(nullptr);
    Json::Value ad = PopupAd();
    ad["popup_ad"]["bottom_popup"].removeMember("schema");
    EXPECT_FALSE(popup.Decode(ad));
    ASSERT_TRUE(popup.GetBottomPopup());
    EXPECT_EQ(popup.GetBottomPopup()->parent(), &popup);
    EXPECT_EQ(popup.GetBottomPopup()->GetImage(), QStringLiteral("https://pictures.test/card.png"));
    log.Forget();
}

TEST_F(AdDecodeTest, AreasAreThereAsSoonAsTheyAreAnArray) {
    CZRAdPopupModel popup(nullptr);
    Json::Value ad = PopupAd();
    ad["popup_ad"]["show_areas"] = JsonOf(R"([500, "501", 502])");
    EXPECT_FALSE(popup.Decode(ad));
    ASSERT_TRUE(popup.GetShowAreas());
    EXPECT_THAT(*popup.GetShowAreas(), ElementsAre(ZRAdShowAreaType(500)));
    EXPECT_EQ(popup.GetBottomPopup(), nullptr);
    log.Forget();
}

TEST_F(AdDecodeTest, WhatWasNeverDecodedIsEmpty) {
    QObject parent;
    auto* answer = new CZRAdResponseModel(&parent);
    auto* list = new CZRAdModelList(&parent);
    auto* position = new CZRAdBannerPosition(&parent);
    auto* banner = new CZRAdBannerModel(&parent);
    auto* popup = new CZRAdPopupModel(&parent);
    auto* card = new CZRAdBottomPopupModel(&parent);

    EXPECT_THAT(parent.children(), ElementsAre(answer, list, position, banner, popup, card));
    EXPECT_EQ(answer->GetCode(), 0);
    EXPECT_EQ(answer->GetMessage(), QString());
    EXPECT_EQ(answer->GetData(), nullptr);
    EXPECT_EQ(list->GetAdType(), 0);
    EXPECT_EQ(list->GetAdPosition(), 0);
    EXPECT_EQ(list->GetShowDuration(), 0);
    EXPECT_EQ(list->GetShowInterval(), 0);
    EXPECT_EQ(list->GetShowIntervalType(), 0);
    EXPECT_FALSE(list->GetEnableClose());
    EXPECT_EQ(list->GetBannerPosition(), nullptr);
    EXPECT_EQ(list->GetAdList(), nullptr);
    EXPECT_EQ(position->GetBannerType(), 0);
    EXPECT_EQ(position->GetCarouselInterval(), 0);
    EXPECT_EQ(position->GetMaterialScale() + position->GetMaterialCorner(), QString());
    EXPECT_EQ(banner->GetAdId() + banner->GetPushId() + banner->GetImage() + banner->GetSchema(), QString());
    EXPECT_EQ(banner->GetStartTime(), 0);
    EXPECT_EQ(banner->GetEndTime(), 0);
    EXPECT_EQ(banner->GetExpireTime(), 0);
    EXPECT_EQ(popup->GetPopupType(), 0);
    EXPECT_EQ(popup->GetShowAreas(), nullptr);
    EXPECT_EQ(popup->GetBottomPopup(), nullptr);
    EXPECT_EQ(card->GetImage() + card->GetSchema(), QString());
}

TEST_F(AdDecodeTest, TheVocabulariesAreTheServersNumbers) {
    EXPECT_EQ(ZRAdTypePopup, 2);
    EXPECT_EQ(ZRAdTypeBanner, 3);
    EXPECT_EQ(ZRAdApiTypeSearch, 1);
    EXPECT_EQ(ZRAdApiTypeCheck, 2);
    EXPECT_THAT((std::vector<int>{ZRAdCloseTypeAdClicked, ZRAdCloseTypeCloseButton, ZRAdCloseTypeTimeout,
                                  ZRAdCloseTypeTabSwitched, ZRAdCloseTypeLanguageChanged, ZRAdCloseTypeLogin,
                                  ZRAdCloseTypeLogout, ZRAdCloseTypePushOffline}),
                ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    EXPECT_EQ(ZRAdActionTypeClick, 0);
    EXPECT_EQ(ZRAdActionTypeClose, 2);
    EXPECT_EQ(kAdPositionBottomPopup, 42);
}

TEST_F(AdDecodeTest, ModelsHaveNeitherSignalsNorSlotsOfTheirOwn) {
    for (const QMetaObject* meta :
         {&CZRAdResponseModel::staticMetaObject, &CZRAdModelList::staticMetaObject, &CZRAdModel::staticMetaObject,
          &CZRAdBannerPosition::staticMetaObject, &CZRAdBannerModel::staticMetaObject,
          &CZRAdPopupModel::staticMetaObject, &CZRAdBottomPopupModel::staticMetaObject}) {
        EXPECT_EQ(meta->methodCount(), QObject::staticMetaObject.methodCount()) << meta->className();
        EXPECT_EQ(meta->propertyCount(), QObject::staticMetaObject.propertyCount()) << meta->className();
    }
}

}  // namespace
