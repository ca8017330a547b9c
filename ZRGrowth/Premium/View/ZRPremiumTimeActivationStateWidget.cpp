#include "Premium/View/ZRPremiumTimeActivationStateWidget.h"

#include <QHBoxLayout>
#include <QStyle>

#include "GrowthBizLogUtil.h"
#include "core/langx.h"
#include "framework/defensive.h"
#include "ui/ZButton.h"
#include "ui/ZResource.h"
#include "ui/ZSvgWidget.h"
#include "ui/ZText.h"

namespace {

constexpr unsigned int kTextDays = 277228;
constexpr unsigned int kTextDay = 277229;
constexpr const char* kDaysFallback = "日";
constexpr int kTextHeight = 16;
constexpr int kMinimumWidth = 280;

ZText* NewText(QWidget* parent, bool dottable) {
    auto* text = new ZText(parent);
    text->setFixedHeight(kTextHeight);
    text->setDottable(dottable);
    return text;
}

template <class Layout>
Layout* NewLayout(const QMargins& margins, int spacing) {
    auto* layout = new Layout;
    layout->setContentsMargins(margins);
    layout->setSpacing(spacing);
    return layout;
}

void Restyle(ZText& text) {
    text.style()->polish(&text);
    text.update();
}

void RestyleAndMeasure(ZText& text) {
    Restyle(text);
    text.setText(text.text());
}

}  // namespace

/// The style-sheet names of the texts in one font size, and their height.
struct CZRPremiumTimeActivationStateWidget::Level {
    QLatin1String regular;
    QLatin1String bold;
    int height;
};

const CZRPremiumTimeActivationStateWidget::Level CZRPremiumTimeActivationStateWidget::kLevels[4] = {
    {QLatin1String("Premium12"), QLatin1String("PremiumBold12"), kTextHeight},
    {QLatin1String("Premium11"), QLatin1String("PremiumBold11"), 14},
    {QLatin1String("Premium10"), QLatin1String("PremiumBold10"), 14},
    {QLatin1String("Premium8"), QLatin1String("PremiumBold8"), 14},
};

CZRPremiumTimeActivationStateWidget::CZRPremiumTimeActivationStateWidget(const QString& mainTitle,
                                                                         const QString& mainBtn, const QString& uiType,
                                                                         const QString& detailTitle, int daysLeft,
                                                                         QWidget* parent)
    : IGrowthPremiumWidget(parent) {
    InitWidget();
    CZRPremiumTimeActivationStateWidget::UpdateUiData(mainTitle, mainBtn, uiType, detailTitle, daysLeft);
}

CZRPremiumTimeActivationStateWidget::~CZRPremiumTimeActivationStateWidget() = default;

void CZRPremiumTimeActivationStateWidget::InitWidget() {
    // Each part has its parent first: a part without one would open as a window when it is shown.
    m_pTitleRowWidget = new QWidget(this);
    m_pMainTitleText = NewText(m_pTitleRowWidget, true);
    m_pDaysText = NewText(m_pTitleRowWidget, false);
    m_pDaysUnitText = NewText(m_pTitleRowWidget, false);
    auto* titleRow = NewLayout<QHBoxLayout>(QMargins(), 0);
    for (ZText* text : {m_pMainTitleText.data(), m_pDaysText.data(), m_pDaysUnitText.data()}) {
        titleRow->addWidget(text, 0, Qt::AlignCenter);
    }
    titleRow->addStretch();
    m_pTitleRowWidget->setLayout(titleRow);

    m_pPremiumTagSvg = new ZSvgWidget(this);
    m_pPremiumTagSvg->setSvgIconName(ZResource::icon_premium_tag_normal);
    m_pPremiumTagSvg->setFixedSize(54, 16);
    auto* firstLine = NewLayout<QHBoxLayout>(QMargins(), 4);
    firstLine->addWidget(m_pPremiumTagSvg);
    firstLine->addWidget(m_pTitleRowWidget);

    m_pDetailTitleText = NewText(this, true);
    auto* lines = NewLayout<QVBoxLayout>(QMargins(), 0);
    lines->addLayout(firstLine);
    lines->addWidget(m_pDetailTitleText);

    auto* holder = new QWidget(this);
    m_pMainButton = new ZButton(holder);
    m_pMainButton->setZrStyle(ZButton::kStrip);
    auto* holderLayout = NewLayout<QVBoxLayout>(QMargins(8, 0, 0, 0), 0);
    holderLayout->addWidget(m_pMainButton);
    holder->setLayout(holderLayout);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pMainButton.data(), &QAbstractButton::clicked, this,
                              &CZRPremiumTimeActivationStateWidget::OnMainButtonClicked, Qt::UniqueConnection);

    m_pRootLayout = NewLayout<QHBoxLayout>(QMargins(8, 4, 4, 4), 8);
    m_pRootLayout->addLayout(lines);
    m_pRootLayout->addWidget(holder);
    UpdateWidgetColor();
    setLayout(m_pRootLayout);
    setMinimumWidth(kMinimumWidth);
}

bool CZRPremiumTimeActivationStateWidget::HasTexts() const {
    return m_pMainTitleText && m_pDaysText && m_pDaysUnitText && m_pDetailTitleText;
}

// The functions share one guard, on purpose: the context of the later call silences both.
void CZRPremiumTimeActivationStateWidget::SetCallback(std::function<void(bool)> callback, QObject* context) {
    m_fnCallback = std::move(callback);
    m_pContext = context;
}

void CZRPremiumTimeActivationStateWidget::SetShowCallback(std::function<void(bool)> callback, QObject* context) {
    m_fnShowCallback = std::move(callback);
    m_pContext = context;
}

void CZRPremiumTimeActivationStateWidget::UpdateUiData(const QString& mainTitle, const QString& mainBtn,
                                                       const QString& uiType, const QString& detailTitle,
                                                       int daysLeft) {
    UpdateDateWidget(daysLeft);
    UpdateMainBtnWidget(mainBtn);
    UpdateMainTitleWidget(mainTitle);
    UpdatePremiumSvgWidget(uiType);
    UpdateDetailTitleWidget(detailTitle);
    UpdateWidget();
}

void CZRPremiumTimeActivationStateWidget::UpdateDateWidget(int daysLeft) {
    if (!m_pDaysText || !m_pDaysUnitText) {
        return;
    }
    if (daysLeft != 0) {
        m_pDaysUnitText->setText(core::langx::tr(daysLeft == 1 ? kTextDay : kTextDays, kDaysFallback));
        m_pDaysText->setText(QString::number(daysLeft));
    }
    m_pDaysText->setVisible(daysLeft != 0);
    m_pDaysUnitText->setVisible(daysLeft != 0);
}

void CZRPremiumTimeActivationStateWidget::UpdateMainBtnWidget(const QString& mainBtn) {
    if (!m_pMainButton) {
        return;
    }
    if (!mainBtn.isEmpty()) {
        m_pMainButton->setText(mainBtn);
    }
    m_pMainButton->setVisible(!mainBtn.isEmpty());
}

void CZRPremiumTimeActivationStateWidget::UpdateMainTitleWidget(const QString& mainTitle) {
    if (!m_pMainTitleText) {
        return;
    }
    if (!mainTitle.isEmpty()) {
        m_pMainTitleText->setText(mainTitle);
    }
    m_pMainTitleText->setVisible(!mainTitle.isEmpty());
}

void CZRPremiumTimeActivationStateWidget::UpdatePremiumSvgWidget(const QString& uiType) {
    if (m_pPremiumTagSvg) {
        m_pPremiumTagSvg->setVisible(!uiType.isEmpty() && uiType != QLatin1String("A"));
    }
}

// The text is not taken over, on purpose: the second line stays hidden.
void CZRPremiumTimeActivationStateWidget::UpdateDetailTitleWidget(const QString& /*detailTitle*/) {
    if (m_pDetailTitleText) {
        m_pDetailTitleText->hide();
    }
}

void CZRPremiumTimeActivationStateWidget::UpdateWidget() {
    if (m_pRootLayout) {
        const bool hasTwoLines = m_pDetailTitleText && !m_pDetailTitleText->text().isEmpty();
        setFixedHeight(hasTwoLines ? 48 : 32);
        m_pRootLayout->setContentsMargins(hasTwoLines ? QMargins(8, 6, 8, 6) : QMargins(8, 4, 4, 4));
    }
    UpdateWidgetColor();
}

void CZRPremiumTimeActivationStateWidget::UpdateWidgetColor() {
    if (!HasTexts() || !m_pMainButton) {
        return;
    }
    setObjectName(QStringLiteral("PremiumBackground"));
    SetLevelNames(kLevels[0]);
    SetTitleHight(kTextHeight);
    setAttribute(Qt::WA_StyledBackground);
}

void CZRPremiumTimeActivationStateWidget::SetLevelNames(const Level& level) {
    m_pMainTitleText->setObjectName(level.regular);
    m_pDaysUnitText->setObjectName(level.regular);
    m_pDaysText->setObjectName(level.bold);
    m_pDetailTitleText->setObjectName(level.regular);
}

void CZRPremiumTimeActivationStateWidget::SetTitleHight(int height) {
    for (ZText* text :
         {m_pMainTitleText.data(), m_pDaysText.data(), m_pDaysUnitText.data(), m_pDetailTitleText.data()}) {
        text->setFixedHeight(height);
    }
}

void CZRPremiumTimeActivationStateWidget::ApplyLevel(const Level& level) {
    SetLevelNames(level);
    SetTitleHight(level.height);
    RestyleAndMeasure(*m_pDetailTitleText);
    RestyleAndMeasure(*m_pMainTitleText);
    Restyle(*m_pDaysText);
    Restyle(*m_pDaysUnitText);
    update();
}

void CZRPremiumTimeActivationStateWidget::UpdateTextWidgetSize() {
    if (!HasTexts()) {
        return;
    }
    ApplyLevel(kLevels[0]);
    StepDown(*m_pDetailTitleText);
    StepDown(*m_pMainTitleText);
}

// The name is read again after each level, and the text is not measured in between, on purpose: a text that is cut at
// the first level gets the last one.
void CZRPremiumTimeActivationStateWidget::StepDown(const ZText& text) {
    while (text.isDotted()) {
        for (size_t next = 1; next < std::size(kLevels); ++next) {
            if (text.objectName() == kLevels[next - 1].regular) {
                ApplyLevel(kLevels[next]);
            }
        }
        if (text.objectName() == kLevels[std::size(kLevels) - 1].regular) {
            return;
        }
    }
}

void CZRPremiumTimeActivationStateWidget::SetSizePolicyFixed() {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize CZRPremiumTimeActivationStateWidget::sizeHint() const {
    return {0, 0};
}

QSize CZRPremiumTimeActivationStateWidget::minimumSizeHint() const {
    return {0, 0};
}

void CZRPremiumTimeActivationStateWidget::resizeEvent(QResizeEvent* event) {
    IGrowthPremiumWidget::resizeEvent(event);
}

void CZRPremiumTimeActivationStateWidget::showEvent(QShowEvent* event) {
    PremiumWidgetHide(false);
    IGrowthPremiumWidget::showEvent(event);
}

void CZRPremiumTimeActivationStateWidget::hideEvent(QHideEvent* event) {
    PremiumWidgetHide(true);
    IGrowthPremiumWidget::hideEvent(event);
}

// The functions are copied, because they may replace themselves or delete this.
void CZRPremiumTimeActivationStateWidget::PremiumWidgetHide(bool hidden) {
    if (m_pContext && m_fnShowCallback) {
        const auto callback = m_fnShowCallback;
        callback(hidden);
    }
}

void CZRPremiumTimeActivationStateWidget::OnMainButtonClicked(bool bClick) {
    if (m_pContext && m_fnCallback) {
        const auto callback = m_fnCallback;
        callback(bClick);
    }
}
