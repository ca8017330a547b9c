#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CWatchlistPage : public CPage {
public:
    CWatchlistPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                   QWidget* parent = nullptr);
};
