// Keys are compared by names that tell keys apart, and there are two ways to such a name.
//
// Windows NT names an open key itself, from the top of its registry down, with links, views and the roots' second names
// (HKEY_CURRENT_USER, HKEY_CURRENT_CONFIG) resolved. That writes nothing and needs no more than the right to open.
//
// Windows 95 tells no names. It has no links either, so two names of a key differ in their roots only, and what the
// roots stand for is known except for one level: the user below HKEY_USERS, the configuration below "Config". A mark, a
// key of a unique name, is made below the root and looked for below the subkeys that it may stand for. It stands below
// a root, not below one of the two keys, so that these may be read-only, and is deleted at once; it is volatile for the
// case that the program ends before.
#include "registry_name.h"

#include "registry_walk.h"

#include <afxcoll.h>
#include <common/double_byte.h>

#include <winternl.h>

namespace {

/// A path in the one form of all its spellings: "\" before each part and nowhere else.
CString CanonicalPath(LPCSTR path)
{
    CString canonical;
    CString rest(path);
    while (!rest.IsEmpty()) {
        const int backslash = rest.Find('\\');
        const CString part = backslash < 0 ? rest : rest.Left(backslash);
        if (!part.IsEmpty())
            canonical += "\\" + part;
        rest = backslash < 0 ? CString() : rest.Mid(backslash + 1);
    }
    return canonical;
}

/// The name that the system has for an open key; empty where it tells none.
CString SystemName(HKEY key)
{
    using QueryObject = LONG(NTAPI*)(HANDLE, int, void*, ULONG, ULONG*);
    const HMODULE library = GetModuleHandleA("ntdll.dll"); // Windows 95 has one without this function, or none
    const auto query =
        library == nullptr
            ? nullptr
            : reinterpret_cast<QueryObject>(reinterpret_cast<void*>(GetProcAddress(library, "NtQueryObject")));
    constexpr int kObjectNameInformation = 1;
    struct {
        UNICODE_STRING name;
        WCHAR text[2048];
    } answer = {};
    if (query == nullptr || query(key, kObjectNameInformation, &answer, sizeof answer, nullptr) < 0 ||
        answer.name.Buffer == nullptr)
        return {};
    char name[2 * 2048];
    const int length =
        WideCharToMultiByte(CP_ACP, 0, answer.name.Buffer, answer.name.Length / 2, name, sizeof name, nullptr, nullptr);
    return {name, length};
}

/// The system's name of a key: that of the nearest key above that is there, with the rest of the path behind it. Empty
/// where the system tells none.
DWORD FindSystemName(HKEY root, const CString& path, CString& name)
{
    for (CString there = path;;) {
        RegistryKey key;
        const DWORD result = key.Open(root, there.Mid(1), READ_CONTROL);
        if (result == ERROR_SUCCESS) {
            name = SystemName(key);
            if (!name.IsEmpty())
                name += path.Mid(there.GetLength());
            return ERROR_SUCCESS;
        }
        if ((result != ERROR_FILE_NOT_FOUND && result != ERROR_ACCESS_DENIED) || there.IsEmpty())
            return result;
        there = there.Left(there.ReverseFind('\\'));
    }
}

// Without the system's names ------------------------------------------------------------------------------------------

/// A key of a unique name below a root, for as long as the object lives.
class Mark {
public:
    explicit Mark(HKEY root) : m_root(root)
    {
        static LONG count = 0;
        wsprintfA(m_name, "ZoMark%lX.%lX.%lX", GetCurrentProcessId(), GetTickCount(), InterlockedIncrement(&count));
        HKEY key = nullptr;
        m_status = static_cast<DWORD>(RegCreateKeyExA(root, m_name, 0, nullptr, REG_OPTION_VOLATILE,
                                                      KEY_READ | kRegistryView, nullptr, &key, nullptr));
        if (m_status == ERROR_SUCCESS)
            RegCloseKey(key);
    }
    ~Mark()
    {
        if (m_status == ERROR_SUCCESS)
            RegistryWalk(false).DeleteKey(m_root, m_name);
    }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;

    DWORD Status() const { return m_status; }
    LPCSTR Name() const { return m_name; }

private:
    HKEY m_root;
    DWORD m_status;
    char m_name[48];
};

CString RootName(HKEY root)
{
    CString name;
    name.Format("%lX", static_cast<unsigned long>(HandleToULong(root)));
    return name;
}

/// The name of a root that stands for a subkey of another key.
DWORD FindRootName(HKEY root, HKEY parentRoot, LPCSTR parentPath, CString& name)
{
    const Mark mark(root);
    if (mark.Status() != ERROR_SUCCESS)
        return mark.Status();
    name = RootName(root); // on its own, unless it is found
    const auto compare = [&](HKEY parent, LPCSTR subkey, DWORD& status) {
        RegistryKey found;
        status = found.Open(parent, CString(subkey) + "\\" + mark.Name(), KEY_READ);
        if (status == ERROR_FILE_NOT_FOUND || status == ERROR_ACCESS_DENIED) {
            status = ERROR_SUCCESS;
            return true;
        }
        name = RootName(parentRoot) + CanonicalPath(parentPath) + "\\" + subkey;
        return false;
    };
    const DWORD result = RegistryWalk(false).ForEachSubkey(parentRoot, parentPath, compare);
    return result == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : result; // there is no such parent
}

/// \param resolves whether roots that stand for a key below another one are replaced by that
DWORD FindOwnName(HKEY root, const CString& path, bool resolves, CString& name)
{
    DWORD result = ERROR_SUCCESS;
    if (resolves && root == HKEY_CURRENT_USER)
        result = FindRootName(root, HKEY_USERS, "", name);
    else if (resolves && root == HKEY_CURRENT_CONFIG)
        result = FindRootName(root, HKEY_LOCAL_MACHINE, "Config", name);
    else
        name = root == HKEY_CLASSES_ROOT ? RootName(HKEY_LOCAL_MACHINE) + "\\Software\\Classes" : RootName(root);
    name += path;
    return result;
}

// Comparing -----------------------------------------------------------------------------------------------------------

/// Adds the names of a key. \param isAlone whether the other key has the same root: then none is resolved
DWORD AddNames(HKEY root, const CString& path, bool oldCalls, bool isAlone, CStringArray& names)
{
    CString name;
    DWORD result = oldCalls ? ERROR_SUCCESS : FindSystemName(root, path, name);
    if (result != ERROR_SUCCESS)
        return result;
    if (name.IsEmpty()) {
        result = FindOwnName(root, path, !isAlone, name);
        names.Add(name);
        return result;
    }
    names.Add(name);
    if (root != HKEY_CLASSES_ROOT)
        return ERROR_SUCCESS;
    // Windows merges the classes from these two, and a key below them may lie in one, in the other, or in both.
    for (const HKEY source : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        result = FindSystemName(source, "\\Software\\Classes" + path, name);
        if (result != ERROR_SUCCESS)
            return result;
        names.Add(name);
    }
    return ERROR_SUCCESS;
}

bool IsAtOrBelow(const CString& name, const CString& ancestor)
{
    const CString begin = (name + "\\").Left(ancestor.GetLength() + 1);
    return CompareCharactersNoCase(begin, ancestor + "\\") == 0;
}

} // namespace

DWORD IsKeyAtOrBelow(HKEY root, LPCSTR path, HKEY ancestorRoot, LPCSTR ancestorPath, bool oldCalls, bool& below,
                     CString& way)
{
    below = false;
    const bool isAlone = oldCalls || root == ancestorRoot;
    CStringArray names;
    CStringArray ancestors;
    DWORD result = AddNames(root, CanonicalPath(path), oldCalls, isAlone, names);
    if (result == ERROR_SUCCESS)
        result = AddNames(ancestorRoot, CanonicalPath(ancestorPath), oldCalls, isAlone, ancestors);
    for (INT_PTR i = 0; result == ERROR_SUCCESS && i < names.GetSize(); ++i) {
        for (INT_PTR j = 0; !below && j < ancestors.GetSize(); ++j) {
            below = IsAtOrBelow(names[i], ancestors[j]);
            if (below)
                way = names[i].Mid(ancestors[j].GetLength());
        }
    }
    return result;
}
