#include <limits>

#include "HostSet.h"
#include "core/config_local.h"

using namespace core::config_local;

namespace {

class StoreContractTest : public HostContractTest {
protected:
    static std::string App(const std::string& key) {
        std::string value = "untouched";
        AppCfgReadString(key, value);
        return value;
    }

    static std::string User(const std::string& key) {
        std::string value = "untouched";
        UserCfgReadString(key, value);
        return value;
    }
};

}  // namespace

TEST_F(StoreContractTest, AnAbsentKeyGivesFalseAndLeavesTheValueAlone) {
    std::string text = "before";
    long number = 42;

    EXPECT_FALSE(AppCfgReadString("absent", text));
    EXPECT_FALSE(UserCfgReadString("absent", text));
    EXPECT_FALSE(AppCfgReadInt64("absent", number));

    EXPECT_EQ(text, "before");
    EXPECT_EQ(number, 42);
}

TEST_F(StoreContractTest, WhatWasSavedLastIsRead) {
    EXPECT_TRUE(AppCfgSaveString("key", "first"));
    EXPECT_TRUE(AppCfgSaveString("key", "second"));

    EXPECT_EQ(App("key"), "second");
}

TEST_F(StoreContractTest, AnEmptyValueIsAValue) {
    EXPECT_TRUE(AppCfgSaveString("key", ""));
    EXPECT_TRUE(UserCfgSaveString("key", ""));

    EXPECT_EQ(App("key"), "");
    EXPECT_EQ(User("key"), "");
}

TEST_F(StoreContractTest, ValuesHoldAnyBytes) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes.push_back(char(i));
    }
    bytes.insert(0, 1, '\0');

    EXPECT_TRUE(AppCfgSaveString("key", bytes));
    EXPECT_TRUE(UserCfgSaveString("key", bytes));
    m_set->ReopenStore();

    EXPECT_EQ(App("key"), bytes);
    EXPECT_EQ(User("key"), bytes);
}

TEST_F(StoreContractTest, KeysAreUtf8) {
    EXPECT_TRUE(AppCfgSaveString("schl\xC3\xBCssel", "value"));
    EXPECT_TRUE(AppCfgSaveString("schlussel", "other"));

    EXPECT_EQ(App("schl\xC3\xBCssel"), "value");
}

TEST_F(StoreContractTest, NumbersKeepAllTheirBits) {
    for (const long number : {0L, -1L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
        long read = 1;
        EXPECT_TRUE(AppCfgSaveInt64("number", number));
        EXPECT_TRUE(AppCfgReadInt64("number", read));
        EXPECT_EQ(read, number);
    }
}

TEST_F(StoreContractTest, AValueOfTheOtherTypeIsNotRead) {
    long number = 42;
    EXPECT_TRUE(AppCfgSaveString("text", "17"));
    EXPECT_TRUE(AppCfgSaveInt64("number", 17));

    EXPECT_FALSE(AppCfgReadInt64("text", number));
    EXPECT_EQ(number, 42);
    EXPECT_EQ(App("number"), "untouched");
}

TEST_F(StoreContractTest, ASaveReplacesAValueOfTheOtherType) {
    long number = 0;
    EXPECT_TRUE(AppCfgSaveString("key", "text"));
    EXPECT_TRUE(AppCfgSaveInt64("key", 17));

    EXPECT_TRUE(AppCfgReadInt64("key", number));
    EXPECT_EQ(number, 17);
    EXPECT_EQ(App("key"), "untouched");
}

TEST_F(StoreContractTest, TheUsersStoresAreTheirOwn) {
    m_set->SetUser(7);
    EXPECT_TRUE(UserCfgSaveString("key", "of seven"));
    m_set->SetUser(8);
    EXPECT_EQ(User("key"), "untouched");
    EXPECT_TRUE(UserCfgSaveString("key", "of eight"));

    m_set->SetUser(7);
    EXPECT_EQ(User("key"), "of seven");
}

TEST_F(StoreContractTest, WithNobodyLoggedInTheStoreIsThatOfUserZero) {
    EXPECT_TRUE(UserCfgSaveString("key", "of nobody"));
    m_set->SetUser(7);
    EXPECT_EQ(User("key"), "untouched");

    m_set->SetUser(0);
    EXPECT_EQ(User("key"), "of nobody");
}

TEST_F(StoreContractTest, TheInstallationsStoreIsSharedAndApartFromTheUsers) {
    EXPECT_TRUE(AppCfgSaveString("key", "of all"));
    EXPECT_EQ(User("key"), "untouched");
    EXPECT_TRUE(UserCfgSaveString("key", "of nobody"));

    m_set->SetUser(7);
    EXPECT_EQ(App("key"), "of all");
}

TEST_F(StoreContractTest, WhatWasSavedIsThereAtTheNextStart) {
    EXPECT_TRUE(AppCfgSaveString("text", "value"));
    EXPECT_TRUE(AppCfgSaveInt64("number", 17));
    EXPECT_TRUE(UserCfgSaveString("text", "of nobody"));

    m_set->ReopenStore();

    long number = 0;
    EXPECT_EQ(App("text"), "value");
    EXPECT_TRUE(AppCfgReadInt64("number", number));
    EXPECT_EQ(number, 17);
    EXPECT_EQ(User("text"), "of nobody");
}
