#include "Vip/View/ZRVipBannerWidget.h"

#include <json/value.h>

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

#include "GrowthBizLogUtil.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/Model/ZRVipTexts.h"
#include "Vip/View/ZRVipViewTools.h"
#include "core/langx.h"
#include "framework/defensive.h"
#include "premium_svr.pb.h"
#include "ui/ZButton.h"
#include "ui/ZMultilineTextLabel.h"
#include "ui/ZResource.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;
constexpr unsigned int kTextDays = 277228;
constexpr unsigned int kTextDay = 277229;
constexpr const char* kDaysFallback = "日";

constexpr vip_view::SOfferRule kRule{/*servesLimitedTime=*/true, /*needsTitle=*/true, /*namesDataType=*/false};

}  // namespace

CZRVipBannerWidget::CZRVipBannerWidget(EnPremiumAccess access, ZRVipUIDataType dataType, QString pageId,
                                       QWidget* parent)
    : CZRVipBaseWidget(access, std::move(pageId), parent), m_enDataType(dataType) {
    InitUI();
    CZRVipBannerWidget::UpdateUIData(access, dataType);
}

CZRVipBannerWidget::~CZRVipBannerWidget() = default;

bool CZRVipBannerWidget::IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) {
    const std::string refusal = vip_view::RefusalOf(kRule, access, dataType);
    if (!refusal.empty()) {
        LogInfo("Vip Banner Disabled, {}", refusal);
    }
    return refusal.empty();
}

void CZRVipBannerWidget::InitUI() {
    setObjectName(QStringLiteral("CZRVipBg"));
    setAttribute(Qt::WA_StyledBackground);
    setMinimumWidth(280);
    m_pIconLabel = new QLabel(this);
    m_pIconLabel->setScaledContents(true);
    m_pIconSpacer = new QWidget(this);
    m_pSeparator = new QFrame(this);
    m_pSeparator->setObjectName(QStringLiteral("CZRVipBannerEngineDivider"));
    m_pSeparator->setFixedSize(1, 12);
    m_pSeparatorSpacer = new QWidget(this);

    m_pTextLabel = new ZMultilineTextLabel(this);
    m_pTextLabel->setObjectName(QStringLiteral("CZRVipTextNormal"));
    m_pTextLabel->setLineHeight(16);
    m_pTextLabel->setAlignment(Qt::AlignLeft);
    m_pTextLabel->setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_pTextLabel->setMargins(QMargins());
    m_pTextLabel->setElidable(true);
    m_pTextLabel->setMaximumHeight(32);
    m_pTextLabel->setTextFormat(Qt::AutoText);
    m_pTextLabel->hide();

    m_pActionButton = new ZButton(this);
    m_pActionButton->setObjectName(QStringLiteral("CZRVipActionButton"));
    m_pActionButton->setFixedHeight(24);
    m_pActionButton->setLeftRightPadding(8);
    m_pActionButton->hide();
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pActionButton, &ZButton::clicked, this,
                              &CZRVipBannerWidget::OnActionButtonClicked);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    layout->setSpacing(0);
    layout->addWidget(m_pIconLabel);
    layout->addWidget(m_pIconSpacer);
    layout->addWidget(m_pSeparator);
    layout->addWidget(m_pSeparatorSpacer);
    auto* textLayout = new QHBoxLayout;
    textLayout->setContentsMargins(0, 4, 0, 4);
    textLayout->setSpacing(0);
    textLayout->addWidget(m_pTextLabel);
    layout->addLayout(textLayout);
    layout->addSpacing(11);
    layout->addStretch();
    layout->addWidget(m_pActionButton);
}

void CZRVipBannerWidget::UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) {
    m_enAccess = access;
    m_enDataType = dataType;
    RefreshUI();
}

void CZRVipBannerWidget::RefreshUI() {
    const bool isNew = CZRVipManager::Singleton()->IsNewVipSystem();
    const QSize markSize(isNew ? 54 : 16, 16);
    const QString mark = isNew ? ZResource::img_engine_nbg_54x16_normal : ZResource::img_vip_16_normal;
    m_pIconLabel->setFixedSize(markSize);
    m_pIconLabel->setPixmap(vip_view::ScaledImage(mark, markSize, this));
    m_pIconSpacer->setFixedWidth(isNew ? 8 : 4);
    m_pSeparator->setVisible(isNew);
    m_pSeparatorSpacer->setFixedWidth(isNew ? 8 : 0);

    const CPremiumUIAccessData record = CZRPremiumManager::Singleton()->GetUIAccessData(m_enAccess);
    m_nPageStatus = record.nActivationType;
    m_nDaysLeft = record.nDaysLeft;
    const CZRVipTexts texts = SelectVipTexts(record, m_enDataType).value_or(CZRVipTexts());
    ShowTitle(texts.strTitle);
    m_pActionButton->setVisible(!texts.strBtn.isEmpty());
    if (!texts.strBtn.isEmpty()) {
        m_pActionButton->setText(texts.strBtn);
    }
    LogInfo(
        "Refresh Banner UI, Access = {}, Data Type = {}, Title Text = {}, Btn Text = {}, Btn URL ID = {}, "
        "Other Info = {}, Days Left = {}",
        int(m_enAccess), int(m_enDataType), texts.strTitle.toStdString(), texts.strBtn.toStdString(), texts.nBtnUrlID,
        record.strOtherInfo.toStdString(), m_nDaysLeft);
}

void CZRVipBannerWidget::ShowTitle(const QString& title) {
    m_pTextLabel->setVisible(!title.isEmpty());
    if (title.isEmpty()) {
        return;
    }
    const bool showsDays = !CZRVipManager::Singleton()->IsNewVipSystem() &&
                           m_nPageStatus == web_premium_access::LIMITED_TIME_ACTIVATION && m_nDaysLeft >= 0;
    if (!showsDays) {
        // Not escaped, on purpose: the server may send markup.
        m_pTextLabel->setTextWithFormat(title, Qt::AutoText);
        return;
    }
    const QString unit = core::langx::tr(m_nDaysLeft == 1 ? kTextDay : kTextDays, kDaysFallback);
    // All arguments at once: a title may contain "%2".
    m_pTextLabel->setTextWithFormat(
        QStringLiteral("%1<b>%2%3</b>").arg(title.toHtmlEscaped(), QString::number(m_nDaysLeft), unit), Qt::RichText);
}

void CZRVipBannerWidget::OnActionButtonClicked() {
    const QPointer<CZRVipBannerWidget> alive(this);
    ReportClick();
    if (!alive) {
        return;
    }
    Q_EMIT ActionButtonClicked(m_enAccess, m_enDataType, QPointer<QWidget>(window()));
}

// Unlike the report of an exposure, it contains the days of every activation type.
void CZRVipBannerWidget::ReportClick() {
    if (m_enAccess == 0) {
        return;
    }
    Json::Value params(Json::objectValue);
    if (m_nDaysLeft >= 0) {
        params["day_number"] = m_nDaysLeft;
    }
    vip_view::ReportEntranceClick(m_enAccess, m_enDataType, m_nPageStatus, params);
}
