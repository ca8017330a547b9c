#pragma once

#include <QMargins>
#include <QTextOption>
#include "ui/ZTextBase.h"

/// A plain or rich text, wrapped to the width. Rich text loads nothing, and its links are not active.
/// It prefers the size of text and margins, wrapped at 960 pixels at the latest. Its minimum is the size of the dots.
/// Thread: main thread.
class ZRHOST_API ZMultilineTextLabel : public ZTextBase {
    Q_OBJECT

public:
    /// Creates an empty text.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZMultilineTextLabel(QWidget* parent = nullptr);
    ~ZMultilineTextLabel() override;

    /// Sets the text and how it is read. With Qt::AutoText a text with markup is rich text.
    void setTextWithFormat(const QString& text, Qt::TextFormat format);
    /// Sets how the current text is read. The default is Qt::AutoText.
    void setTextFormat(Qt::TextFormat format);
    /// Returns the format as it was set.
    Qt::TextFormat textFormat() const;
    /// Sets the alignment of the lines. The default is left and vertically centred.
    void setAlignment(Qt::Alignment alignment);
    /// Sets the distance of two lines in pixels. The default is that of the font.
    void setLineHeight(int pixels);
    /// Sets the distance between the text and each edge, in pixels. The default is 0.
    void setMargins(const QMargins& margins);
    /// Sets whether a text that does not fit the height ends in dots; otherwise it is cut between two lines. The
    /// default is false.
    void setElidable(bool elidable);
    /// Sets where lines are wrapped. The default is QTextOption::WordWrap.
    void setWrapMode(QTextOption::WrapMode mode);

private:
    struct Private;
    Private* const d;  // owned by the base
};
