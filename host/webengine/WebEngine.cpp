#include <QWebEngineDownloadItem>
#include <QWebEngineProfile>
#include <memory>

#include "WebView.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("WebEngine");

/// The engine with one profile in memory. A profile lives until its last page is deleted.
class CWebEngine : public IWebEngine {
public:
    IWebView* NewView(IWebViewOwner& owner, QWidget* parent) override {
        if (!m_pProfile) {
            m_pProfile = NewProfile();
        }
        return new CWebView(owner, m_pProfile, parent);
    }

    void ForgetData() override { m_pProfile.reset(); }

private:
    static std::shared_ptr<QWebEngineProfile> NewProfile() {
        auto profile = std::make_shared<QWebEngineProfile>();
        profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
        profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
        QObject::connect(profile.get(), &QWebEngineProfile::downloadRequested, profile.get(),
                         [](QWebEngineDownloadItem* item) {
                             kLog.Info(FMT_STRING("Refused a download"));
                             item->cancel();
                         });
        return profile;
    }

    std::shared_ptr<QWebEngineProfile> m_pProfile;
};

}  // namespace

/// The only symbol of the library. The caller owns the engine.
extern "C" __attribute__((visibility("default"))) IWebEngine* ZRCreateWebEngine() {
    return new CWebEngine;
}
