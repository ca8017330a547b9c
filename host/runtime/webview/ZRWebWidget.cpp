#include "webview/ZRWebWidget.h"

#include <QVBoxLayout>

#include "webview/WebShell.h"

using host::web::CWebShell;

namespace core {
namespace webview {

struct ZRWebWidget::Private {
    CWebShell* shell;
};

ZRWebWidget::ZRWebWidget(QWidget* parent) : QWidget(parent), d(new Private{new CWebShell(this)}) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->shell);
    setFocusProxy(d->shell);
    connect(d->shell, &CWebShell::LoadEnd, this, &ZRWebWidget::LoadEnd);
    connect(d->shell, &CWebShell::BeforePopup, this, &ZRWebWidget::BeforePopup);
}

ZRWebWidget::~ZRWebWidget() = default;

void ZRWebWidget::LoadUrl(const QString& url) {
    d->shell->LoadUrl(url);
}

void ZRWebWidget::StopLoad() {
    d->shell->StopLoad();
}

bool ZRWebWidget::IsLoading() const {
    return d->shell->IsLoading();
}

void ZRWebWidget::ExecuteJS(const QString& script) {
    d->shell->Run(script);
}

void ZRWebWidget::EnableJSBridge(bool enabled) {
    d->shell->SetBridge(enabled);
}

void ZRWebWidget::RegisterJSAPI(const QString& name, Handler handler, QObject* context) {
    HandlerV2 asValue;
    if (handler) {
        asValue = [handler = std::move(handler)](const Json::Value& params, int call) {
            const std::shared_ptr<std::string> text = handler(params, call);
            return text ? std::make_shared<Json::Value>(*text) : nullptr;
        };
    }
    RegisterJSAPIV2(name, std::move(asValue), context);
}

void ZRWebWidget::RegisterJSAPIV2(const QString& name, HandlerV2 handler, QObject* context) {
    d->shell->Bridge().Register(name, std::move(handler), context);
}

void ZRWebWidget::OnResponseToJS(const QString& name, const Json::Value& value) {
    d->shell->Bridge().Respond(name, value);
}

bool ZRWebWidget::BroadcastEvent(const QString& name, const Json::Value& params) {
    return d->shell->Bridge().Broadcast(name, params);
}

void ZRWebWidget::SetPopupEnabled(bool enabled) {
    d->shell->SetPopups(enabled);
}

void ZRWebWidget::SetSameUrlPolicy(int policy) {
    d->shell->SetSameUrlPolicy(policy);
}

void ZRWebWidget::SetContextMenuFlags(int flags) {
    d->shell->SetContextMenu(flags);
}

void ZRWebWidget::CloseContextMenu() {
    d->shell->CloseContextMenu();
}

void ZRWebWidget::SetLoadingStatusVisible(bool visible) {
    d->shell->SetIndication(visible);
}

void ZRWebWidget::ShowLoadingOnFirstLoadUrl(bool show) {
    d->shell->SetFirstIndication(show);
}

void ZRWebWidget::SetNetworkDisconnectedToastVisible(bool visible) {
    d->shell->SetToast(visible);
}

}  // namespace webview
}  // namespace core
