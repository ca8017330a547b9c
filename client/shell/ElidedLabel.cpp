#include "ElidedLabel.h"

#include <QEvent>

#include "ui/KitPaint.h"

CElidedLabel::CElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CElidedLabel::SetWhole(const QString& text) {
    m_strWhole = text;
    updateGeometry();
    Fit();
}

QSize CElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(m_strWhole) + 2, QLabel::sizeHint().height()};
}

QSize CElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void CElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    Fit();
}

void CElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
        Fit();
    }
}

void CElidedLabel::Fit() {
    const QString fitting = fontMetrics().elidedText(m_strWhole, Qt::ElideRight, width());
    setText(fitting);
    setToolTip(fitting == m_strWhole ? QString() : host::kit::TipText(m_strWhole));
}
