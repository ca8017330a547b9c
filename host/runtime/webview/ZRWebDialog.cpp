#include "webview/ZRWebDialog.h"

#include <QUrl>
#include <QVBoxLayout>

#include "core/urlhandler.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "webview/WebHost.h"
#include "webview/WebShell.h"

using host::web::CWebHost;
using host::web::CWebShell;

namespace core {
namespace webview {
namespace {

constexpr QSize kSize(960, 720);
constexpr QSize kMinimumSize(320, 240);

}  // namespace

struct ZRWebDialog::Private {
    CWebShell* shell;
    QPointer<QWidget> parent;
    bool dispatch = true;
};

ZRWebDialog::ZRWebDialog(const ZRWebWindowInfo& info)
    : QWidget(nullptr, Qt::Window), d(new Private{new CWebShell(this), info.parent}) {
    setObjectName(QStringLiteral("ZRWebDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    CWebHost::Instance().CountWindow(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->shell);
    setMinimumSize(info.minimumSize.isValid() ? info.minimumSize : kMinimumSize);
    resize((info.size.isValid() ? info.size : kSize).expandedTo(minimumSize()));
    d->shell->SetLinks(CWebShell::EnLinks::kDispatched);
    d->shell->SetPopups(true);
    connect(d->shell, &CWebShell::LoadEnd, this, &ZRWebDialog::LoadEnd);
    connect(d->shell, &CWebShell::BeforePopup, this, [this](const QString& url, bool* handled, const QSize& size) {
        *handled = true;
        if (d->dispatch) {
            ZRWebWindowInfo wanted;
            wanted.parent = this;
            wanted.size = size;
            urlhandler::DispatchUrl(url, urlhandler::kBusinessDefault, nullptr, QVariant::fromValue(wanted),
                                    urlhandler::kFallbackWeb);
        } else {
            LoadUrl(url);
        }
    });
    CWebHost& host = CWebHost::Instance();
    host.CheckUser();
    connect(&host, &CWebHost::UserChanged, this, [this, generation = host.Generation()] {
        if (generation != CWebHost::Instance().Generation()) {
            close();
        }
    });
}

ZRWebDialog::~ZRWebDialog() {
    CWebHost::Instance().CountWindow(-1);
}

void ZRWebDialog::Open() {
    QWidget* over = d->parent;
    if (!over) {
        const auto frame = IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
        over = frame ? frame->GetMainFrameWidget() : nullptr;
    }
    if (over) {
        move(over->window()->frameGeometry().center() - rect().center());
    }
    show();
    raise();
    activateWindow();
}

void ZRWebDialog::LoadUrl(const QString& url) {
    // The host of the address, which a page cannot choose.
    setWindowTitle(QUrl(url).host());
    d->shell->LoadUrl(url);
}

void ZRWebDialog::SetUrlDispatchSwitch(bool dispatch) {
    d->dispatch = dispatch;
    d->shell->SetLinks(dispatch ? CWebShell::EnLinks::kDispatched : CWebShell::EnLinks::kLoaded);
}

}  // namespace webview
}  // namespace core
