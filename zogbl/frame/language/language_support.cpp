#include <zogbl/language_support.h>

#include <common/without_throwing.h>
#include <zogbl/global_config.h>

#include "ground/module_data.h"
#include "language_window_table.h"

#include <cstdio>
#include <cstring>
#include <utility>

namespace {

constexpr DWORD kNeutralSortMask = 0xFFFF;
constexpr int kModulePrefixLength = 5; // "ZOGBL": what the libraries of one module have in common
constexpr LPCSTR kLanguagesKey = "\\Languages";

/// The first language-support object of the process whose window was created.
const CZoLanguageSupport* g_firstSupport = nullptr;

/// The system's three-letter name of a language.
CString LanguageAbbreviation(DWORD languageId)
{
    char name[4] = {};
    GetLocaleInfoA(languageId, LOCALE_SABBREVLANGNAME, name, sizeof name);
    name[sizeof name - 1] = '\0';
    return name;
}

} // namespace

UINT CZoLanguageSupport::s_changeMessage = 0;
UINT CZoLanguageSupport::s_updateMessage = 0;

BEGIN_MESSAGE_MAP(CZoLanguageSupport, CWnd)
    ON_WM_DESTROY()
    ON_REGISTERED_MESSAGE(s_changeMessage, OnLanguageChanged)
END_MESSAGE_MAP()

// The object and its window -------------------------------------------------------------------------------------------

CZoLanguageSupport::CZoLanguageSupport() : CZoLanguageSupport(nullptr) {}

CZoLanguageSupport::CZoLanguageSupport(CWnd* parent)
    : m_hLanguageLibrary(nullptr), m_pParent(parent), m_nCurrentIndex(-1), m_dwLoadedId(0), m_dwPendingId(0),
      m_bListRead(FALSE)
{
    s_changeMessage = RegisterWindowMessageA("ZoBrixelLanguageChange");
    s_updateMessage = GetUpdateMessage();
}

CZoLanguageSupport::~CZoLanguageSupport()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
    if (m_hLanguageLibrary != nullptr)
        FreeLibrary(m_hLanguageLibrary);
    FreeLanguageObjectArray();
    if (g_firstSupport == this)
        g_firstSupport = nullptr;
}

BOOL CZoLanguageSupport::Create()
{
    return WithoutThrowing([this]() -> BOOL {
        const LPCSTR windowClass =
            AfxRegisterWndClass(0, nullptr, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), nullptr);
        if (!CreateEx(0, windowClass, "ZoLS", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr))
            return FALSE;
        ZoRegisterLanguageWindow(m_hWnd);
        if (g_firstSupport == nullptr)
            g_firstSupport = this;
        return TRUE;
    });
}

BOOL CZoLanguageSupport::IsOnOwnThread() const
{
    return m_hWnd == nullptr || GetWindowThreadProcessId(m_hWnd, nullptr) == GetCurrentThreadId();
}

void CZoLanguageSupport::OnDestroy()
{
    ZoUnregisterLanguageWindow(m_hWnd);
    CWnd::OnDestroy();
}

CString CZoLanguageSupport::GetLocaleName() const
{
    CString name;
    WithoutThrowing([&] { name = LanguageAbbreviation(m_dwLoadedId); });
    return name;
}

// The list of languages -----------------------------------------------------------------------------------------------

void CZoLanguageSupport::FreeLanguageObjectArray()
{
    for (INT_PTR i = 0; i < m_languages.GetSize(); ++i)
        delete m_languages[i];
    m_languages.RemoveAll();
    m_nCurrentIndex = -1;
    m_dwLoadedId = 0;
    m_dwPendingId = 0;
}

BOOL CZoLanguageSupport::EnumerateAvailableLanguages(LPCSTR rootKey)
{
    FreeLanguageObjectArray();
    DWORD result = ZoErrNoMemory;
    WithoutThrowing([&] {
        result = CZoGlobalConfig().EnumValues(ZO_MODE_LOCAL_MACHINE, CString(rootKey) + kLanguagesKey,
                                              &EnumValueCallback, this);
        return TRUE;
    });
    if (result == ERROR_FILE_NOT_FOUND) // no such key: an empty list
        return TRUE;
    if (result != ERROR_SUCCESS)
        FreeLanguageObjectArray();
    return result == ERROR_SUCCESS;
}

DWORD CZoLanguageSupport::EnumValueCallback(void* context, LPCSTR valueName, const void* data, DWORD type)
{
    unsigned int id = 0;
    if (std::sscanf(valueName, "%x", &id) != 1)
        return ERROR_SUCCESS; // not the name of a language, the key's unnamed value for one
    int current = 0;
    switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
        current = std::strcmp(static_cast<LPCSTR>(data), "0") != 0;
        break;
    case REG_DWORD:
        current = static_cast<int>(ZoEnumeratedNumber(data));
        break;
    default: // data that is no flag at all
        break;
    }
    CObject* entry = nullptr;
    const BOOL added = WithoutThrowing([&]() -> BOOL {
        id &= kNeutralSortMask;
        entry = new CZoLanguageEntry(id, LanguageAbbreviation(id), current);
        static_cast<CZoLanguageSupport*>(context)->m_languages.Add(entry);
        return TRUE;
    });
    if (!added) {
        delete entry;
        return ZoErrNoMemory;
    }
    return ERROR_SUCCESS;
}

BOOL CZoLanguageSupport::ReadLanguageList(LPCSTR path)
{
    if (!m_version.ExtractVersionInfo(path))
        return FALSE;
    if (!m_bListRead)
        m_bListRead = EnumerateAvailableLanguages(m_version.GetModuleRootKey());
    return m_bListRead;
}

// Loading -------------------------------------------------------------------------------------------------------------

BOOL CZoLanguageSupport::LoadCurrentLanguage(LPCSTR path)
{
    if (m_hWnd == nullptr && !Create())
        return FALSE;
    if (!m_bListRead && !ReadLanguageList(path))
        return FALSE;
    if (m_languages.IsEmpty())
        return FALSE;
    INT_PTR chosen = 0;
    while (chosen < m_languages.GetSize() && Entry(chosen)->m_nCurrent != 1)
        ++chosen;
    return LoadListed(chosen < m_languages.GetSize() ? chosen : 0, path);
}

BOOL CZoLanguageSupport::LoadUserDefaultLanguage(LPCSTR path, BOOL persist)
{
    return LoadSpecificLanguage(GetUserDefaultLCID(), path, persist);
}

BOOL CZoLanguageSupport::LoadSystemDefaultLanguage(LPCSTR path, BOOL persist)
{
    return LoadSpecificLanguage(GetSystemDefaultLCID(), path, persist);
}

BOOL CZoLanguageSupport::LoadSpecificLanguage(DWORD languageId, LPCSTR path, BOOL persist)
{
    if (languageId == m_dwLoadedId)
        return TRUE;
    if (!ReadLanguageList(path))
        return FALSE;
    INT_PTR flagged = m_languages.GetSize() - 1; // the last one wins, in both searches
    while (flagged >= 0 && Entry(flagged)->m_nCurrent != 1)
        --flagged;
    const INT_PTR chosen = FindLanguage(languageId);
    if (chosen < 0 || !LoadListed(chosen, path))
        return FALSE;
    if (persist)
        WriteChoice(m_version.GetModuleRootKey(), chosen);
    static_cast<CZoLanguageEntry*>(m_languages[chosen])->m_nCurrent = 1;
    if (flagged >= 0 && flagged != chosen)
        static_cast<CZoLanguageEntry*>(m_languages[flagged])->m_nCurrent = 0;
    return TRUE;
}

BOOL CZoLanguageSupport::LoadListed(INT_PTR index, LPCSTR path)
{
    return WithoutThrowing([&]() -> BOOL {
        const CString abbreviation = Entry(index)->m_csAbbreviation; // a failed load empties the list
        CString fileName;
        ExtractFilenameFromPath(path, fileName);
        m_dwPendingId = Entry(index)->m_dwLanguageId;
        if (!CreateNameAndLoadModule(fileName))
            return FALSE;
        m_nCurrentIndex = static_cast<int>(index);
        m_csCurrentAbbreviation = abbreviation;
        return TRUE;
    });
}

INT_PTR CZoLanguageSupport::FindLanguage(DWORD languageId) const
{
    INT_PTR index = m_languages.GetSize() - 1;
    while (index >= 0 && Entry(index)->m_dwLanguageId != languageId)
        --index;
    return index;
}

void CZoLanguageSupport::WriteChoice(const CString& moduleKey, INT_PTR chosen)
{
    WithoutThrowing([&]() -> BOOL {
        CZoGlobalConfig config;
        const CString key = moduleKey + kLanguagesKey;
        const auto write = [&](INT_PTR index, DWORD current) {
            CString name;
            name.Format("%04x", static_cast<unsigned>(Entry(index)->m_dwLanguageId));
            config.SetValue(ZO_MODE_LOCAL_MACHINE, key, name, current);
        };
        for (INT_PTR i = 0; i < m_languages.GetSize(); ++i)
            write(i, 0);
        write(chosen, 1);
        return TRUE;
    });
}

BOOL CZoLanguageSupport::CreateNameAndLoadModule(LPCSTR fileName)
{
    if (m_hLanguageLibrary != nullptr && m_dwLoadedId == m_dwPendingId)
        return TRUE;
    CString name;
    BuildLanguageModuleFilename(fileName, m_dwPendingId, name);
    const HINSTANCE loaded = name.IsEmpty() ? nullptr : LoadLibraryA(name);
    if (reinterpret_cast<UINT_PTR>(loaded) <= 32) {
        if (m_hLanguageLibrary == nullptr)
            FreeLanguageObjectArray();
        return FALSE;
    }
    const HINSTANCE previous = std::exchange(m_hLanguageLibrary, loaded);
    m_dwLoadedId = m_dwPendingId;
    m_csLanguageModuleName = name;
    ZoModuleData* data = ZoModuleDataGet();
    if (data != nullptr && data->m_pLanguageSupport == this)
        data->SetLanguageLibrary(loaded); // the library of the whole process, before the old one is gone
    if (previous != nullptr)
        FreeLibrary(previous);
    return TRUE;
}

BOOL CZoLanguageSupport::BuildLanguageModuleFilename(LPCSTR fileName, DWORD languageId, CString& result)
{
    result.Empty();
    WithoutThrowing([&] {
        result = CString(fileName).Left(kModulePrefixLength) + LanguageAbbreviation(languageId) + ".DLL";
        return TRUE;
    });
    return TRUE;
}

void CZoLanguageSupport::ExtractFilenameFromPath(LPCSTR path, CString& result)
{
    result.Empty();
    WithoutThrowing([&] {
        const CString whole(path);
        int separator = whole.ReverseFind('\\');
        if (separator < 0)
            separator = whole.ReverseFind(':');
        result = whole.Mid(separator + 1);
        return TRUE;
    });
}
