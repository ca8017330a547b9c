#pragma once

#include <QTextLayout>

class QPainter;

namespace host::kit {

/// A text in lines of one height. Rich text keeps weight, slant, lines at letters, and colour. Main thread.
class CTextLines {
public:
    struct Shape {
        QFont font;
        Qt::Alignment alignment;  // absolute
        QTextOption::WrapMode wrap = QTextOption::WordWrap;
        int lineHeight = 0;  // 0 for that of the font
        bool elide = false;
        int maxLines = 0;  // 0 for no maximum

        int LineHeight() const;
    };

    void SetText(const QString& text, Qt::TextFormat format);
    /// The text without markup.
    QString Plain() const;

    /// The size of the text at that width.
    QSize SizeAt(const Shape& shape, int width) const;

    /// Lays out the text for `Paint`.
    void Lay(const Shape& shape, const QSize& room);
    /// Returns whether `Lay` left text out.
    bool IsCut() const { return m_bCut; }
    /// Paints the lines into `rect`, which has the size given to `Lay`.
    void Paint(QPainter& painter, const QRect& rect, const QColor& color) const;

private:
    void AppendRich(const QString& text);

    QString m_strText;
    QVector<QTextLayout::FormatRange> m_formats;
    QTextLayout m_layout;
    Shape m_shape;
    bool m_bCut = false;
};

}  // namespace host::kit
