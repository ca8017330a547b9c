#include "framework/HostLog.h"
#include "ui/Drawings.h"
#include "ui/KitPaint.h"
#include "ui/zr_ui_res.h"

namespace zr_ui_res {
namespace {

constexpr host::CHostLog kLog("Resource");

}  // namespace

// Never destroyed: painting code may outlive static objects.
Provider* Provider::instance() {
    static auto* provider = new Provider;
    return provider;
}

void Provider::get(std::shared_ptr<const QColor>& color, const QString& name) {
    const QColor found = host::kit::Color(name.toStdString());
    color = found.isValid() ? std::make_shared<const QColor>(found) : nullptr;
    if (!color) {
        kLog.Error(FMT_STRING("There is no colour \"{}\""), name.toStdString());
    }
}

void Provider::get(std::shared_ptr<const QPixmap>& pixmap, const QString& name, double devicePixelRatio) {
    const QSize size = host::drawings::SizeOf(name);
    if (size.isEmpty()) {
        pixmap = nullptr;
        kLog.Error(FMT_STRING("There is no drawing \"{}\""), name.toStdString());
        return;
    }
    pixmap =
        std::make_shared<const QPixmap>(host::drawings::Render(name, size, devicePixelRatio, host::kit::Color("text")));
}

}  // namespace zr_ui_res
