#pragma once

#include "Ad/Model/ZRAdModel.h"

/// The card of a bottom popup.
class CZRAdBottomPopupModel : public QObject {
    Q_OBJECT

public:
    explicit CZRAdBottomPopupModel(QObject* parent);
    ~CZRAdBottomPopupModel() override;

    bool Decode(Json::Value const& value);

    QString GetImage() { return m_image; }    // a URL
    QString GetSchema() { return m_schema; }  // where a click leads

private:
    QString m_image;
    QString m_schema;
};

/// An ad of a popup.
class CZRAdPopupModel : public CZRAdModel {
    Q_OBJECT

public:
    explicit CZRAdPopupModel(QObject* parent);
    ~CZRAdPopupModel() override;

    bool Decode(Json::Value const& value);

    int GetPopupType() { return m_popupType; }
    QList<ZRAdShowAreaType>* GetShowAreas() { return m_showAreas.get(); }  // may be null
    CZRAdBottomPopupModel* GetBottomPopup() { return m_bottomPopup; }      // may be null

private:
    int m_popupType = 0;
    std::unique_ptr<QList<ZRAdShowAreaType>> m_showAreas;
    CZRAdBottomPopupModel* m_bottomPopup = nullptr;
};
