#include "pages/MembershipCard.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVariant>

#include "ElidedLabel.h"
#include "GrowthService.h"
#include "ISessionControl.h"
#include "Links.h"
#include "PremiumRights.h"
#include "RightStates.h"
#include "Translation.h"
#include "VipSlot.h"
#include "core/environment.h"
#include "core/url_linkid.h"
#include "pages/Page.h"

namespace {

constexpr const char* kPageId = "account";
constexpr unsigned long kMembershipCentreLink = 202011732;
constexpr CSBrokerId kBroker = 0;
constexpr int kRightsPerRow = 2;

constexpr EnPremiumAccess kShownRights[] = {
    EnPremiumAccess_us_option_lv2,  EnPremiumAccess_hk_stock_lv2,   EnPremiumAccess_us_total_view_lv2,
    EnPremiumAccess_kline_Pattern,  EnPremiumAccess_AnalystRatings, EnPremiumAccess_short_selling_analysis,
    EnPremiumAccess_AIStockExplain, EnPremiumAccess_MyPagePremium,
};

constexpr const char* kStatusTitles[] = {
    QT_TRANSLATE_NOOP("CMembershipCard", "Edition"),
    QT_TRANSLATE_NOOP("CMembershipCard", "VIP system"),
    QT_TRANSLATE_NOOP("CMembershipCard", "Membership"),
    QT_TRANSLATE_NOOP("CMembershipCard", "Plan"),
};

const char* PlanOf(ZRVipEngineStatus status) {
    switch (status) {
        case kVipEngineTrial:
            return QT_TRANSLATE_NOOP("CMembershipCard", "Trial");
        case kVipEngineMember:
            return QT_TRANSLATE_NOOP("CMembershipCard", "Renewed or free of charge");
        case kVipEngineAssetProtection:
            return QT_TRANSLATE_NOOP("CMembershipCard", "Asset protection");
        case kVipEngineExpired:
            return QT_TRANSLATE_NOOP("CMembershipCard", "Expired");
        case kVipEngineNonMember:
            return QT_TRANSLATE_NOOP("CMembershipCard", "None");
        case kVipEngineRenewalOff:
            return QT_TRANSLATE_NOOP("CMembershipCard", "Not renewed");
        default:
            return QT_TRANSLATE_NOOP("CMembershipCard", "Not known");
    }
}

int TypeOf(const CPremiumUIAccessData& record) {
    return record.nActivationType > 0 && record.nActivationType < right_states::kCount ? record.nActivationType : 0;
}

QString StateOf(const CPremiumUIAccessData& record) {
    return record.nActivationType == right_states::kLimitedTime
               ? CMembershipCard::tr("Days left: %1").arg(record.nDaysLeft)
               : right_states::Name(record.nActivationType);
}

CElidedLabel* NewElided(const char* role, QWidget* parent) {
    auto* label = new CElidedLabel(parent);
    label->setProperty("role", QString::fromLatin1(role));
    return label;
}

bool IsMember(const VipStatus& vip) {
    return (vip.isNewSystem ? vip.newState : vip.state) == 1;
}

QString MembershipOf(const VipStatus& vip) {
    if (!IsMember(vip)) {
        return CMembershipCard::tr("No member");
    }
    return vip.isNewSystem ? CMembershipCard::tr("Member") : CMembershipCard::tr("Member of grade %1").arg(vip.grade);
}

}  // namespace

CMembershipCard::CMembershipCard(const ISessionControl& session, const CPremiumRights& rights, QWidget* parent)
    : QFrame(parent), m_session(session), m_rights(rights), m_pName(NewElided("section", this)) {
    setObjectName(QStringLiteral("MembershipCard"));
    setProperty("role", QStringLiteral("card"));
    m_pName->setObjectName(QStringLiteral("MembershipName"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->setSpacing(10);
    layout->addWidget(NewHead());
    layout->addLayout(NewStatus());
    layout->addLayout(NewRights());
    connect(&rights, &CPremiumRights::Changed, this, &CMembershipCard::Show);
    connect(&session, &ISessionControl::UsersChanged, this, &CMembershipCard::Show);
    Show();
}

QWidget* CMembershipCard::NewHead() {
    auto* head = new QWidget(this);
    auto* centre = new QPushButton(head);
    centre->setObjectName(QStringLiteral("MembershipCentre"));
    centre->setFlat(true);
    centre->setCursor(Qt::PointingHandCursor);
    centre->setProperty("link", true);
    connect(centre, &QPushButton::clicked, this, [] {
        if (const auto service = GrowthService()) {
            service->OpenVipWebPage(
                QString::fromStdString(core::url_linkid::GetLinkUrlWithTargetLinkId(kMembershipCentreLink, kBroker)));
        }
    });
    translation::OnLanguageChange(centre, [centre] { centre->setText(tr("Membership centre")); });
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pName, 1);
    layout->addWidget(centre);
    return head;
}

QGridLayout* CMembershipCard::NewStatus() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(1);
    for (const char* title : kStatusTitles) {
        const int column = int(m_status.size());
        QLabel* label = CPage::NewLabel("muted", QString(), this);
        translation::OnLanguageChange(label, [label, title] { label->setText(tr(title)); });
        m_status.push_back(CPage::NewLabel("strong", QString(), this));
        grid->addWidget(label, 0, column);
        grid->addWidget(m_status.back(), 1, column);
        grid->setColumnStretch(column, 1);
    }
    return grid;
}

QGridLayout* CMembershipCard::NewRights() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(6);
    for (const EnPremiumAccess right : kShownRights) {
        const int place = int(m_titles.size());
        m_titles.push_back(NewElided("body", this));
        m_states.push_back(CPage::NewLabel("muted", QString(), this));
        const auto newMark = [&](EnVipKind kind) {
            return new CVipSlot({kind, right, ZRVipUIDataMain, kPageId}, m_rights, this);
        };
        QHBoxLayout* line =
            CPage::NewHeading(m_titles.back(), {newMark(EnVipKind::Icon), newMark(EnVipKind::TagGrade)});
        line->addWidget(m_states.back());
        grid->addLayout(line, place / kRightsPerRow, place % kRightsPerRow);
        grid->setColumnStretch(place % kRightsPerRow, 1);
    }
    return grid;
}

void CMembershipCard::Show() {
    ShowStatus();
    ShowRights();
}

void CMembershipCard::ShowStatus() {
    QString name = tr("Nobody is logged in");
    for (const ServerUser& user : m_session.Users()) {
        if (user.id == m_session.UserId()) {
            name = QStringLiteral("%1  %2").arg(user.name).arg(user.id);
        }
    }
    int counts[right_states::kCount] = {};
    for (const CPremiumUIAccessData& record : m_rights.Table()) {
        ++counts[TypeOf(record)];
    }
    QStringList parts;
    for (int type = 0; type < right_states::kCount; ++type) {
        if (counts[type] != 0) {
            parts << tr("%1: %2").arg(right_states::Name(type)).arg(counts[type]);
        }
    }
    m_pName->SetWhole(parts.isEmpty() ? name : name + QStringLiteral("    ") + parts.join(QStringLiteral("    ")));
    const VipStatus& vip = m_rights.Vip();
    const QString values[] = {
        core::environment::IsVelora() ? QStringLiteral("Velora") : QStringLiteral("Kestrel"),
        vip.isNewSystem ? tr("Newer") : tr("Older"),
        MembershipOf(vip),
        tr(PlanOf(vip.engine)),
    };
    for (size_t place = 0; place < m_status.size(); ++place) {
        m_status[place]->setText(values[place]);
    }
}

void CMembershipCard::ShowRights() {
    for (size_t place = 0; place < m_titles.size(); ++place) {
        const CPremiumUIAccessData record = m_rights.Table().value(kShownRights[place]);
        const QString number = tr("Right %1").arg(kShownRights[place]);
        m_titles[place]->SetWhole(record.strMainTitle.isEmpty() ? number : record.strMainTitle);
        m_states[place]->setText(StateOf(record));
    }
}
