#include "recent_files.h"

#include "workbench_ids.h"

#include "../user_texts.h"

#include <common/double_byte.h>
#include <zogbl/workspace.h>

#include <algorithm>

namespace {

constexpr int kMost = ZoWorkspace::MOST_RECENT;
constexpr int kLongest = 60; // bytes of a path in the menu

CString NameOf(INT_PTR number)
{
    CString name;
    name.Format("Recent%d", static_cast<int>(number));
    return name;
}

/// What the menu says: a number to press, and the path, the middle of a long one left out.
CString ItemText(int number, const CString& path)
{
    CString shown = path;
    if (shown.GetLength() > kLongest) {
        const int name = path.ReverseFind('\\');
        LPCSTR end = static_cast<LPCSTR>(path) + (std::max)(name, path.GetLength() - kLongest / 2);
        if (IsSecondHalf(path, end))
            ++end;
        shown = path.Left(path[1] == ':' ? 3 : 2) + "..." + end; // behind the drive, or where a network's name begins
    }
    shown.Replace("&", "&&");
    CString text;
    text.Format(number < 10 ? "&%d  %s" : "%d  %s", number, static_cast<LPCSTR>(shown));
    return text;
}

/// The submenu that has a command, and its place there. \return null: none has
HMENU FindMenu(HMENU menu, UINT command, int& place)
{
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        if (const HMENU submenu = ::GetSubMenu(menu, i)) {
            if (const HMENU found = FindMenu(submenu, command, place))
                return found;
        } else if (::GetMenuItemID(menu, i) == command) {
            place = i;
            return menu;
        }
    }
    return nullptr;
}

} // namespace

void RecentFiles::Load()
{
    m_paths.RemoveAll();
    CString path;
    for (int i = 0; i < kMost && ReadUserText(NameOf(i), path) && !path.IsEmpty(); ++i) {
        if (path.GetLength() < MAX_PATH)
            m_paths.Add(path);
    }
}

DWORD RecentFiles::Save() const
{
    DWORD status = ERROR_SUCCESS;
    for (INT_PTR i = 0; i < m_paths.GetSize() && status == ERROR_SUCCESS; ++i)
        status = KeepUserText(NameOf(i), m_paths[i]);
    return status == ERROR_SUCCESS && m_paths.GetSize() < kMost ? KeepUserText(NameOf(m_paths.GetSize()), "") : status;
}

DWORD RecentFiles::Add(const CString& path)
{
    Load(); // with what others have added
    for (INT_PTR i = m_paths.GetSize(); i-- > 0;) {
        if (m_paths[i].CompareNoCase(path) == 0)
            m_paths.RemoveAt(i);
    }
    m_paths.InsertAt(0, path);
    if (m_paths.GetSize() > kMost)
        m_paths.SetSize(kMost);
    return Save();
}

DWORD RecentFiles::Remove(const CString& path)
{
    Load();
    for (INT_PTR i = m_paths.GetSize(); i-- > 0;) {
        if (m_paths[i].CompareNoCase(path) == 0)
            m_paths.RemoveAt(i);
    }
    return Save();
}

CString RecentFiles::GetPath(UINT command) const
{
    const INT_PTR index = static_cast<INT_PTR>(command) - ZO_ID_RECENT_FIRST;
    return index >= 0 && index < m_paths.GetSize() ? m_paths[index] : CString();
}

void RecentFiles::Show(HMENU menu, UINT before, int most) const
{
    for (int i = 0; i < kMost; ++i)
        ::DeleteMenu(menu, static_cast<UINT>(ZO_ID_RECENT_FIRST + i), MF_BYCOMMAND);
    int place = 0;
    const HMENU found = FindMenu(menu, before, place);
    if (found == nullptr)
        return;
    const auto isSeparator = [&](int at) {
        return at >= 0 && (::GetMenuState(found, static_cast<UINT>(at), MF_BYPOSITION) & MF_SEPARATOR) != 0;
    };
    if (isSeparator(place - 1) && isSeparator(place - 2)) // that of those shown before
        ::DeleteMenu(found, static_cast<UINT>(--place), MF_BYPOSITION);
    const int count = (std::min)(most, static_cast<int>(m_paths.GetSize()));
    for (int i = 0; i < count; ++i)
        ::InsertMenu(found, static_cast<UINT>(place + i), MF_BYPOSITION | MF_STRING,
                     static_cast<UINT_PTR>(ZO_ID_RECENT_FIRST + i), ItemText(i + 1, m_paths[i]));
    if (count > 0)
        ::InsertMenu(found, static_cast<UINT>(place + count), MF_BYPOSITION | MF_SEPARATOR, 0, nullptr);
}
