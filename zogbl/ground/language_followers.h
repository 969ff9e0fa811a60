/// \file
/// What the library renews when the language changes. Who keeps texts enters how to renew them; who changes the
/// language renews them all, and knows none of them.
#pragma once

#include <utility>

/// One follower. It is entered while it lives.
class LanguageFollower {
public:
    enum class Occasion {
        kLibrary, ///< the process has another language library; the old one is still loaded
        kWindows, ///< the application shows its windows in the language that is loaded now
    };
    using Renew = void(void* what);

    /// \param renew is called with \p what; it may enter and end followers, itself too. An exception of the framework
    /// ends it alone: the others are renewed.
    LanguageFollower(Occasion occasion, Renew* renew, void* what)
        : m_occasion(occasion), m_renew(renew), m_what(what), m_older(std::exchange(s_newest, this)), m_round(s_round)
    {
    }
    ~LanguageFollower();
    LanguageFollower(const LanguageFollower&) = delete;
    LanguageFollower& operator=(const LanguageFollower&) = delete;

    /// Renews the followers of an occasion, the newest first; none that is entered meanwhile.
    static void RenewAll(Occasion occasion);

private:
    static LanguageFollower* s_newest;
    static int s_round; ///< of RenewAll

    Occasion m_occasion;
    Renew* m_renew;
    void* m_what;
    LanguageFollower* m_older;
    int m_round; ///< the last one in which it was renewed, or before which it was entered
};
