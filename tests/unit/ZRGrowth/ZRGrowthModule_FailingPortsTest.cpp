// Each call that the module makes of its host fails in turn, once and for ever, over a day of two users.
#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <set>

#include "ZRGrowthModule.h"
#include "chat.pb.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "premium_svr.pb.h"
#include "support/ScriptedHostTest.h"
#include "vip_base_service.pb.h"

using namespace ::testing;

namespace {

constexpr uint32_t kRights = 20637;
constexpr uint32_t kVipStatus = 20831;
constexpr uint32_t kScenes = 20982;

enum class Port { None, ChannelSend, StoreRead, StoreSave, ConfigRead };

/// Calls `first` to `last` of a port fail, counted from the module's start; the first is 1.
struct Trouble {
    Port port = Port::None;
    int first = 0;
    bool forEver = false;

    bool Hits(Port asked, int call) const { return port == asked && (forEver ? call >= first : call == first); }

    Failing AsFailing() const { return forEver ? Failing::From(first) : Failing::Nth(first); }
};

std::ostream& operator<<(std::ostream& stream, const Trouble& trouble) {
    static const char* const kNames[] = {"Nothing", "ChannelSend", "StoreRead", "StoreSave", "ConfigRead"};
    return stream << kNames[int(trouble.port)] << (trouble.forEver ? "From" : "Nth") << trouble.first;
}

struct User {
    uint64_t id;
    std::set<int> scenes;
    std::string list;  // as the scenes are saved
    int right;
    int grade;
};

const User kFirst = {501, {1, 4}, "[\n\t1,\n\t4\n]\n", 13, 2};
const User kSecond = {502, {2}, "[\n\t2\n]\n", 106, 3};
constexpr const char* kYesterdays = "[3]";

std::string ScenesKey(const User& user) {
    return "ZRBaseAIChatEnableCacheDataKey_" + std::to_string(user.id);
}

// A right of which nothing is known but its number.
std::string SavedRights(const User& user) {
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    saved.add_ui_data_and_access_data()->set_access(user.right);
    return saved.SerializeAsString();
}

/// The expected effects of the module so far, by its rules.
class CModel {
public:
    explicit CModel(const Trouble& trouble) : m_trouble(trouble) {}

    /// The list in memory is emptied whether the kept one can be read or not.
    void Login(const User& user) {
        const int reads = sends == 0 ? 2 : 1;  // the first use of AI chat reads as well
        for (int read = 0; read < reads; ++read) {
            refusedReads += m_trouble.Hits(Port::StoreRead, ++m_nReads) ? 1 : 0;
        }
        scenes.clear();
        m_user = user;
        m_bRightsAnswered = Send(failedRights);
        m_bVipAnswered = Send(failedVips);
        m_bScenesAnswered = Send(failedScenes);
    }

    /// A failed request changes nothing; a refused save takes nothing back. Failures come before answers.
    void Answer() {
        if (!m_bRightsAnswered) {
            messages.emplace_back(80051, 2);
        }
        if (m_bRightsAnswered) {
            rights = {m_user.right};
            messages.emplace_back(80051, 0);
            if (Save({m_user.id, "Growth_PremiumData", SavedRights(m_user)}, refusedRights)) {
                keptRights.insert(m_user.id);
            }
        }
        if (m_bVipAnswered) {
            grade = m_user.grade;
            messages.emplace_back(80052, 0);
        }
        if (m_bScenesAnswered) {
            scenes = m_user.scenes;
            messages.emplace_back(20300, 0);
            if (Save({std::nullopt, ScenesKey(m_user), m_user.list}, refusedScenes)) {
                keptScenes.insert(m_user.id);
            }
        }
    }

    void Logout() {
        rights.clear();
        grade = 0;
    }

    std::set<int> scenes;
    std::set<int> rights;
    int grade = 0;
    std::vector<StoreSave> saves;                             // asked for
    std::set<uint64_t> keptScenes;                            // users whose list the store holds
    std::set<uint64_t> keptRights;                            // users whose rights the store holds
    std::vector<std::pair<unsigned int, uint64_t>> messages;  // id and p2
    int sends = 0;
    int failedRights = 0;
    int failedVips = 0;
    int failedScenes = 0;
    int refusedReads = 0;
    int refusedRights = 0;
    int refusedScenes = 0;

private:
    bool Send(int& failed) {
        const bool hits = m_trouble.Hits(Port::ChannelSend, ++sends);
        failed += hits ? 1 : 0;
        return !hits;
    }

    bool Save(const StoreSave& save, int& refused) {
        saves.push_back(save);
        const bool hits = m_trouble.Hits(Port::StoreSave, int(saves.size()));
        refused += hits ? 1 : 0;
        return !hits;
    }

    const Trouble m_trouble;
    User m_user;
    bool m_bRightsAnswered = false;
    bool m_bVipAnswered = false;
    bool m_bScenesAnswered = false;
    int m_nReads = 0;
};

class FailingPortsTest : public ScriptedHostTest, public WithParamInterface<Trouble> {
protected:
    FailingPortsTest() : model(GetParam()) {
        for (const User& user : {kFirst, kSecond}) {
            store.SetAppString(ScenesKey(user), kYesterdays);
        }
        Make(GetParam());
    }

    void Make(const Trouble& trouble) {
        switch (trouble.port) {
            case Port::None:
                return;
            case Port::ChannelSend:
                channel.FailSends(trouble.AsFailing(), kCSProtoTimedOut);
                return;
            case Port::StoreRead:
                store.RefuseReads(trouble.AsFailing());
                return;
            case Port::StoreSave:
                store.RefuseSaves(trouble.AsFailing());
                return;
            case Port::ConfigRead:
                config.RefuseReads(trouble.AsFailing());
                return;
        }
    }

    void LogIn(const User& user) {
        account.Set(user.id, 1);
        module.OnLogin();
        model.Login(user);
        Check("login", user);
    }

    /// The failing answers have come by themselves; the good ones are the server's.
    void Answer(const User& user) {
        time.Settle();
        web_premium_access::GetUiMsgAndPremiumAccessRsp rights;
        rights.set_code(0);
        rights.mutable_data()->add_ui_data_and_access_data()->set_access(user.right);
        vip_base_service::GetAppEntryMessageRsp vip;
        vip.mutable_data()->mutable_vip_basic_data()->set_vip_level(uint32_t(user.grade));
        chat::GetChatEntryRsp scenes;
        for (const int scene : user.scenes) {
            auto* entry = scenes.mutable_data()->add_entry_list();
            entry->set_scene(uint32_t(scene));
            entry->set_is_all_open(true);
        }
        const unsigned long last = channel.LastSession();
        channel.Reply(last - 2, kRights, rights);
        channel.Reply(last - 1, kVipStatus, vip);
        channel.Reply(last, kScenes, scenes);
        time.Settle();
        model.Answer();
        Check("answer", user);
    }

    void LogOut(const User& user) {
        account.Set(0);
        module.OnLogout();
        model.Logout();
        Check("logout", user);
    }

    std::set<int> OpenScenes() const {
        std::set<int> open;
        for (int scene = 0; scene <= 6; ++scene) {
            if (Service()->IsAIChatEnable(ZRAIChatEntryScene(scene))) {
                open.insert(scene);
            }
        }
        return open;
    }

    std::set<int> Rights() const {
        const auto keys = Service()->GetUIAccessData().keys();
        return {keys.begin(), keys.end()};
    }

    static std::shared_ptr<IZRGrowthModuleInterface> Service() {
        return IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
    }

    std::vector<std::pair<unsigned int, uint64_t>> Messages() const {
        std::vector<std::pair<unsigned int, uint64_t>> messages;
        for (const BusMessage& message : bus.Sent()) {
            messages.emplace_back(message.id, message.p2);
        }
        return messages;
    }

    void Check(const char* step, const User& user) {
        SCOPED_TRACE(std::string("after the ") + step + " of user " + std::to_string(user.id));
        EXPECT_EQ(OpenScenes(), model.scenes);
        EXPECT_EQ(Rights(), model.rights);
        EXPECT_EQ(Service()->GetVipGrade(), model.grade);
        EXPECT_EQ(store.Saves(), model.saves);
        for (const User& one : {kFirst, kSecond}) {
            EXPECT_EQ(store.AppString(ScenesKey(one)), model.keptScenes.count(one.id) > 0 ? one.list : kYesterdays);
            EXPECT_EQ(store.UserString(one.id, "Growth_PremiumData").has_value(), model.keptRights.count(one.id) > 0);
        }
        EXPECT_THAT(channel.Sent(), SizeIs(size_t(model.sends)));
        EXPECT_EQ(Messages(), model.messages);
    }

    int LinesWith(const std::string& words) {
        const auto lines = log.Lines();
        return int(std::count_if(lines.begin(), lines.end(),
                                 [&](const LogLine& line) { return line.text.find(words) != std::string::npos; }));
    }

    CZRGrowthModule module;
    CModel model;
};

std::vector<Trouble> AllTroubles() {
    std::vector<Trouble> troubles = {Trouble()};
    // The calls of a day on which nothing fails. One more is tried of each: it never comes.
    const std::pair<Port, int> calls[] = {
        {Port::ChannelSend, 6}, {Port::StoreRead, 3}, {Port::StoreSave, 4}, {Port::ConfigRead, 0}};
    for (const auto& [port, count] : calls) {
        for (int call = 1; call <= count + 1; ++call) {
            troubles.push_back({port, call, false});
            troubles.push_back({port, call, true});
        }
    }
    return troubles;
}

TEST_P(FailingPortsTest, LeavesWhatTheServerSaidAndSavesWhatItCan) {
    module.OnInit();
    LogIn(kFirst);
    Answer(kFirst);
    LogOut(kFirst);
    LogIn(kSecond);
    Answer(kSecond);
    LogOut(kSecond);
    module.OnUnInit();

    const std::string preloaded = "https://chat.zrgrowth.example/preload?needChangeSessionId=1&scene=1";
    EXPECT_THAT(web.Loads(), ElementsAre(preloaded, preloaded));
    EXPECT_EQ(channel.OutstandingCount(), 0);
    EXPECT_THAT(log.Assertions(), IsEmpty());
    EXPECT_EQ(LinesWith("Read cache failed"), model.refusedReads);
    EXPECT_EQ(LinesWith("Update cache failed"), model.refusedScenes);
    EXPECT_EQ(LinesWith("receive cmd error, error = -1, cmd = 20982"), model.failedScenes);
    EXPECT_EQ(LinesWith("[Premium] Request Failed On Channel Error"), model.failedRights);
    EXPECT_EQ(LinesWith("[Premium] Latest News Filter Save Failed."), model.refusedRights);
    EXPECT_EQ(LinesWith("[Vip] Vip Status Response Failed, Error = -1, Cmd = 20831"), model.failedVips);
    const auto lines = log.Lines();
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const LogLine& line) { return line.severity >= kZRLogError; }),
        model.failedRights + model.failedVips + model.refusedRights);
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingPortsTest, ValuesIn(AllTroubles()),
                         [](const auto& row) { return PrintToString(row.param); });

}  // namespace
