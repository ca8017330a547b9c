#pragma once

#include "pages/Page.h"

class CAds;
struct SampleMarket;

class CAlertsPage : public CPage {
public:
    CAlertsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market, const CAds& ads,
                QWidget* parent = nullptr);
};
