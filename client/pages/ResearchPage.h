#pragma once

#include "pages/Page.h"

class CAds;
struct SampleMarket;

class CResearchPage : public CPage {
public:
    CResearchPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market, const CAds& ads,
                  QWidget* parent = nullptr);
};
