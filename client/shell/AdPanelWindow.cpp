#include "AdPanelWindow.h"

#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "AdTexts.h"
#include "Ads.h"
#include "ClientTexts.h"

namespace {

constexpr QSize kSize(1540, 420);
const QString kName = QStringLiteral("AdPanelWindow");

QWidget* NewContent(QWidget* parent) {
    QWidget* panel = CAds::NewPopupPanel();
    if (!panel) {
        auto* nothing = new QLabel(parent);
        nothing->setObjectName(QStringLiteral("AdPanelNothing"));
        nothing->setAlignment(Qt::AlignCenter);
        texts::Keep(nothing, texts::kAdPanelNoModule);
        return nothing;
    }
    auto* scrolled = new QScrollArea(parent);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setWidgetResizable(true);
    scrolled->setWidget(panel);
    return scrolled;
}

}  // namespace

CAdPanelWindow::CAdPanelWindow(QWidget* mainWindow) : QWidget(mainWindow, Qt::Window) {
    setObjectName(kName);
    setAttribute(Qt::WA_DeleteOnClose);
    texts::Keep(this, [this] { setWindowTitle(texts::Tr(texts::kAdPanel)); });
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
