#include "support/ScriptedMainFrame.h"

#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"

namespace {

using State = CScriptedMainFrame::State;

class CMainFrame : public IMainFrameModuleUtil {
public:
    explicit CMainFrame(std::shared_ptr<const State> state) : m_pState(std::move(state)) {}

    QWidget* GetMainFrameWidget() override { return m_pState->window; }
    EnZRTabFrameKey GetCurrentTabFrameKey() override {
        return EnZRTabFrameKey(m_pState->offered ? m_pState->tabKey : 0);
    }
    bool IsMainFrameFocusIn() override { return m_pState->offered && m_pState->focused; }
    bool IsNavigationCollapsed() override { return m_pState->offered && m_pState->collapsed; }

private:
    const std::shared_ptr<const State> m_pState;
};

class CFactory : public IZRPluginInterfaceFactory {
public:
    explicit CFactory(std::shared_ptr<const State> state) : m_pState(std::move(state)) {}

    std::string GetInterfaceName() override { return typeid(IMainFrameModuleUtil).name(); }

    std::shared_ptr<IZRPluginInterface> CreateInterface() override {
        return m_pState->offered ? std::make_shared<CMainFrame>(m_pState) : nullptr;
    }

private:
    const std::shared_ptr<const State> m_pState;
};

}  // namespace

CScriptedMainFrame::CScriptedMainFrame() = default;

CScriptedMainFrame::~CScriptedMainFrame() {
    TakeAway();
}

void CScriptedMainFrame::Offer(QWidget* window) {
    m_pState->offered = true;
    m_pState->window = window;
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFactory>(m_pState), true);
}

void CScriptedMainFrame::TakeAway() {
    m_pState->offered = false;
    m_pState->window = nullptr;
}

void CScriptedMainFrame::SetTabKey(int64_t key) {
    m_pState->tabKey = key;
}

void CScriptedMainFrame::SetFocusIn(bool focused) {
    m_pState->focused = focused;
}

void CScriptedMainFrame::SetNavigationCollapsed(bool collapsed) {
    m_pState->collapsed = collapsed;
}
