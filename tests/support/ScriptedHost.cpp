#include "support/ScriptedHost.h"

#include <QCoreApplication>
#include <QEvent>

#include "framework/Ports.h"
#include "webview/WebHost.h"

CScriptedHost::CScriptedHost() : poster(time), bus(poster.Unrecorded()), channel(poster.Unrecorded()) {
    host::Install(Ports());
    host::web::CWebHost::Instance().Begin();
}

host::Ports CScriptedHost::Ports() {
    host::Ports ports;
    ports.log = &log;
    ports.poster = &poster;
    ports.bus = &bus;
    ports.channel = &channel;
    ports.store = &store;
    ports.state = &state;
    ports.timeAndRandom = &timeAndRandom;
    ports.urls = &urls;
    ports.http = &http;
    ports.reports = &reports;
    ports.pictures = &pictures;
    ports.web = &web;
    return ports;
}

CScriptedHost::~CScriptedHost() {
    // Deferred deletes and their effects still belong to the test.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    host::web::CWebHost::Instance().End();
    host::Uninstall();
    channel.CheckAllLookedAt();
    store.CheckAllLookedAt();
    log.CheckAllLookedAt();
    urls.CheckAllLookedAt();
    http.CheckAllLookedAt();
    reports.CheckAllLookedAt();
    pictures.CheckAllLookedAt();
    web.CheckAllLookedAt();
}
