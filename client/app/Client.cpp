#include "Client.h"

#include "DataFolder.h"
#include "Theme.h"
#include "framework/Ports.h"

namespace {

COptions Prepared(const COptions& options) {
    PrepareDataFolder(options.dataDir);
    return options;
}

}  // namespace

CClient::CClient(const COptions& options) : m_options(Prepared(options)), m_log(m_options.DataFile("client.log")) {
    // The log is installed before the services exist, because the store logs while it opens.
    host::Ports ports;
    ports.log = &m_log;
    host::Install(ports);
    m_pComposition = std::make_unique<CComposition>(m_options, m_log);
    theme::Install();
    theme::SetLanguage(m_pComposition->LanguageId());
    m_pWindow = std::make_unique<CClientWindow>(*m_pComposition);
    // Mapping modules takes time, and the server's start takes the processor: the first frame comes before both.
    QObject::connect(m_pWindow.get(), &CMainWindow::Appeared, m_pComposition.get(), &CComposition::Start);
}

CClient::~CClient() {
    m_pWindow.reset();
    m_pComposition.reset();
    host::Uninstall();
}
