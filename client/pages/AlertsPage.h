#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CAlertsPage : public CPage {
public:
    CAlertsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                QWidget* parent = nullptr);
};
