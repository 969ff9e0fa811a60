// The sheet of options: its tree, its search, and the page that is shown.
#include <zogbl/options_sheet.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "dialogs/base/window_layout.h"
#include "ground/box_filling.h"
#include "options_search.h"

namespace {

/// Lets the dialog manager go into pages, and into dialogs within them: into one that does not say so it would go and
/// never come out again.
void LetTabThrough(HWND window)
{
    char name[8] = "";
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::GetClassNameA(child, name, sizeof name) == 0 || lstrcmpA(name, "#32770") != 0)
            continue;
        ::SetWindowLongA(child, GWL_STYLE, ::GetWindowLongA(child, GWL_STYLE) | DS_CONTROL);
        ::SetWindowLongA(child, GWL_EXSTYLE, ::GetWindowLongA(child, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
        LetTabThrough(child);
    }
}

} // namespace

// The tree ------------------------------------------------------------------------------------------------------------

int CZoOptionsSheet::ParentOf(int page) const
{
    return m_parents[page] != nullptr ? GetPageIndex(static_cast<CZoPropertyPage*>(m_parents[page])) : -1;
}

/// Below the nearest page above it that is in the tree. Throws CMemoryException*.
HTREEITEM CZoOptionsSheet::InsertPage(int page)
{
    int parent = ParentOf(page);
    while (parent >= 0 && ItemOf(parent) == nullptr)
        parent = ParentOf(parent);
    const HTREEITEM above = parent >= 0 ? ItemOf(parent) : TVI_ROOT;
    const HTREEITEM item = m_tree.InsertItem(DialogTitle(TemplateOf(*GetPage(page))), above);
    m_items[page] = item;
    m_tree.SetItemData(item, static_cast<DWORD_PTR>(page));
    if (parent >= 0)
        m_tree.Expand(above, TVE_EXPAND);
    return item;
}

/// Fills the tree with the pages that have what is looked for, and says how many these are.
void CZoOptionsSheet::Fill()
{
    int first = -1, count = 0;
    BOOL isFilled = FALSE; // without memory some are missing, and the page stays
    {
        m_bFilling = true;
        const DrawingPause pause(m_tree.m_hWnd);
        m_tree.DeleteAllItems();
        for (int i = 0; i < GetPageCount(); ++i)
            m_items[i] = nullptr;
        isFilled = WithoutThrowing([&] {
            const OptionsSearch search(FieldText());
            for (int i = 0; i < GetPageCount(); ++i) {
                const CZoPropertyPage& page = *GetPage(i);
                if (!search.IsEmpty() && !search.IsIn(ComparableTexts(TemplateOf(page), page.m_hWnd)))
                    continue;
                InsertPage(i);
                first = first < 0 ? i : first;
                ++count;
            }
            CString found, all;
            found.Format("%d", count);
            all.Format("%d", GetPageCount());
            m_pagesLabel.SetWindowText(search.IsEmpty() ? LoadText(ZO_IDS_OPTIONS_PAGES)
                                       : count == 0     ? LoadText(ZO_IDS_OPTIONS_NOTHING)
                                                        : LoadText(ZO_IDS_OPTIONS_FOUND, found, all));
        });
        m_bFilling = false;
    }
    if (isFilled && m_nShown >= 0 && first >= 0 && ItemOf(m_nShown) == nullptr)
        ShowPage(first);
    SelectShown();
}

/// The tree shows which page is shown. One that the search has not found, but that would not be left, comes into it.
void CZoOptionsSheet::SelectShown()
{
    if (m_nShown < 0 || m_tree.GetCount() == 0)
        return;
    m_bFilling = true;
    WithoutThrowing([this] {
        const HTREEITEM item = ItemOf(m_nShown) != nullptr ? ItemOf(m_nShown) : InsertPage(m_nShown);
        m_tree.SelectItem(item);
        m_tree.EnsureVisible(item);
    });
    m_bFilling = false;
}

/// The one that stands next to an item, all levels in one row; null behind the last and before the first.
HTREEITEM CZoOptionsSheet::NextItem(HTREEITEM item, bool forward) const
{
    HTREEITEM next;
    if (!forward) {
        next = m_tree.GetPrevSiblingItem(item);
        if (next == nullptr)
            return m_tree.GetParentItem(item);
        for (HTREEITEM child = m_tree.GetChildItem(next); child != nullptr; child = m_tree.GetChildItem(next)) {
            next = child;
            while ((child = m_tree.GetNextSiblingItem(next)) != nullptr)
                next = child;
        }
        return next;
    }
    next = m_tree.GetChildItem(item);
    for (; next == nullptr && item != nullptr; item = m_tree.GetParentItem(item))
        next = m_tree.GetNextSiblingItem(item);
    return next;
}

/// To the next or the previous page of the tree; behind the last comes the first.
void CZoOptionsSheet::Step(bool forward)
{
    const HTREEITEM root = m_tree.GetRootItem();
    HTREEITEM item = m_tree.GetSelectedItem();
    item = item != nullptr ? NextItem(item, forward) : root;
    if (item == nullptr) {
        item = root;
        for (HTREEITEM next = root; !forward && next != nullptr; next = NextItem(next, true))
            item = next;
    }
    if (item != nullptr)
        m_tree.SelectItem(item);
}

BOOL CZoOptionsSheet::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto& change = *reinterpret_cast<const NMTREEVIEWA*>(lParam);
    if (m_tree.m_hWnd == nullptr || change.hdr.hwndFrom != m_tree.m_hWnd)
        return CZoPropertySheet::OnNotify(wParam, lParam, result);
    if (change.hdr.code != static_cast<UINT>(TVN_SELCHANGINGA) &&
        change.hdr.code != static_cast<UINT>(TVN_SELCHANGINGW))
        return FALSE;
    *result = !m_bFilling && change.itemNew.hItem != nullptr && !ShowPage(PageOf(change.itemNew.hItem));
    return TRUE;
}

// The page that is shown ----------------------------------------------------------------------------------------------

/// The focus stays in the tree or the field if it is there.
/// \return false if the page before or this one refuses; then the tree stays as it is
bool CZoOptionsSheet::ShowPage(int page)
{
    if (page == m_nShown)
        return true;
    const HWND focus = ::GetFocus();
    m_bChoosing = true;
    SetActivePage(page);
    m_bChoosing = false;
    const bool isShown = m_nShown == page;
    if (isShown && (focus == m_tree.m_hWnd || focus == m_search.m_hWnd) && ::GetFocus() != focus)
        ::SetFocus(focus);
    if (!isShown && ItemOf(m_nShown) != m_tree.GetSelectedItem())
        PostMessage(kFollow); // another page came instead: the tree follows when it is done
    return isShown;
}

LRESULT CZoOptionsSheet::OnFollow(WPARAM, LPARAM)
{
    SelectShown();
    return 0;
}

/// Also if it was not chosen in the tree: by the program, or because it does not let itself be applied.
void CZoOptionsSheet::OnPageShown(CZoPropertyPage* page)
{
    m_nShown = GetPageIndex(page);
    if (m_nShown < 0 || m_heading.m_hWnd == nullptr)
        return;
    LetTabThrough(m_hWnd);
    WithoutThrowing([this] { m_heading.SetWindowText(DialogTitle(TemplateOf(*GetPage(m_nShown)))); });
    if (m_bChoosing)
        return;
    if (ItemOf(m_nShown) == nullptr && m_search.GetWindowTextLength() > 0)
        m_search.SetWindowText(""); // and the tree is filled anew
    SelectShown();
}

// The search ----------------------------------------------------------------------------------------------------------

CString CZoOptionsSheet::FieldText() const
{
    CString text;
    m_search.GetWindowText(text);
    return text;
}

void CZoOptionsSheet::OnSearch() { Fill(); }

/// \return whether the key is done with
bool CZoOptionsSheet::OnFieldKey(UINT key)
{
    const bool isEmpty = m_search.GetWindowTextLength() == 0;
    switch (key) {
    case VK_ESCAPE:
        m_search.SetWindowText("");
        return !isEmpty;
    case VK_RETURN:
        if (!isEmpty)
            SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_tree.m_hWnd), TRUE);
        return !isEmpty;
    case VK_UP:
    case VK_DOWN:
        Step(key == VK_DOWN);
        return true;
    default:
        return false;
    }
}

BOOL CZoOptionsSheet::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_KEYDOWN && m_tree.m_hWnd != nullptr) {
        const auto key = static_cast<UINT>(message->wParam);
        const bool isControl = ::GetKeyState(VK_CONTROL) < 0;
        if (isControl && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT)) {
            Step(key == VK_TAB ? ::GetKeyState(VK_SHIFT) >= 0 : key == VK_NEXT);
            return TRUE;
        }
        if (!isControl && message->hwnd == m_search.m_hWnd && OnFieldKey(key))
            return TRUE;
    }
    return CZoPropertySheet::PreTranslateMessage(message);
}
