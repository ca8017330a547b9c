#pragma once

#include <QSize>
#include <functional>

#include "Ad/Controller/ZRAdController.h"

class QWidget;

/// Controls the banners at one position. It requests the ads and creates a widget from the answer. The caller owns the
/// widget.
class CZRAdBannerController : public CZRAdController {
    Q_OBJECT

public:
    CZRAdBannerController(QObject* parent, int adPosition);
    ~CZRAdBannerController() override;

    /// `callback` replaces that of an earlier caller and receives the widget later. Without an ad it receives null in
    /// internal builds. It does not run if the request or its answer is refused. With `useCheck` only the ads in
    /// `adIds` are requested. Sizes are in pixels.
    /// The widget keeps its ads and reports until its deletion, also after a logout or a change of user or language.
    void GetAdBannerAsync(QSize size, std::function<void(QWidget*)> callback, int topNonClickableAreaHeight,
                          bool useCheck, QList<QString> adIds);

    void ShowAd(CZRAdModelList* list) override;

public Q_SLOTS:
    void OnCloseAd(QString adId);
    void OnExposeAdStart(QString adId);
    void OnExposeAdEnd(QString adId);

protected:
    bool CheckAdIsValid(CZRAdModelList* list) override;

private:
    QWidget* NewBanner(CZRAdModelList& list);
    void Complete(QWidget* banner);

    std::function<void(QWidget*)> m_fnComplete;
    QSize m_size{-1, -1};
    int m_topNonClickableAreaHeight = 0;
};
