// Two threads read while the main thread replaces and clears: each record that they get is whole.
#include <QDeadlineTimer>
#include <atomic>
#include <functional>
#include <thread>

#include "Premium/Model/ZRPremiumAccessModel.h"
#include "Premium/PremiumTest.h"

using namespace ::testing;

namespace {

#if defined(__SANITIZE_ADDRESS__)
#define ZR_SEES_TORN_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZR_SEES_TORN_MEMORY 1
#endif
#endif

// A million reads in sum, of the model and of the manager, where a sanitizer watches them; else a taste of it.
#ifdef ZR_SEES_TORN_MEMORY
constexpr int kReadsOfEach = 250'000;
#else
constexpr int kReadsOfEach = 50'000;
#endif
constexpr int kReaders = 2;
constexpr int kVersions = 32;
constexpr int kRights[] = {13, 14, 1000};

/// Each version of each record, made before the race; what is read is compared with these.
class CVersions {
public:
    CVersions() {
        for (int version = 0; version < kVersions; ++version) {
            for (const int right : kRights) {
                m_records[version][Right(right)] = Record(right, version);
            }
        }
    }

    const PremiumTable& At(int version) const { return m_records[version]; }

    // Links and days of Record() identify the version that the other fields must have.
    bool IsWhole(int right, const CPremiumUIData& display) const {
        return IsOneOf(display.nMainBtnUrlID, 1) &&
               display == static_cast<const CPremiumUIData&>(Of(right, display.nMainBtnUrlID));
    }
    bool IsWhole(int right, const CPremiumAccessData& state) const {
        return IsOneOf(state.nDaysLeft, 4) &&
               state == static_cast<const CPremiumAccessData&>(Of(right, state.nDaysLeft));
    }
    bool IsWhole(int right, const CPremiumUIAccessData& record) const {
        return IsOneOf(record.nDaysLeft, 4) && record == Of(right, record.nDaysLeft);
    }

private:
    static bool IsOneOf(int number, int lastDigit) {
        return number >= 0 && number % 10 == lastDigit && number / 10 < kVersions;
    }
    const CPremiumUIAccessData& Of(int right, int number) const {
        return *m_records[number / 10].constFind(Right(right));
    }

    PremiumTable m_records[kVersions];
};

struct Counts {
    int reads = 0;
    int blank = 0;
    int torn = 0;

    bool HasSeenBoth() const { return blank > 0 && blank < reads; }
};

template <class Half>
void Count(const CVersions& versions, int right, const Half& read, Counts& counts) {
    ++counts.reads;
    if (read == Half()) {
        ++counts.blank;
    } else if (!versions.IsWhole(right, read)) {
        ++counts.torn;
    }
}

// Goes on until it has met the other threads' work, however the machine deals out its processors.
template <class Table>
Counts ReadAll(const Table& table, const CVersions& versions, const std::atomic<int>& rounds) {
    const QDeadlineTimer bound(20'000);
    Counts counts;
    while (counts.reads < kReadsOfEach || ((!counts.HasSeenBoth() || rounds <= kVersions) && !bound.hasExpired())) {
        for (const int right : kRights) {
            Count(versions, right, table.GetUIData(Right(right)), counts);
            Count(versions, right, table.GetAccessData(Right(right)), counts);
            Count(versions, right, table.GetUIAccessData(Right(right)), counts);
        }
        const PremiumTable all = table.GetUIAccessData();
        for (auto it = all.begin(); it != all.end(); ++it) {
            Count(versions, it.key(), it.value(), counts);
        }
    }
    return counts;
}

template <class Table>
void Race(Table& table, const std::function<void()>& clear) {
    const CVersions versions;
    std::atomic<int> reading{kReaders};
    std::atomic<int> rounds{0};
    std::vector<Counts> counts(kReaders);
    std::vector<std::thread> readers;
    for (Counts& mine : counts) {
        readers.emplace_back([&] {
            mine = ReadAll(table, versions, rounds);
            --reading;
        });
    }
    while (reading > 0) {
        const PremiumTable& next = versions.At(++rounds % kVersions);
        for (auto it = next.begin(); it != next.end(); ++it) {
            table.SetUIAccessData(it.key(), it.value());
        }
        if (rounds % 4 == 0) {
            clear();
        }
    }
    for (std::thread& reader : readers) {
        reader.join();
    }

    // or there was no race
    EXPECT_GT(rounds, kVersions);
    for (const Counts& mine : counts) {
        EXPECT_EQ(mine.torn, 0);
        EXPECT_TRUE(mine.HasSeenBoth());
    }
}

TEST(PremiumReadersTest, EachRecordOfTheModelIsOfOneVersionByAllGetters) {
    CZRPremiumAccessModel model;

    Race(model, [&model] { model.ClearPremiumData(); });
}

TEST_F(PremiumTest, EachRecordOfTheManagerIsOfOneVersionByAllGetters) {
    Race(*manager, [this] { manager->OnLogout(); });
}

}  // namespace
