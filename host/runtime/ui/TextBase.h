#pragma once

#include "ui/ZTextBase.h"

class QPainter;

/// State and behaviour of one kind of text. Main thread.
struct ZTextBase::Private {
    virtual ~Private() = default;

    virtual QSize Hint(const QWidget& widget) const = 0;
    virtual QSize MinimumHint(const QWidget& widget) const = 0;
    virtual bool IsWrapped() const { return true; }
    /// Only for a wrapped text.
    virtual int HeightAt(const QWidget& /*widget*/, int /*width*/) const { return -1; }
    /// Lays out the text for the widget's current size, and offers all of it as the tool tip if it is cut.
    virtual void Lay(QWidget& widget) = 0;
    virtual void Paint(QPainter& painter, QWidget& widget) = 0;

    /// After a change of the text or of its properties.
    void Refresh(QWidget& widget) {
        Lay(widget);
        widget.updateGeometry();
        widget.update();
    }

    QString text;
    QString tip;
};
