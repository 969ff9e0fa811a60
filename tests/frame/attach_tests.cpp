// The library attached to a process and detached from it, as a host that loads it at run time sees it.

#include "support/test.h"

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";
constexpr char kSibling[] = "ZOMUSCRL.DLL";

/// A class of the host's own.
class HostClass : public CObject {
    DECLARE_DYNCREATE(HostClass)
};
IMPLEMENT_DYNCREATE(HostClass, CObject)

void ExpectHostClass() { EXPECT_EQ(RUNTIME_CLASS(HostClass), CRuntimeClass::FromName("HostClass")); }

void ExpectDetached()
{
    EXPECT_EQ(nullptr, GetModuleHandleA(kLibrary));
    EXPECT_EQ(nullptr, GetModuleHandleA(kSibling));
    EXPECT_EQ(nullptr, AfxGetModuleState()->m_pLibraryList);
    ExpectHostClass();
}

} // namespace

TEST(Attach, EntersTheChainAndHoldsItsSibling)
{
    ExpectDetached();
    for (int round = 0; round < 3; ++round) {
        const HMODULE library = LoadLibraryA(kLibrary);
        ASSERT_NE(nullptr, library);
        ASSERT_NE(nullptr, AfxGetModuleState()->m_pLibraryList);
        EXPECT_EQ(library, AfxGetModuleState()->m_pLibraryList->m_hModule);
        EXPECT_NE(nullptr, GetModuleHandleA(kSibling));
        ExpectHostClass();
        using GetInstanceHandle = HINSTANCE (*)();
        const auto getInstanceHandle = reinterpret_cast<GetInstanceHandle>(
            reinterpret_cast<void*>(GetProcAddress(library, "ZoGblGetInstanceHandle")));
        ASSERT_NE(nullptr, getInstanceHandle) << "exported by its plain name";
        EXPECT_EQ(library, getInstanceHandle());
        EXPECT_TRUE(FreeLibrary(library));
        ExpectDetached();
    }
}

TEST(Attach, FailsWithoutMemoryAndLeavesTheHostAsItWas)
{
    RunFaultLoop<AllocationFaults>([](const FaultRun& run) {
        const HMODULE library = LoadLibraryA(kLibrary);
        run.Stop();
        EXPECT_EQ(run.Fired(), library == nullptr);
        ExpectHostClass();
        if (library != nullptr)
            FreeLibrary(library);
        ExpectDetached();
    });
}
