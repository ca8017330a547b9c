#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// What is wrong with the modules, above the pages for as long as the client runs.
class CNoticeBanner : public QFrame {
    Q_OBJECT

public:
    explicit CNoticeBanner(QWidget* parent = nullptr);

    /// One line per module that is not there; none hides the banner.
    void ShowModuleFailures(const QStringList& failures);

private:
    void ShowText() const;

    QStringList m_failures;
    QLabel* m_pText;
};
