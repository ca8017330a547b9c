#pragma once

#include <QPointer>
#include <QWidget>

#include "FirstPaintWatcher.h"
#include "RecordOverride.h"

class CPremiumRights;
class QComboBox;
class QGridLayout;
class QScrollArea;
class QVBoxLayout;

/// A window with each VIP widget of all rights in all text sets. The growth module creates them for the current user,
/// theme, language and edition. Switches replace activation type, days left and layout letter of all rights until the
/// window is closed. The first rows are in its first frame, and the others are created afterwards in slices. The main
/// window owns it.
class CVipGallery : public QWidget {
    Q_OBJECT

public:
    /// Opens the window or raises the open one. `rights` must outlive it.
    static void Open(QWidget* mainWindow, CPremiumRights& rights);

    /// The part that scrolls, with all rows.
    QWidget* Content() const { return m_pContent; }
    bool IsComplete() const { return m_nNextRow == RowCount(); }

    static int RowCount();

Q_SIGNALS:
    /// All rows were created.
    void Completed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    CVipGallery(QWidget* mainWindow, CPremiumRights& rights);
    QGridLayout* NewSwitches();
    QComboBox* NewSwitch(const char* name, QGridLayout* grid, const char* title);
    void ShowSwitchTexts();
    void ApplySwitches();
    void AddRow();
    void AddSlice();

    CPremiumRights& m_rights;
    CRecordOverride m_override;
    QComboBox* m_pType = nullptr;
    QComboBox* m_pDays = nullptr;
    QComboBox* m_pLetter = nullptr;
    QScrollArea* m_pScroll;
    QPointer<QWidget> m_pContent;
    QVBoxLayout* m_pRows;
    int m_nNextRow = 0;
    CFirstPaintWatcher m_firstPaint;
};
