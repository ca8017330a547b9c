#pragma once

#include <QPointer>
#include <memory>

#include "core/message_dispatch.h"
#include "ui/ZAction.h"

class QRect;

/// The entry of the user menu that opens the membership centre. In the newer VIP system it paints itself as a banner.
/// Main thread.
class CZRVipMenuEntryAction : public ZAction {
    Q_OBJECT

public:
    explicit CZRVipMenuEntryAction(ZMenu* menu);
    ~CZRVipMenuEntryAction() override;

    void RefreshState();
    void OnStateChanged(unsigned int messageId, unsigned long param, std::shared_ptr<core::CMessageBody> body);

    bool paint(QPainter* painter, const QStyleOptionMenuItem& option, const ZMenu* menu) const override;

private Q_SLOTS:
    void OnEntryClicked();

private:
    void PaintBanner(QPainter* painter, const QRect& banner, bool selected) const;
    QRect PaintPill(QPainter* painter, const QRect& banner) const;

    QPointer<ZMenu> m_pMenu;
    bool m_bIsMember = false;
    bool m_bIsNewVip = false;
};
