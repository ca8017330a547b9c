#pragma once

#include <QSize>
#include <functional>

#include "Ad/Controller/ZRAdController.h"

class QWidget;

/// The slot of banners at one position. It asks for the ads and makes a widget of the answer, which belongs to who
/// asked; it keeps no hold on it.
class CZRAdBannerController : public CZRAdController {
    Q_OBJECT

public:
    CZRAdBannerController(QObject* parent, int adPosition);
    ~CZRAdBannerController() override;

    /// `callback` replaces that of an earlier caller, and gets the widget later: null in internal builds where
    /// there is nothing to show, and no call at all where the request or its answer is refused. `adIds` with
    /// `useCheck` are exactly the ads wanted. Sizes in pixels.
    /// The widget keeps its ads and reports until its deletion, also after a logout or another language or user.
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
