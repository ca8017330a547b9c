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
    explicit ZMenu(QWidget* parent = nullptr);
    ~ZMenu() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void actionEvent(QActionEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
