#include "tour_windows.h"

#include "workbench_ids.h"

#include <zogbl/flag_lcid.h>
#include <zogbl/resource_ids.h>

#include <commctrl.h>
#include <prsht.h>

void Press(HWND dialog, int button) { ::SendMessage(::GetDlgItem(dialog, button), BM_CLICK, 0, 0); }

bool ChooseLanguage(HWND dialog, DWORD language, LPCSTR picturePath)
{
    const HWND box = ::GetDlgItem(dialog, ZO_IDC_LANGUAGE_INSTALLED);
    const int count = static_cast<int>(::SendMessage(box, CB_GETCOUNT, 0, 0));
    bool chosen = false;
    for (int i = 0; i < count && !chosen; ++i) {
        const auto* item = reinterpret_cast<const CZoFlagLcid*>(::SendMessage(box, CB_GETITEMDATA, i, 0));
        chosen = item->GetLcidValue() == language;
        if (chosen)
            ::SendMessage(box, CB_SETCURSEL, i, 0);
    }
    ::SendMessage(dialog, WM_COMMAND, MAKEWPARAM(ZO_IDC_LANGUAGE_INSTALLED, CBN_SELCHANGE),
                  reinterpret_cast<LPARAM>(box));
    Press(dialog, ZO_IDC_LANGUAGE_TOGGLE);
    Settle();
    chosen = chosen && SavePicture(dialog, picturePath);
    Press(dialog, chosen ? IDOK : IDCANCEL);
    return chosen;
}

BOOL CALLBACK ModalPictures::FindModal(HWND window, LPARAM found)
{
    char name[16] = "";
    ::GetClassName(window, name, sizeof name);
    if (lstrcmp(name, "#32770") != 0 || !::IsWindowVisible(window) || !::IsWindowEnabled(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void CALLBACK ModalPictures::Look(HWND, UINT, UINT_PTR, DWORD)
{
    HWND window = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &FindModal, reinterpret_cast<LPARAM>(&window));
    if (window != nullptr && std::exchange(s_pictures->m_met, window) != window)
        s_pictures->Picture(window);
}

void ModalPictures::Picture(HWND window)
{
    const auto tabs = reinterpret_cast<HWND>(::SendMessage(window, PSM_GETTABCONTROL, 0, 0));
    const int pages = tabs != nullptr ? static_cast<int>(::SendMessage(tabs, TCM_GETITEMCOUNT, 0, 0)) : 1;
    for (int page = 0; page < pages; ++page) {
        if (tabs != nullptr)
            ::SendMessage(window, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
        ::UpdateWindow(window);
        Settle();
        CString number;
        number.Format("-%d.png", ++m_number);
        CString path = m_path;
        path.Replace(".png", number);
        m_saved += SavePicture(window, path);
    }
    ::PostMessage(window, WM_COMMAND, IDCANCEL, reinterpret_cast<LPARAM>(::GetDlgItem(window, IDCANCEL)));
}

MenuPicture::MenuPicture(HWND window, int position, const CString& path) : m_window(window), m_path(path)
{
    char text[64] = "";
    ::GetMenuString(::GetMenu(window), static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
    const CString title(text);
    const int key = title.Find('&');
    s_picture = this;
    m_timer = ::SetTimer(nullptr, 0, 300, &MenuPicture::Take);
    ::SendMessage(window, WM_SYSCOMMAND, SC_KEYMENU, key >= 0 ? title[key + 1] : 0);
    ::KillTimer(nullptr, m_timer);
    s_picture = nullptr;
}

void CALLBACK MenuPicture::Take(HWND, UINT, UINT_PTR, DWORD)
{
    s_picture->m_saved = SavePicture(s_picture->m_window, s_picture->m_path);
    ::EndMenu();
}

BOOL CALLBACK WhenOpen::FindDialog(HWND window, LPARAM found)
{
    if (::GetDlgItem(window, s_active->m_control) == nullptr || !::IsWindowVisible(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void CALLBACK WhenOpen::Look(HWND, UINT, UINT_PTR, DWORD)
{
    HWND dialog = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog != nullptr && !std::exchange(s_active->m_seen, true))
        s_active->m_done = s_active->m_act(dialog);
}
