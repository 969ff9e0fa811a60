#include <zogbl/mailboxes.h>

#include <common/without_throwing.h>
#include <zogbl/directory_functions.h>
#include <zogbl/global_config.h>
#include <zogbl/operating_system.h>
#include <zogbl/version_resource.h>

#include "ground/program_folder.h"
#include "ground/system_handle.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace {

constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE;
constexpr DWORD kNameSize = 256;
constexpr int kMostReadings = 16;
constexpr DWORD kMostWait = 5000; // milliseconds
constexpr LPCSTR kName = "Name";
constexpr LPCSTR kUserDefault = "UserDefault";
constexpr LPCSTR kNamelessMailBox = "BadBox";

/// Calls \p operation with the key of the mailboxes. \return its answer; FALSE without a product, and without memory.
template <class OPERATION> BOOL WithMailBoxesKey(OPERATION operation)
{
    return WithoutThrowing([&] {
        CZoVersionResource product;
        return product.ExtractVersionInfo() && operation(product.GetBrixelsRootKey() + "\\MailBoxes");
    });
}

/// Keeps the programs that read and write mailboxes apart. It passes on when its owner dies.
class MailBoxesLock {
public:
    MailBoxesLock()
        : m_mutex(CreateMutexA(nullptr, FALSE, "ZOMAILBOXES")),
          m_wait(m_mutex.IsOpen() ? WaitForSingleObject(m_mutex, kMostWait) : WAIT_FAILED)
    {
    }
    ~MailBoxesLock()
    {
        if (m_wait == WAIT_OBJECT_0 || m_wait == WAIT_ABANDONED)
            ReleaseMutex(m_mutex);
    }
    MailBoxesLock(const MailBoxesLock&) = delete;
    MailBoxesLock& operator=(const MailBoxesLock&) = delete;

    /// Whether another program has it, for longer than is waited. A system without such locks keeps nobody out.
    bool IsTaken() const { return m_wait == WAIT_TIMEOUT; }

private:
    const SystemHandle m_mutex;
    const DWORD m_wait;
};

/// Whether an entry below the key of the mailboxes is no mailbox: on Win32s values are listed with the subkeys.
bool IsUserDefault(LPCSTR name)
{
    return CZoGlobalOperatingSystem::GetType() == ZO_OS_WIN32S && lstrcmpiA(name, kUserDefault) == 0;
}

bool IsSame(const CStringArray& first, const CStringArray& second)
{
    bool same = first.GetSize() == second.GetSize();
    for (INT_PTR i = 0; same && i < first.GetSize(); ++i)
        same = first[i] == second[i];
    return same;
}

LPCSTR FolderSuffix(MAILBOXFOLDER folder)
{
    switch (folder) {
    case MAILBOXFOLDER_INBOX:
        return "\\INBOX";
    case MAILBOXFOLDER_OUTBOX:
        return "\\OUTBOX";
    case MAILBOXFOLDER_BOXSETUP:
        return "\\BOXSETUP";
    case MAILBOXFOLDER_PROMPTS:
        return "\\BOXSETUP\\PROMPTS";
    case MAILBOXFOLDER_ARCHIVE:
        return "\\ARCHIVE";
    default:
        return "";
    }
}

} // namespace

CZoRegMailBoxes::CZoRegMailBoxes() = default;
CZoRegMailBoxes::~CZoRegMailBoxes() { RemoveAll(); }

// Registry ------------------------------------------------------------------------------------------------------------

BOOL CZoRegMailBoxes::Load()
{
    RemoveAll();
    const MailBoxesLock lock;
    const BOOL loaded = !lock.IsTaken() && WithMailBoxesKey([this](const CString& key) { return LoadNames(key); });
    if (!loaded)
        RemoveAll();
    return loaded;
}

/// Half a list that passes for the whole would be what the next Write leaves. The lock keeps out Write; for what else
/// changes the registry it is read until two readings in a row are the same. Throws CMemoryException*, as the two below
/// do.
BOOL CZoRegMailBoxes::LoadNames(const CString& key)
{
    CStringArray readings[2];
    bool isOtherWhole = false;
    for (int i = 0; i < kMostReadings; ++i) {
        CStringArray& reading = readings[i % 2];
        const DWORD status = ReadNames(key, reading);
        if (status != ERROR_SUCCESS && status != ERROR_KEY_DELETED)
            return FALSE;
        const bool isWhole = status == ERROR_SUCCESS;
        if (isWhole && isOtherWhole && IsSame(readings[0], readings[1]))
            return AddNames(reading);
        isOtherWhole = isWhole;
    }
    return FALSE;
}

/// Reads all mailboxes: the name of a subkey, the name of its mailbox, the next subkey's and so on.
DWORD CZoRegMailBoxes::ReadNames(const CString& key, CStringArray& reading)
{
    CZoGlobalConfig config;
    CStringArray subkeys;
    reading.RemoveAll();
    const DWORD status = config.EnumEntries(kMode, key, &EnumKeysCallback, &subkeys);
    if (status != ERROR_SUCCESS)
        return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status; // there are none
    for (INT_PTR i = 0; i < subkeys.GetSize(); ++i) {
        if (IsUserDefault(subkeys[i]))
            continue;
        char name[kNameSize];
        config.GetValue(kMode, key + "\\" + subkeys[i], kName, name, sizeof name, nullptr);
        reading.Add(subkeys[i]);
        reading.Add(name[0] != '\0' ? name : kNamelessMailBox);
    }
    return ERROR_SUCCESS;
}

BOOL CZoRegMailBoxes::AddNames(const CStringArray& reading)
{
    for (INT_PTR i = 0; i < reading.GetSize(); i += 2) {
        if (Add(static_cast<DWORD>(std::atol(reading[i])), reading[i + 1]) == nullptr)
            return FALSE;
    }
    return TRUE;
}

DWORD CZoRegMailBoxes::EnumKeysCallback(void* array, const char* name)
{
    return WithoutThrowing([=] { static_cast<CStringArray*>(array)->Add(name); }) ? ERROR_SUCCESS
                                                                                  : ZoErrMemoryException;
}

BOOL CZoRegMailBoxes::Write()
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i)->m_csName.GetLength() >= static_cast<int>(kNameSize))
            return FALSE;
    }
    const MailBoxesLock lock;
    return !lock.IsTaken() && ClearRegistry() &&
           WithMailBoxesKey([this](const CString& key) { return WriteNames(key); });
}

BOOL CZoRegMailBoxes::WriteNames(const CString& key)
{
    CZoGlobalConfig config;
    BOOL written = TRUE;
    for (int i = 0; i < GetCount(); ++i) {
        CString subkey;
        subkey.Format("%s\\%08ld", static_cast<LPCSTR>(key), static_cast<long>(GetAt(i)->m_dwNumber));
        if (config.SetValue(kMode, subkey, kName, GetAt(i)->m_csName) != ERROR_SUCCESS)
            written = FALSE;
    }
    return written;
}

BOOL CZoRegMailBoxes::ClearRegistry()
{
    return WithMailBoxesKey([](const CString& key) -> BOOL {
        const DWORD status = CZoGlobalConfig().DeleteSection(kMode, key, nullptr);
        return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
    });
}

DWORD CZoRegMailBoxes::GetUserDefault() const
{
    DWORD number = GetDefault() != nullptr ? GetDefault()->m_dwNumber : 0;
    WithMailBoxesKey([&](const CString& key) -> BOOL {
        return CZoGlobalConfig().GetValue(kMode, key, kUserDefault, number, number) == ERROR_SUCCESS;
    });
    return number;
}

void CZoRegMailBoxes::SetUserDefault(DWORD number)
{
    WithMailBoxesKey([=](const CString& key) -> BOOL {
        return CZoGlobalConfig().SetValue(kMode, key, kUserDefault, number) == ERROR_SUCCESS;
    });
}

// Mailboxes -----------------------------------------------------------------------------------------------------------

tagREGMAILBOXSTRUCT* CZoRegMailBoxes::Add(DWORD number, const CString& name)
{
    std::unique_ptr<tagREGMAILBOXSTRUCT> mailBox(new (std::nothrow) tagREGMAILBOXSTRUCT{number, name});
    if (!mailBox)
        return nullptr;
    if (!WithoutThrowing([&] { m_mailBoxes.Add(mailBox.get()); }))
        return nullptr;
    return mailBox.release();
}

BOOL CZoRegMailBoxes::Remove(DWORD number)
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i)->m_dwNumber == number) {
            delete GetAt(i);
            m_mailBoxes.RemoveAt(i);
            return TRUE;
        }
    }
    return FALSE;
}

BOOL CZoRegMailBoxes::Remove(tagREGMAILBOXSTRUCT* mailBox) { return mailBox != nullptr && Remove(mailBox->m_dwNumber); }

void CZoRegMailBoxes::RemoveAll()
{
    for (int i = 0; i < GetCount(); ++i)
        delete GetAt(i);
    m_mailBoxes.RemoveAll();
}

tagREGMAILBOXSTRUCT* CZoRegMailBoxes::GetByNumber(DWORD number) const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetAt(i)->m_dwNumber == number)
            return GetAt(i);
    }
    return nullptr;
}

tagREGMAILBOXSTRUCT* CZoRegMailBoxes::GetDefault() const { return GetCount() > 0 ? GetAt(0) : nullptr; }

BOOL CZoRegMailBoxes::IsNameUnique(const char* name)
{
    if (GetCount() == 0)
        Load();
    for (int i = 0; i < GetCount(); ++i) {
        if (lstrcmpiA(GetAt(i)->m_csName, name) == 0)
            return FALSE;
    }
    return TRUE;
}

BOOL CZoRegMailBoxes::DoesNumberExist(DWORD number)
{
    if (GetCount() == 0)
        Load();
    return GetByNumber(number) != nullptr;
}

// Folders -------------------------------------------------------------------------------------------------------------

BOOL CZoRegMailBoxes::GetMailBoxPath(DWORD number, CString& path, MAILBOXFOLDER folder)
{
    CZoRegMailBoxes mailBoxes;
    mailBoxes.Load();
    if (mailBoxes.GetCount() == 0)
        return FALSE;
    if (mailBoxes.GetByNumber(number) == nullptr)
        number = mailBoxes.GetDefault()->m_dwNumber;
    const BOOL named = WithoutThrowing([&]() -> BOOL {
        CString relative;
        relative.Format("MAILBOX\\%08lu%s", number, FolderSuffix(folder));
        const CString built = BesideExecutable(relative);
        if (built.IsEmpty())
            return FALSE;
        path = built;
        return TRUE;
    });
    if (!named)
        return FALSE;
    unsigned long exists;
    CZoGlobalDirectoryFunctions::CreateDirChain(path, exists);
    return TRUE;
}
