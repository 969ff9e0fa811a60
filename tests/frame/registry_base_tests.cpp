#include <zogbl/registry_base.h>
#include <zogbl/resource_ids.h>

#include "support/environment.h"
#include "support/fault_loop.h"
#include "support/sentinel_buffer.h"
#include "support/unique_names.h"
#include "support/virtual_slots.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";

bool IsWin32s() { return zo_test::Family() == zo_test::WindowsFamily::kWin32s; }

/// A record in a section of its own.
class Record : public CZoGblRegBase {
public:
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
    /// Puts another gateway in the place of the one that is there.
    void SetGateway(CZoGlobalConfig* gateway)
    {
        delete m_pConfig;
        m_pConfig = gateway;
        IsClassDataValid();
    }

    using CZoGblRegBase::DeleteSection;
    using CZoGblRegBase::DeleteValue;
    using CZoGblRegBase::DoesValueExist;
    using CZoGblRegBase::GetInteger;
    using CZoGblRegBase::GetString;
    using CZoGblRegBase::GetValue;
    using CZoGblRegBase::SetInteger;
    using CZoGblRegBase::SetString;
    using CZoGblRegBase::SetValue;

private:
    std::string m_section;
};

/// Every operation on a value, on a record that holds number 5 or text "stored" under that name. What it reads must be
/// that on success, and the default after a failure.
struct Operation {
    const char* name;
    bool ofText;
    DWORD (*run)(Record& record, UINT id);
};

const Operation kOperations[] = {
    {"GetValue", false,
     [](Record& record, UINT id) {
         DWORD value = 9;
         const DWORD status = record.GetValue(id, value, 77);
         EXPECT_EQ(status == 0 ? 5u : 77u, value);
         return status;
     }},
    {"GetInteger", false,
     [](Record& record, UINT id) {
         int value = 9;
         const DWORD status = record.GetInteger(id, value, -77);
         EXPECT_EQ(status == 0 ? 5 : -77, value);
         return status;
     }},
    {"SetValue", false, [](Record& record, UINT id) { return record.SetValue(id, 5); }},
    {"SetInteger", false, [](Record& record, UINT id) { return record.SetInteger(id, 5); }},
    {"GetString", true,
     [](Record& record, UINT id) {
         zo_test::SentinelBuffer text(size_t{8});
         const DWORD status = record.GetString(id, text.Data(), 8, "a long default");
         EXPECT_EQ(status == 0 ? "stored" : "a long ", text.Text());
         text.ExpectGuardsIntact();
         return status;
     }},
    {"GetString without default", true,
     [](Record& record, UINT id) {
         char text[8];
         std::memset(text, 'x', sizeof text);
         const DWORD status = record.GetString(id, text, sizeof text, nullptr);
         EXPECT_EQ(0, std::memcmp(status == 0 ? "stored\0" : "\0\0\0\0\0\0\0", text, 7));
         return status;
     }},
    {"SetString", true, [](Record& record, UINT id) { return record.SetString(id, "stored"); }},
    {"DoesValueExist", true,
     [](Record& record, UINT id) {
         BOOL exists = 9;
         const DWORD status = record.DoesValueExist(id, exists);
         EXPECT_EQ(status == 0, exists != FALSE);
         return status;
     }},
    {"DeleteValue", true,
     [](Record& record, UINT id) {
         const DWORD status = record.DeleteValue(id);
         return status == 0 ? record.SetString(id, "stored") : status; // for the next time
     }},
};

class RegistryBase : public ::testing::Test {
protected:
    void Fill(Record& record)
    {
        ASSERT_EQ(0u, record.SetValue(ZO_IDS_REG_CURRENT_INDEX, 5));
        ASSERT_EQ(0u, record.SetString(ZO_IDS_REG_CITY, "stored"));
    }
    static UINT IdFor(const Operation& operation)
    {
        return operation.ofText ? ZO_IDS_REG_CITY : ZO_IDS_REG_CURRENT_INDEX;
    }

    zo_test::TestRegistryKey m_key{IsWin32s() ? HKEY_CLASSES_ROOT : HKEY_CURRENT_USER};
};

} // namespace

TEST_F(RegistryBase, KeepsValuesUnderTheirNamesInEachRoot)
{
    for (const DWORD mode : {ZO_MODE_LOCAL_MACHINE, ZO_MODE_CURRENT_USER}) {
        SCOPED_TRACE(mode);
        const HKEY root = mode == ZO_MODE_LOCAL_MACHINE ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        const zo_test::TestRegistryKey key(IsWin32s() ? HKEY_CLASSES_ROOT : root);
        Record record(key.Path());
        EXPECT_EQ(ZO_MODE_CURRENT_USER, record.GetAccessMode());
        record.SetAccessMode(mode);
        EXPECT_EQ(mode, record.GetAccessMode());
        EXPECT_EQ(key.Path(), record.GetSection());

        ASSERT_EQ(0u, record.SetString(ZO_IDS_REG_LOCATION_NAME, "Home"));
        EXPECT_STREQ("Home", (IsWin32s() ? key.Get("LocationName", "") : key.Get("", "LocationName")).c_str());
        char text[8];
        EXPECT_EQ(0u, record.GetString(ZO_IDS_REG_LOCATION_NAME, text, sizeof text, "x"));
        EXPECT_STREQ("Home", text);
        EXPECT_EQ(ZoErrObjectInvalid, record.GetString(ZO_IDS_REG_LOCATION_NAME, nullptr, sizeof text, "x"));
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), record.GetString(ZO_IDS_REG_CITY, text, 0, "x"));
        EXPECT_STREQ("Home", text);

        int number = 0;
        EXPECT_EQ(0u, record.SetInteger(ZO_IDS_REG_COUNTRY_INDEX, -3));
        EXPECT_EQ(0u, record.GetInteger(ZO_IDS_REG_COUNTRY_INDEX, number, 0));
        EXPECT_EQ(-3, number);
        EXPECT_NE(0u, record.GetInteger(ZO_IDS_REG_CURRENT_INDEX, number, -9)) << "there is none";
        EXPECT_EQ(-9, number);

        BOOL exists = FALSE;
        EXPECT_EQ(0u, record.DoesValueExist(ZO_IDS_REG_COUNTRY_INDEX, exists));
        EXPECT_TRUE(exists);
        EXPECT_EQ(0u, record.DeleteValue(ZO_IDS_REG_COUNTRY_INDEX));
        EXPECT_EQ(0u, record.DoesValueExist(ZO_IDS_REG_COUNTRY_INDEX, exists));
        EXPECT_FALSE(exists);

        key.SetText("Sub\\Deep", "Name", "x");
        EXPECT_EQ(0u, record.DeleteSection("Sub"));
        CString below;
        EXPECT_EQ(0u, CZoGlobalConfig().FindFirstSubKey(mode, key.Path().c_str(), below, exists))
            << "the section stays";
        EXPECT_EQ(IsWin32s(), exists != FALSE) << "there its text is a subkey";
    }
}

TEST_F(RegistryBase, StandsBelowTheSuitesKeyAndHasANameForEachNumber)
{
    struct : CZoGblRegBase {
    } plain;
    EXPECT_STREQ("SOFTWARE\\Zo,Inc.", plain.GetSection());
    EXPECT_TRUE(plain.IsClassDataValid());
    EXPECT_EQ(ZO_MODE_CURRENT_USER, plain.GetAccessMode());

    Record record(m_key.Path());
    for (UINT id = ZO_IDS_REG_LOCATION; id <= ZO_IDS_REG_TAPI_DIALING_ENABLED; ++id)
        EXPECT_EQ(0u, record.SetValue(id, id));
    for (UINT id = ZO_IDS_REG_LOCATION; id <= ZO_IDS_REG_TAPI_DIALING_ENABLED; ++id) {
        DWORD value = 0;
        EXPECT_EQ(0u, record.GetValue(id, value, 0));
        EXPECT_EQ(id, value) << "a name is there twice";
    }
    zo_test::ExpectSlots(6, &Record::IsClassDataValid, &Record::LoadSection); // behind those of CObject
}

TEST_F(RegistryBase, ANumberWithoutNameTouchesNothing)
{
    Record record(m_key.Path());
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        for (const UINT id : {0u, 128u, 171u, 0xFFFFFu})
            EXPECT_EQ(ZoErrNoValueName, operation.run(record, id));
    }
}

TEST_F(RegistryBase, WithoutSectionOrGatewayNothingIsDone)
{
    std::unique_ptr<Record> record;
    {
        zo_test::FaultSource faults("string");
        const ZO_FAULTY_CALL(LoadStringA) load(faults, kLibrary, 0);
        faults.Arm(1, true);
        record = std::make_unique<Record>(m_key.Path());
    }
    EXPECT_STREQ("", record->GetSection());
    zo_test::FaultSource calls("registry");
    const ZO_FAULTY_CALL(RegOpenKeyExA) open(calls, kLibrary, ERROR_SUCCESS);
    const ZO_FAULTY_CALL(RegCreateKeyExA) create(calls, kLibrary, ERROR_SUCCESS);
    const ZO_FAULTY_CALL(RegOpenKeyA) openOld(calls, kLibrary, ERROR_SUCCESS);
    const ZO_FAULTY_CALL(RegCreateKeyA) createOld(calls, kLibrary, ERROR_SUCCESS);
    calls.Arm(0, false);
    const auto expectInvalid = [&] {
        EXPECT_FALSE(record->IsClassDataValid());
        for (const Operation& operation : kOperations) {
            SCOPED_TRACE(operation.name);
            EXPECT_EQ(ZoErrObjectInvalid, operation.run(*record, IdFor(operation)));
        }
        EXPECT_EQ(ZoErrObjectInvalid, record->DeleteSection("Sub"));
        EXPECT_EQ(0, calls.Calls());
    };
    expectInvalid();
    EXPECT_TRUE(record->LoadSection()) << "once the string is there";
    record->SetGateway(nullptr);
    expectInvalid();
}

TEST_F(RegistryBase, MissingMemoryMakesItInvalid)
{
    zo_test::AllocationFaults faults;
    zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
        struct Plain : CZoGblRegBase {
            using CZoGblRegBase::GetValue;
        };
        Plain record;
        run.Stop();
        EXPECT_EQ(!run.Fired(), record.IsClassDataValid() != FALSE);
        DWORD value = 1;
        const DWORD status = record.GetValue(ZO_IDS_REG_CITY, value, 2);
        EXPECT_EQ(run.Fired(), status == ZoErrObjectInvalid);
        EXPECT_EQ(2u, value);
    });
}

TEST_F(RegistryBase, FailuresOfStringsAndRegistryComeBack)
{
    Record record(m_key.Path());
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        const auto failWith = [&](zo_test::FaultSource& faults, DWORD expected) {
            zo_test::RunFaultLoop(faults, [&](const zo_test::FaultRun& run) {
                run.Stop();
                Fill(record);
                run.source.Arm(run.number, run.persistent);
                const DWORD status = operation.run(record, IdFor(operation));
                run.Stop();
                EXPECT_EQ(run.Fired() ? expected : 0u, status);
            });
        };
        {
            zo_test::FaultSource strings("string");
            const ZO_FAULTY_CALL(LoadStringA) load(strings, kLibrary, 0);
            failWith(strings, ZoErrNoValueName);
        }
        constexpr LONG kError = ERROR_REGISTRY_IO_FAILED;
        zo_test::FaultSource faults("registry");
        const ZO_FAULTY_CALL(RegOpenKeyExA) open(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegCreateKeyExA) create(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegQueryValueExA) query(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegSetValueExA) set(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegDeleteValueA) remove(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegOpenKeyA) openOld(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegCreateKeyA) createOld(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegQueryValueA) queryOld(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegSetValueA) setOld(faults, kLibrary, kError);
        const ZO_FAULTY_CALL(RegDeleteKeyA) removeOld(faults, kLibrary, kError);
        failWith(faults, kError);
    }
}

TEST_F(RegistryBase, AsksItsGatewayWhetherAValueExists)
{
    struct Gateway : CZoGlobalConfig {
        DWORD DoesEntryExist(DWORD mode, LPCSTR key, LPCSTR valueName, BOOL& exists) override
        {
            EXPECT_EQ(ZO_MODE_USERS, mode);
            EXPECT_STREQ("A\\B", key);
            EXPECT_STREQ("Dept", valueName);
            exists = TRUE;
            return 42;
        }
    };
    Record record("A\\B", ZO_MODE_USERS);
    record.SetGateway(new Gateway);
    BOOL exists = FALSE;
    EXPECT_EQ(42u, record.DoesValueExist(ZO_IDS_REG_DEPT, exists));
    EXPECT_TRUE(exists);
}
