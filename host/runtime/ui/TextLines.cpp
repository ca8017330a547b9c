#include "ui/TextLines.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QtMath>

namespace host::kit {
namespace {

constexpr QChar kDots(0x2026);

/// A document that loads neither pictures nor style sheets.
class CClosedDocument : public QTextDocument {
protected:
    // For a null picture the toolkit would read the file itself.
    QVariant loadResource(int type, const QUrl& /*name*/) override {
        return type == ImageResource ? QVariant(QImage(1, 1, QImage::Format_ARGB32_Premultiplied)) : QVariant();
    }
};

QTextCharFormat InlineOf(const QTextCharFormat& format) {
    QTextCharFormat kept;
    kept.setFontWeight(format.fontWeight());
    kept.setFontItalic(format.fontItalic());
    kept.setFontStrikeOut(format.fontStrikeOut());
    // A link has the look of its text, because it is not active.
    if (!format.isAnchor()) {
        kept.setFontUnderline(format.fontUnderline());
        if (format.hasProperty(QTextFormat::ForegroundBrush)) {
            kept.setForeground(format.foreground());
        }
    }
    return kept;
}

/// Returns whether the text fits into `maxLines` lines; 0 for no maximum.
bool LayLines(QTextLayout& layout, const CTextLines::Shape& shape, int width, int maxLines) {
    const int height = shape.LineHeight();
    layout.beginLayout();
    for (int count = 0;; ++count) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        line.setPosition(QPointF(0, count * height + (height - line.height()) / 2));
        if (count == maxLines && maxLines > 0) {
            layout.endLayout();
            return false;
        }
    }
    layout.endLayout();
    return true;
}

bool IsWider(const QTextLayout& layout, int width) {
    for (int i = 0; i < layout.lineCount(); ++i) {
        if (layout.lineAt(i).naturalTextWidth() > width) {
            return true;
        }
    }
    return false;
}

void Prepare(QTextLayout& layout, const CTextLines::Shape& shape, QTextOption::WrapMode wrap) {
    layout.setFont(shape.font);
    QTextOption option(shape.alignment);
    option.setWrapMode(wrap);
    layout.setTextOption(option);
}

// A word that is wider than the line is broken.
bool LayWrapped(QTextLayout& layout, const CTextLines::Shape& shape, int width, int maxLines) {
    Prepare(layout, shape, shape.wrap);
    const bool fits = LayLines(layout, shape, width, maxLines);
    if (shape.wrap != QTextOption::WordWrap || !IsWider(layout, width)) {
        return fits;
    }
    Prepare(layout, shape, QTextOption::WrapAtWordBoundaryOrAnywhere);
    return LayLines(layout, shape, width, maxLines);
}

}  // namespace

int CTextLines::Shape::LineHeight() const {
    return lineHeight > 0 ? lineHeight : qMax(1, QFontMetrics(font).lineSpacing());
}

void CTextLines::SetText(const QString& text, Qt::TextFormat format) {
    m_strText.clear();
    m_formats.clear();
    if (format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text))) {
        AppendRich(text);
    } else {
        m_strText = text;
        m_strText.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    }
    for (const QChar end : {QChar(QChar::LineFeed), QChar(QChar::CarriageReturn), QChar(QChar::ParagraphSeparator)}) {
        m_strText.replace(end, QChar::LineSeparator);
    }
}

void CTextLines::AppendRich(const QString& text) {
    CClosedDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(text);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block != document.begin()) {
            m_strText += QChar::LineSeparator;
        }
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            QString words = fragment.text();
            words.remove(QChar::ObjectReplacementCharacter);
            m_formats.append({m_strText.size(), words.size(), InlineOf(fragment.charFormat())});
            m_strText += words;
        }
    }
}

QString CTextLines::Plain() const {
    QString plain = m_strText;
    return plain.replace(QChar::LineSeparator, QLatin1Char('\n'));
}

QSize CTextLines::SizeAt(const Shape& shape, int width) const {
    QTextLayout layout(m_strText);
    layout.setFormats(m_formats);
    LayWrapped(layout, shape, width, shape.maxLines);
    double widest = 0;
    for (int i = 0; i < layout.lineCount(); ++i) {
        widest = qMax(widest, layout.lineAt(i).naturalTextWidth());
    }
    int lines = qMax(1, layout.lineCount());
    if (shape.maxLines > 0) {
        lines = qMin(lines, shape.maxLines);
    }
    return {qMin(qCeil(widest), width), lines * shape.LineHeight()};
}

void CTextLines::Lay(const Shape& shape, const QSize& room) {
    m_shape = shape;
    int maxLines = qMax(1, room.height() / shape.LineHeight());
    if (shape.maxLines > 0) {
        maxLines = qMin(maxLines, shape.maxLines);
    }
    if (shape.elide && shape.wrap == QTextOption::NoWrap) {
        m_shape.wrap = QTextOption::WrapAnywhere;
        maxLines = 1;
    }
    m_layout.setText(m_strText);
    m_layout.setFormats(m_formats);
    m_bCut = !LayWrapped(m_layout, m_shape, room.width(), maxLines);
    if (!m_bCut) {
        m_bCut = IsWider(m_layout, room.width());
        return;
    }
    const QTextLine last = m_layout.lineAt(maxLines - 1);
    QString kept = m_strText.left(last.textStart() + last.textLength());
    const auto dropEnd = [&kept] {
        while (!kept.isEmpty() && (kept.back().isSpace() || kept.back() == QChar::LineSeparator)) {
            kept.chop(1);
        }
    };
    dropEnd();
    const QString dots = shape.elide ? QString(kDots) : QString();
    m_layout.setText(kept + dots);
    m_layout.setFormats(m_formats);
    while (!LayWrapped(m_layout, m_shape, room.width(), maxLines) && !kept.isEmpty()) {
        kept.truncate(m_layout.previousCursorPosition(kept.size()));
        dropEnd();
        m_layout.setText(kept + dots);
        m_layout.setFormats(m_formats);
    }
}

void CTextLines::Paint(QPainter& painter, const QRect& rect, const QColor& color) const {
    const int height = m_layout.lineCount() * m_shape.LineHeight();
    int top = rect.top();
    if (m_shape.alignment.testFlag(Qt::AlignBottom)) {
        top += rect.height() - height;
    } else if (m_shape.alignment.testFlag(Qt::AlignVCenter)) {
        top += (rect.height() - height) / 2;
    }
    painter.setPen(color);
    m_layout.draw(&painter, QPointF(rect.left(), top));
}

}  // namespace host::kit
