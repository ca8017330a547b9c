// Each call that the module makes of its host fails in turn, once and for ever, over a day of two users.
#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <set>

#include "ZRGrowthModule.h"
#include "chat.pb.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr uint32_t kCommand = 20982;
constexpr unsigned int kChanged = 20300;

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
    std::string list;
};

const User kFirst = {501, {1, 4}, "[\n\t1,\n\t4\n]\n"};
const User kSecond = {502, {2}, "[\n\t2\n]\n"};
constexpr const char* kYesterdays = "[3]";

std::string Key(const User& user) {
    return "ZRBaseAIChatEnableCacheDataKey_" + std::to_string(user.id);
}

/// What the module should have done by now, as one who knows its rules would write it down.
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
        if (m_trouble.Hits(Port::ChannelSend, ++sends)) {
            ++failedRequests;
        } else {
            m_pending = user;
        }
    }

    /// A failed request changes nothing; a refused save takes nothing back.
    void Answer() {
        if (!m_pending) {
            return;
        }
        scenes = m_pending->scenes;
        ++changes;
        saves.push_back(StoreSave{std::nullopt, Key(*m_pending), m_pending->list});
        if (m_trouble.Hits(Port::StoreSave, int(saves.size()))) {
            ++refusedSaves;
        } else {
            kept.insert(m_pending->id);
        }
        m_pending.reset();
    }

    std::set<int> scenes;
    std::vector<StoreSave> saves;  // asked for
    std::set<uint64_t> kept;       // users whose list the store holds
    int sends = 0;
    int changes = 0;
    int failedRequests = 0;
    int refusedReads = 0;
    int refusedSaves = 0;

private:
    const Trouble m_trouble;
    std::optional<User> m_pending;
    int m_nReads = 0;
};

class FailingPortsTest : public ScriptedHostTest, public WithParamInterface<Trouble> {
protected:
    FailingPortsTest() : model(GetParam()) {
        for (const User& user : {kFirst, kSecond}) {
            store.SetAppString(Key(user), kYesterdays);
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

    /// The failing answer has come by itself; the good one is the server's.
    void Answer(const User& user) {
        time.Settle();
        chat::GetChatEntryRsp answer;
        for (const int scene : user.scenes) {
            auto* entry = answer.mutable_data()->add_entry_list();
            entry->set_scene(uint32_t(scene));
            entry->set_is_all_open(true);
        }
        channel.Reply(channel.LastSession(), kCommand, answer);
        time.Settle();
        model.Answer();
        Check("answer", user);
    }

    void LogOut(const User& user) {
        account.Set(0);
        module.OnLogout();
        Check("logout", user);
    }

    std::set<int> OpenScenes() const {
        std::set<int> open;
        const auto service = IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
        for (int scene = 0; scene <= 6; ++scene) {
            if (service->IsAIChatEnable(ZRAIChatEntryScene(scene))) {
                open.insert(scene);
            }
        }
        return open;
    }

    void Check(const char* step, const User& user) {
        SCOPED_TRACE(std::string("after the ") + step + " of user " + std::to_string(user.id));
        EXPECT_EQ(OpenScenes(), model.scenes);
        EXPECT_EQ(store.Saves(), model.saves);
        for (const User& one : {kFirst, kSecond}) {
            EXPECT_EQ(store.AppString(Key(one)), model.kept.count(one.id) > 0 ? one.list : kYesterdays);
        }
        EXPECT_THAT(channel.Sent(), SizeIs(size_t(model.sends)));
        const std::vector<BusMessage> sent = bus.Sent();
        EXPECT_THAT(sent, AllOf(SizeIs(size_t(model.changes)), Each(::Message(kChanged))));
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
        {Port::ChannelSend, 2}, {Port::StoreRead, 3}, {Port::StoreSave, 2}, {Port::ConfigRead, 0}};
    for (const auto& [port, count] : calls) {
        for (int call = 1; call <= count + 1; ++call) {
            troubles.push_back({port, call, false});
            troubles.push_back({port, call, true});
        }
    }
    return troubles;
}

TEST_P(FailingPortsTest, LeavesOpenWhatTheServerSaidAndSavesWhatItCan) {
    module.OnInit();
    LogIn(kFirst);
    Answer(kFirst);
    LogOut(kFirst);
    LogIn(kSecond);
    Answer(kSecond);
    LogOut(kSecond);
    module.OnUnInit();

    EXPECT_EQ(bus.SubscriptionCount(), 0);
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    EXPECT_EQ(channel.OutstandingCount(), 0);
    EXPECT_THAT(log.Lines(), Each(Field(&LogLine::severity, Lt(kZRLogError))));
    EXPECT_THAT(log.Assertions(), IsEmpty());
    EXPECT_EQ(LinesWith("Read cache failed"), model.refusedReads);
    EXPECT_EQ(LinesWith("Update cache failed"), model.refusedSaves);
    EXPECT_EQ(LinesWith("receive cmd error, error = -1, cmd = 20982"), model.failedRequests);
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingPortsTest, ValuesIn(AllTroubles()),
                         [](const auto& row) { return PrintToString(row.param); });

}  // namespace
