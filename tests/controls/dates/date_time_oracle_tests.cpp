// The field for dates and times beside the system's own: 10,000 random acts in twelve formats.
#include "date_time_test.h"

#include <commctrl.h>

namespace {

using Kind = CZoDateTimeFields::Kind;

struct Step {
    enum { kUp, kDown, kType } act;
    Kind kind;          // of the field
    int letters;        // of its format
    std::string digits; // typed
    SYSTEMTIME before, ours, systems;
};

int MostOf(Kind kind)
{
    return kind == Kind::kMonth ? 12 : kind == Kind::kDay ? 31 : kind == Kind::kHour || kind == Kind::kHour12 ? 23 : 59;
}

/// Where ours differs, and why.
const struct {
    const char* reason;
    bool (*is)(const Step& step);
} kDifferences[] = {
    {"a digit that leaves no place for another moves on, and the next one goes there; the system refuses both",
     [](const Step& s) {
         return s.act == Step::kType && s.kind != Kind::kYear && std::stoi(s.digits) > MostOf(s.kind);
     }},
    {"the number of a month can be typed over its name",
     [](const Step& s) { return s.act == Step::kType && s.kind == Kind::kMonth && s.letters >= 3; }},
    {"years of two digits lie in the user's window, not in the century that was shown",
     [](const Step& s) { return s.act == Step::kType && s.kind == Kind::kYear && s.letters <= 2; }},
    {"a day that another month or year lacks becomes its last, not the first",
     [](const Step& s) {
         return s.act != Step::kType && (s.kind == Kind::kMonth || s.kind == Kind::kYear) &&
                s.ours.wDay < s.before.wDay && s.systems.wDay == 1;
     }},
    {"a month without that day waits for the day to be typed; the system takes its last day",
     [](const Step& s) {
         return s.act == Step::kType && s.kind == Kind::kMonth && Written(s.ours) == Written(s.before) &&
                s.systems.wDay < s.before.wDay;
     }},
    {"AM and PM keep the hour, which in the system becomes the first or last of the day",
     [](const Step& s) { return s.kind == Kind::kHalf && s.ours.wHour % 12 == s.before.wHour % 12; }},
    {"0 may be typed for midnight, also where hours go from 1 to 12",
     [](const Step& s) { return s.kind == Kind::kHour12 && s.digits == "00" && s.ours.wHour == 0; }},
};

/// The system's date picker.
class Picker : public CWnd {
public:
    Picker(CWnd& parent, LPCSTR format)
    {
        EXPECT_TRUE(Create(DATETIMEPICK_CLASSA, "", WS_CHILD, CRect(0, 50, 200, 75), &parent, 8));
        EXPECT_TRUE(SendMessage(DTM_SETFORMATA, 0, reinterpret_cast<LPARAM>(format)));
    }
    ~Picker() override { DestroyWindow(); }
    /// The focus comes to no field; Right leads to the first one.
    void Begin(size_t field)
    {
        SetFocus();
        for (size_t i = 0; i <= field; ++i)
            SendMessage(WM_KEYDOWN, VK_RIGHT, 1);
    }
    SYSTEMTIME Time() const
    {
        SYSTEMTIME time = {};
        SendMessage(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
        return time;
    }
    void SetTime(const SYSTEMTIME& time) const
    {
        SendMessage(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
    }
};

} // namespace

TEST(DateTimeOracle, ActsAsTheSystems)
{
    ZO_ONLY_IN(IsThorough(), "the system's control is the same everywhere");
    const char* const kFormats[] = {"dd.MM.yyyy",         "d/M/yy",        "yyyy-MM-dd",       "MM/dd/yyyy",
                                    "dddd, d. MMMM yyyy", "ddd dd MMM yy", "MMMM yyyy",        "HH:mm:ss",
                                    "h:mm:ss tt",         "hh:mm t",       "dd.MM.yyyy HH:mm", "M/d/yy h:mm:ss tt"};
    std::mt19937 random(32);
    const auto number = [&](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    std::map<std::string, int> met;
    for (const char* format : kFormats) {
        ControlParent parent;
        CZoDateTimeWnd ours;
        ASSERT_TRUE(ours.Create(WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 200, 25), &parent, 7));
        ASSERT_TRUE(ours.SetFormat(format));
        CZoDateTimeFields fields; // which piece of ours is which field of the system's, weekdays included
        ASSERT_TRUE(fields.SetFormat(format, LOCALE_USER_DEFAULT));
        std::vector<int> pieces;
        for (int i = 0; i < fields.GetCount(); ++i) {
            if (fields.GetKind(i) != Kind::kText)
                pieces.push_back(i);
        }
        std::vector<int> letters; // of each field
        for (const char* at = format; *at != '\0';) {
            const auto count = static_cast<int>(std::strspn(at, std::string(1, *at).c_str()));
            if (std::isalpha(*at))
                letters.push_back(count);
            at += count;
        }
        auto systems = std::make_unique<Picker>(parent, format);
        for (int i = 0; i < 860; ++i) {
            ReportProgress();
            Step step = {};
            const SYSTEMTIME before = step.before = AnyTime(random);
            if (!ours.SetTime(before))
                continue; // there is no such day
            systems->SetTime(before);
            ours.SetFocus();
            for (int moves = number(0, 3); moves > 0; --moves)
                PressKey(ours, number(0, 1) != 0 ? VK_LEFT : VK_RIGHT);
            size_t field = 0;
            for (int part = ours.GetFocusedPart(); field < pieces.size(); ++field) {
                if (fields.IsField(pieces[field]) && --part == 0)
                    break;
            }
            ASSERT_LT(field, pieces.size());
            step.kind = fields.GetKind(pieces[field]);
            step.letters = letters[field];
            step.act = number(0, 2) == 0 ? Step::kUp : number(0, 1) == 0 ? Step::kDown : Step::kType;
            if (step.kind == Kind::kHalf && step.act == Step::kType)
                step.act = Step::kUp;
            std::vector<std::pair<UINT, WPARAM>> messages;
            if (step.act == Step::kType) {
                const bool isLong = step.kind == Kind::kYear && strstr(format, "yyyy") != nullptr;
                char digits[8];
                snprintf(digits, sizeof digits, isLong ? "%04d" : "%02d", isLong ? number(1753, 9999) : number(0, 99));
                step.digits = digits;
                for (const char digit : step.digits)
                    messages.emplace_back(WM_CHAR, digit);
            } else {
                messages.emplace_back(WM_KEYDOWN, step.act == Step::kUp ? VK_UP : VK_DOWN);
            }
            for (const auto& [message, key] : messages)
                ours.SendMessage(message, key);
            ours.GetTime(step.ours);
            systems->Begin(field);
            for (const auto& [message, key] : messages)
                systems->SendMessage(message, key);
            step.systems = systems->Time();
            if (step.act == Step::kType) // the system keeps a digit that it had no use for, and takes it later
                systems = std::make_unique<Picker>(parent, format);
            if (Written(step.ours) == Written(step.systems))
                continue;
            const auto* reason = std::find_if(std::begin(kDifferences), std::end(kDifferences),
                                              [&](auto& difference) { return difference.is(step); });
            if (reason == std::end(kDifferences)) {
                ADD_FAILURE() << format << " field " << static_cast<int>(step.kind) << " letters " << step.letters
                              << " act " << step.act << " " << step.digits << ": " << Written(before) << ", ours "
                              << Written(step.ours) << ", the system's " << Written(step.systems);
                continue;
            }
            ++met[reason->reason];
        }
    }
    for (const auto& difference : kDifferences)
        EXPECT_GT(met[difference.reason], 0) << difference.reason;
}
