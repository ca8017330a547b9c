#include "support/ScriptedHost.h"

#include <QCoreApplication>
#include <QEvent>

#include "framework/Ports.h"

CScriptedHost::CScriptedHost() : poster(time), bus(poster.Unrecorded()), channel(poster.Unrecorded()) {
    host::Install(Ports());
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
    return ports;
}

CScriptedHost::~CScriptedHost() {
    // Deferred deletes and their effects still belong to the test.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    host::Uninstall();
    channel.CheckAllLookedAt();
    store.CheckAllLookedAt();
    log.CheckAllLookedAt();
    urls.CheckAllLookedAt();
    http.CheckAllLookedAt();
    reports.CheckAllLookedAt();
    pictures.CheckAllLookedAt();
}
