#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CPortfolioPage : public CPage {
public:
    CPortfolioPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                   QWidget* parent = nullptr);
};
