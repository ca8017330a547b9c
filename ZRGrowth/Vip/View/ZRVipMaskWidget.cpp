#include "Vip/View/ZRVipMaskWidget.h"

#include <json/value.h>

#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/Model/ZRVipTexts.h"
#include "Vip/View/ZRVipViewTools.h"
#include "core/urlhandler.h"
#include "framework/defensive.h"
#include "premium_svr.pb.h"
#include "ui/ZBackgroundBlurWidget.h"
#include "ui/ZButton.h"
#include "ui/ZMultilineText.h"
#include "ui/ZResource.h"
#include "ui/ZText.h"
#include "ui/zr_ui_theme.h"
#include "webview/ZRWebWindowInfo.h"

namespace {

using zrstdui::image_blur::WidgetPainterBufferSource;

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;
constexpr int kMinHeight = 64;
constexpr int kMinHeightWithText = 100;
constexpr int kBlurQuality = 0;
constexpr int kLineHeight = 16;
constexpr int kMaxLines = 2;
constexpr QSize kButtonSize(150, 28);
constexpr QSize kButtonIconSize(16, 16);

// In contrast to a banner, a mask never covers a right that is active for a limited time.
// The locked one's is the same for the compact layout, which shows no title and needs one nevertheless.
constexpr vip_view::SOfferRule kLockedRule{/*servesLimitedTime=*/false, /*needsTitle=*/true, /*namesDataType=*/true};
constexpr vip_view::SOfferRule kExclusiveRule{/*servesLimitedTime=*/false, /*needsTitle=*/false,
                                              /*namesDataType=*/true};

zr_ui_res::TResource<QColor> BlendColor(bool popupStyle) {
    return zr_ui_res::TResource<QColor>(popupStyle ? QStringLiteral("style_skin_premium/popwnd_foreground")
                                                   : QStringLiteral("style_skin_premium/foreground"));
}

void RefreshBlur(ZBackgroundBlurWidget* blur, const SVipMaskBlur& look) {
    const bool isTheme3 = zr_ui_theme::Manager::instance()->getTheme() == zr_ui_theme::Manager::kThemeBlack;
    blur->setBlurRadius(isTheme3 ? look.radiusTheme3 : look.radiusOther);
    blur->setBlendColor(BlendColor(look.popupStyle));
}

// Prepares the mask and returns the layout on its blur, which begins with a stretch.
QVBoxLayout* InitMask(QWidget* mask, ZBackgroundBlurWidget* blur, int minHeight,
                      const WidgetPainterBufferSource& source, bool popupStyle) {
    mask->setObjectName(QStringLiteral("CZRVipMaskBg"));
    mask->setAttribute(Qt::WA_StyledBackground);
    mask->setMinimumHeight(minHeight);
    auto* outer = new QVBoxLayout(mask);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(blur);
    blur->setBlendColor(BlendColor(popupStyle));
    blur->setBlurQuality(kBlurQuality);
    blur->setPainterBufferSource(source);
    auto* inner = new QVBoxLayout(blur);
    inner->setContentsMargins(8, 0, 8, 0);
    inner->setSpacing(0);
    inner->addStretch();
    return inner;
}

}  // namespace

CZRVipLockedMaskWidget::CZRVipLockedMaskWidget(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType,
                                               QString pageId, QWidget* parent, WidgetPainterBufferSource bufferSource,
                                               double blurRadiusTheme3, double blurRadiusOther, bool popupStyle)
    : CZRVipBaseWidget(access, std::move(pageId), parent),
      m_blur{blurRadiusTheme3, blurRadiusOther, popupStyle},
      m_enDataType(dataType) {
    InitUI(maskType, bufferSource);
    CZRVipLockedMaskWidget::UpdateUIData(access, dataType);
}

CZRVipLockedMaskWidget::~CZRVipLockedMaskWidget() = default;

bool CZRVipLockedMaskWidget::IsVipMaskEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) {
    const std::string refusal = vip_view::RefusalOf(kLockedRule, access, dataType);
    if (!refusal.empty()) {
        LogInfo("Vip Locked Mask Disabled, {}", refusal);
    }
    return refusal.empty();
}

void CZRVipLockedMaskWidget::InitUI(ZRVipMaskType maskType, const WidgetPainterBufferSource& bufferSource) {
    const bool hasText = maskType == ZRVipMaskLocked;
    m_pBlurWidget = new ZBackgroundBlurWidget(this);
    auto* layout =
        InitMask(this, m_pBlurWidget, hasText ? kMinHeightWithText : kMinHeight, bufferSource, m_blur.popupStyle);
    if (hasText) {
        m_pMaskText = new ZMultilineText(m_pBlurWidget);
        m_pMaskText->setObjectName(QStringLiteral("CZRVipMaskText"));
        m_pMaskText->setLineHeight(kLineHeight);
        m_pMaskText->setMaximumTextLine(kMaxLines);
        m_pMaskText->setAlignment(Qt::AlignCenter);
        m_pMaskText->setRedoLayoutInPaintEvent(true);
        m_pMaskText->hide();
        layout->addWidget(m_pMaskText, 0, Qt::AlignCenter);
        layout->addSpacing(16);
    }
    m_pActionButton = new ZButton(m_pBlurWidget);
    m_pActionButton->setObjectName(QStringLiteral("CZRVipActionButton"));
    m_pActionButton->setFixedSize(kButtonSize);
    m_pActionButton->setWidthType(ZButton::kWidthOfText);
    m_pActionButton->hide();
    layout->addWidget(m_pActionButton, 0, Qt::AlignCenter);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pActionButton, &ZButton::clicked, this,
                              &CZRVipLockedMaskWidget::OnActionButtonClicked);
    layout->addStretch();
}

void CZRVipLockedMaskWidget::UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) {
    m_enAccess = access;
    m_enDataType = dataType;
    RefreshUI();
}

void CZRVipLockedMaskWidget::RefreshUI() {
    RefreshBlur(m_pBlurWidget, m_blur);
    if (CZRVipManager::Singleton()->IsNewVipSystem()) {
        m_pActionButton->setIcon(QString(), kButtonIconSize);
    } else {
        m_pActionButton->setIcon(ZResource::icon_blackvip_16_normal, kButtonIconSize);
        m_pActionButton->setIconTextSpacing(4);
    }
    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(m_enAccess);
    m_nPageStatus = record.nActivationType;
    const CZRVipTexts texts = SelectVipTexts(record, m_enDataType).value_or(CZRVipTexts());
    if (m_pMaskText) {
        m_pMaskText->setVisible(!texts.strTitle.isEmpty());
        if (!texts.strTitle.isEmpty()) {
            m_pMaskText->setText(texts.strTitle);
        }
    }
    m_pActionButton->setVisible(!texts.strBtn.isEmpty());
    if (!texts.strBtn.isEmpty()) {
        m_pActionButton->setText(texts.strBtn);
    }
    LogInfo(
        "Refresh Vip Locked Mask UI, Access = {}, Data Type = {}, Title Text = {}, Btn Text = {}, Btn URL ID = {}, "
        "Other Info = {}",
        int(m_enAccess), int(m_enDataType), texts.strTitle.toStdString(), texts.strBtn.toStdString(), texts.nBtnUrlID,
        record.strOtherInfo.toStdString());
}

void CZRVipLockedMaskWidget::OnActionButtonClicked() {
    const QPointer<CZRVipLockedMaskWidget> alive(this);
    ReportClick();
    if (!alive) {
        return;
    }
    Q_EMIT ActionButtonClicked(m_enAccess, m_enDataType, QPointer<QWidget>(window()));
}

void CZRVipLockedMaskWidget::ReportClick() {
    if (m_enAccess == 0) {
        return;
    }
    vip_view::ReportEntranceClick(m_enAccess, m_enDataType, m_nPageStatus, Json::Value(Json::objectValue));
}

CZRVipExclusiveMaskWidget::CZRVipExclusiveMaskWidget(EnPremiumAccess access, ZRVipUIDataType dataType, QString pageId,
                                                     QWidget* parent, WidgetPainterBufferSource bufferSource,
                                                     double blurRadiusTheme3, double blurRadiusOther, bool popupStyle)
    : CZRVipBaseWidget(access, std::move(pageId), parent),
      m_blur{blurRadiusTheme3, blurRadiusOther, popupStyle},
      m_enDataType(dataType) {
    InitUI(bufferSource);
    CZRVipExclusiveMaskWidget::UpdateUIData(access, dataType);
}

CZRVipExclusiveMaskWidget::~CZRVipExclusiveMaskWidget() = default;

bool CZRVipExclusiveMaskWidget::IsVipMaskEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) {
    const std::string refusal = vip_view::RefusalOf(kExclusiveRule, access, dataType);
    if (!refusal.empty()) {
        LogInfo("Vip Exclusive Mask Disabled, {}", refusal);
    }
    return refusal.empty();
}

void CZRVipExclusiveMaskWidget::InitUI(const WidgetPainterBufferSource& bufferSource) {
    m_pBlurWidget = new ZBackgroundBlurWidget(this);
    auto* layout = InitMask(this, m_pBlurWidget, kMinHeight, bufferSource, m_blur.popupStyle);
    m_pMarkLabel = new QLabel(m_pBlurWidget);
    m_pMarkLabel->setScaledContents(true);
    layout->addWidget(m_pMarkLabel, 0, Qt::AlignCenter);
    layout->addSpacing(4);
    m_pMaskText = new ZText(m_pBlurWidget);
    m_pMaskText->setObjectName(QStringLiteral("CZRVipTextBold"));
    m_pMaskText->setFixedHeight(16);
    layout->addWidget(m_pMaskText, 0, Qt::AlignCenter);
    layout->addStretch();
}

void CZRVipExclusiveMaskWidget::UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) {
    m_enAccess = access;
    m_enDataType = dataType;
    RefreshUI();
}

void CZRVipExclusiveMaskWidget::RefreshUI() {
    RefreshBlur(m_pBlurWidget, m_blur);
    const bool isNew = CZRVipManager::Singleton()->IsNewVipSystem();
    const QSize markSize(isNew ? 56 : 16, 16);
    const QString mark = isNew ? ZResource::img_engine_m_56x16_normal : ZResource::img_vip_16_normal;
    m_pMarkLabel->setFixedSize(markSize);
    m_pMarkLabel->setPixmap(vip_view::ScaledImage(mark, markSize, this));

    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(m_enAccess);
    m_nPageStatus = record.nActivationType;
    QString text;
    // On purpose the link stays if the data type has no texts.
    if (const auto texts = SelectVipTexts(record, m_enDataType)) {
        text = texts->strBtn;
        m_nBtnUrlID = texts->nBtnUrlID;
    }
    m_pMaskText->setText(text);
    m_pMaskText->setVisible(!text.isEmpty());
    LogInfo("Refresh Vip Exclusive Mask UI, Access = {}, Data Type = {}, Btn Text = {}, Btn URL ID = {}",
            int(m_enAccess), int(m_enDataType), text.toStdString(), m_nBtnUrlID);
}

// The event stays accepted, so that no button presses what is behind the mask. The page opens in a window of the host's
// size.
void CZRVipExclusiveMaskWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const int linkId = m_nBtnUrlID;  // the report may end with the deletion of this
    ReportClick();
    if (linkId <= 0) {
        return;
    }
    using namespace core::urlhandler;
    DispatchUrl(vip_view::LinkUrl(static_cast<unsigned long>(linkId)), kBusinessDefault, nullptr,
                QVariant::fromValue(core::webview::ZRWebWindowInfo()), kFallbackWeb);
}

// It reports also without a right, unlike the locked mask, on purpose.
void CZRVipExclusiveMaskWidget::ReportClick() {
    vip_view::ReportEntranceClick(m_enAccess, m_enDataType, m_nPageStatus, Json::Value(Json::objectValue));
}
