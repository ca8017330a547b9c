#pragma once

#include "support/ScriptedBus.h"
#include "support/ScriptedChannel.h"
#include "support/ScriptedHttp.h"
#include "support/ScriptedLog.h"
#include "support/ScriptedMainFrame.h"
#include "support/ScriptedPictures.h"
#include "support/ScriptedPoster.h"
#include "support/ScriptedQueries.h"
#include "support/ScriptedReports.h"
#include "support/ScriptedStore.h"
#include "support/ScriptedUrls.h"
#include "support/VirtualTime.h"

namespace host {
struct Ports;
}

/// The scripted services, joined to the contract from construction to destruction. At its end each effect
/// that the test did not look at is a failure of its own.
class CScriptedHost {
public:
    CScriptedHost();
    ~CScriptedHost();
    CScriptedHost(const CScriptedHost&) = delete;
    CScriptedHost& operator=(const CScriptedHost&) = delete;

    /// All of them, for a test that puts something of its own before one.
    host::Ports Ports();

    CVirtualTime time;
    CScriptedLog log;
    CScriptedPoster poster;
    CScriptedBus bus;
    CScriptedChannel channel;
    CScriptedStore store;
    CScriptedConfig config;
    CScriptedAccount account;
    CScriptedEnvironment environment;
    CScriptedLanguage language;
    CScriptedRandom random;
    CScriptedUrls urls;
    CScriptedHttp http;
    CScriptedReports reports;
    CScriptedDomains domains;
    CScriptedPictures pictures;
    CScriptedSlots slots;
    CScriptedMainFrame mainFrame;
};
