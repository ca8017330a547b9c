#pragma once

#include <QAction>
#include <memory>

#include "framework/export.h"
#include "ui/ZWidgetTypes.h"

class QPainter;
class QStyleOptionMenuItem;
class ZMenu;

/// A menu entry with an icon of ZResource. A derived class can paint the whole entry.
/// Thread: main thread.
class ZRHOST_API ZAction : public QAction {
    Q_OBJECT

public:
    /// Creates an action without text and icon.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZAction(QObject* parent = nullptr);
    ~ZAction() override;

    /// Sets the icon, a name of ZResource; empty for none. It follows the theme.
    /// Failure: an unknown name shows nothing and is logged.
    void setSvgIcon(const QString& name, ZIconColorStyle::type style);

    /// Paints the entry into `option.rect`. `option.state` contains QStyle::State_Selected for the current entry.
    /// Returns whether it painted; otherwise the menu paints the entry in its usual way. The default returns false.
    /// A ZMenu also calls it with a scratch painter to learn whether the entry paints itself.
    /// Ownership: `painter` and `menu` are valid only during the call.
    virtual bool paint(QPainter* painter, const QStyleOptionMenuItem& option, const ZMenu* menu) const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
