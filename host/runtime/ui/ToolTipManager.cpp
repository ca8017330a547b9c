#include <QWidget>

#include "ui/IZToolTipManager.h"

namespace {

class CToolTipManager : public IZToolTipManager {
public:
    // Qt reads a text that begins like markup as rich text, unless it is escaped inside of some.
    void RegisterToolTips(QWidget* widget, const ToolTipInfo& info) override {
        if (widget) {
            widget->setToolTip(info.text.isEmpty() ? QString()
                                                   : QStringLiteral("<qt>%1</qt>").arg(info.text.toHtmlEscaped()));
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
