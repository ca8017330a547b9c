// For any sequence of answers the table equals the result of a plain implementation of the rules.
#include <map>
#include <optional>
#include <random>

#include "Premium/Model/ZRPremiumAccessModel.h"
#include "Premium/PremiumTest.h"

using namespace ::testing;

namespace {

constexpr int kSequences = 2000;
constexpr int kMostAnswers = 6;
constexpr int kMostElements = 8;

/// One element as it was thought up, before it becomes bytes.
struct Half {
    std::optional<int> right;
    std::map<int, int> numbers;        // by field number
    std::map<int, std::string> texts;  // of the display, by field number; ui_text has 10 added
    std::map<int, int> links;          // of the display, by field number
    bool hasTexts = false;
    bool hasLinks = false;
};

struct Element {
    std::optional<int> right;
    std::optional<Half> display;
    std::optional<Half> state;
};

class CRandomServer {
public:
    explicit CRandomServer(uint32_t seed) : m_random(seed) {}

    bool Chance(int percent) { return int(m_random() % 100) < percent; }
    int Below(int bound) { return int(m_random() % uint32_t(bound)); }

    Element NextElement() {
        Element element;
        if (!Chance(8)) {
            element.right = AnyRight();
        }
        if (!Chance(25)) {
            element.display = NextDisplay(element.right);
        }
        if (!Chance(25)) {
            element.state = NextState(element.right);
        }
        return element;
    }

private:
    // Few of them, so that rights come again.
    int AnyRight() {
        static const int kRights[] = {0, 1, 13, 14, 99, 1000, 9, -1, 2147483647, -2147483647 - 1};
        return kRights[Below(10)];
    }

    int AnyNumber() {
        static const int kNumbers[] = {0, 1, 2, 6, 30, -1, 1001, 2147483647, -2147483647 - 1};
        return kNumbers[Below(9)];
    }

    std::string AnyText() {
        static const char* const kTexts[] = {"", "A", "{\"k\":[1,2]}", "Titr\xC3\xA9 \xE6\x9D\x83", "\xFF\xFE", "\x80"};
        return kTexts[Below(6)];
    }

    std::optional<int> RightOfHalf(std::optional<int> outer) {
        if (Chance(6)) {
            return std::nullopt;
        }
        return outer && !Chance(6) ? *outer : AnyRight();
    }

    Half NextState(std::optional<int> outer) {
        Half state;
        state.right = RightOfHalf(outer);
        for (int field = 2; field <= 5; ++field) {
            if (Chance(70)) {
                state.numbers[field] = field == 2 ? Below(2) : AnyNumber();
            }
        }
        return state;
    }

    Half NextDisplay(std::optional<int> outer) {
        Half display;
        display.right = RightOfHalf(outer);
        display.hasTexts = Chance(80);
        display.hasLinks = Chance(80);
        for (const int field : {2, 5, 11, 12, 13, 14, 15, 16}) {
            if (Chance(70) && (field < 10 || display.hasTexts)) {
                display.texts[field] = AnyText();
            }
        }
        for (int field = 1; field <= 3 && display.hasLinks; ++field) {
            if (Chance(70)) {
                display.links[field] = AnyNumber();
            }
        }
        return display;
    }

    std::mt19937 m_random;
};

// To the wire

std::string Varint(uint64_t value) {
    std::string bytes;
    for (; value >= 0x80; value >>= 7) {
        bytes.push_back(char(value | 0x80));
    }
    bytes.push_back(char(value));
    return bytes;
}

std::string Number(int field, int value) {
    return Varint(uint64_t(field) << 3) + Varint(uint64_t(int64_t(value)));
}

std::string Nested(int field, const std::string& bytes) {
    return Varint((uint64_t(field) << 3) | 2) + Varint(bytes.size()) + bytes;
}

std::string StateBytes(const Half& state) {
    std::string bytes = state.right ? Number(1, *state.right) : std::string();
    for (const auto& [field, value] : state.numbers) {
        bytes += Number(field, value);
    }
    return bytes;
}

std::string DisplayBytes(const Half& display) {
    std::string bytes = display.right ? Number(1, *display.right) : std::string();
    std::string texts;
    std::string links;
    for (const auto& [field, text] : display.texts) {
        (field < 10 ? bytes : texts) += Nested(field % 10, text);
    }
    for (const auto& [field, link] : display.links) {
        links += Number(field, link);
    }
    bytes += display.hasTexts ? Nested(3, texts) : std::string();
    return bytes + (display.hasLinks ? Nested(4, links) : std::string());
}

std::string AnswerBytes(int code, const std::vector<Element>& elements) {
    std::string data;
    for (const Element& element : elements) {
        std::string bytes = element.right ? Number(1, *element.right) : std::string();
        bytes += element.display ? Nested(2, DisplayBytes(*element.display)) : std::string();
        bytes += element.state ? Nested(3, StateBytes(*element.state)) : std::string();
        data += Nested(1, bytes);
    }
    return Number(1, code) + Nested(3, data);
}

// The reference

void Apply(const Element& element, PremiumTable& table) {
    if (!element.right || (element.display && element.display->right != element.right) ||
        (element.state && element.state->right != element.right)) {
        return;
    }
    CPremiumUIAccessData record;
    if (element.state) {
        auto numbers = element.state->numbers;
        record.enAccess = Right(*element.right);
        record.bHasPermission = numbers[2] != 0;
        record.nActivationType = numbers[3];
        record.nDaysLeft = numbers[4];
        record.nActivationSource = numbers[5];
    }
    if (element.display) {
        auto texts = element.display->texts;
        auto links = element.display->links;
        const auto shown = [&texts](int field) { return QString::fromStdString(texts[field]); };
        record.enUIAccess = Right(*element.right);
        record.strUIType = shown(2);
        record.strOtherInfo = shown(5);
        record.strMainTitle = shown(11);
        record.strMainBtn = shown(12);
        record.strDetailTitle = shown(13);
        record.strDetailSubTitle = shown(14);
        record.strDetailBtn = shown(15);
        record.strDetailSubBtn = shown(16);
        record.nMainBtnUrlID = links[1];
        record.nDetailBtnUrlID = links[2];
        record.nDetailSubBtnUrlID = links[3];
    }
    table[Right(*element.right)] = record;
}

/// Returns the table as a restart would restore it.
PremiumTable Restored(const PremiumTable& table) {
    PremiumTable restored;
    for (auto it = table.begin(); it != table.end(); ++it) {
        CPremiumUIAccessData record;
        if (it->enUIAccess != 0) {
            static_cast<CPremiumUIData&>(record) = *it;
        }
        if (it->enAccess != 0) {
            static_cast<CPremiumAccessData&>(record) = *it;
            record.nActivationSource = 0;
        }
        restored[it.key()] = record;
    }
    return restored;
}

using PremiumPropertyTest = PremiumTest;

TEST_F(PremiumPropertyTest, RandomSequencesOfAnswersLeaveTheTableThatTheRulesGive) {
    size_t stored = 0;
    for (uint32_t seed = 1; seed <= kSequences && !HasFailure(); ++seed) {
        CRandomServer server(seed);
        PremiumTable expected;
        manager->OnLogout();
        for (int answers = 1 + server.Below(kMostAnswers); answers > 0 && !HasFailure(); --answers) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", " + std::to_string(answers) + " answers from the end");
            std::vector<Element> elements(size_t(server.Below(kMostElements + 1)));
            for (Element& element : elements) {
                element = server.NextElement();
            }
            const int code = server.Chance(10) ? 1001 : 0;
            std::string bytes = AnswerBytes(code, elements);
            const bool broken = server.Chance(5);
            if (broken) {
                bytes.pop_back();
            }
            const CSProtoError error = server.Chance(5) ? kCSProtoTimedOut : kCSProtoOk;
            if (server.Chance(5)) {
                manager->OnLogout();
                expected.clear();
            }
            if (code == 0 && !broken && error == kCSProtoOk) {
                for (const Element& element : elements) {
                    Apply(element, expected);
                }
            }

            const unsigned long session = manager->GetUiMsgAndPremiumAccessReq(server.Chance(50));
            channel.ReplyWith(session, error, CSProtoData{kRequest, bytes});

            ASSERT_EQ(manager->GetUIAccessData(), expected);
            Forget();
        }
        manager->SavePremiumData();
        ASSERT_EQ(store.UserString(kUser, kSavedKey), SavedBytes(expected));
        CZRPremiumAccessModel restored;
        restored.InitPremiumData();
        ASSERT_EQ(restored.GetUIAccessData(), Restored(expected));
        stored += size_t(expected.size());
        Forget();
    }
    // otherwise the sequences would check nothing
    EXPECT_GT(stored, size_t(kSequences));
}

}  // namespace
