#include "support/test.h"

#include "ground/language_followers.h"

#include <functional>
#include <optional>

namespace {

constexpr auto kWindows = LanguageFollower::Occasion::kWindows;
constexpr auto kLibrary = LanguageFollower::Occasion::kLibrary;

std::string g_renewed;

struct Noting {
    char name;
    LanguageFollower::Occasion occasion;
    std::function<void()> act = [] {};
    LanguageFollower follower{occasion, &Noting::Renew, this};

    static void Renew(void* what)
    {
        g_renewed += static_cast<Noting*>(what)->name;
        static_cast<Noting*>(what)->act();
    }
};

} // namespace

TEST(LanguageFollowers, AreRenewedOnceAtTheirOccasionWhateverTheOthersDo)
{
    const Noting oldest{'a', kWindows}, library{'l', kLibrary};
    struct {
        std::optional<Noting> older;
        std::optional<LanguageFollower> itself;
    } leaving;
    const auto leave = [](void* what) {
        auto* both = static_cast<decltype(leaving)*>(what);
        both->itself.reset();
        both->older.reset();
    };
    leaving.older.emplace('b', kWindows);
    leaving.itself.emplace(kWindows, leave, &leaving);
    std::optional<Noting> entered;
    const Noting throwing{'c', kWindows, [] { AfxThrowMemoryException(); }};
    const Noting newest{'d', kWindows, [&] { entered.emplace('e', kWindows); }};
    LanguageFollower::RenewAll(kWindows);
    EXPECT_EQ("dca", g_renewed);
    LanguageFollower::RenewAll(kLibrary);
    EXPECT_EQ("dcal", g_renewed);
}
