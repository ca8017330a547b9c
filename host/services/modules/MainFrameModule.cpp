#include "modules/MainFrameModule.h"

#include "framework/Ports.h"
#include "modules/IMainFrameModuleUtil.h"

namespace {

using Answers = std::shared_ptr<const std::optional<MainFrameAnswers>>;

class CMainFrameModule : public IMainFrameModuleUtil {
public:
    explicit CMainFrameModule(Answers answers) : m_pAnswers(std::move(answers)) {}

    QWidget* GetMainFrameWidget() override { return *m_pAnswers ? (*m_pAnswers)->widget() : nullptr; }
    EnZRTabFrameKey GetCurrentTabFrameKey() override {
        return *m_pAnswers ? (*m_pAnswers)->tabKey() : EnZRTabFrameKey();
    }
    bool IsMainFrameFocusIn() override { return *m_pAnswers && (*m_pAnswers)->hasFocus(); }
    bool IsNavigationCollapsed() override { return *m_pAnswers && (*m_pAnswers)->isCollapsed(); }

private:
    const Answers m_pAnswers;
};

}  // namespace

CMainFrameModuleFactory::CMainFrameModuleFactory() : m_pAnswers(std::make_shared<std::optional<MainFrameAnswers>>()) {}

CMainFrameModuleFactory::~CMainFrameModuleFactory() = default;

void CMainFrameModuleFactory::Offer(MainFrameAnswers answers) {
    *m_pAnswers = std::move(answers);
}

void CMainFrameModuleFactory::TakeAway() {
    m_pAnswers->reset();
}

std::string CMainFrameModuleFactory::GetInterfaceName() {
    return typeid(IMainFrameModuleUtil).name();
}

std::shared_ptr<IZRPluginInterface> CMainFrameModuleFactory::CreateInterface() {
    if (!host::OnMainThread() || !*m_pAnswers) {
        return nullptr;
    }
    return std::make_shared<CMainFrameModule>(m_pAnswers);
}
