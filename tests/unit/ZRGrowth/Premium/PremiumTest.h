#pragma once

#include <gmock/gmock.h>

#include <iosfwd>
#include <string>
#include <vector>

#include "Premium/Model/ZRPremiumDataHandler.h"
#include "Premium/ZRPremiumManager.h"
#include "premium_svr.pb.h"
#include "support/ScriptedHostTest.h"

constexpr uint64_t kUser = 501;
constexpr uint32_t kRequest = 20637;
constexpr uint32_t kPush = 20837;
constexpr unsigned int kChanged = 80050;
constexpr unsigned int kAnswered = 80051;
constexpr unsigned int kLanguageChanged = 20100;
constexpr const char* kSavedKey = "Growth_PremiumData";

using PremiumAnswer = web_premium_access::GetUiMsgAndPremiumAccessRsp;
using PremiumElement = web_premium_access::UiDataAndAccessData;
using PremiumTable = QMap<EnPremiumAccess, CPremiumUIAccessData>;

bool operator==(const CPremiumUIData& left, const CPremiumUIData& right);
bool operator==(const CPremiumAccessData& left, const CPremiumAccessData& right);
bool operator==(const CPremiumUIAccessData& left, const CPremiumUIAccessData& right);
std::ostream& operator<<(std::ostream& stream, const CPremiumUIData& display);
std::ostream& operator<<(std::ostream& stream, const CPremiumAccessData& state);
std::ostream& operator<<(std::ostream& stream, const CPremiumUIAccessData& record);

inline EnPremiumAccess Right(int number) {
    return EnPremiumAccess(number);
}

/// A record with each field derived from the right and `version`, and no two fields alike.
CPremiumUIAccessData Record(int right, int version);

/// The same as the server writes it.
void Write(int right, int version, PremiumElement& element);

/// A good answer that holds such a record for each of the rights; without rights it has no data.
PremiumAnswer Answer(const std::vector<int>& rights, int version = 1);

/// Returns the table after a valid answer with these rights.
PremiumTable Table(const std::vector<int>& rights, int version = 1);

/// Returns the bytes that the model saves for such a table.
std::string SavedBytes(const PremiumTable& table);

std::vector<int> Rights(const PremiumTable& table);

/// A user is logged in and the premium manager has been started; what its start logged is forgotten.
class PremiumTest : public ScriptedHostTest {
protected:
    PremiumTest();

    /// Asks for all rights and gives the answer; `serverPush` as in the request.
    unsigned long ServerAnswers(const PremiumAnswer& answer, bool serverPush = false);

    /// The state that many tests begin with: these rights in the table, and nothing of how they came there counts.
    void TableHolds(const std::vector<int>& rights);

    void Forget();

    CZRPremiumManager* const manager = CZRPremiumManager::Singleton();
    CZRPremiumDataHandler* handler = nullptr;
};
