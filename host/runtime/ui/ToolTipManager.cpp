#include <QWidget>

#include "ui/IZToolTipManager.h"
#include "ui/KitPaint.h"

namespace {

class CToolTipManager : public IZToolTipManager {
public:
    void RegisterToolTips(QWidget* widget, const ToolTipInfo& info) override {
        if (widget) {
            widget->setToolTip(host::kit::TipText(info.text));
        }
    }

    void UnRegisterToolTips(QWidget* widget) override {
        if (widget) {
            widget->setToolTip(QString());
        }
    }
};

}  // namespace

IZToolTipManager::~IZToolTipManager() = default;

// Never destroyed: a destructor of a static object may still call it.
IZToolTipManager* IZToolTipManager::instance() {
    static auto* manager = new CToolTipManager;
    return manager;
}
