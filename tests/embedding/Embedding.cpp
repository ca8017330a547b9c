#include <QLabel>
#include <QVBoxLayout>
#include <memory>

#include "core/message_dispatch.h"
#include "core/message_ids.h"
#include "framework/log.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"
#include "plugin/ZRPluginEntry.h"

namespace {

constexpr EnPremiumAccess kRight = EnPremiumAccess_us_total_view_lv2;
constexpr ZRVipUIDataType kTexts = ZRVipUIDataMain;

/// A page with the state of a right, a banner for it, and figures that a mask covers while the right is locked.
class CPage : public QWidget {
public:
    CPage() : m_pState(new QLabel(this)), m_pFigures(new QLabel(this)) {
        m_pFigures->setFixedSize(480, 120);
        m_pLayout = new QVBoxLayout(this);
        m_pLayout->addWidget(m_pState);
        m_pLayout->addWidget(m_pFigures);
        for (const unsigned int message : {kMsgPremiumDataChanged, kMsgPremiumRequestAnswered, kMsgVipStatusChanged,
                                           unsigned(core::kMsgLanguageChanged)}) {
            core::__CMessageDispatch("[Embedding]")
                .Bind(
                    message,
                    [this](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { Refresh(); },
                    this);
        }
        Refresh();
    }

private:
    void Refresh() {
        const auto service = IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
        if (!service) {
            return;  // a client without the growth module
        }
        ShowRight(*service);
        ShowBanner(*service);
        ShowMask(*service);
        FrameWork::_WriteLogRaw(__FILE__, __LINE__, __func__, kZRLogInfo, "Embedding",
                                QStringLiteral("State '%1', banner %2, mask %3")
                                    .arg(m_pState->text())
                                    .arg(m_pBanner && m_pBanner->isVisible())
                                    .arg(m_pMask && m_pMask->isVisible()),
                                -128);
    }

    void ShowRight(IZRGrowthModuleInterface& service) {
        const CPremiumUIAccessData record = service.GetUIAccessData(kRight);
        const bool isLimited = record.nActivationType == ZRPremiumActivationLimitedTime;
        m_pState->setText(isLimited ? QStringLiteral("%1 days").arg(record.nDaysLeft) : record.strMainTitle);
    }

    void ShowBanner(IZRGrowthModuleInterface& service) {
        if (!service.IsVipBannerEnabled(kRight, kTexts)) {
            delete m_pBanner;
        } else if (m_pBanner) {
            m_pBanner->UpdateUIData(kRight, kTexts);
        } else {
            m_pBanner = service.GetVipBanner(kRight, kTexts, QStringLiteral("embedding"), this);
            m_pLayout->insertWidget(0, m_pBanner);
            m_pBanner->show();
        }
    }

    void ShowMask(IZRGrowthModuleInterface& service) {
        const bool isLocked = service.IsVipMaskEnabled(ZRVipMaskLocked, kRight, kTexts);
        m_pFigures->setEnabled(!isLocked);
        m_pFigures->setText(isLocked ? QString() : QStringLiteral("Bid 101.20 x 300    Ask 101.25 x 500"));
        if (!isLocked) {
            delete m_pMask;
        } else if (m_pMask) {
            m_pMask->UpdateUIData(kRight, kTexts);
        } else {
            const zrstdui::image_blur::WidgetPainterBufferSource behind(m_pFigures);
            m_pMask = service.GetVipMask(ZRVipMaskLocked, kRight, kTexts, QStringLiteral("embedding"), m_pFigures,
                                         behind, 20, 14, false);
            m_pMask->resize(m_pFigures->size());
            m_pMask->show();
        }
    }

    QLabel* m_pState;
    QLabel* m_pFigures;
    QVBoxLayout* m_pLayout;
    QPointer<IGrowthVipBaseWidget> m_pBanner;
    QPointer<IGrowthVipBaseWidget> m_pMask;
};

class CEmbeddingModule : public IZRPluginModule {
public:
    std::string GetSymbolName() override { return "example.embedding"; }
    void OnInit() override {}
    void OnUnInit() override {}
    void OnLogin() override {
        m_pPage = std::make_unique<CPage>();
        m_pPage->show();
    }
    void OnLogout() override { m_pPage.reset(); }

private:
    std::unique_ptr<CPage> m_pPage;
};

}  // namespace

ZR_PLUGIN_ENTRY(CEmbeddingModule) {
    return IZRPluginCenter::RegisterModule(std::make_shared<CEmbeddingModule>());
}
