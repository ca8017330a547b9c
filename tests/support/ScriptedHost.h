#pragma once

#include "support/ScriptedBus.h"
#include "support/ScriptedChannel.h"
#include "support/ScriptedHttp.h"
#include "support/ScriptedLog.h"
#include "support/ScriptedMainFrame.h"
#include "support/ScriptedPictures.h"
#include "support/ScriptedPoster.h"
#include "support/ScriptedReports.h"
#include "support/ScriptedState.h"
#include "support/ScriptedStore.h"
#include "support/ScriptedUrls.h"
#include "support/ScriptedWeb.h"
#include "support/VirtualTime.h"

namespace host {
struct Ports;
}

/// The scripted services, connected to the contract from construction to destruction. The destructor reports each
/// effect that the test did not look at as a failure.
class CScriptedHost {
public:
    CScriptedHost();
    ~CScriptedHost();
    CScriptedHost(const CScriptedHost&) = delete;
    CScriptedHost& operator=(const CScriptedHost&) = delete;

    /// All scripted ports, for a test that replaces one.
    host::Ports Ports();

    CVirtualTime time;
    CScriptedLog log;
    CScriptedPoster poster;
    CScriptedBus bus;
    CScriptedChannel channel;
    CScriptedStore store;
    CScriptedState state;
    CScriptedTimeAndRandom timeAndRandom{time};
    CScriptedUrls urls;
    CScriptedHttp http;
    CScriptedReports reports;
    CScriptedPictures pictures;
    CScriptedWeb web;
    CScriptedMainFrame mainFrame;
};
