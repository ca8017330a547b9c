#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A plain text, wrapped to the width. A text that exceeds the maximum number of lines ends in dots.
/// Size, weight and colour come from the style-sheet rule of the object name, if there is one.
/// Thread: main thread.
class ZRHOST_API ZMultilineText : public QWidget {
    Q_OBJECT

public:
    /// Creates an empty text.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZMultilineText(QWidget* parent = nullptr);
    ~ZMultilineText() override;

    /// Sets the text, always as plain text.
    void setText(const QString& text);
    /// Returns the text as it was set.
    QString text() const;
    /// Sets the alignment of the lines. The default is left and top.
    void setAlignment(Qt::Alignment alignment);
    /// Sets the distance of two lines in pixels. The default is that of the font.
    void setLineHeight(int pixels);
    /// Sets the maximum number of lines; 0 for no maximum, which is the default.
    void setMaximumTextLine(int lines);
    /// Sets whether each paint event lays out the text again. The default is false: changes of text, size, font and
    /// the properties above cause a new layout.
    void setRedoLayoutInPaintEvent(bool redo);

    /// Returns the size of the whole text, wrapped at 960 pixels at the latest.
    QSize sizeHint() const override;
    /// Returns the size of the dots, one line high.
    QSize minimumSizeHint() const override;
    /// Returns true.
    bool hasHeightForWidth() const override;
    /// Returns the height of the text in pixels, wrapped to that width.
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
