#include <zogbl/operating_system.h>

#include <common/without_throwing.h>
#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

#include "ground/system_handle.h"

#include <cstring>
#include <iterator>

namespace {

constexpr LPCSTR kRegisteredNames[] = {"Owner", "Organization", "Distributor"};

constexpr DWORD kRegisteredInfoSize = 256;
constexpr DWORD kNameSize = 96;
constexpr DWORD kAccountSize = 200;

/// Puts together a text for the caller; empty if memory runs out.
template <class MAKE> CString TextOrNothing(MAKE make)
{
    return ResultOr({}, [&]() -> CString { return make(); });
}

/// Asks for information about the account of the process.
template <size_t SIZE> bool ReadToken(TOKEN_INFORMATION_CLASS kind, BYTE (&information)[SIZE])
{
    SystemHandle token;
    DWORD size = 0;
    return OpenProcessToken(GetCurrentProcess(), TOKEN_READ, token.Receive()) &&
           GetTokenInformation(token, kind, information, SIZE, &size);
}

/// The account of the process.
struct Account {
    char name[kAccountSize] = "";
    char domain[kAccountSize] = "";

    bool LookUp()
    {
        alignas(TOKEN_USER) BYTE information[1000] = {};
        if (!ReadToken(TokenUser, information))
            return false;
        DWORD nameSize = sizeof name, domainSize = sizeof domain;
        SID_NAME_USE use;
        const BOOL found = LookupAccountSidA(nullptr, reinterpret_cast<const TOKEN_USER*>(information)->User.Sid, name,
                                             &nameSize, domain, &domainSize, &use);
        name[sizeof name - 1] = '\0'; // not every system ends a text that it cuts
        domain[sizeof domain - 1] = '\0';
        return found != FALSE;
    }
};

/// A text of the current user's settings; empty when there is none.
class UserSetting {
public:
    UserSetting(LPCSTR key, LPCSTR valueName)
    {
        CZoGlobalConfig().GetValue(ZO_MODE_CURRENT_USER, key, valueName, m_text, sizeof m_text, nullptr);
    }
    bool IsEmpty() const { return m_text[0] == '\0'; }
    operator LPCSTR() const { return m_text; }

private:
    char m_text[kNameSize];
};

/// The user's name as Windows 95 and its programs know it.
CString FindWindows95User()
{
    constexpr LPCSTR kUserInformation = "Software\\Microsoft\\User Information";
    const UserSetting firstName(kUserInformation, "Default First Name");
    if (!firstName.IsEmpty())
        return CString(firstName) + ' ' + UserSetting(kUserInformation, "Default Last Name");
    const UserSetting owner("Software\\Microsoft\\Developer\\Setup", "RegisteredOwner");
    if (!owner.IsEmpty())
        return CString(owner);
    const CString suiteOwner = CZoGlobalOperatingSystem::GetRegisteredInfo(ZO_REGISTERED_OWNER);
    return !suiteOwner.IsEmpty() ? suiteOwner : CString(UserSetting("Network\\Logon", "UserName"));
}

} // namespace

DWORD CZoGlobalOperatingSystem::GetPlatform()
{
    switch (GetType()) {
    case ZO_OS_WIN32S:
    case ZO_OS_WIN95:
        return ZO_PLATFORM_INTEL;
    case ZO_OS_NT: {
        char processor[16] = "";
        if (GetEnvironmentVariableA("CPU", processor, sizeof processor) >= sizeof processor)
            return ZO_PLATFORM_UNKNOWN; // longer than any of them; the buffer holds nothing then
        if (_stricmp(processor, "i386") == 0)
            return ZO_PLATFORM_INTEL;
        if (_stricmp(processor, "ALPHA") == 0)
            return ZO_PLATFORM_ALPHA;
        return _stricmp(processor, "MIPS") == 0 ? ZO_PLATFORM_MIPS : ZO_PLATFORM_UNKNOWN;
    }
    default:
        return ZO_PLATFORM_UNKNOWN;
    }
}

CString CZoGlobalOperatingSystem::GetUserNameA()
{
    return TextOrNothing([]() -> CString {
        switch (GetType()) {
        case ZO_OS_WIN32S:
            return GetRegisteredInfo(ZO_REGISTERED_OWNER);
        case ZO_OS_NT: {
            Account account;
            return account.LookUp() ? account.name : "";
        }
        case ZO_OS_WIN95:
            return FindWindows95User();
        default:
            return {};
        }
    });
}

CString CZoGlobalOperatingSystem::GetUserReal()
{
    return TextOrNothing([]() -> CString {
        switch (GetType()) {
        case ZO_OS_WIN32S:
            return GetRegisteredInfo(ZO_REGISTERED_OWNER);
        case ZO_OS_NT:
        case ZO_OS_WIN95: {
            char name[100] = "";
            DWORD size = sizeof name;
            ::GetUserNameA(name, &size);
            return name[0] != '\0' ? CString(name) : GetUserNameA();
        }
        default:
            return {};
        }
    });
}

CString CZoGlobalOperatingSystem::GetDomainName()
{
    return TextOrNothing([]() -> CString {
        switch (GetType()) {
        case ZO_OS_WIN32S:
            return GetRegisteredInfo(ZO_REGISTERED_OWNER);
        case ZO_OS_NT: {
            Account account;
            account.LookUp(); // whatever it found of the domain is told, a part as well
            return account.domain;
        }
        default:
            return {};
        }
    });
}

CString CZoGlobalOperatingSystem::GetComputerNameA()
{
    return TextOrNothing([]() -> CString {
        const DWORD type = GetType();
        char name[200] = "";
        DWORD size = sizeof name;
        if (type == ZO_OS_NT || type == ZO_OS_WIN95)
            ::GetComputerNameA(name, &size);
        return name;
    });
}

BOOL CZoGlobalOperatingSystem::HasAdminRights()
{
    alignas(TOKEN_GROUPS) BYTE information[1024] = {};
    if (GetType() != ZO_OS_NT || !ReadToken(TokenGroups, information))
        return FALSE;
    SID_IDENTIFIER_AUTHORITY authority = {SECURITY_NT_AUTHORITY};
    PSID administrators;
    if (!AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0,
                                  &administrators))
        return FALSE;
    const auto* groups = reinterpret_cast<const TOKEN_GROUPS*>(information);
    BOOL found = FALSE;
    for (DWORD i = 0; i < groups->GroupCount && !found; ++i)
        found = EqualSid(groups->Groups[i].Sid, administrators);
    FreeSid(administrators);
    return found;
}

CString CZoGlobalOperatingSystem::GetRegisteredInfo(UINT kind)
{
    if (kind >= std::size(kRegisteredNames))
        return {};
    return TextOrNothing([=]() -> CString {
        CZoVersionResource version;
        if (!version.ExtractVersionInfo())
            return {};
        char text[kRegisteredInfoSize];
        CZoGlobalConfig().GetValue(ZO_MODE_LOCAL_MACHINE, version.GetBrixelsRootKey() + "\\RegistrationInfo",
                                   kRegisteredNames[kind], text, sizeof text, nullptr);
        return text;
    });
}
