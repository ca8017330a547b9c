#pragma once

#include "pages/Page.h"

class CAds;
struct SampleMarket;

class CQuotesPage : public CPage {
public:
    CQuotesPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market, const CAds& ads,
                QWidget* parent = nullptr);
};
