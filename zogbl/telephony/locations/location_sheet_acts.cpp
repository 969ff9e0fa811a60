// The sheet for dialing locations: what its buttons do.
#include <zogbl/ask_name_dialog.h>

#include "location_sheet_parts.h"

#include <algorithm>

/// A new location. \param source null: with the country and the codes of the one that is current; else with all of it
void CLocSheet::Add(const CZoLocationItem* source)
{
    LocationSet& set = m_parts->set;
    if (set.GetCount() >= LocationSet::kMost) {
        TellUser(this, ZO_IDS_LOC_TITLE, [] {
            CString most;
            most.Format("%d", LocationSet::kMost);
            return LoadText(ZO_IDS_LOC_FULL, most);
        });
        return;
    }
    if (!TakePage())
        return;
    int position = -1;
    if (!WithoutThrowing([&]() -> BOOL {
            const int current = set.GetCurrent();
            position = set.Add();
            if (position < 0)
                return FALSE;
            CZoLocationItem& item = set.GetAt(position);
            if (source != nullptr) {
                CopyLocation(item, *source);
                item.m_csLocationName = FreeName(set, LoadText(ZO_IDS_LOC_COPY_NAME, source->m_csLocationName));
                return TRUE;
            }
            item.m_csLocationName = NewName(set, item.m_dwIndex);
            if (current < 0)
                return TRUE;
            const CZoLocationItem& from = set.GetAt(current);
            item.m_dwCountryIndex = item.m_dwAddressCountryIndex = from.m_dwCountryIndex;
            item.m_csCountryCode = from.m_csCountryCode;
            item.m_csInternationalAccess = from.m_csInternationalAccess;
            item.m_csLongDistancePrefix = from.m_csLongDistancePrefix;
            return TRUE;
        })) {
        if (position >= 0)
            set.Remove(position);
        TellUser(this, ZO_IDS_LOC_TITLE, ZO_IDS_LOC_NOT_MADE);
        return;
    }
    if (set.GetCount() == 1)
        set.SetCurrent(position);
    FillList();
    Select(position);
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_parts->list.m_hWnd), TRUE);
}

void CLocSheet::OnNew() { Add(nullptr); }

void CLocSheet::OnCopy()
{
    if (m_nSelected >= 0)
        Add(&m_parts->set.GetAt(m_nSelected));
}

void CLocSheet::OnRename()
{
    if (m_nSelected < 0)
        return;
    LocationSet& set = m_parts->set;
    CString& name = set.GetAt(m_nSelected).m_csLocationName;
    if (!WithoutThrowing([&] {
            CStringArray names; // its own does not count
            for (int i = 0; i < set.GetCount(); ++i)
                names.Add(set.GetAt(i).m_csLocationName);
            CZoAskNameDialog dialog(LoadText(ZO_IDS_LOC_RENAME_TITLE), LoadText(ZO_IDS_LOC_RENAME_PROMPT), this);
            if (!dialog.SetName(name) || !dialog.SetTakenNames(names))
                AfxThrowMemoryException();
            if (dialog.DoModal() != IDOK)
                return;
            name = dialog.GetName();
            FillList();
        }))
        ::MessageBeep(MB_ICONEXCLAMATION);
}

void CLocSheet::OnDelete()
{
    LocationSet& set = m_parts->set;
    const int position = m_nSelected;
    if (position < 0)
        return;
    int answer = IDNO; // without memory for the question nothing is lost
    if (!WithoutThrowing([&] {
            answer = AskUser(*this, ZO_IDS_LOC_ASK_DELETE, set.GetAt(position).m_csLocationName,
                             MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
        }))
        ::MessageBeep(MB_ICONEXCLAMATION);
    if (answer != IDYES || m_hWnd == nullptr)
        return;
    Select(-1);
    if (!WithoutThrowing([&] { set.Remove(position); }))
        ::MessageBeep(MB_ICONEXCLAMATION);
    FillList();
    Select((std::min)(position, set.GetCount() - 1));
}

void CLocSheet::OnMakeCurrent()
{
    if (m_nSelected < 0)
        return;
    m_parts->set.SetCurrent(m_nSelected);
    FillList();
}

BOOL CLocSheet::PreTranslateMessage(MSG* message)
{
    if (message->message == WM_KEYDOWN && m_parts->list.m_hWnd != nullptr && message->hwnd == m_parts->list.m_hWnd) {
        switch (message->wParam) {
        case VK_INSERT:
            OnNew();
            return TRUE;
        case VK_F2:
            OnRename();
            return TRUE;
        case VK_DELETE:
            OnDelete();
            return TRUE;
        default:
            break;
        }
    }
    return CZoPropertySheet::PreTranslateMessage(message);
}
