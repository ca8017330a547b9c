#pragma once

#include <QWidget>
#include <vector>

#include "EntryScenes.h"
#include "Theme.h"

class CAIChatEntries;
class CAIChatEntryButton;
class QFrame;
class QLabel;
class QVBoxLayout;

/// A page of the client: its head, with the entry to the AI chat where it has one, and under it what the page is for.
class CPage : public QWidget {
public:
    CPage(const EntryPage& page, const CAIChatEntries& entries, QWidget* parent = nullptr);

    /// Null where the page has none.
    CAIChatEntryButton* Entry() const { return m_pEntry; }

protected:
    QVBoxLayout* Body() const { return m_pBody; }

    struct Figure {
        const char* title;
        QString value;
        theme::ColorName color = theme::kText;
    };

    /// A row of cards with a figure in each, at the end of the body.
    void AddFigures(const std::vector<Figure>& figures);
    /// A card, empty, with a layout of its own.
    static QFrame* NewCard(QWidget* parent);
    /// A label that the style sheet knows by `role`.
    static QLabel* NewLabel(const char* role, const QString& text, QWidget* parent);
    /// The same with a text that follows the display language.
    static QLabel* NewTranslatedLabel(const char* role, const QByteArray& source, QWidget* parent);
    static void SetColor(QLabel* label, theme::ColorName color);

private:
    CAIChatEntryButton* m_pEntry;
    QVBoxLayout* m_pBody;
};
