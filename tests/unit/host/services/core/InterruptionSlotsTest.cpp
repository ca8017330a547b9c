#include "core/InterruptionSlots.h"

#include <gtest/gtest.h>

TEST(InterruptionSlotsTest, SlotIsAllowedUnlessItWasForbidden) {
    CInterruptionSlots kinds;
    EXPECT_TRUE(kinds.IsAllowed(kSlotAdPopup));

    kinds.Allow(kSlotAdPopup, false);
    EXPECT_FALSE(kinds.IsAllowed(kSlotAdPopup));
    EXPECT_FALSE(kinds.IsAllowed(kSlotAdPopup)) << "asking changes nothing";
    EXPECT_TRUE(kinds.IsAllowed(ZRUniformResourceSlotType(3)));

    kinds.Allow(kSlotAdPopup, true);
    EXPECT_TRUE(kinds.IsAllowed(kSlotAdPopup));
}
