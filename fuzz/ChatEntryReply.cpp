// Input: the bytes of the server's reply. The same bytes are also the login user's cache.
#include <gmock/gmock.h>

#include <limits>
#include <optional>
#include <set>

#include "AIChat/Controller/ZRAIChatIds.h"
#include "AIChat/Controller/ZRAIChatManager.h"
#include "FuzzTarget.h"
#include "chat.pb.h"
#include "framework/JsonText.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

std::optional<std::multiset<uint32_t>> OpenScenes(const std::string& bytes) {
    chat::GetChatEntryRsp answer;
    if (!answer.ParseFromString(bytes)) {
        return std::nullopt;
    }
    std::multiset<uint32_t> open;
    for (const auto& entry : answer.data().entry_list()) {
        if (entry.is_all_open()) {
            open.insert(entry.scene());
        }
    }
    return open;
}

/// The scenes of the saved list.
std::multiset<uint32_t> SavedScenes(const std::string& saved) {
    std::string error;
    const auto list = host::ParseJson(saved, error);
    EXPECT_TRUE(list && list->isArray()) << saved << error;
    std::multiset<uint32_t> scenes;
    for (const Json::Value& scene : list.value_or(Json::Value())) {
        scenes.insert(scene.asUInt());
    }
    return scenes;
}

void CheckQuestions(CZRAIChatManager& manager, const std::multiset<uint32_t>& open) {
    std::set<uint32_t> asked(open.begin(), open.end());
    asked.insert({0, 3, uint32_t(std::numeric_limits<int>::max()), 0x80000000u});
    for (const uint32_t scene : asked) {
        const bool inRange = scene <= uint32_t(std::numeric_limits<int>::max());
        EXPECT_EQ(manager.IsAIChatEnable(ZRAIChatEntryScene(int(scene))), inRange && open.count(scene) > 0) << scene;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto open = OpenScenes(bytes);
    CScriptedHost host;
    host.state.account.Set(12345);
    CZRAIChatManager manager;
    host.store.SetAppString(manager.GenerateAIChatEnableCacheDataKey().toStdString(), bytes);

    manager.OnLogin();
    CheckQuestions(manager, {});
    host.channel.Reply(host.channel.LastSession(), kCmdAIChatEnableStatus, bytes);

    CheckQuestions(manager, open.value_or(std::multiset<uint32_t>()));
    EXPECT_EQ(host.bus.Sent().size(), open ? 1u : 0u);
    const std::vector<StoreSave>& saves = host.store.Saves();
    EXPECT_EQ(saves.size(), open ? 1u : 0u);
    for (const StoreSave& save : saves) {
        EXPECT_EQ(SavedScenes(save.value), *open);
    }
    return 0;
}
