#include "Ad/View/ZRAdBottomPopupDeveloperView.h"

#include <fmt/format.h>
#include <json/reader.h>

#include <QDateTime>
#include <QHBoxLayout>
#include <QPointer>

#include "Ad/Model/ZRAdModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "GrowthBizLogUtil.h"
#include "core/config_local.h"
#include "core/login_status_data.h"
#include "framework/defensive.h"
#include "ui/ZButton.h"
#include "ui/ZText.h"

namespace {

constexpr int kWidth = 1500;
constexpr int kSpacing = 5;
constexpr int kShowIntervalTypes = 10;  // from 0

const QString kNothing = QStringLiteral("无");

constexpr char kSample[] = R"({
    "ad_type": 2, "ad_position": 42, "show_duration": 10, "show_interval": 3600, "show_interval_type": 1,
    "enable_close": true,
    "ad": [{
        "ad_id": "18088", "name": "open_account",
        "start_time": 1674144000, "end_time": 1876822400, "expire_time": 1875158131, "push_id": "",
        "popup_ad": {
            "popup_type": 2, "show_areas": [508, 500, 501, 502, 503, 504],
            "bottom_popup": {
                "schema": "https://www.example.com/open-account", "img": "https://www.example.com/open-account.png"
            }
        }
    }]
})";

QString LinesOf(CZRAdModelList& list) {
    std::string text = fmt::format(
        FMT_STRING("ad_type: {}\nad_position: {}\nshow_interval_type: {}\nshow_interval: {}\nshow_duration: {}\n"),
        int(list.GetAdType()), list.GetAdPosition(), list.GetShowIntervalType(), list.GetShowInterval(),
        list.GetShowDuration());
    QList<CZRAdModel*>* ads = list.GetAdList();
    auto* ad = ads && !ads->isEmpty() ? qobject_cast<CZRAdPopupModel*>(ads->first()) : nullptr;
    if (ad) {
        text += fmt::format(FMT_STRING("ad_id: {}\nstart_time: {}\nend_time: {}\nexpire_time: {}\npopup_type: {}\n"),
                            ad->GetAdId().toStdString(), ad->GetStartTime(), ad->GetEndTime(), ad->GetExpireTime(),
                            ad->GetPopupType());
        if (ad->GetBottomPopup()) {
            text += fmt::format(FMT_STRING("schema: {}\nimg: {}"), ad->GetBottomPopup()->GetSchema().toStdString(),
                                ad->GetBottomPopup()->GetImage().toStdString());
        }
    }
    return QString::fromStdString(text);
}

ZText* NewText(const QString& words) {
    auto* text = new ZText;
    text->setText(words);
    return text;
}

ZButton* NewButton(const QString& name, const QString& words) {
    auto* button = new ZButton;
    button->setObjectName(name);
    button->setText(words);
    return button;
}

ZText* AddRow(QVBoxLayout& layout, const QString& title, ZButton* button) {
    auto* row = new QHBoxLayout;
    row->addWidget(NewText(title));
    auto* text = new ZText;
    text->setWordWrap(true);
    row->addWidget(text);
    row->addWidget(button);
    row->addStretch();
    layout.addLayout(row);
    return text;
}

}  // namespace

CZRAdBottomPopupDeveloperView::CZRAdBottomPopupDeveloperView(QObject* parent)
    : QWidget(qobject_cast<QWidget*>(parent)) {
    InitUI();
    UpdateTexts();
}

CZRAdBottomPopupDeveloperView::~CZRAdBottomPopupDeveloperView() = default;

void CZRAdBottomPopupDeveloperView::InitUI() {
    setObjectName(QStringLiteral("CZRAdBottomPopupDeveloperView"));
    setFixedWidth(kWidth);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(kSpacing);
    layout->addWidget(
        NewText(QStringLiteral("******************************* 广告 - 底部弹窗 *******************************")));
    ZButton* update = NewButton(QStringLiteral("UpdateText"), QStringLiteral("刷新（调试数据需要手动刷新）"));
    layout->addWidget(update, 0, Qt::AlignLeft);
    ZButton* clear = NewButton(QStringLiteral("ClearLastShowTimestamp"), QStringLiteral("清除"));
    m_pLastShowText = AddRow(*layout, QStringLiteral("上次展示时间："), clear);
    m_pLastShowText->setObjectName(QStringLiteral("LastShowText"));
    ZButton* generate = NewButton(QStringLiteral("GenerateCacheData"), QStringLiteral("生成测试数据"));
    m_pCacheDataText = AddRow(*layout, QStringLiteral("缓存广告数据："), generate);
    m_pCacheDataText->setObjectName(QStringLiteral("CacheDataText"));
    layout->addStretch();
    FrameWork::ConnectChecked(kGrowthModuleTag, update, &ZButton::clicked, this,
                              &CZRAdBottomPopupDeveloperView::OnUpdateText);
    FrameWork::ConnectChecked(kGrowthModuleTag, clear, &ZButton::clicked, this,
                              &CZRAdBottomPopupDeveloperView::OnClearLastShowTimestamp);
    FrameWork::ConnectChecked(kGrowthModuleTag, generate, &ZButton::clicked, this,
                              &CZRAdBottomPopupDeveloperView::OnGenerateCacheData);
}

void CZRAdBottomPopupDeveloperView::SetSetModelCallback(std::function<void(CZRAdModelList*)> callback) {
    m_fnSetModel = std::move(callback);
}

void CZRAdBottomPopupDeveloperView::SetGetModelCallback(std::function<CZRAdModelList*()> callback) {
    m_fnGetModel = std::move(callback);
}

QString CZRAdBottomPopupDeveloperView::GetAdLastShowTimeStampKey(int adType, int adPosition, int showIntervalType) {
    return QString::fromStdString(fmt::format(FMT_STRING("{}_{}_{}_{}_{}"), "AdLastShowTimeStampKey", adType,
                                              adPosition, core::login_status_data::Login_GetUserID(),
                                              showIntervalType));
}

void CZRAdBottomPopupDeveloperView::ClearAdBottomPopupLastShowTimestamp() {
    for (int type = 0; type < kShowIntervalTypes; ++type) {
        const QString key = GetAdLastShowTimeStampKey(ZRAdTypePopup, kAdPositionBottomPopup, type);
        core::config_local::AppCfgSaveInt64(key.toStdString(), 0);
    }
}

QString CZRAdBottomPopupDeveloperView::GetAdBottomPopupLastShowTimeStamp() {
    std::string rows;
    for (int type = 0; type < kShowIntervalTypes; ++type) {
        const QString key = GetAdLastShowTimeStampKey(ZRAdTypePopup, kAdPositionBottomPopup, type);
        long time = 0;
        core::config_local::AppCfgReadInt64(key.toStdString(), time);
        if (time != 0) {
            rows += fmt::format(
                FMT_STRING("ShowIntervalType:{}, time:{}\n"), type,
                QDateTime::fromSecsSinceEpoch(time).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toStdString());
        }
    }
    return rows.empty() ? kNothing : QString::fromStdString(rows);
}

void CZRAdBottomPopupDeveloperView::UpdateLastShowTimestampText() {
    m_pLastShowText->setText(GetAdBottomPopupLastShowTimeStamp());
}

void CZRAdBottomPopupDeveloperView::OnClearLastShowTimestamp() {
    ClearAdBottomPopupLastShowTimestamp();
    UpdateLastShowTimestampText();
}

void CZRAdBottomPopupDeveloperView::UpdateTexts() {
    UpdateLastShowTimestampText();
    OnUpdateCacheDataText();
}

void CZRAdBottomPopupDeveloperView::OnUpdateText() {
    UpdateTexts();
}

void CZRAdBottomPopupDeveloperView::OnUpdateCacheDataText() {
    // The callback may delete the panel, which owns the running function.
    const QPointer<CZRAdBottomPopupDeveloperView> alive(this);
    const std::function<CZRAdModelList*()> get = m_fnGetModel;
    CZRAdModelList* list = get ? get() : nullptr;
    if (alive) {
        m_pCacheDataText->setText(list ? LinesOf(*list) : kNothing);
    }
}

void CZRAdBottomPopupDeveloperView::OnGenerateCacheData() {
    Json::Value sample;
    if (!m_fnSetModel || !Json::Reader().parse(kSample, sample)) {
        return;
    }
    auto* list = new CZRAdModelList(nullptr);
    list->Decode(sample);
    // The callback may delete the panel, which owns the running function.
    const QPointer<CZRAdBottomPopupDeveloperView> alive(this);
    const std::function<void(CZRAdModelList*)> set = m_fnSetModel;
    set(list);
    if (alive) {
        OnUpdateCacheDataText();
    }
}
