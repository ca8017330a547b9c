#pragma once

#include <QWidget>
#include <vector>

class QLabel;

/// Figures with their titles, four in a row.
class CFigureGrid : public QWidget {
public:
    struct Figure {
        const char* title;
        QString value;
    };

    CFigureGrid(const char* name, std::vector<Figure> figures, QWidget* parent);

    /// Shows placeholders in place of the figures, for a grid behind a mask.
    void Conceal(bool concealed);

private:
    const std::vector<Figure> m_figures;
    std::vector<QLabel*> m_values;  // in the order of m_figures
};
