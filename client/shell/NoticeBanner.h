#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// Lists missing modules above the pages.
class CNoticeBanner : public QFrame {
    Q_OBJECT

public:
    explicit CNoticeBanner(QWidget* parent = nullptr);

    /// Shows one line for each failure. Without failures the banner is hidden.
    void ShowModuleFailures(const QStringList& failures);

private:
    void ShowText() const;

    QStringList m_failures;
    QLabel* m_pText;
};
