#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CAccountPage : public CPage {
public:
    CAccountPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
                 QWidget* parent = nullptr);
};
