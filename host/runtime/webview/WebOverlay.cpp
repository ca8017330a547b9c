#include "webview/WebOverlay.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/KitPaint.h"
#include "ui/ZButton.h"
#include "ui/ZText.h"
#include "webview/WebTexts.h"

namespace host::web {
namespace {

constexpr int kMargin = 32;
constexpr int kSpacing = 16;

}  // namespace

CWebOverlay::CWebOverlay(QWidget* parent) : QWidget(parent), m_pText(new ZText(this)), m_pButton(new ZButton(this)) {
    setObjectName(QStringLiteral("WebOverlay"));
    m_pText->setObjectName(QStringLiteral("WebOverlayText"));
    m_pText->setWordWrap(true);
    m_pButton->setObjectName(QStringLiteral("WebOverlayButton"));
    m_pButton->setZrStyle(ZButton::kFilled);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addStretch();
    layout->addWidget(m_pText);
    layout->addWidget(m_pButton, 0, Qt::AlignLeft);
    layout->addStretch();
    connect(m_pButton, &ZButton::clicked, this, [this] {
        const std::function<void()> act = m_fnAct;
        if (act) {
            act();
        }
    });
    kit::FollowTheme(this);
    hide();
}

void CWebOverlay::ShowLoading() {
    m_fnAct = nullptr;
    Show(Text(EnWebText::kLoading), QString());
}

void CWebOverlay::ShowMessage(const QString& text, const QString& button, std::function<void()> act) {
    m_fnAct = std::move(act);
    Show(text, button);
}

void CWebOverlay::Clear() {
    m_fnAct = nullptr;
    hide();
}

void CWebOverlay::Show(const QString& text, const QString& button) {
    m_pText->setText(text);
    m_pButton->setText(button);
    m_pButton->setAccessibleName(button);
    m_pButton->setVisible(!button.isEmpty());
    setGeometry(parentWidget()->rect());
    show();
    raise();
}

void CWebOverlay::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), kit::Color("window"));
}

}  // namespace host::web
