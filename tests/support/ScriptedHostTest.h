#pragma once

#include <gmock/gmock.h>

#include "framework/Ports.h"
#include "support/ScriptedHost.h"

/// The fixture of most tests: new scripted services for each case. They outlive the members of a derived fixture.
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
    CScriptedConfig& config = m_host.state.config;
    CScriptedAccount& account = m_host.state.account;
    CScriptedEnvironment& environment = m_host.state.environment;
    CScriptedLanguage& language = m_host.state.language;
    CScriptedTimeAndRandom& timeAndRandom = m_host.timeAndRandom;
    CScriptedRandom& random = m_host.timeAndRandom.random;
    CScriptedUrls& urls = m_host.urls;
    CScriptedHttp& http = m_host.http;
    CScriptedReports& reports = m_host.reports;
    CScriptedDomains& domains = m_host.state.domains;
    CScriptedLinks& links = m_host.state.links;
    CScriptedPictures& pictures = m_host.pictures;
    CScriptedSlots& slots = m_host.state.slots;
    CScriptedWeb& web = m_host.web;
    CScriptedMainFrame& mainFrame = m_host.mainFrame;
};
