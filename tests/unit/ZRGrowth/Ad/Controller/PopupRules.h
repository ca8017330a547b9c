#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// The events that can happen to the bottom popup.
enum class PopupEvent {
    kAnswer,
    kOffline,  // of the ad on screen, or else of the last that came
    kNewAd,
    kTab,
    kLogout,
    kPicture,
    kTime,
    // Beyond the usual.
    kOfflineWaiting,  // of the ad that waits while another is on screen, or else of one that nobody knows
    kLanguage,
    kNoPicture,
};

/// All in seconds.
struct PopupTimes {
    int64_t showDuration = 0;  // 0: until it is closed
    int64_t showInterval = 0;  // 0: none
    int64_t offlineDelay = 0;
};

/// The visible state of the popup.
struct PopupState {
    std::string list;      // the ad of the stored list; empty without one
    bool view = false;     // one is there, shown or not
    bool loading = false;  // its picture is awaited
    bool shown = false;
    std::optional<int64_t> closesIn;  // milliseconds
    int64_t lastShow = 0;             // seconds; 0: never
    std::vector<std::string> open;    // exposures that have begun and not ended, by ad
    int requests = 0;                 // that have left so far
};

bool operator==(const PopupState& left, const PopupState& right);
std::ostream& operator<<(std::ostream& stream, const PopupState& state);

/// The rules of the bottom popup, derived independently of the code, event by event. The first request
/// is pending, and the current tab may show ads.
class CPopupRules {
public:
    static constexpr int64_t kRequestLimit = 10;
    static constexpr int64_t kTimeStep = 11;
    static constexpr int kPictureAttempts = 3;

    CPopupRules(int64_t now, const PopupTimes& times);

    void Happen(PopupEvent event);
    PopupState State() const;

    /// The ad that each of the two pushes takes offline; empty without one.
    std::string OfflineAd() const { return m_onScreen.empty() ? LastAd() : m_onScreen; }
    std::string OfflineWaitingAd() const;
    /// The ad that the next answer will bring.
    std::string NextAd() const { return AdOf(m_nAnswers + 1); }
    bool IsTabGood() const { return m_bGoodTab; }

private:
    static std::string AdOf(int number) { return "ad-" + std::to_string(number); }
    std::string LastAd() const { return m_nAnswers == 0 ? std::string() : AdOf(m_nAnswers); }

    void Answer();
    void Offline(const std::string& ad);
    void ChangeTab();
    void ChangeLanguage();
    void LogOut();
    void PictureComes();
    void PictureFails();
    void TimePasses();

    void Request();
    bool MayShow() const;
    void Show();
    void DropView();
    void EndExposure();
    void Clear();
    void Close(bool isLogout);

    const PopupTimes m_times;
    int64_t m_nNow;
    int64_t m_nLastRequest = 0;
    int m_nRequests = 0;
    int m_nAnswers = 0;
    bool m_bWaiting = false;  // the latest request has no answer yet
    std::string m_list;
    std::string m_view;  // the ad that the view is for
    int m_nFailures = 0;
    bool m_bShown = false;
    std::string m_onScreen;  // the ad that was shown last and not closed
    std::optional<int64_t> m_closeAt;
    std::vector<int64_t> m_requestAt;
    int64_t m_nLastShow = 0;
    bool m_bGoodTab = true;
    bool m_bTabKnown = false;
    std::map<std::string, bool> m_open;
};
