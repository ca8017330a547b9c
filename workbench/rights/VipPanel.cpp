#include "workbench/rights/VipPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QVariant>

#include "PremiumRights.h"
#include "workbench/diagnosis/RightText.h"

namespace {

struct Figure {
    const char* name;
    const char* title;
    QString (*inWords)(const VipStatus& vip);
};

const Figure kFigures[] = {
    {"VipEngineStatus", "Engine status", [](const VipStatus& vip) { return right_text::Engine(vip.engine); }},
    {"VipQualification", "Qualified for VIP",
     [](const VipStatus& vip) { return right_text::YesNo(vip.qualification); }},
    {"VipNewState", "Newer system", [](const VipStatus& vip) { return right_text::NewState(vip.newState); }},
    {"VipNewSystem", "On the newer system", [](const VipStatus& vip) { return right_text::YesNo(vip.isNewSystem); }},
    {"VipOldState", "Older system", [](const VipStatus& vip) { return right_text::OldState(vip.state); }},
    {"VipGrade", "Grade", [](const VipStatus& vip) { return QString::number(vip.grade); }},
};

}  // namespace

CVipPanel::CVipPanel(const CPremiumRights& rights, QWidget* parent) : QWidget(parent), m_rights(rights) {
    setObjectName(QStringLiteral("VipPanel"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(4);
    for (const Figure& figure : kFigures) {
        const int place = int(m_values.size());
        auto* title = new QLabel(this);
        title->setProperty("role", QStringLiteral("muted"));
        title->setText(QString::fromUtf8(figure.title));
        auto* value = new QLabel(this);
        value->setObjectName(QString::fromLatin1(figure.name));
        value->setTextFormat(Qt::PlainText);
        grid->addWidget(title, place / 2, place % 2 * 2);
        grid->addWidget(value, place / 2, place % 2 * 2 + 1);
        m_values.push_back(value);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    connect(&rights, &CPremiumRights::Changed, this, &CVipPanel::Show);
    Show();
}

void CVipPanel::Show() {
    for (size_t place = 0; place < m_values.size(); ++place) {
        m_values[place]->setText(kFigures[place].inWords(m_rights.Vip()));
    }
}
