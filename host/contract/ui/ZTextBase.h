#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// The base of the texts of the kit. It lays out its text again when its size, font, style sheet or the theme changes.
/// Size, weight and colour come from the style-sheet rule of the object name, if there is one. If the text is cut, the
/// tool tip shows all of it, unless another one was set.
/// Thread: main thread.
class ZRHOST_API ZTextBase : public QWidget {
    Q_OBJECT

public:
    ~ZTextBase() override;

    /// Returns the text as it was set, also if it is displayed with dots.
    QString text() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// Returns whether the text is wrapped.
    bool hasHeightForWidth() const override;
    /// Returns the height of the wrapped text at that width in pixels, or -1 if it is not wrapped.
    int heightForWidth(int width) const override;

protected:
    struct Private;
    /// Ownership: the parent deletes it. Without a parent the caller does.
    ZTextBase(Private* state, QWidget* parent);
    /// Returns the state given to the constructor. The widget owns it.
    Private* state() const;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    const std::unique_ptr<Private> d;
};
