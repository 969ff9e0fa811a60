#include "support/product_test.h"

#include <zogbl/custom_resource.h>

#include "resources/user_settings.h"

namespace {

class UserSettings : public ProductTest {};

} // namespace

TEST_F(UserSettings, StandBelowTheUsersKey)
{
    CString text = "before";
    EXPECT_FALSE(ReadSetting("Windows", "Test", text));
    EXPECT_EQ("before", text);
    EXPECT_EQ(0u, ForgetSetting("Windows", "Test"));
    const std::string longest(kMostSetting, 'x');
    for (const std::string& kept : {std::string("one"), std::string(), longest}) {
        EXPECT_EQ(0u, KeepSetting("Windows", "Test", kept.c_str()));
        EXPECT_TRUE(ReadSetting("Windows", "Test", text));
        EXPECT_EQ(kept, text.GetString());
        BOOL exists = FALSE;
        EXPECT_EQ(0u, m_product.Config().DoesEntryExist(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Windows",
                                                        "Test", exists));
        EXPECT_TRUE(exists);
    }
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), KeepSetting("Windows", "Test", (longest + "x").c_str()));
    EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Windows", "Test",
                                              (longest + "x").c_str()));
    EXPECT_FALSE(ReadSetting("Windows", "Test", text));
    EXPECT_EQ(longest, text.GetString());
    EXPECT_EQ(0u, ForgetSetting("Windows", "Test"));
    EXPECT_FALSE(ReadSetting("Windows", "Test", text));
}

TEST_F(UserSettings, SurviveMissingMemoryAndRegistry)
{
    RunFaultLoop<AllocationFaults>([](const FaultRun& run) {
        const DWORD status = KeepSetting("Windows", "Test", "kept");
        CString text;
        const BOOL isRead = ReadSetting("Windows", "Test", text);
        run.Stop();
        EXPECT_TRUE(status == 0 || status == ERROR_NOT_ENOUGH_MEMORY || status == ZoErrNoMemory ||
                    status == ERROR_FILE_NOT_FOUND)
            << status;
        EXPECT_EQ(isRead ? "kept" : "", text);
        ForgetSetting("Windows", "Test");
    });
}
