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
    ports.commonConfig = &config;
    ports.account = &account;
    ports.environment = &environment;
    ports.language = &language;
    ports.clock = &time;
    ports.random = &random;
    ports.urls = &urls;
    ports.http = &http;
    ports.reports = &reports;
    ports.domains = &domains;
    ports.pictures = &pictures;
    ports.resourceSlots = &slots;
    return ports;
}

CScriptedHost::~CScriptedHost() {
    // What deletes itself later still belongs to the test, and so does what it does when it goes.
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
