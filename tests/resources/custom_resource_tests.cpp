#include "support/test.h"

#include <zogbl/custom_resource.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>

namespace {

// In the test program's own resources: RCDATA 1000 and "THIRTY_CHARACTERS_LONG_IS_IT__", see fixtures.rc.
constexpr UINT kDataId = 1000;
constexpr char kThirtyCharacters[] = "THIRTY_CHARACTERS_LONG_IS_IT__";

HINSTANCE Self() { return GetModuleHandleA(nullptr); }

} // namespace

TEST(CustomResource, LoadsByNumberAndByName)
{
    CZoCustomResource resource;
    EXPECT_EQ(nullptr, resource.GetResourceData());
    ASSERT_EQ(0u, resource.LoadCustomResource(Self(), kDataId));
    EXPECT_EQ(kDataId, resource.GetResourceID());
    ASSERT_EQ(8u, resource.GetResourceSize());
    EXPECT_EQ(0, std::memcmp("\x01\x00\x02\x00\x03\x00\x04\x00", resource.GetResourceData(), 8));

    ASSERT_EQ(0u, resource.LoadCustomResource(Self(), kThirtyCharacters));
    EXPECT_EQ(0u, resource.GetResourceID());
    EXPECT_EQ(2u, resource.GetResourceSize());
    char name[31];
    std::memset(name, 'x', sizeof name);
    EXPECT_EQ(0u, resource.GetResourceName(name, sizeof name));
    EXPECT_STREQ(kThirtyCharacters, name);

    EXPECT_EQ(0u, resource.FreeCustomResource());
    EXPECT_EQ(nullptr, resource.GetResourceData());
    EXPECT_EQ(0u, resource.GetResourceSize());
}

TEST(CustomResource, SaysWhatWasWrong)
{
    CZoCustomResource resource;
    EXPECT_EQ(ZO_RESOURCE_NO_MODULE, resource.LoadCustomResource(nullptr, kDataId));
    EXPECT_EQ(ZO_RESOURCE_NO_NAME, resource.LoadCustomResource(Self(), ""));
    EXPECT_EQ(ZO_RESOURCE_NOT_FOUND, resource.LoadCustomResource(Self(), 1001u));
    EXPECT_EQ(ZO_RESOURCE_NOT_FOUND, resource.LoadCustomResource(Self(), "NO_SUCH_RESOURCE"));
    EXPECT_EQ(ZO_RESOURCE_NULL_NAME, resource.LoadCustomResource(Self(), static_cast<const char*>(nullptr)));
    EXPECT_EQ(ZO_RESOURCE_NAME_TOO_LONG, resource.LoadCustomResource(Self(), "THIRTY_CHARACTERS_LONG_IS_IT__X"));
    EXPECT_EQ(ZO_RESOURCE_ZERO_ID, resource.LoadCustomResource(Self(), 0u));
    char name[31] = {};
    EXPECT_EQ(ZO_RESOURCE_NULL_BUFFER, resource.GetResourceName(nullptr, 31));
    EXPECT_EQ(ZO_RESOURCE_BUFFER_TOO_SMALL, resource.GetResourceName(name, 30));

    EXPECT_EQ(ZO_RESOURCE_NOT_FOUND, resource.LoadCustomResource(Self(), 0x10000u | kDataId)) << "17 bits";
    // A failure leaves nothing of the resource loaded before.
    FaultSource faults("resource");
    const ZO_FAULTY_CALL(LoadResource) load(faults, kZogbl, nullptr);
    const ZO_FAULTY_CALL(LockResource) lock(faults, kZogbl, nullptr);
    const DWORD failures[] = {ZO_RESOURCE_NOT_FOUND, ZO_RESOURCE_LOAD_FAILED, ZO_RESOURCE_LOCK_FAILED};
    for (int call = 0; call < 3; ++call) {
        faults.Disarm();
        ASSERT_EQ(0u, resource.LoadCustomResource(Self(), kDataId));
        faults.Arm(call, false);
        EXPECT_EQ(failures[call], resource.LoadCustomResource(Self(), call == 0 ? 1001u : kDataId));
        EXPECT_EQ(nullptr, resource.GetResourceData());
        EXPECT_EQ(0u, resource.GetResourceSize());
    }
    EXPECT_EQ(0u, resource.GetResourceID()) << "cleared";
}
