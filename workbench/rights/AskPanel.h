#pragma once

#include <QWidget>
#include <optional>

class CTracker;
class QCheckBox;
class QLabel;
class QLineEdit;

/// Requests rights through the growth module, as another module would, and shows the result. `tracker` must outlive it.
class CAskPanel : public QWidget {
public:
    explicit CAskPanel(const CTracker& tracker, QWidget* parent = nullptr);

private:
    void AskAll();
    void AskList();
    void Follow(unsigned long session);
    void ShowOutcome();
    void Say(const QString& words, bool good);

    const CTracker& m_tracker;
    std::optional<unsigned long> m_session;
    QLineEdit* m_pRights;
    QCheckBox* m_pServerPush;
    QLabel* m_pOutcome;
};
