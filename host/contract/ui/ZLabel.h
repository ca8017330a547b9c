#pragma once

#include <QMargins>
#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A short word on a state, in the state's colour, on a plate where that is wanted. Plain text. Main thread.
class ZRHOST_API ZLabel : public QWidget {
    Q_OBJECT

public:
    /// What the word says.
    enum ZrStyle : int {
        kWarning = 0,
        kFailure = 1,
        kSuccess = 2,
        kAccent = 3,
        kNeutral = 5,
    };

    enum ZrBgStyle : int {
        kBgNone = 0,
        kBgTinted = 1,  // a breath of the word's colour
    };

    explicit ZLabel(QWidget* parent = nullptr);
    explicit ZLabel(const QString& text, QWidget* parent = nullptr);
    ~ZLabel() override;

    void setText(const QString& text);
    QString text() const;
    void setZrStyle(ZrStyle style);
    void setZrBgStyle(ZrBgStyle style);
    /// Between the word and the edges, in pixels.
    void setCustomMargin(const QMargins& margins);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
