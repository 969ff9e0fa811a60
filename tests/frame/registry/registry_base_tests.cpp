#include "support/test.h"

#include <zogbl/registry_base.h>
#include <zogbl/resource_ids.h>

namespace {

constexpr UINT kNumber = ZO_IDS_REG_CURRENT_INDEX, kText = ZO_IDS_REG_CITY;

/// A record in a section of its own.
struct Record : CZoGblRegBase {
    explicit Record(const std::string& section, DWORD mode = ZO_MODE_CURRENT_USER)
        : CZoGblRegBase(mode), m_section(section)
    {
        Record::LoadSection();
    }
    BOOL LoadSection() override
    {
        if (CZoGblRegBase::LoadSection())
            std::strncpy(m_szSection, m_section.c_str(), kSectionSize - 1);
        return IsClassDataValid();
    }
    void SetGateway(CZoGlobalConfig* gateway)
    {
        delete m_pConfig;
        m_pConfig = gateway;
        IsClassDataValid();
    }
    using CZoGblRegBase::DeleteSection, CZoGblRegBase::DeleteValue, CZoGblRegBase::DoesValueExist;
    using CZoGblRegBase::GetInteger, CZoGblRegBase::GetString, CZoGblRegBase::GetValue;
    using CZoGblRegBase::SetInteger, CZoGblRegBase::SetString, CZoGblRegBase::SetValue;

    std::string m_section;
};

/// Goes through all operations on values, on a record with a number 5 and a text "stored". \p check is given each
/// status; what was read must be that on success, and the default after a failure.
template <class CHECK> void RunAll(Record& record, UINT number, UINT text, CHECK check)
{
    DWORD value = 9;
    DWORD status = record.GetValue(number, value, 77);
    check(status);
    EXPECT_EQ(status == 0 ? 5u : 77u, value);
    int integer = 9;
    status = record.GetInteger(number, integer, -77);
    check(status);
    EXPECT_EQ(status == 0 ? 5 : -77, integer);
    for (const LPCSTR defaultText : {"a long default", static_cast<LPCSTR>(nullptr)}) {
        SentinelBuffer buffer(size_t{8});
        status = record.GetString(text, buffer.Data(), 8, defaultText);
        check(status);
        EXPECT_EQ(status == 0 ? "stored" : defaultText != nullptr ? "a long " : "", buffer.Text());
        EXPECT_TRUE(status == 0 || defaultText != nullptr || std::count(buffer.Data(), buffer.Data() + 8, 0) == 8);
        buffer.ExpectGuardsIntact();
    }
    BOOL exists = 9;
    status = record.DoesValueExist(text, exists);
    check(status);
    EXPECT_EQ(status == 0, exists != FALSE);
    check(record.SetValue(number, 5));
    check(record.SetInteger(number, 5));
    check(record.SetString(text, "stored"));
    check(record.DeleteValue(text));
}

class RegistryBase : public testing::Test {
protected:
    TestRegistryKey m_key;
    Record m_record{m_key.Path()};
};

} // namespace

TEST_F(RegistryBase, KeepsValuesUnderTheirNamesInEachRoot)
{
    EXPECT_EQ(ZO_MODE_CURRENT_USER, m_record.GetAccessMode());
    for (const DWORD mode : {ZO_MODE_LOCAL_MACHINE, ZO_MODE_CURRENT_USER}) {
        const TestRegistryKey key(mode == ZO_MODE_LOCAL_MACHINE ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER);
        Record record(key.Path());
        record.SetAccessMode(mode);
        EXPECT_EQ(mode, record.GetAccessMode());
        EXPECT_EQ(key.Path(), record.GetSection());

        EXPECT_EQ(0u, record.SetString(ZO_IDS_REG_LOCATION_NAME, "Home"));
        const bool isSubkey = Family() == WindowsFamily::kWin32s;
        EXPECT_STREQ("Home", (isSubkey ? key.Get("LocationName", "") : key.Get("", "LocationName")).c_str());
        EXPECT_EQ(0u, record.DeleteValue(ZO_IDS_REG_LOCATION_NAME));
        BOOL exists = TRUE;
        EXPECT_EQ(0u, record.DoesValueExist(ZO_IDS_REG_LOCATION_NAME, exists));
        EXPECT_FALSE(exists);
        key.SetText("Sub\\Deep", "Name", "x");
        EXPECT_EQ(0u, record.DeleteSection("Sub"));
        EXPECT_EQ(nullptr, key.Open("Sub"));
    }
    char text[8] = "before";
    EXPECT_EQ(ZoErrObjectInvalid, m_record.GetString(kText, nullptr, sizeof text, "x"));
    EXPECT_EQ(DWORD{ERROR_INVALID_PARAMETER}, m_record.GetString(kText, text, 0, "x"));
    EXPECT_STREQ("before", text);
}

TEST_F(RegistryBase, StandsBelowTheSuitesKeyAndHasANameForEachNumber)
{
    struct : CZoGblRegBase {
    } plain;
    EXPECT_STREQ("SOFTWARE\\Zo,Inc.", plain.GetSection());
    EXPECT_EQ(ZO_MODE_CURRENT_USER, plain.GetAccessMode());
    for (const bool writes : {true, false}) {
        for (UINT id = ZO_IDS_REG_LOCATION; id <= ZO_IDS_REG_TAPI_DIALING_ENABLED; ++id) {
            DWORD value = id;
            EXPECT_EQ(0u, writes ? m_record.SetValue(id, id) : m_record.GetValue(id, value, 0));
            EXPECT_EQ(id, value) << "a name is there twice";
        }
    }
    ExpectSlots(6, &Record::IsClassDataValid, &Record::LoadSection); // behind those of CObject
}

TEST_F(RegistryBase, WithoutNameSectionOrGatewayNothingIsDone)
{
    StringFaults strings;
    RegistryFaults calls;
    calls.Arm(0, false);
    for (const UINT id : {0u, 128u, 171u, 0xFFFFFu})
        RunAll(m_record, id, id, [](DWORD status) { EXPECT_EQ(ZoErrNoValueName, status); });

    const auto expectInvalid = [&] {
        EXPECT_FALSE(m_record.IsClassDataValid());
        RunAll(m_record, kNumber, kText, [](DWORD status) { EXPECT_EQ(ZoErrObjectInvalid, status); });
        EXPECT_EQ(ZoErrObjectInvalid, m_record.DeleteSection("Sub"));
    };
    strings.Arm(1, true);
    EXPECT_FALSE(m_record.LoadSection());
    strings.Disarm();
    EXPECT_STREQ("", m_record.GetSection());
    expectInvalid();
    EXPECT_TRUE(m_record.LoadSection()) << "once the string is there";
    m_record.SetGateway(nullptr);
    expectInvalid();
    EXPECT_EQ(0, calls.Calls());
}

TEST_F(RegistryBase, FailuresAreStatuses)
{
    RunFaultLoop<AllocationFaults>([](const FaultRun& run) {
        struct : CZoGblRegBase {
        } record;
        EXPECT_EQ(!run.Fired(), record.IsClassDataValid() != FALSE);
    });
    EXPECT_EQ(0u, m_record.SetValue(kNumber, 5) | m_record.SetString(kText, "stored"));
    RunAll(m_record, kNumber, kText, [](DWORD status) { EXPECT_EQ(0u, status); });
    RegistryFaults registry;
    registry.Arm(1, true);
    RunAll(m_record, kNumber, kText, [](DWORD status) { EXPECT_EQ(DWORD{RegistryFaults::kError}, status); });
}
