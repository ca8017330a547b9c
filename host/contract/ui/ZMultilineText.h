#pragma once

#include "ui/ZTextBase.h"

/// A plain text, wrapped to the width. A text that exceeds the maximum number of lines ends in dots. It prefers the
/// size of the whole text, wrapped at 960 pixels at the latest. Its minimum is the size of the dots, one line high.
/// Thread: main thread.
class ZRHOST_API ZMultilineText : public ZTextBase {
    Q_OBJECT

public:
    /// Creates an empty text.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZMultilineText(QWidget* parent = nullptr);
    ~ZMultilineText() override;

    /// Sets the text, always as plain text.
    void setText(const QString& text);
    /// Sets the alignment of the lines. The default is left and top.
    void setAlignment(Qt::Alignment alignment);
    /// Sets the distance of two lines in pixels. The default is that of the font.
    void setLineHeight(int pixels);
    /// Sets the maximum number of lines; 0 for no maximum, which is the default.
    void setMaximumTextLine(int lines);
    /// Sets whether each paint event lays out the text again. The default is false: changes of text, size, font and
    /// the properties above cause a new layout.
    void setRedoLayoutInPaintEvent(bool redo);

private:
    struct Private;
    Private* const d;  // owned by the base
};
