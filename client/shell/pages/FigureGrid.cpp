#include "pages/FigureGrid.h"

#include <QGridLayout>
#include <QLabel>

#include "SampleMarket.h"
#include "pages/Page.h"

namespace {

constexpr int kPairsPerRow = 4;

}  // namespace

CFigureGrid::CFigureGrid(const char* name, std::vector<Figure> figures, QWidget* parent)
    : QWidget(parent), m_figures(std::move(figures)) {
    setObjectName(QString::fromLatin1(name));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(6);
    for (const Figure& figure : m_figures) {
        const int place = int(m_values.size());
        auto* pair = new QVBoxLayout;
        pair->setSpacing(1);
        pair->addWidget(CPage::NewTranslatedLabel("muted", figure.title, this));
        m_values.push_back(CPage::NewLabel("strong", figure.value, this));
        pair->addWidget(m_values.back());
        grid->addLayout(pair, place / kPairsPerRow, place % kPairsPerRow);
        grid->setColumnStretch(place % kPairsPerRow, 1);
    }
}

void CFigureGrid::Conceal(bool concealed) {
    for (size_t place = 0; place < m_values.size(); ++place) {
        m_values[place]->setText(concealed ? figures::Concealed() : m_figures[place].value);
    }
}
