#include "workbench/server/RequestForms.h"

#include <QComboBox>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

CRequestForms::CRequestForms(const char* name, const std::vector<RequestRow>& rows, IControlClient& server,
                             QWidget* parent)
    : QWidget(parent) {
    setObjectName(QString::fromLatin1(name));
    auto* choice = new QComboBox(this);
    auto* stack = new QStackedWidget(this);
    choice->setObjectName(objectName() + QStringLiteral("Choice"));
    choice->setAccessibleName(QStringLiteral("Request"));
    for (const RequestRow& row : rows) {
        auto* form = new CRequestForm(row, server, stack);
        m_forms.push_back(form);
        stack->addWidget(form);
        choice->addItem(QString::fromLatin1(row.title), QString::fromLatin1(row.name));
        connect(form, &CRequestForm::Accepted, this, &CRequestForms::Accepted);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(choice);
    layout->addWidget(stack);
    connect(choice, qOverload<int>(&QComboBox::currentIndexChanged), stack, &QStackedWidget::setCurrentIndex);
}

bool CRequestForms::IsEdited() const {
    return std::any_of(m_forms.begin(), m_forms.end(), [](const CRequestForm* form) { return form->IsEdited(); });
}

void CRequestForms::ForgetServer() {
    for (CRequestForm* form : m_forms) {
        form->ForgetServer();
    }
}
