#include "Vip/View/ZRVipMenuEntryAction.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionMenuItem>

#include "GrowthBizLogUtil.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipViewTools.h"
#include "Vip/ZRVipIds.h"
#include "core/langx.h"
#include "framework/defensive.h"
#include "ui/ZCustomColorSvg.h"
#include "ui/ZMenu.h"
#include "ui/ZResource.h"
#include "ui/zr_ui_font.h"
#include "ui/zr_ui_res.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;
constexpr int kBannerTop = 8;
constexpr int kBannerHeight = 32;
constexpr double kBannerRadius = 2.0;
constexpr int kIconLeft = 8;
constexpr int kIconSize = 16;
constexpr int kTextLeft = 32;
constexpr int kTextGap = 8;
constexpr int kTextFontToken = 3;
constexpr int kTextWeight = 50;
constexpr int kPillHeight = 18;
constexpr int kPillPadding = 8;
constexpr int kPillRight = 8;
constexpr double kPillRadius = 4.0;
constexpr int kPillFontToken = 0;
constexpr int kPillWeight = 63;

QColor Color(const char* name) {
    return zr_ui_res::TResource<QColor>(QString::fromLatin1(name)).value();
}

QFont WithTokenAndWeight(const QFont& font, int token, int weight) {
    QFont changed = zr_ui_font::WithToken(font, token);
    changed.setWeight(weight);
    return changed;
}

}  // namespace

CZRVipMenuEntryAction::CZRVipMenuEntryAction(ZMenu* menu) : ZAction(menu), m_pMenu(menu) {
    FrameWork::ConnectChecked(kGrowthModuleTag, this, &QAction::triggered, this,
                              &CZRVipMenuEntryAction::OnEntryClicked);
    vip_view::BindStatus(GROWTH_HERE, this);
    RefreshState();
}

CZRVipMenuEntryAction::~CZRVipMenuEntryAction() {
    core::__CMessageDispatch(GROWTH_HERE).UnBind(this);
}

void CZRVipMenuEntryAction::RefreshState() {
    m_bIsMember = CZRVipManager::Singleton()->IsVipMember();
    m_bIsNewVip = CZRVipManager::Singleton()->IsNewVipSystem();
    if (m_bIsNewVip) {
        setSvgIcon(QString(), ZIconColorStyle::normal);
        setText(core::langx::tr(362209, "Engine"));
    } else {
        setSvgIcon(ZResource::icon_base_person_vip_16, ZIconColorStyle::normal);
        setText(core::langx::tr(310783, "会员中心"));
    }
    setVisible(true);
    LogInfo("Vip Menu Entry Refreshed, New Vip = {}, Is Member = {}", m_bIsNewVip, m_bIsMember);
}

void CZRVipMenuEntryAction::OnStateChanged(unsigned int /*messageId*/, unsigned long /*param*/,
                                           std::shared_ptr<core::CMessageBody> /*body*/) {
    RefreshState();
    if (m_pMenu) {
        m_pMenu->update();
    }
}

void CZRVipMenuEntryAction::OnEntryClicked() {
    const QString url = vip_view::LinkUrl(kLinkMembershipCentre);
    LogInfo("Vip Menu Entry Clicked, Jump To Membership Center, Url = {}", url.toStdString());
    CZRVipManager::Singleton()->OpenVipWebPage(url);
}

bool CZRVipMenuEntryAction::paint(QPainter* painter, const QStyleOptionMenuItem& option, const ZMenu* /*menu*/) const {
    if (!m_bIsNewVip) {
        return false;
    }
    if (!painter) {
        GROWTH_LOG(kZRLogFatal, "Vip Menu Entry Paint Failed, Painter Is Null");
        return false;
    }
    const QColor mainColor = Color(m_bIsMember ? "ck_orange850" : "ct_text_white");
    const QRect banner(option.rect.left(), option.rect.top() + kBannerTop, option.rect.width(), kBannerHeight);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    PaintBanner(painter, banner, option.state.testFlag(QStyle::State_Selected));

    ZCustomColorSvg icon;
    icon.setFile(ZResource::icon_engine_16);
    icon.setColor(mainColor);
    const int iconTop = banner.top() + (kBannerHeight - kIconSize) / 2;
    icon.renderer()->render(ZWidgetState::normal, painter,
                            QRectF(banner.left() + kIconLeft, iconTop, kIconSize, kIconSize));

    const QRect pill = PaintPill(painter, banner);
    const QFont font = WithTokenAndWeight(painter->font(), kTextFontToken, kTextWeight);
    painter->setFont(font);
    painter->setPen(mainColor);
    const int textLeft = banner.left() + kTextLeft;
    const int available = pill.left() - kTextGap - textLeft;
    if (available > 0) {
        const QString shown = QFontMetrics(font).elidedText(text(), Qt::ElideRight, available);
        painter->drawText(QRect(QPoint(textLeft, banner.top()), QPoint(pill.left() - kTextGap - 1, banner.bottom())),
                          Qt::AlignLeft | Qt::AlignVCenter, shown);
    }
    painter->restore();
    return true;
}

void CZRVipMenuEntryAction::PaintBanner(QPainter* painter, const QRect& banner, bool selected) const {
    QPainterPath path;
    path.addRoundedRect(banner, kBannerRadius, kBannerRadius);
    painter->setClipPath(path);
    const QString name =
        m_bIsMember ? ZResource::img_bg_engine_banner_230x32_normal : ZResource::img_bg_noengine_banner_230x32_normal;
    const QPixmap image = zr_ui_res::TResource<QPixmap>(name).value(painter->device()->devicePixelRatioF());
    painter->drawPixmap(banner, image);
    const QColor hover = Color("ct_bg_hover");
    if (selected) {
        painter->fillRect(banner, hover);
    }
    painter->setClipping(false);
}

// Paints the pill at the banner's right end, in whole pixels, and returns its rectangle.
QRect CZRVipMenuEntryAction::PaintPill(QPainter* painter, const QRect& banner) const {
    const QString text = m_bIsMember ? core::langx::tr(361769, "Explore") : core::langx::tr(361768, "Unlock");
    const QFont font = WithTokenAndWeight(painter->font(), kPillFontToken, kPillWeight);
    const int width = QFontMetrics(font).horizontalAdvance(text) + 2 * kPillPadding;
    // The right edges are inclusive coordinates.
    const QRect pill(banner.right() - kPillRight - width, banner.top() + (kBannerHeight - kPillHeight) / 2, width,
                     kPillHeight);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Color(m_bIsMember ? "ck_gray750" : "ck_gray100"));
    painter->drawRoundedRect(pill, kPillRadius, kPillRadius);
    painter->setFont(font);
    painter->setPen(Color(m_bIsMember ? "ck_champagne300" : "ck_gray950"));
    painter->drawText(pill, Qt::AlignCenter, text);
    return pill;
}
