#include "AdPanelWindow.h"

#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "Ads.h"
#include "Translation.h"

namespace {

constexpr QSize kSize(1540, 420);
const QString kName = QStringLiteral("AdPanelWindow");

QWidget* NewContent(QWidget* parent) {
    QWidget* panel = CAds::NewPopupPanel();
    if (!panel) {
        auto* nothing = new QLabel(parent);
        nothing->setObjectName(QStringLiteral("AdPanelNothing"));
        nothing->setAlignment(Qt::AlignCenter);
        translation::OnLanguageChange(
            nothing, [nothing] { nothing->setText(CAdPanelWindow::tr("The module that serves ads is not there")); });
        return nothing;
    }
    auto* scrolled = new QScrollArea(parent);
    // Has the focus, so that keys scroll. The border shows it.
    scrolled->setObjectName(QStringLiteral("AdPanelScroll"));
    scrolled->setWidgetResizable(true);
    translation::OnLanguageChange(scrolled,
                                  [scrolled] { scrolled->setAccessibleName(CAdPanelWindow::tr("Popup panel")); });
    scrolled->setWidget(panel);
    return scrolled;
}

}  // namespace

CAdPanelWindow::CAdPanelWindow(QWidget* mainWindow) : QWidget(mainWindow, Qt::Window) {
    setObjectName(kName);
    setAttribute(Qt::WA_DeleteOnClose);
    translation::OnLanguageChange(this, [this] { setWindowTitle(tr("Popup panel")); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(NewContent(this));
    resize(kSize.boundedTo(mainWindow->screen()->availableSize()));
}

void CAdPanelWindow::Open(QWidget* mainWindow) {
    auto* window = mainWindow->findChild<QWidget*>(kName, Qt::FindDirectChildrenOnly);
    if (!window) {
        window = new CAdPanelWindow(mainWindow);
    }
    window->show();
    window->raise();
    window->activateWindow();
}
