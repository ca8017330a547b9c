#pragma once

#include "workbench/server/RequestForm.h"

class QComboBox;

/// The forms of a table, of which one is chosen by its title. `rows` and `server` must outlive it.
class CRequestForms : public QWidget {
    Q_OBJECT

public:
    CRequestForms(const char* name, const std::vector<RequestRow>& rows, IControlClient& server,
                  QWidget* parent = nullptr);

    const std::vector<CRequestForm*>& Forms() const { return m_forms; }
    bool IsEdited() const;
    void ForgetServer();

Q_SIGNALS:
    void Accepted();

private:
    std::vector<CRequestForm*> m_forms;
};
