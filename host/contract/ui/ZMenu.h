#pragma once

#include <QMenu>
#include <memory>

#include "framework/export.h"

/// A menu whose entries may be a ZAction that paints itself. Such an entry is 40 pixels high and at least 230 pixels
/// wide; with some paddings in a style sheet it is 41 pixels high. Other entries have their usual size.
/// Thread: main thread.
class ZRHOST_API ZMenu : public QMenu {
    Q_OBJECT

public:
    /// Creates an empty menu.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZMenu(QWidget* parent = nullptr);
    ~ZMenu() override;

protected:
    /// Paints the usual menu, then the entries that paint themselves.
    void paintEvent(QPaintEvent* event) override;
    /// Fits row height and menu width to an entry that was added or changed. A removed entry gets its font back.
    void actionEvent(QActionEvent* event) override;
    /// Fits all entries again after a change of style or font.
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
