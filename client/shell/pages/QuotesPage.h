#pragma once

#include "SampleMarket.h"
#include "pages/Page.h"

class CPremiumRights;

/// The quotes of one instrument. The chart has a banner of its right, and the order book is behind a mask.
class CQuotesPage : public CPage {
public:
    CQuotesPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                const CPremiumRights& rights, QWidget* parent = nullptr);

private:
    QWidget* NewChart(const SampleMarket::Quote& quote, const CPremiumRights& rights);
    void AddBook(const SampleMarket::Quote& quote, const CPremiumRights& rights);
};
