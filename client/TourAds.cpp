// The tour's step through the ads.
#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QSet>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>

#include "AdBannerSlot.h"
#include "Composition.h"
#include "Tour.h"

namespace {

enum EnTab { kTabSession, kTabAds = 2, kTabTraffic };
enum EnTraffic { kTrafficChannel, kTrafficHttp };
enum EnPush { kPushChange, kPushCheck, kPushNew };
enum EnColumn { kColumnPath = 2, kColumnWhat = 4 };
constexpr int kPictureColors = 16;

/// Of a class of the module, which is mapped and not linked; null while none is seen.
QWidget* SeenOfClass(const QWidget& among, const char* name) {
    const auto widgets = among.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (widget->inherits(name) && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

/// Whether there is more to see than a plain surface.
bool HasPicture(QWidget& widget) {
    const QImage look = widget.grab().toImage();
    QSet<QRgb> colors;
    for (int x = 0; x < look.width() && colors.size() < kPictureColors; ++x) {
        colors.insert(look.pixel(x, look.height() / 2));
    }
    return colors.size() >= kPictureColors;
}

}  // namespace

QWidget* CTour::PopupCard() const {
    return SeenOfClass(m_window, "CZRAdBottomPopupView");
}

QWidget* CTour::BannerAt(int position) const {
    return SeenOfClass(*Find<CAdBannerSlot>(QStringLiteral("AdBannerSlot%1").arg(position)), "CZRAdBannerView");
}

// The card stands beside the navigation, however wide that is, and at the window's lower edge.
bool CTour::SeeCardBeside(int navigationWidth) {
    const auto* navigation = Find<QWidget>(QStringLiteral("Navigation"));
    return WaitFor(QStringLiteral("the popup beside a navigation of %1 pixels").arg(navigationWidth),
                   [this, navigation, navigationWidth] {
                       const QWidget* card = PopupCard();
                       const int gap = card ? card->x() - navigation->geometry().right() : 0;
                       return card && navigation->width() == navigationWidth && gap > 0 && gap < 20 &&
                              card->geometry().bottom() < m_window.height() &&
                              card->geometry().top() > m_window.height() / 2;
                   });
}

bool CTour::SeeBanner(const char* page, int position) {
    Find<QAbstractButton>(QStringLiteral("NavigationTab_") + QString::fromLatin1(page))->click();
    return WaitFor(QStringLiteral("the banner at position %1").arg(position),
                   [this, position] {
                       QWidget* banner = BannerAt(position);
                       return banner && HasPicture(*banner);
                   }) &&
           TakePicture((QByteArray("banner-") + page).constData());
}

// Pictures stand among the calls over HTTP.
bool CTour::SeePictureFetched() {
    auto* kinds = Find<QTabWidget>(QStringLiteral("TrafficTabs"));
    auto* table = Find<QTableView>(QStringLiteral("HttpTable"));
    const auto fetched = [table] {
        const QAbstractItemModel& calls = *table->model();
        int row = calls.rowCount() - 1;
        while (row >= 0 && (!calls.index(row, kColumnPath).data().toString().startsWith(QLatin1String("/pictures/")) ||
                            calls.index(row, kColumnWhat).data().toString() != QLatin1String("200"))) {
            --row;
        }
        return row;
    };
    OpenTab(kTabTraffic);
    kinds->setCurrentIndex(kTrafficHttp);
    if (!WaitFor(QStringLiteral("a picture among the calls"), [&fetched] { return fetched() >= 0; })) {
        return false;
    }
    table->selectRow(fetched());
    const bool taken = TakePicture("ads-pictures");
    kinds->setCurrentIndex(kTrafficChannel);
    return taken;
}

// In a window of its own, which takes the focus until it is closed.
bool CTour::SeeAdPanel() {
    Find<QAbstractButton>(QStringLiteral("AdPanelOpen"))->click();
    auto* panel = Find<QWidget>(QStringLiteral("AdPanelWindow"));
    const bool opened = WaitFor(QStringLiteral("the popup's panel"),
                                [panel] { return SeenOfClass(*panel, "CZRAdBottomPopupDeveloperView") != nullptr; });
    // It says nothing before it is asked.
    auto* update = panel->findChild<QAbstractButton*>(QStringLiteral("UpdateText"));
    if (opened && update) {
        update->click();
    }
    const bool taken = opened && update && TakePicture("ads-panel", *panel);
    panel->close();
    return taken &&
           WaitFor(QStringLiteral("the active window, behind the panel"), [this] { return m_window.isActiveWindow(); });
}

// Of two pushes in a row the second has the module ask too early, whatever was asked before.
bool CTour::SeeAdRefused() {
    auto* tabs = Find<QTabWidget>(QStringLiteral("AdTabs"));
    auto* said = Find<QLabel>(QStringLiteral("AdPushMessage"));
    auto* detail = Find<QTreeWidget>(QStringLiteral("AdDetail"));
    tabs->setCurrentWidget(Find<QWidget>(QStringLiteral("AdPushPanel")));
    Find<QComboBox>(QStringLiteral("AdPush"))->setCurrentIndex(kPushNew);
    for (int push = 0; push < 2; ++push) {
        said->clear();
        Find<QAbstractButton>(QStringLiteral("AdPushSend"))->click();
        if (!WaitFor(QStringLiteral("a push of new ads"), [said] { return !said->text().isEmpty(); })) {
            return false;
        }
    }
    const QString why = QStringLiteral("refused (request): pause between requests");
    const bool taken =
        WaitFor(
            QStringLiteral("the refusal of a request that comes too early"),
            [detail, why] { return !detail->findItems(why, Qt::MatchStartsWith | Qt::MatchRecursive, 1).isEmpty(); }) &&
        TakePicture("ads-refused");
    tabs->setCurrentIndex(0);
    return taken;
}

// The popup comes by itself, with the first login.
bool CTour::SeeAds() {
    if (!WaitFor(QStringLiteral("the active window"), [this] { return m_window.isActiveWindow(); })) {
        return false;
    }
    auto* toggle = Find<QAbstractButton>(QStringLiteral("NavigationToggle"));
    const auto* navigation = Find<QWidget>(QStringLiteral("Navigation"));
    const int wide = navigation->minimumWidth();
    if (!SeeCardBeside(wide) || !TakePicture("popup")) {
        return false;
    }
    const int left = PopupCard()->x();
    toggle->click();
    const bool collapsed = SeeCardBeside(navigation->minimumWidth()) && TakePicture("popup-collapsed");
    const int movedTo = PopupCard() ? PopupCard()->x() : left;
    toggle->click();
    if (!collapsed) {
        return false;
    }
    if (movedTo >= left || !SeeCardBeside(wide)) {
        return Fail(QStringLiteral("the popup did not move with the navigation"));
    }
    if (!SeeBanner("market", 7) || !SeeBanner("alerts", 9)) {
        return false;
    }
    if (PopupCard()) {
        return Fail(QStringLiteral("the popup stayed at another tab"));
    }
    OpenTab(kTabAds);
    const bool taken = TakePicture("ads-workbench") && SeeAdPanel() && SeeAdRefused() && SeePictureFetched();
    OpenTab(kTabSession);
    OpenPage(1);
    if (!taken) {
        return false;
    }
    Tell(QStringLiteral("ads: the popup stood at %1, and at %2 beside the collapsed navigation; banners on two pages")
             .arg(left)
             .arg(movedTo));
    return true;
}
