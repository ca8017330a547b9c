#pragma once

#include <json/value.h>

#include <QList>
#include <QObject>
#include <QString>
#include <memory>

#include "Ad/Model/ZRAdTypes.h"

/// An ad server's answer as objects. Each `Decode` gives true when the object is complete; false when it must not
/// be used, which it has logged. Nothing is thrown, whatever the JSON is. Times are seconds of the server's clock.

/// The part of an ad that all types have.
class CZRAdModel : public QObject {
    Q_OBJECT

public:
    explicit CZRAdModel(QObject* parent);
    ~CZRAdModel() override;

    bool Decode(Json::Value const& value);

    QString GetAdId() { return m_adId; }
    qint64 GetStartTime() { return m_startTime; }
    qint64 GetEndTime() { return m_endTime; }
    qint64 GetExpireTime() { return m_expireTime; }
    QString GetPushId() { return m_pushId; }

private:
    QString m_adId;
    QString m_name;
    qint64 m_startTime = 0;
    qint64 m_endTime = 0;
    qint64 m_expireTime = 0;
    QString m_pushId;
};

/// The layout of a banner's slot.
class CZRAdBannerPosition : public QObject {
    Q_OBJECT

public:
    explicit CZRAdBannerPosition(QObject* parent);
    ~CZRAdBannerPosition() override;

    bool Decode(Json::Value const& value);

    int GetBannerType() { return m_bannerType; }
    int GetCarouselInterval() { return m_carouselInterval; }
    QString GetMaterialScale() { return m_materialScale; }
    QString GetMaterialCorner() { return m_materialCorner; }

private:
    int m_bannerType = 0;
    int m_carouselInterval = 0;
    QString m_materialScale;
    QString m_materialCorner;
};

/// The ads of one slot, and the rules of showing them. The ads are children: CZRAdPopupModel in a list of popups,
/// CZRAdBannerModel in one of banners; a list of another type is empty, or null without the array.
class CZRAdModelList : public QObject {
    Q_OBJECT

public:
    explicit CZRAdModelList(QObject* parent);
    ~CZRAdModelList() override;

    bool Decode(Json::Value const& value);

    ZRAdType GetAdType() { return m_adType; }
    int GetAdPosition() { return m_adPosition; }
    int GetShowDuration() { return m_showDuration; }     // seconds
    qint64 GetShowInterval() { return m_showInterval; }  // seconds
    int GetShowIntervalType() { return m_showIntervalType; }
    bool GetEnableClose() { return m_enableClose; }
    CZRAdBannerPosition* GetBannerPosition() { return m_bannerPosition; }  // may be null
    QList<CZRAdModel*>* GetAdList() { return m_adList.get(); }             // may be null

private:
    bool DecodeAds(Json::Value const& ads);

    ZRAdType m_adType{};
    int m_adPosition = 0;
    int m_showDuration = 0;
    qint64 m_showInterval = 0;
    int m_showIntervalType = 0;
    bool m_enableClose = false;
    CZRAdBannerPosition* m_bannerPosition = nullptr;
    std::unique_ptr<QList<CZRAdModel*>> m_adList;
};

/// The whole answer.
class CZRAdResponseModel : public QObject {
    Q_OBJECT

public:
    explicit CZRAdResponseModel(QObject* parent);
    ~CZRAdResponseModel() override;

    bool Decode(Json::Value const& value);

    int GetCode() { return m_code; }
    QString GetMessage() { return m_message; }

    /// After a good decode the list has no parent, as it outlives the answer: who takes it owns it.
    CZRAdModelList* GetData() { return m_data; }

private:
    int m_code = 0;
    QString m_message;
    CZRAdModelList* m_data = nullptr;
};
