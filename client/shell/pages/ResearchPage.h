#pragma once

#include "pages/Page.h"

class CPremiumRights;
struct SampleMarket;

/// Research notes below two analyses, which are behind masks of their rights.
class CResearchPage : public CPage {
public:
    CResearchPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                  const CPremiumRights& rights, QWidget* parent = nullptr);
};
