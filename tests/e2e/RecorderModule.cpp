// A second module in addition to the real one. It records the host's calls and the state at each call.
#include <QObject>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "core/lang.h"
#include "core/login_status_data.h"
#include "core/message_dispatch.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"

namespace {

void Note(const std::string& what) {
    std::ofstream file(std::getenv("ZR_RECORDER_FILE"), std::ios::app);
    file << what << " user=" << core::login_status_data::Login_GetUserID()
         << " language=" << core::lang::GetLanguageID() << "\n";
}

class CRecorderModule : public IZRPluginModule {
public:
    CRecorderModule() = default;
    ~CRecorderModule() override { Note("gone"); }

    std::string GetSymbolName() override { return "recorder"; }

    void OnInit() override {
        Note("OnInit");
        m_context = std::make_unique<QObject>();
        for (const unsigned int message : {10650u, 20100u}) {
            core::__CMessageDispatch("[Recorder]")
                .Bind(
                    message,
                    [](unsigned int id, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
                        Note(std::to_string(id));
                    },
                    m_context.get());
        }
    }

    void OnUnInit() override {
        Note("OnUnInit");
        // objects that are deleted later are deleted before the module
        QObject::connect(m_context.get(), &QObject::destroyed, [] { Note("deleted"); });
        m_context.release()->deleteLater();
    }

    void OnLogin() override { Note("OnLogin"); }
    void OnLogout() override { Note("OnLogout"); }

    void OnEvent(EnZRPluginEvent event, std::shared_ptr<ZRPluginEventParam>) override {
        Note("OnEvent " + std::to_string(event));
    }

private:
    std::unique_ptr<QObject> m_context;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int LoadPluginModuleCRecorder() {
    return IZRPluginCenter::RegisterModule(std::make_shared<CRecorderModule>());
}
