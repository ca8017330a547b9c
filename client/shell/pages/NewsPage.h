#pragma once

#include "pages/Page.h"

class CPremiumRights;
struct SampleMarket;

class CNewsPage : public CPage {
public:
    CNewsPage(const EntryPage& page, const CAIChatEntries& entries, const SampleMarket& market,
              const CPremiumRights& rights, QWidget* parent = nullptr);
};
