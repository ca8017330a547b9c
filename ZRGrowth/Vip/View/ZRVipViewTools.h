#pragma once

#include <json/value.h>

#include <QPixmap>
#include <QSize>
#include <memory>
#include <string>

#include "Vip/ZRVipIds.h"
#include "core/message_dispatch.h"
#include "modules/ZRGrowthTypes.h"

class QWidget;

/// Operations that several VIP widgets share. Main thread.
namespace vip_view {

/// Returns the image in the current theme, scaled into `size`, aspect ratio kept, with as many pixels as the widget's
/// screen has. Null for an unknown name.
QPixmap ScaledImage(const QString& name, const QSize& size, const QWidget* widget);

/// Returns the URL of a link id. Empty for an unknown one.
QString LinkUrl(unsigned long linkId);

/// The rule of a widget that offers a right: each needs a button text, and serves rights that are frozen, not active or
/// ready.
struct SOfferRule {
    bool servesLimitedTime;
    bool needsTitle;
    bool namesDataType;  // in the log line about the activation type
};

/// Returns why the rule refuses the right, for the log line; empty if it allows the right.
std::string RefusalOf(const SOfferRule& rule, EnPremiumAccess access, ZRVipUIDataType dataType);

/// Returns the report parameter "permission_type".
std::string PermissionType(EnPremiumAccess access);

/// Returns whether the right is one of market data. Others are functions, whose events have other names.
bool IsMarketRight(EnPremiumAccess access);

/// Sends the report of a click on a banner or a mask. `params` contains what is particular to the widget.
void ReportEntranceClick(EnPremiumAccess access, ZRVipUIDataType dataType, int pageStatus, Json::Value params);

/// Calls the receiver's OnStateChanged at each message about the VIP status. `here` is the call site. The receiver's
/// destructor ends it.
template <class Receiver>
void BindStatus(const char* here, Receiver* receiver) {
    core::__CMessageDispatch(here).Bind(
        kMsgVipStatusChanged,
        [receiver](unsigned int id, unsigned long param, std::shared_ptr<core::CMessageBody> body) {
            receiver->OnStateChanged(id, param, std::move(body));
        },
        receiver);
}

}  // namespace vip_view
