// The registry gateway beside the bare system calls.
#include "families.h"
#include "harness.h"

#include <zogbl/global_config.h>

#include <cstring>

namespace {

#ifdef _WIN64
constexpr REGSAM kView = KEY_WOW64_32KEY;
#else
constexpr REGSAM kView = 0;
#endif

constexpr Limits kGatewayLimits = {0, 1.10};
constexpr REGSAM kEnumerationAccess = KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE;

// Values and subkeys are as many as a key of the suite's larger modules has.
constexpr int kValueCount = 16;
constexpr int kSubkeyCount = 16;
constexpr DWORD kNumber = 1;
constexpr char kText[] = "C:\\Program Files\\Zo\\Suite\\Outgoing";
constexpr LPCSTR kNumberName = "Value04";
constexpr LPCSTR kTextName = "Value05";
constexpr LPCSTR kPresentName = "Value08"; // half-way
constexpr LPCSTR kMissingName = "ValueXX";
constexpr LPCSTR kPresentSubkey = "Subkey08";

void RequireSuccess(LONG result) { Require(result == ERROR_SUCCESS, "a registry call failed"); }
void RequireStatus(DWORD status) { Require(status == ERROR_SUCCESS, "an operation of the gateway failed"); }

// The bare calls ------------------------------------------------------------------------------------------------------

class BareKey {
public:
    BareKey(LPCSTR path, REGSAM access)
    {
        RequireSuccess(RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, access | kView, &m_key));
    }
    explicit BareKey(LPCSTR pathToCreate)
    {
        RequireSuccess(RegCreateKeyExA(HKEY_CURRENT_USER, pathToCreate, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                       KEY_ALL_ACCESS | kView, nullptr, &m_key, nullptr));
    }
    ~BareKey() { RegCloseKey(m_key); }
    BareKey(const BareKey&) = delete;
    BareKey& operator=(const BareKey&) = delete;

    operator HKEY() const { return m_key; }

private:
    HKEY m_key;
};

DWORD ReadNumber(LPCSTR path)
{
    const BareKey key(path, KEY_READ);
    DWORD type, number, size = sizeof number;
    RequireSuccess(RegQueryValueExA(key, kNumberName, nullptr, &type, reinterpret_cast<BYTE*>(&number), &size));
    Require(type == REG_DWORD, "a value has the wrong type");
    return number;
}

void ReadText(LPCSTR path, LPSTR buffer, DWORD size)
{
    const BareKey key(path, KEY_READ);
    DWORD type;
    RequireSuccess(RegQueryValueExA(key, kTextName, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &size));
    Require(type == REG_SZ, "a value has the wrong type");
}

void WriteNumber(LPCSTR path, DWORD number)
{
    const BareKey key(path);
    RequireSuccess(
        RegSetValueExA(key, kNumberName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number));
}

void WriteText(LPCSTR path, LPCSTR text)
{
    const BareKey key(path);
    RequireSuccess(RegSetValueExA(key, kTextName, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                                  static_cast<DWORD>(std::strlen(text)) + 1));
}

int CountValues(LPCSTR path)
{
    const BareKey key(path, kEnumerationAccess);
    char name[261];
    BYTE data[8192];
    for (DWORD index = 0;; ++index) {
        DWORD nameLength = sizeof name, type, size = sizeof data;
        const LONG result = RegEnumValueA(key, index, name, &nameLength, nullptr, &type, data, &size);
        if (result == ERROR_NO_MORE_ITEMS)
            return static_cast<int>(index);
        RequireSuccess(result);
        Keep(data);
    }
}

int CountSubkeys(LPCSTR path)
{
    const BareKey key(path, kEnumerationAccess);
    char name[261];
    for (DWORD index = 0;; ++index) {
        DWORD nameLength = sizeof name;
        const LONG result = RegEnumKeyExA(key, index, name, &nameLength, nullptr, nullptr, nullptr, nullptr);
        if (result == ERROR_NO_MORE_ITEMS)
            return static_cast<int>(index);
        RequireSuccess(result);
        Keep(name);
    }
}

bool IsValueThere(LPCSTR path, LPCSTR name)
{
    const BareKey key(path, KEY_READ);
    const LONG result = RegQueryValueExA(key, name, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_FILE_NOT_FOUND)
        RequireSuccess(result);
    return result == ERROR_SUCCESS;
}

bool IsValueListed(LPCSTR path, LPCSTR wanted)
{
    const BareKey key(path, kEnumerationAccess);
    char name[261];
    for (DWORD index = 0;; ++index) {
        DWORD nameLength = sizeof name;
        const LONG result = RegEnumValueA(key, index, name, &nameLength, nullptr, nullptr, nullptr, nullptr);
        if (result == ERROR_NO_MORE_ITEMS)
            return false;
        RequireSuccess(result);
        if (_stricmp(name, wanted) == 0)
            return true;
    }
}

// The gateway ---------------------------------------------------------------------------------------------------------

DWORD CountValue(void* count, LPCSTR, const void*, DWORD)
{
    ++*static_cast<int*>(count);
    return ERROR_SUCCESS;
}
DWORD CountSubkey(void* count, LPCSTR)
{
    ++*static_cast<int*>(count);
    return ERROR_SUCCESS;
}

bool DoesEntryExist(LPCSTR path, LPCSTR name)
{
    BOOL exists = FALSE;
    RequireStatus(CZoGlobalConfig().DoesEntryExist(ZO_MODE_CURRENT_USER, path, name, exists));
    return exists != FALSE;
}

// The key -------------------------------------------------------------------------------------------------------------

/// A key of this process alone, filled; gone with the object.
class FilledKey {
public:
    FilledKey()
    {
        m_root.Format("Software\\ZoBenchmark-%lu", GetCurrentProcessId());
        m_path = m_root + "\\Settings";
        const BareKey key(m_path);
        for (int i = 0; i < kValueCount; ++i) { // numbers and texts in turn
            CString name;
            name.Format("Value%02d", i);
            const bool isNumber = i % 2 == 0;
            RequireSuccess(RegSetValueExA(key, name, 0, isNumber ? REG_DWORD : REG_SZ,
                                          isNumber ? reinterpret_cast<const BYTE*>(&kNumber)
                                                   : reinterpret_cast<const BYTE*>(kText),
                                          isNumber ? sizeof kNumber : sizeof kText));
        }
        for (int i = 0; i < kSubkeyCount; ++i) {
            CString name;
            name.Format("\\Subkey%02d", i);
            const BareKey subkey(m_path + name);
        }
    }
    ~FilledKey() { CZoGlobalConfig().DeleteSection(ZO_MODE_CURRENT_USER, m_root, nullptr); }
    FilledKey(const FilledKey&) = delete;
    FilledKey& operator=(const FilledKey&) = delete;

    LPCSTR GetPath() const { return m_path; }

private:
    CString m_root;
    CString m_path;
};

} // namespace

void MeasureRegistry(Harness& harness)
{
    const FilledKey filled;
    const LPCSTR path = filled.GetPath();
    const auto readNumber = [=] { Require(ReadNumber(path) == kNumber, "a number came back wrong"); };

    // A job beside itself and beside twice itself: a run that does not find 1 and 2 here says nothing about the others.
    harness.Compare("registry: control, the same",
                    {{"open, query, close", readNumber}, {"open, query, close", readNumber}}, {0.95, 1.05});
    harness.Compare(
        "registry: control, twice",
        {{"open, query, close, two times", [=] { readNumber(), readNumber(); }}, {"open, query, close", readNumber}},
        {1.90, 2.10});

    harness.Compare("registry: number read",
                    {{"CZoGlobalConfig::GetValue",
                      [=] {
                          DWORD number;
                          RequireStatus(CZoGlobalConfig().GetValue(ZO_MODE_CURRENT_USER, path, kNumberName, number, 0));
                          Require(number == kNumber, "a number came back wrong");
                      }},
                     {"open, query, close", readNumber}},
                    kGatewayLimits);
    harness.Compare("registry: text read",
                    {{"CZoGlobalConfig::GetValue",
                      [=] {
                          char text[260];
                          RequireStatus(CZoGlobalConfig().GetValue(ZO_MODE_CURRENT_USER, path, kTextName, text,
                                                                   sizeof text, nullptr));
                          Require(std::strcmp(text, kText) == 0, "a text came back wrong");
                      }},
                     {"open, query, close",
                      [=] {
                          char text[260];
                          ReadText(path, text, sizeof text);
                          Require(std::strcmp(text, kText) == 0, "a text came back wrong");
                      }}},
                    kGatewayLimits);
    harness.Compare(
        "registry: number write",
        {{"CZoGlobalConfig::SetValue",
          [=] { RequireStatus(CZoGlobalConfig().SetValue(ZO_MODE_CURRENT_USER, path, kNumberName, kNumber)); }},
         {"create, set, close", [=] { WriteNumber(path, kNumber); }}},
        kGatewayLimits);
    harness.Compare("registry: text write",
                    {{"CZoGlobalConfig::SetValue",
                      [=] { RequireStatus(CZoGlobalConfig().SetValue(ZO_MODE_CURRENT_USER, path, kTextName, kText)); }},
                     {"create, set, close", [=] { WriteText(path, kText); }}},
                    kGatewayLimits);

    harness.Compare(
        "registry: 16 values listed",
        {{"CZoGlobalConfig::EnumValues",
          [=] {
              int count = 0;
              RequireStatus(CZoGlobalConfig().EnumValues(ZO_MODE_CURRENT_USER, path, &CountValue, &count));
              Require(count == kValueCount, "values are missing");
          }},
         {"open, enumerate, close", [=] { Require(CountValues(path) == kValueCount, "values are missing"); }}});
    harness.Compare(
        "registry: 16 subkeys listed",
        {{"CZoGlobalConfig::EnumEntries",
          [=] {
              int count = 0;
              RequireStatus(CZoGlobalConfig().EnumEntries(ZO_MODE_CURRENT_USER, path, &CountSubkey, &count));
              Require(count == kSubkeyCount, "subkeys are missing");
          }},
         {"open, enumerate, close", [=] { Require(CountSubkeys(path) == kSubkeyCount, "subkeys are missing"); }}});

    for (const bool present : {true, false}) {
        const LPCSTR name = present ? kPresentName : kMissingName;
        harness.Compare(
            present ? "registry: value is there" : "registry: value is missing",
            {{"CZoGlobalConfig::DoesEntryExist",
              [=] { Require(DoesEntryExist(path, name) == present, "a wrong answer"); }},
             {"open, query, close", [=] { Require(IsValueThere(path, name) == present, "a wrong answer"); }},
             {"open, enumerate up to the name, close",
              [=] { Require(IsValueListed(path, name) == present, "a wrong answer"); }}});
    }
    harness.Compare("registry: subkey is there",
                    {{"CZoGlobalConfig::DoesSubkeyExist",
                      [=] {
                          BOOL exists = FALSE;
                          RequireStatus(
                              CZoGlobalConfig().DoesSubkeyExist(ZO_MODE_CURRENT_USER, path, kPresentSubkey, exists));
                          Require(exists, "a wrong answer");
                      }},
                     {"open the subkey, close",
                      [subkey = CString(path) + "\\" + kPresentSubkey] { Keep(BareKey(subkey, KEY_READ)); }}});
}
