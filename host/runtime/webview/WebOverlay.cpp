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
constexpr int kButtonSpacing = 8;

}  // namespace

CWebOverlay::CWebOverlay(QWidget* parent)
    : QWidget(parent), m_pText(new ZText(this)), m_pRetry(new ZButton(this)), m_pBrowser(new ZButton(this)) {
    setObjectName(QStringLiteral("WebOverlay"));
    m_pText->setObjectName(QStringLiteral("WebOverlayText"));
    m_pText->setWordWrap(true);
    m_pRetry->setObjectName(QStringLiteral("WebOverlayRetry"));
    m_pRetry->setZrStyle(ZButton::kFilled);
    m_pBrowser->setObjectName(QStringLiteral("WebOverlayBrowser"));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kButtonSpacing);
    buttons->addWidget(m_pRetry);
    buttons->addWidget(m_pBrowser);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addStretch();
    layout->addWidget(m_pText);
    layout->addLayout(buttons);
    layout->addStretch();
    for (const auto& [button, action] : {std::pair(m_pRetry, &m_fnRetry), std::pair(m_pBrowser, &m_fnBrowser)}) {
        connect(button, &ZButton::clicked, this, [action = action] {
            const std::function<void()> act = *action;  // may clear the message
            act();
        });
    }
    kit::FollowTheme(this);
    hide();
}

void CWebOverlay::ShowLoading() {
    m_fnRetry = nullptr;
    m_fnBrowser = nullptr;
    Show(Text(EnWebText::kLoading));
}

void CWebOverlay::ShowMessage(const QString& text, std::function<void()> retry, std::function<void()> browser) {
    m_fnRetry = std::move(retry);
    m_fnBrowser = std::move(browser);
    Show(text);
}

void CWebOverlay::Clear() {
    m_fnRetry = nullptr;
    m_fnBrowser = nullptr;
    if (isAncestorOf(window()->focusWidget())) {
        parentWidget()->setFocus();
    }
    hide();
}

void CWebOverlay::Show(const QString& text) {
    m_pText->setText(text);
    for (const auto& [button, words, used] : {std::tuple(m_pRetry, EnWebText::kRetry, bool(m_fnRetry)),
                                              std::tuple(m_pBrowser, EnWebText::kOpenInBrowser, bool(m_fnBrowser))}) {
        button->setText(Text(words));
        button->setAccessibleName(button->text());
        button->setVisible(used);
    }
    m_pBrowser->setZrStyle(m_fnRetry ? ZButton::kPlain : ZButton::kFilled);
    show();
    // The keyboard would reach the covered page otherwise.
    if (HasMessage() && parentWidget()->isAncestorOf(window()->focusWidget())) {
        (m_fnRetry ? m_pRetry : m_pBrowser)->setFocus();
    }
}

void CWebOverlay::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), kit::Color("window"));
}

}  // namespace host::web
