#include "EndAtFailure.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

class CEndAtFailure : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed()) {
            std::abort();
        }
    }
};

}  // namespace

void EndAtFailure() {
    testing::UnitTest::GetInstance()->listeners().Append(new CEndAtFailure);
}
