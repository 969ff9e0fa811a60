#include "support/test.h"

#include <zogbl/global_error.h>

using Error = CZoGlobalError;

namespace {
DWORD g_severity;
void WINAPI NoteSeverity(DWORD code, DWORD severity) { SetLastErrorEx(code, g_severity = severity); }
} // namespace

TEST(GlobalError, SetsTheLastErrorWithItsSeverity)
{
    const ImportPatch note("ZOGBLBRX.DLL", "SetLastErrorEx", &NoteSeverity);
    void (*const setters[])(DWORD) = {&Error::Fatal,    &Error::Minor,    &Error::Warning,
                                      &Error::AppFatal, &Error::AppMinor, &Error::AppWarning};
    for (DWORD i = 0; i < std::size(setters); ++i) {
        setters[i](5);
        EXPECT_EQ(i < 3 ? 5u : 0x20000005u, Error::GetError());
        EXPECT_EQ(i % 3 + 1, g_severity);
    }
}

TEST(GlobalError, ChoosesTheErrorBoxes)
{
    const UINT before = SetErrorMode(0);
    const DWORD modes[] = {0, 0x8000, 1, 0x8001, 0};
    for (size_t flags = 1; flags < std::size(modes); ++flags)
        EXPECT_EQ(modes[flags - 1], Error::SetMode(static_cast<WORD>(flags))) << flags;
    EXPECT_EQ(0u, SetErrorMode(before)) << "other flags mean nothing";
}
