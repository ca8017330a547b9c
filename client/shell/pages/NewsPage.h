#pragma once

#include "pages/Page.h"

struct SampleMarket;

class CNewsPage : public CPage {
public:
    CNewsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
              QWidget* parent = nullptr);
};
