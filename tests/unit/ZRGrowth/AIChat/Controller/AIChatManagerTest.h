#pragma once

#include <gmock/gmock.h>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "chat.pb.h"
#include "support/ScriptedHostTest.h"

constexpr uint64_t kUser = 12345;
constexpr const char* kKey = "ZRBaseAIChatEnableCacheDataKey_12345";

inline ZRAIChatEntryScene Scene(int number) {
    return ZRAIChatEntryScene(number);
}

inline chat::GetChatEntryRsp Answer(std::initializer_list<std::pair<uint32_t, bool>> entries) {
    chat::GetChatEntryRsp answer;
    auto* data = answer.mutable_data();
    for (const auto& [scene, open] : entries) {
        auto* entry = data->add_entry_list();
        entry->set_scene(scene);
        entry->set_is_all_open(open);
    }
    return answer;
}

class AIChatManagerTest : public ScriptedHostTest {
protected:
    AIChatManagerTest() { account.Set(kUser); }

    /// Asks, and answers with these scenes.
    void ServerAnswers(const chat::GetChatEntryRsp& answer) {
        manager.RequestAIChatEnableStatus();
        channel.Reply(channel.LastSession(), 20982, answer);
    }

    /// The state that a test begins with: scene 3 is open, and nothing of how it came about counts.
    void SceneThreeIsOpen() {
        ServerAnswers(Answer({{3, true}}));
        Forget();
    }

    void Forget() {
        channel.Forget();
        bus.Forget();
        store.Forget();
        log.Forget();
    }

    void ExpectNothingHappened() {
        EXPECT_THAT(bus.Sent(), ::testing::IsEmpty());
        EXPECT_THAT(store.Saves(), ::testing::IsEmpty());
        EXPECT_TRUE(manager.IsAIChatEnable(Scene(3)));
    }

    CZRAIChatManager manager;
};
