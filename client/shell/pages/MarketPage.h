#pragma once

#include "pages/Page.h"

class CAds;
struct SampleMarket;

class CMarketPage : public CPage {
public:
    CMarketPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market, const CAds& ads,
                QWidget* parent = nullptr);
};
