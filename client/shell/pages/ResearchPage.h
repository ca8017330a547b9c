#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CResearchPage : public CPage {
public:
    CResearchPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                  QWidget* parent = nullptr);
};
