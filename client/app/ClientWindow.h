#pragma once

#include "AIChatAppearance.h"
#include "MainWindow.h"

class CComposition;
class CWorkbench;
enum class EnFocusAnswer;

/// The main window with the workbench in its dock, connected to the composition. The composition must outlive it.
class CClientWindow : public CMainWindow {
    Q_OBJECT

public:
    explicit CClientWindow(CComposition& composition);
    ~CClientWindow() override;

protected:
    QWidget* NewDockContent(QWidget* parent) override;
    void OnTabChanged(int index) override;
    void closeEvent(QCloseEvent* event) override;

private:
    bool HasFocus() const;
    void ConnectSources();
    void ConnectSession();
    void ConnectOverrides();
    void UpdateAliases();
    void NotifyTab();

    CComposition& m_composition;
    CAIChatAppearance m_chatAppearance;
    CWorkbench* m_pWorkbench = nullptr;
    EnFocusAnswer m_focusAnswer{};  // the real state until the workbench overrides it
};
