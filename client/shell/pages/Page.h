#pragma once

#include <QWidget>
#include <vector>

#include "EntryScenes.h"
#include "Theme.h"

class CAIChatEntries;
class CAIChatEntryButton;
class QFrame;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

/// A page of the client: a header, with the entry to the AI chat if it has one, and a body.
class CPage : public QWidget {
public:
    CPage(const EntryPage& page, const CAIChatEntries& entries, QWidget* parent = nullptr);

    /// Null for a page without an entry.
    CAIChatEntryButton* Entry() const { return m_pEntry; }

    /// Creates an empty card with a layout.
    static QFrame* NewCard(QWidget* parent);
    /// Creates a label. The style sheet selects it by `role`.
    static QLabel* NewLabel(const char* role, const QString& text, QWidget* parent);
    /// The same with a text that follows the display language.
    static QLabel* NewTranslatedLabel(const char* role, const QByteArray& source, QWidget* parent);
    static void SetColor(QLabel* label, theme::ColorName color);
    /// Lays out a heading, followed by the icon and tag of a right.
    static QHBoxLayout* NewHeading(QLabel* heading, const std::vector<QWidget*>& marks);

protected:
    QVBoxLayout* Body() const { return m_pBody; }

    struct Figure {
        const char* title;
        QString value;
        theme::ColorName color = theme::kText;
    };

    /// Adds a row of cards, each with a figure, at the end of the body.
    void AddFigures(const std::vector<Figure>& figures);

private:
    CAIChatEntryButton* m_pEntry;
    QVBoxLayout* m_pBody;
};
