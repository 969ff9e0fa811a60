#include <zogbl/message_box.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "common/clipboard.h"
#include "dialog_resource.h"
#include "kept_answers.h"
#include "message_box_layout.h"

#include <cstring>
#include <iterator>

namespace {

/// Keeps the user from all windows of the thread until it ends: from as many as there is room for.
class DisabledThread {
public:
    explicit DisabledThread(bool wanted)
    {
        if (wanted)
            ::EnumThreadWindows(::GetCurrentThreadId(), &DisabledThread::Disable, reinterpret_cast<LPARAM>(this));
    }
    ~DisabledThread() { End(); }
    DisabledThread(const DisabledThread&) = delete;
    DisabledThread& operator=(const DisabledThread&) = delete;
    void End()
    {
        while (m_count > 0)
            ::EnableWindow(m_windows[--m_count], TRUE);
    }

private:
    static BOOL CALLBACK Disable(HWND window, LPARAM object)
    {
        auto* self = reinterpret_cast<DisabledThread*>(object);
        if (self->m_count == static_cast<int>(std::size(self->m_windows)))
            return FALSE;
        if (::IsWindowVisible(window) && ::IsWindowEnabled(window)) {
            ::EnableWindow(window, FALSE);
            self->m_windows[self->m_count++] = window;
        }
        return TRUE;
    }

    HWND m_windows[64] = {};
    int m_count = 0;
};

struct Message {
    HWND owner;
    LPCSTR text;
    CString title;
    UINT type;
    DisabledThread others;
    bool* isForGood; // null: no check box
    bool isShown = false;
};

Message& MessageOf(HWND box) { return *reinterpret_cast<Message*>(::GetWindowLongPtrA(box, DWLP_USER)); }

// The clipboard -------------------------------------------------------------------------------------------------------

/// What a box says, as plain text. Throws CMemoryException*.
CString Transcript(HWND box)
{
    constexpr char kLine[] = "---------------------------\r\n";
    CString message = WindowText(::GetDlgItem(box, ZO_IDC_BOX_TEXT));
    message.Replace("\r\n", "\n");
    message.Replace("\n", "\r\n");
    CString buttons;
    for (HWND child = ::GetDlgItem(box, ZO_IDC_BOX_TEXT); (child = ::GetWindow(child, GW_HWNDNEXT)) != nullptr;) {
        if (::GetDlgCtrlID(child) != ZO_IDC_BOX_KEEP)
            buttons += WindowText(child) + "   "; // they follow the text
    }
    buttons.Replace("&", "");
    return kLine + WindowText(box) + "\r\n" + kLine + message + "\r\n" + kLine + buttons + "\r\n" + kLine;
}

void CopyToClipboard(HWND box)
{
    WithoutThrowing([&] { return PutOnClipboard(box, Transcript(box)); });
}

WNDPROC g_buttonProcedure = nullptr; // the system's: the same for every button

/// One of the buttons or the check box has the focus always, and so gets Ctrl+C.
LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KEYDOWN && (wParam == 'C' || wParam == VK_INSERT) && ::GetKeyState(VK_CONTROL) < 0)
        CopyToClipboard(::GetParent(button));
    return ::CallWindowProcA(g_buttonProcedure, button, message, wParam, lParam);
}

/// So that Ctrl+C is seen.
void WatchKeys(HWND button)
{
    g_buttonProcedure = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ButtonProcedure)));
}

// The box -------------------------------------------------------------------------------------------------------------

BOOL Initialize(HWND box, Message& message)
{
    message.isShown = true;
    ::SetWindowLongPtrA(box, DWLP_USER, reinterpret_cast<LONG_PTR>(&message));
    ::SetWindowTextA(box, message.title);
    const HWND text = ::GetDlgItem(box, ZO_IDC_BOX_TEXT);
    if ((message.type & MB_RIGHT) != 0)
        ::SetWindowLongA(text, GWL_STYLE, ::GetWindowLongA(text, GWL_STYLE) | SS_RIGHT);
    if ((message.type & MB_RTLREADING) != 0)
        ::SetWindowLongA(text, GWL_EXSTYLE, ::GetWindowLongA(text, GWL_EXSTYLE) | WS_EX_RTLREADING);
    if (const LPCSTR icon = BoxIcon(message.type))
        ::SendDlgItemMessageA(box, ZO_IDC_BOX_ICON, STM_SETICON, reinterpret_cast<WPARAM>(::LoadIconA(nullptr, icon)),
                              0);
    if (message.isForGood == nullptr)
        ::DestroyWindow(::GetDlgItem(box, ZO_IDC_BOX_KEEP));
    const HWND button = LayOutBox(box, message.text, message.title, message.type);
    for (HWND child = ::GetDlgItem(box, ZO_IDC_BOX_TEXT); (child = ::GetWindow(child, GW_HWNDNEXT)) != nullptr;)
        WatchKeys(child); // buttons follow the text
    WithoutThrowing([&] { CWnd::FromHandle(box)->CenterWindow(); });
    const UINT kind = message.type & MB_TYPEMASK;
    if (kind == MB_YESNO || kind == MB_ABORTRETRYIGNORE) // nothing but an answer closes it
        ::EnableMenuItem(::GetSystemMenu(box, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    if ((message.type & (MB_TOPMOST | MB_SYSTEMMODAL)) != 0)
        ::SetWindowPos(box, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if ((message.type & MB_SETFOREGROUND) != 0)
        ::SetForegroundWindow(box);
    ::SendMessageA(box, DM_SETDEFID, static_cast<WPARAM>(::GetDlgCtrlID(button)), 0);
    ::SetFocus(button);
    ::MessageBeep(message.type & MB_ICONMASK);
    return FALSE; // the focus is where it belongs
}

void SendHelp(HWND box)
{
    const HWND owner = MessageOf(box).owner;
    HELPINFO help = {};
    help.cbSize = sizeof help;
    help.iContextType = HELPINFO_WINDOW;
    help.hItemHandle = box;
    ::GetCursorPos(&help.MousePos);
    if (owner != nullptr)
        ::SendMessageA(owner, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
}

/// The windows that get the focus back can take it before the box goes.
void End(HWND box, int answer)
{
    Message& message = MessageOf(box);
    if (message.isForGood != nullptr)
        *message.isForGood = ::IsDlgButtonChecked(box, ZO_IDC_BOX_KEEP) == BST_CHECKED;
    message.others.End();
    ::EndDialog(box, answer);
}

INT_PTR CALLBACK BoxProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG)
        return Initialize(box, *reinterpret_cast<Message*>(lParam));
    if (message == WM_COPY) {
        CopyToClipboard(box);
        return TRUE;
    }
    if (message != WM_COMMAND)
        return FALSE;
    const int id = LOWORD(wParam);
    if (id == IDHELP)
        SendHelp(box);
    else if (id != ZO_IDC_BOX_KEEP && ::GetDlgItem(box, id) != nullptr)
        End(box, id);
    else if (id == IDCANCEL && (MessageOf(box).type & MB_TYPEMASK) == MB_OK)
        End(box, IDOK);
    return TRUE;
}

/// \param isShown receives whether there was a box, also one that was destroyed before its answer. Throws
/// CMemoryException*.
INT_PTR ShowBox(HWND owner, LPCSTR text, LPCSTR title, UINT type, bool* isForGood, bool& isShown)
{
    const void* dialog = ZoGblLockResource(MAKEINTRESOURCEA(ZO_IDD_MESSAGE_BOX), RT_DIALOG);
    if (dialog == nullptr || (type & MB_TYPEMASK) >= kBoxTypes ||
        (type & (MB_SERVICE_NOTIFICATION | MB_DEFAULT_DESKTOP_ONLY)) != 0)
        return 0;
    const bool isForThread = owner == nullptr && (type & (MB_TASKMODAL | MB_SYSTEMMODAL)) == MB_TASKMODAL;
    Message message = {
        owner, text != nullptr ? text : "", title != nullptr ? CString(title) : LoadText(ZO_IDS_BOX_ERROR),
        type,  DisabledThread(isForThread), isForGood};
    const INT_PTR answer = ::DialogBoxIndirectParamA(
        ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDD_MESSAGE_BOX), RT_DIALOG), static_cast<LPCDLGTEMPLATEA>(dialog),
        owner, &BoxProcedure, reinterpret_cast<LPARAM>(&message));
    isShown = message.isShown;
    return answer;
}

/// \param isForGood null: there is no check box; else gets whether it was checked
int Show(HWND owner, LPCSTR text, LPCSTR title, UINT type, bool* isForGood)
{
    INT_PTR answer = 0;
    bool isShown = false;
    WithoutThrowing([&] { answer = ShowBox(owner, text, title, type, isForGood, isShown); });
    if (!isShown)
        return ::MessageBoxA(owner, text, title, type);
    return answer > 0 ? static_cast<int>(answer) : 0;
}

} // namespace

int ZoMessageBox(HWND owner, LPCSTR text, LPCSTR title, UINT type) { return Show(owner, text, title, type, nullptr); }

int ZoAskOnce(LPCSTR name, HWND owner, LPCSTR text, LPCSTR title, UINT type)
{
    const int kept = FindKeptAnswer(name);
    if (kept != 0 && HasBoxButton(type, kept))
        return kept;
    bool isForGood = false;
    const int answer = Show(owner, text, title, type, &isForGood);
    if (isForGood && CanBeKept(answer))
        KeepAnswer(name, answer, text != nullptr ? text : ""); // if that fails, the question comes again
    return answer;
}
