// The activation popup under all sequences of up to five events. After each event windows, popup, toasts, opened pages
// and error lines follow the rules.
#include <algorithm>
#include <deque>
#include <optional>

#include "Ad/AdWindow.h"
#include "Vip/Controller/ActiveVipPopupTest.h"
#include "Vip/Controller/ZRActiveVipPopupController.h"
#include "support/ScriptedHost.h"

using namespace ::testing;

namespace {

enum class Event { kRequest, kSecondRequest, kAnswer, kRefusal, kPictureIn, kPictureFailed, kClick, kClose, kGone };

constexpr const char* kNames[] = {"Request",       "SecondRequest", "Answer", "Refusal",   "PictureIn",
                                  "PictureFailed", "Click",         "Close",  "ParentGone"};
constexpr int kEvents = 9;

/// The two windows from which a right is activated, each with a target of its own.
constexpr int kWindows = 2;

struct State {
    bool alive[kWindows] = {true, true};
    std::string popup[kWindows];  // "", "loading" or "shown"
    std::vector<std::string> toasts[kWindows];
    std::vector<std::string> opened;
    std::vector<std::string> errors;  // log lines of level 8 and above
    int outstanding = 0;

    friend bool operator==(const State& left, const State& right) { return left.Words() == right.Words(); }
    friend std::ostream& operator<<(std::ostream& stream, const State& state) { return stream << state.Words(); }

private:
    std::string Words() const {
        std::string words;
        for (int i = 0; i < kWindows; ++i) {
            words += alive[i] ? "window, popup \"" + popup[i] + "\"" : "no window";
            for (const std::string& toast : toasts[i]) {
                words += ", toast " + toast;
            }
            words += "; ";
        }
        for (const std::string& url : opened) {
            words += url + "; ";
        }
        for (const std::string& error : errors) {
            words += error + "; ";
        }
        return words + std::to_string(outstanding);
    }
};

std::string TargetOf(int window) {
    return "https://target.test/" + std::to_string(window);
}

/// The expected state.
class CRules {
public:
    void Happen(Event event) {
        switch (event) {
            case Event::kRequest:
            case Event::kSecondRequest: {
                const int window = event == Event::kRequest ? 0 : 1;
                m_parent = m_state.alive[window] ? std::optional(window) : std::nullopt;
                m_targets.push_back(window);
                break;
            }
            case Event::kAnswer:
                if (!m_targets.empty()) {
                    const int target = m_targets.front();
                    m_targets.pop_front();
                    Succeed(target);
                }
                break;
            case Event::kRefusal:
                if (!m_targets.empty()) {
                    m_targets.pop_front();
                    m_state.errors.emplace_back("8 active failed");
                    Toast("Not activated", "292248");
                }
                break;
            case Event::kPictureIn:
                if (m_popup && Popup() == "loading") {
                    Popup() = "shown";
                }
                break;
            case Event::kPictureFailed:
                if (m_popup && Popup() == "loading") {
                    EndPopup();
                    Toast("Activated", "292250");
                }
                break;
            case Event::kClick:
                if (m_popup && Popup() == "shown") {
                    m_state.opened.push_back(TargetOf(m_target));
                    EndPopup();
                }
                break;
            case Event::kClose:
                if (m_popup && Popup() == "shown") {
                    EndPopup();
                }
                break;
            case Event::kGone:
                if (m_parent) {
                    if (m_popup == m_parent) {
                        EndPopup();
                    }
                    m_state.alive[*m_parent] = false;
                    m_state.toasts[*m_parent].clear();
                    m_parent.reset();
                }
                break;
        }
        m_state.outstanding = int(m_targets.size());
    }

    const State& Expected() const { return m_state; }

    /// The window of the latest request.
    std::optional<int> Parent() const { return m_parent; }

private:
    void Succeed(int target) {
        if (!m_parent) {
            m_state.errors.emplace_back("8 parent is empty");
            return;
        }
        if (m_popup) {
            EndPopup();
        }
        m_popup = m_parent;
        m_target = target;
        Popup() = "loading";
    }

    void EndPopup() {
        Popup().clear();
        m_popup.reset();
    }

    void Toast(const char* text, const char* id) {
        if (m_parent) {
            m_state.toasts[*m_parent].emplace_back(text);
        } else {
            m_state.errors.push_back(std::string("16 toast ") + id);
        }
    }

    std::string& Popup() { return m_state.popup[*m_popup]; }

    State m_state;
    std::deque<int> m_targets;  // of the requests without an answer
    std::optional<int> m_parent;
    std::optional<int> m_popup;  // its window
    int m_target = 0;
};

/// The controller on a scripted host of its own, with the rules for its expected state.
class CFixture {
public:
    CFixture() {
        m_host.state.account.Set(501, 1, {6});
        m_host.state.config.Set(kPictureConfig, AllPictures());
        m_host.state.language.SetText(kTextActivated, QStringLiteral("Activated"));
        m_host.state.language.SetText(kTextFailed, QStringLiteral("Not activated"));
        for (auto& window : m_windows) {
            window = std::make_unique<CAdWindow>();
            window->resize(600, 650);
            window->show();
        }
        m_host.time.Settle();
    }

    ~CFixture() {
        m_host.pictures.Forget();
        m_host.log.Forget();
        m_host.channel.Forget();
    }
    CFixture(const CFixture&) = delete;
    CFixture& operator=(const CFixture&) = delete;

    void Do(Event event) {
        switch (event) {
            case Event::kRequest:
                Request(0);
                break;
            case Event::kSecondRequest:
                Request(1);
                break;
            case Event::kAnswer:
                Answer(std::string());
                break;
            case Event::kRefusal:
                Answer("\x08\xE9\x07");
                break;
            case Event::kPictureIn:
                if (m_host.pictures.OutstandingCount() > 0) {
                    m_host.pictures.Succeed(m_host.pictures.LastLoad());
                }
                break;
            case Event::kPictureFailed:
                while (m_host.pictures.OutstandingCount() > 0) {
                    m_host.pictures.Fail(m_host.pictures.LastLoad());
                }
                break;
            case Event::kClick:
                PressOn([](QWidget* popup) { return static_cast<QWidget*>(popup->findChild<CZRAdImageView*>()); });
                break;
            case Event::kClose:
                PressOn([](QWidget* popup) {
                    return popup->findChild<QWidget*>(QStringLiteral("CZRAdMiddlePopupViewCloseButton"));
                });
                break;
            case Event::kGone:
                if (m_rules.Parent()) {
                    m_windows[*m_rules.Parent()].reset();
                }
                break;
        }
        m_host.time.Settle();
        m_rules.Happen(event);
    }

    const State& Expected() const { return m_rules.Expected(); }

    State Actual() {
        State state;
        for (int i = 0; i < kWindows; ++i) {
            state.alive[i] = m_windows[i] != nullptr;
            if (m_windows[i]) {
                const auto popups = PopupsOver(*m_windows[i]);
                EXPECT_LE(popups.size(), 1u);
                state.popup[i] = popups.empty() ? "" : popups.front()->isVisible() ? "shown" : "loading";
                state.toasts[i] = ToastsOver(*m_windows[i]);
            }
        }
        EXPECT_TRUE(state.popup[0].empty() || state.popup[1].empty());
        for (const OpenedUrl& opened : m_host.urls.Opened()) {
            state.opened.push_back(opened.url);
        }
        for (const LogLine& line : m_host.log.Lines()) {
            if (line.severity >= kZRLogError) {
                state.errors.push_back(std::to_string(int(line.severity)) + ShortOf(line.text));
            }
        }
        state.outstanding = m_host.channel.OutstandingCount();
        EXPECT_THAT(m_host.log.Assertions(), IsEmpty());
        return state;
    }

private:
    void Request(int window) {
        m_controller.RequestActiveVip(EnPremiumAccess(101), QString::fromStdString(TargetOf(window)),
                                      m_windows[window].get());
        m_sessions.push_back(m_host.channel.LastSession());
    }

    void Answer(const std::string& bytes) {
        if (!m_sessions.empty()) {
            m_host.channel.Reply(m_sessions.front(), kActivate, bytes);
            m_sessions.pop_front();
        }
    }

    /// Presses the part of the popup's place through its window. A loading popup is not hit.
    template <class Part>
    void PressOn(const Part& part) {
        for (auto& window : m_windows) {
            if (window && !PopupsOver(*window).empty()) {
                Press(*part(PopupsOver(*window).front()), Qt::LeftButton);
                return;
            }
        }
    }

    static std::string ShortOf(const std::string& line) {
        for (const char* text : {" active failed", " parent is empty"}) {
            if (line.find(std::string(",") + text) != std::string::npos &&
                line.find("toastLangId") == std::string::npos) {
                return text;
            }
        }
        const std::string id = "toastLangId = ";
        return " toast " + line.substr(line.find(id) + id.size());
    }

    CRules m_rules;
    CScriptedHost m_host;
    std::unique_ptr<CAdWindow> m_windows[kWindows];
    CZRActiveVipPopupController m_controller{nullptr};
    std::deque<unsigned long> m_sessions;
};

using EventSequence = std::vector<Event>;

class ActiveVipPopupSequencesTest : public TestWithParam<int> {
protected:
    int Run(const EventSequence& first, int most) {
        m_nFirst = first.size();
        EventSequence sequence = first;
        sequence.push_back(Event(GetParam()));
        GoOn(sequence, most - 1);
        return m_nSeen;
    }

private:
    void GoOn(const EventSequence& sequence, int most) {
        if (most == 0) {
            Play(sequence);
            return;
        }
        for (int event = 0; event < kEvents && !HasFailure(); ++event) {
            EventSequence longer = sequence;
            longer.push_back(Event(event));
            GoOn(longer, most - 1);
        }
    }

    /// Runs the sequence from its beginning. Checks from the first difference to the sequence before.
    void Play(const EventSequence& sequence) {
        const auto leaves = std::mismatch(sequence.begin(), sequence.end(), m_before.begin(), m_before.end()).first;
        CFixture fixture;
        std::string events;
        for (auto event = sequence.begin(); event != sequence.end(); ++event) {
            events += std::string(kNames[int(*event)]) + ", ";
            fixture.Do(*event);
            if (event >= leaves) {
                EXPECT_EQ(fixture.Actual(), fixture.Expected()) << events;
                m_nSeen += event - sequence.begin() >= int(m_nFirst) ? 1 : 0;
            }
        }
        m_before = sequence;
    }

    EventSequence m_before;
    size_t m_nFirst = 0;
    int m_nSeen = 0;
};

TEST_P(ActiveVipPopupSequencesTest, OfUpToFiveEventsThatBeginWithARequestLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run({Event::kRequest}, 4), 1 + 9 + 9 * 9 + 9 * 9 * 9);
}

TEST_P(ActiveVipPopupSequencesTest, OfUpToThreeEventsAheadOfARequestLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run({}, 3), 1 + 9 + 9 * 9);
}

TEST_P(ActiveVipPopupSequencesTest, OfUpToThreeEventsAfterAPopupCameUpLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run({Event::kRequest, Event::kAnswer, Event::kPictureIn}, 3), 1 + 9 + 9 * 9);
}

TEST_P(ActiveVipPopupSequencesTest, OfUpToThreeEventsWithTwoWindowsLeaveThePopupAsTheRulesSay) {
    EXPECT_EQ(Run({Event::kRequest, Event::kSecondRequest, Event::kAnswer, Event::kRequest}, 3), 1 + 9 + 9 * 9);
}

INSTANTIATE_TEST_SUITE_P(FirstEvents, ActiveVipPopupSequencesTest, Range(0, kEvents),
                         [](const auto& row) { return std::string(kNames[row.param]); });

TEST(ActiveVipPopupRulesTest, RulesReachEveryStateOfThePopup) {
    CRules rules;
    for (const Event event : {Event::kRequest, Event::kAnswer, Event::kPictureIn}) {
        rules.Happen(event);
    }
    EXPECT_EQ(rules.Expected().popup[0], "shown");
    rules.Happen(Event::kSecondRequest);
    rules.Happen(Event::kAnswer);
    EXPECT_EQ(rules.Expected().popup[0], "");
    EXPECT_EQ(rules.Expected().popup[1], "loading");
    rules.Happen(Event::kGone);
    EXPECT_EQ(rules.Expected().popup[1], "");
    rules.Happen(Event::kRequest);
    rules.Happen(Event::kRefusal);
    EXPECT_THAT(rules.Expected().toasts[0], ElementsAre("Not activated"));
}

}  // namespace
