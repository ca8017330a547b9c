#pragma once

#include "Ad/Model/ZRAdModel.h"

/// An ad of a banner.
class CZRAdBannerModel : public CZRAdModel {
    Q_OBJECT

public:
    explicit CZRAdBannerModel(QObject* parent);
    ~CZRAdBannerModel() override;

    bool Decode(Json::Value const& value);

    QString GetImage() { return m_image; }    // a URL
    QString GetSchema() { return m_schema; }  // where a click leads

private:
    QString m_image;
    QString m_schema;
};
