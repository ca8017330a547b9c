#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Ad/AdPopupTest.h"
#include "Ad/Controller/ZRAdManager.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"

/// A manager of its own for each case, with the host at its other end.
class AdManagerTest : public AdPopupTest {
protected:
    ~AdManagerTest() override { manager.reset(); }

    void Start() { manager->Init(); }

    CZRAdBottomPopupController* Popup() { return manager->findChild<CZRAdBottomPopupController*>(); }

    static std::string Text(const Json::Value& data) { return AnswerOf(data).toStyledString(); }

    /// The server's answer to a search, whose picture comes at once.
    void ShowByAnswer() {
        bus.HostSend(10650);
        http.Answer(http.LastTask(), Text(DataOf({"18088"})));
        time.Settle();
        if (Card()) {
            LetPictureIn();
        }
        store.Forget();
        Forget();
    }

    void StartAndShow() {
        Start();
        ShowByAnswer();
        ASSERT_TRUE(Card() && Card()->isVisible());
    }

    /// A list is there, and was not shown for want of the focus.
    void StartAndWait() {
        Start();
        mainFrame.SetFocusIn(false);
        ShowByAnswer();
        ASSERT_TRUE(Popup()->GetAdModelList());
        ASSERT_FALSE(Card());
    }

    static ads_service::AdPush AdPush(uint32_t type, uint32_t position, uint32_t delay) {
        ads_service::AdPush push;
        push.set_ad_type(type);
        push.set_ad_position(position);
        push.set_delay(delay);
        return push;
    }
    static ad_manage_oss::AdPush StatusPush(uint32_t type, uint32_t position, uint32_t delay,
                                            const std::vector<std::string>& offline) {
        ad_manage_oss::AdPush push;
        push.set_ad_type(type);
        push.set_ad_position(position);
        push.set_delay(delay);
        for (const std::string& id : offline) {
            push.add_offline_ad_id(id);
        }
        return push;
    }
    static ad_manage_oss::AdCheckPush CheckPush(uint32_t type, uint32_t position, uint32_t delay,
                                                const std::vector<std::string>& ids) {
        ad_manage_oss::AdCheckPush push;
        push.set_ad_type(type);
        push.set_ad_position(position);
        push.set_delay(delay);
        for (const std::string& id : ids) {
            push.add_ad_id(id);
        }
        return push;
    }
    static CSProtoData Data(uint32_t cmd, const google::protobuf::MessageLite& message) {
        CSProtoData data;
        data.m_nCmd = cmd;
        data.m_strData = message.SerializeAsString();
        return data;
    }

    /// Returns the paths of the requests so far, without the server.
    std::vector<std::string> Paths() {
        std::vector<std::string> paths;
        for (const StartedRequest& started : http.Started()) {
            paths.push_back(started.request.m_strUrl.substr(std::string("https://ads.test").size()));
        }
        return paths;
    }

    std::unique_ptr<CZRAdManager> manager = std::make_unique<CZRAdManager>();
};
