#pragma once

#include <gmock/gmock.h>

#include "framework/Ports.h"
#include "support/ScriptedHost.h"

/// The fixture of nearly every test: a fresh set of scripted services for each case.
/// Members of a derived fixture come and go while the services are there.
class ScriptedHostTest : public ::testing::Test {
private:
    CScriptedHost m_host;

protected:
    host::Ports ScriptedPorts() { return m_host.Ports(); }

    CVirtualTime& time = m_host.time;
    CScriptedLog& log = m_host.log;
    CScriptedPoster& poster = m_host.poster;
    CScriptedBus& bus = m_host.bus;
    CScriptedChannel& channel = m_host.channel;
    CScriptedStore& store = m_host.store;
    CScriptedConfig& config = m_host.config;
    CScriptedAccount& account = m_host.account;
    CScriptedEnvironment& environment = m_host.environment;
    CScriptedLanguage& language = m_host.language;
    CScriptedRandom& random = m_host.random;
    CScriptedUrls& urls = m_host.urls;
    CScriptedHttp& http = m_host.http;
    CScriptedReports& reports = m_host.reports;
    CScriptedDomains& domains = m_host.domains;
    CScriptedPictures& pictures = m_host.pictures;
    CScriptedSlots& slots = m_host.slots;
    CScriptedMainFrame& mainFrame = m_host.mainFrame;
};
