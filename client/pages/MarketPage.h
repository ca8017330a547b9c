#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CMarketPage : public CPage {
public:
    CMarketPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                QWidget* parent = nullptr);
};
