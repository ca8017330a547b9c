#include "AccessibleReach.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace {

constexpr const char* kProperty = "outOfReach";

/// An invisible element without text, children and actions.
class CUnreachable : public QAccessibleWidget {
public:
    explicit CUnreachable(QWidget* widget) : QAccessibleWidget(widget) {}

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QString text(QAccessible::Text /*type*/) const override { return {}; }
    void* interface_cast(QAccessible::InterfaceType /*type*/) override { return nullptr; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = true;
        state.disabled = true;
        return state;
    }
};

QAccessibleInterface* NewUnreachable(const QString& /*className*/, QObject* object) {
    return object && object->isWidgetType() && object->property(kProperty).toBool()
               ? new CUnreachable(static_cast<QWidget*>(object))
               : nullptr;
}

}  // namespace

void SetOutOfReach(QWidget* widget, bool outOfReach) {
    if (widget->property(kProperty).toBool() == outOfReach) {
        return;
    }
    QAccessible::installFactory(NewUnreachable);  // has no effect from the second time on
    widget->setProperty(kProperty, outOfReach);
    // The next question creates a new element.
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(QAccessible::queryAccessibleInterface(widget)));
    QAccessibleEvent event(widget, outOfReach ? QAccessible::ObjectHide : QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}
