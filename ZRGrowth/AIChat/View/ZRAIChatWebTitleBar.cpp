#include "AIChat/View/ZRAIChatWebTitleBar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

#include "GrowthBizLogUtil.h"
#include "core/environment.h"
#include "core/langx.h"
#include "framework/assertion.h"
#include "framework/defensive.h"
#include "ui/IZToolTipManager.h"
#include "ui/ZIconButton.h"
#include "ui/ZLabel.h"
#include "ui/ZResource.h"
#include "ui/ZText.h"
#include "ui/zr_ui_res.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::AIChat;
constexpr int kStatusHeight = 16;
constexpr int kStatusMargin = 4;
constexpr int kPinMargin = 2;

struct Look {
    ZRAIChatWebNetWorkStatus status;
    ZLabel::ZrStyle style;
    const char* dotColor;
};

constexpr Look kLooks[] = {
    {ZRAIChatNetworkFailed, ZLabel::kFailure, "ck_red400"},
    {ZRAIChatNetworkPoor, ZLabel::kWarning, "ck_orange500"},
    {ZRAIChatNetworkConnecting, ZLabel::kNeutral, "ck_grayblue500"},
};

// Unknown numbers of pages look like a failure.
const Look& LookOf(ZRAIChatWebNetWorkStatus status) {
    for (const Look& look : kLooks) {
        if (look.status == status) {
            return look;
        }
    }
    FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", kGrowthModuleTag, GROWTH_SOURCE, __LINE__, "false");
    return kLooks[0];
}

}  // namespace

CZRAIChatWebTitleBar::CZRAIChatWebTitleBar(QWidget* parent) : ZStdTitleBar(parent) {}

CZRAIChatWebTitleBar::~CZRAIChatWebTitleBar() = default;

void CZRAIChatWebTitleBar::initUi() {
    ZStdTitleBar::initUi();
    if (closeButton()) {
        closeButton()->installEventFilter(this);
    }
}

QWidget* CZRAIChatWebTitleBar::createCustomWidget() {
    auto* content = new QWidget(this);
    auto* layout = new QHBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addSpacing(12);

    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(0);
    m_pPinButton = new ZIconButton(content);
    m_pPinButton->setIconButtonSize(ZIconButton::kSmall);
    m_pPinButton->setSvgIconName(ZResource::btn_flyouts_pin_12);
    m_pPinButton->setCheckedSvgIconName(ZResource::icon_pushpin_f_12);
    m_pPinButton->setIconColorStyle(ZIconColorStyle::heading);
    m_pPinButton->setIconMargins(kPinMargin);
    m_pPinButton->setHoverBackground(false);
    m_pPinButton->setCheckable(true);
    m_pPinButton->setAccessibleName(core::langx::tr(900016, "Keep on top"));
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pPinButton, &ZIconButton::clicked, this,
                              &CZRAIChatWebTitleBar::OnPinBtnClicked);
    buttons->addWidget(m_pPinButton);
    layout->addLayout(buttons);
    layout->addSpacing(80);
    layout->addStretch();

    m_pTitleText = new ZText(content);
    m_pTitleText->setObjectName(QStringLiteral("CZRAIChatTitleBarTitle"));
    m_pTitleText->setAttribute(Qt::WA_StyledBackground);
    m_pTitleText->setZrStyle(ZText::kWindowTitle);
    m_pTitleText->setText(core::environment::IsVelora() ? core::langx::tr(320268, "velora AI")
                                                        : core::langx::tr(320267, "KestrelAI"));
    layout->addWidget(m_pTitleText);

    m_pStatusLabel = new ZLabel(content);
    m_pStatusLabel->setZrBgStyle(ZLabel::kBgPlate);
    m_pStatusLabel->hide();
    m_pStatusLabel->setFixedHeight(kStatusHeight);
    m_pStatusLabel->setCustomMargin(kStatusMargin);
    m_pStatusLabel->installEventFilter(this);
    layout->addWidget(m_pStatusLabel);
    layout->addStretch();
    return content;
}

bool CZRAIChatWebTitleBar::isDraggable(QWidget* widget) {
    return !widget || !(widget->inherits("ZIconButton") || widget->inherits("ZButton") || widget->inherits("ZLabel"));
}

bool CZRAIChatWebTitleBar::eventFilter(QObject* watched, QEvent* event) {
    // The press never reaches the button, whose click would close the window.
    if (closeButton() && watched == closeButton() && event->type() == QEvent::MouseButtonPress) {
        Q_EMIT CloseButtonClicked();
        return true;
    }
    if (m_pStatusLabel && watched == m_pStatusLabel && event->type() == QEvent::Paint) {
        PaintStatusDot();
    }
    return ZStdTitleBar::eventFilter(watched, event);
}

// The label paints its text afterwards.
void CZRAIChatWebTitleBar::PaintStatusDot() {
    QPainter painter(m_pStatusLabel);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    if (!m_pStatusDotColor) {
        zr_ui_res::Provider::instance()->get(m_pStatusDotColor, m_strStatusDotColorName);
    }
    painter.setBrush(QBrush(m_pStatusDotColor ? *m_pStatusDotColor : QColor(), Qt::SolidPattern));
    painter.drawEllipse(QRect(QPoint(4, 6), QPoint(6, 8)));
}

void CZRAIChatWebTitleBar::SetDescAndTips(ZRAIChatWebNetWorkStatus status, const QString& desc, const QString& tips) {
    LogInfo("SetDescAndTips, status = {}, desc = {}, tips = {}", int(status), desc.toStdString(), tips.toStdString());
    if (!m_pStatusLabel || !m_pTitleText) {
        return;
    }
    if (status == ZRAIChatNetworkGood || desc.isEmpty()) {
        m_pStatusLabel->hide();
        m_pTitleText->show();
        return;
    }
    m_pStatusLabel->show();
    m_pTitleText->hide();
    // The blanks leave the place of the dot.
    m_pStatusLabel->setText(QStringLiteral("  ") + desc);
    const Look& look = LookOf(status);
    m_pStatusLabel->setZrStyle(look.style);
    m_pStatusDotColor.reset();
    m_strStatusDotColorName = QString::fromLatin1(look.dotColor);
    IZToolTipManager::instance()->UnRegisterToolTips(m_pStatusLabel);
    if (!tips.isEmpty()) {
        IZToolTipManager::instance()->RegisterToolTips(m_pStatusLabel, ToolTipInfo{tips});
    }
    m_pStatusLabel->update();
}

void CZRAIChatWebTitleBar::SetNewSessionEnable(bool enable) {
    if (m_pNewSessionButton) {
        m_pNewSessionButton->setEnabled(enable);
    }
}

void CZRAIChatWebTitleBar::Clear() {
    SetNewSessionEnable(true);
    if (m_pPinButton) {
        m_pPinButton->setChecked(false);
    }
    // setChecked emits no click.
    OnPinBtnClicked();
    if (m_pStatusLabel) {
        m_pStatusLabel->hide();
    }
    if (m_pTitleText) {
        m_pTitleText->show();
    }
}

void CZRAIChatWebTitleBar::OnPinBtnClicked() {
    if (m_pPinButton) {
        Q_EMIT PinBtnClicked(m_pPinButton->isChecked());
    }
}
