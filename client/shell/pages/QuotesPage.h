#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CQuotesPage : public CPage {
public:
    CQuotesPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                QWidget* parent = nullptr);
};
