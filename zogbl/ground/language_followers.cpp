#include "language_followers.h"

#include <common/without_throwing.h>

LanguageFollower* LanguageFollower::s_newest = nullptr;
int LanguageFollower::s_round = 0;

LanguageFollower::~LanguageFollower()
{
    LanguageFollower** link = &s_newest;
    while (*link != this)
        link = &(*link)->m_older;
    *link = m_older;
}

void LanguageFollower::RenewAll(Occasion occasion)
{
    const int round = ++s_round;
    for (LanguageFollower* follower = s_newest; follower != nullptr;) {
        if (follower->m_occasion != occasion || follower->m_round >= round) {
            follower = follower->m_older;
            continue;
        }
        follower->m_round = round;
        WithoutThrowing([=] { follower->m_renew(follower->m_what); });
        follower = s_newest; // the list may be another by now
    }
}
