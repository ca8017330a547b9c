#pragma once

#include <QLabel>

/// A one-line label that never widens its window. A text that does not fit is elided and complete in the tool tip.
class CElidedLabel : public QLabel {
public:
    explicit CElidedLabel(QWidget* parent = nullptr);

    void SetWhole(const QString& text);
    const QString& Whole() const { return m_strWhole; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Fit();

    QString m_strWhole;
};
