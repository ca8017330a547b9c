#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <functional>

#include "ISessionControl.h"
#include "workbench/diagnosis/Literal.h"

/// Parts of the workbench's pages. Objects are named for tests, controls for screen readers.
namespace widgets {

template <class Widget>
Widget* New(const QString& name, QWidget* parent, const QString& accessibleName = {}) {
    auto* widget = new Widget(parent);
    widget->setObjectName(name);
    widget->setAccessibleName(accessibleName);
    return widget;
}

/// A label of plain text that wraps. `role` is one of the style sheet, such as "muted".
QLabel* NewLabel(const QString& name, const char* role, QWidget* parent, const QString& text = {});

/// A line for the outcome of an action.
QLabel* NewOutcome(const QString& name, QWidget* parent);

enum class EnOutcome { Good, Bad, Unsaved };

/// Sets the text of an outcome line, and its colour.
void ShowOutcome(QLabel* line, const QString& text, EnOutcome outcome = EnOutcome::Good);

/// `action` runs after a click, while `parent` exists.
QPushButton* NewButton(const QString& name, const QString& text, QWidget* parent, std::function<void()> action);

/// A button that chooses the file of the line, which may be a new one.
QPushButton* NewFileButton(const QString& name, QLineEdit* path);

/// The values of a combo box and their texts.
using Choices = std::vector<std::pair<QVariant, QString>>;

/// `changed` runs with the value after another choice, while `parent` exists.
QComboBox* NewCombo(const QString& name, const QString& accessibleName, const Choices& choices, QWidget* parent,
                    const std::function<void(const QVariant& value)>& changed);

/// Selects the value, or the first item without one. `changed` does not run.
void Select(QComboBox* combo, const QVariant& value);

/// Lists the users and selects one, as Select does.
void ShowUsers(QComboBox* combo, const std::vector<ServerUser>& users, const QVariant& chosen);

/// The user's name and id, or the id alone.
QString UserText(const std::vector<ServerUser>& users, quint64 id);

/// A part of a layout: a widget, another layout, or an empty space that grows.
struct Part {
    Part(QWidget* part, int stretchFactor = 0) : widget(part), stretch(stretchFactor) {}
    Part(QLayout* part) : layout(part) {}
    Part(std::nullptr_t) : stretch(1) {}

    QWidget* widget = nullptr;
    QLayout* layout = nullptr;
    int stretch = 0;
};

/// Layouts without margins. A parent gets the layout as its own.
QBoxLayout* Row(const std::vector<Part>& parts, QWidget* parent = nullptr);
QBoxLayout* Column(const std::vector<Part>& parts, QWidget* parent = nullptr);

/// Returns the parent for pages of the tabs. A page with another parent is styled a second time when it moves, with all
/// its children.
QWidget* PagesOf(QTabWidget* tabs);

/// Makes the page scroll where it has too little room, and adds it as a tab.
void AddScrollTab(QTabWidget* tabs, QWidget* page, const QString& title);

/// Must be called before setModel, so that the header measures its texts in the dense style. Rows have one height and
/// are selected whole. Tab leaves the table. Ctrl+C and the context menu copy the selected rows.
void SetUpTable(QTableView& table);

/// Sizes the columns to header and content, each within a limit.
void FitColumns(QTableView& table);

}  // namespace widgets
