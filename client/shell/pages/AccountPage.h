#pragma once

#include "pages/Page.h"

class CPremiumRights;
class ISessionControl;
struct SampleMarket;

class CAccountPage : public CPage {
public:
    CAccountPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                 const ISessionControl& session, const CPremiumRights& rights, QWidget* parent = nullptr);
};
