#include <zogbl/message_box.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "common/clipboard.h"
#include "controls/drawing/item_painting.h"
#include "dialog_resource.h"
#include "kept_answers.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr int kButtons = 3;
constexpr int kButtonSets[][kButtons] = {
    {IDOK},        {IDOK, IDCANCEL},    {IDABORT, IDRETRY, IDIGNORE},       {IDYES, IDNO, IDCANCEL},
    {IDYES, IDNO}, {IDRETRY, IDCANCEL}, {IDCANCEL, IDTRYAGAIN, IDCONTINUE},
};
constexpr int kAllButtons[] = {IDOK, IDCANCEL, IDABORT, IDRETRY, IDIGNORE, IDYES, IDNO, IDTRYAGAIN, IDCONTINUE, IDHELP};

// Dialog units.
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
constexpr int kButtonPadding = 6; // on both sides of the text
constexpr int kTextWidth = 260;   // at most
constexpr int kKeepHeight = 10;   // of the check box

constexpr UINT kTextFormat = DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX | DT_EDITCONTROL;

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

const int (&ButtonsOf(const Message& message))[kButtons] { return kButtonSets[message.type & MB_TYPEMASK]; }

int DialogUnits(HWND box, int units, bool vertical)
{
    RECT area = {0, 0, units, units};
    ::MapDialogRect(box, &area);
    return vertical ? area.bottom : area.right;
}

LPCSTR IconOf(UINT type)
{
    switch (type & MB_ICONMASK) {
    case MB_ICONSTOP:
        return IDI_HAND;
    case MB_ICONQUESTION:
        return IDI_QUESTION;
    case MB_ICONEXCLAMATION:
        return IDI_EXCLAMATION;
    case MB_ICONINFORMATION:
        return IDI_ASTERISK;
    default:
        return nullptr;
    }
}

// The clipboard -------------------------------------------------------------------------------------------------------

/// Throws CMemoryException*.
CString WindowText(HWND window)
{
    CString text;
    const int length = ::GetWindowTextLengthA(window);
    text.ReleaseBuffer(::GetWindowTextA(window, text.GetBuffer(length), length + 1));
    return text;
}

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

// Layout --------------------------------------------------------------------------------------------------------------

/// So that Ctrl+C is seen.
void WatchKeys(HWND button)
{
    g_buttonProcedure = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ButtonProcedure)));
}

/// The buttons of a box in a row, all of one width; the others of the template go.
class ButtonRow {
public:
    explicit ButtonRow(HWND box) : m_box(box)
    {
        const Message& message = MessageOf(box);
        for (const int id : ButtonsOf(message))
            Add(id);
        if ((message.type & MB_HELP) != 0)
            Add(IDHELP);
        for (const int id : kAllButtons) {
            if (std::find(m_ids, m_ids + m_count, id) == m_ids + m_count)
                ::DestroyWindow(::GetDlgItem(box, id));
        }
    }
    /// \param dc has the box's font
    void Measure(HDC dc)
    {
        m_gap = DialogUnits(m_box, kGap, false);
        m_width = DialogUnits(m_box, kButtonWidth, false);
        for (int i = 0; i < m_count; ++i) {
            char text[64] = "";
            RECT area = {};
            ::GetDlgItemTextA(m_box, m_ids[i], text, sizeof text);
            ::DrawTextA(dc, text, -1, &area, DT_CALCRECT | DT_SINGLELINE);
            m_width = (std::max)(m_width, static_cast<int>(area.right) + 2 * DialogUnits(m_box, kButtonPadding, false));
        }
    }
    int GetWidth() const { return m_count * m_width + (m_count - 1) * m_gap; }
    /// \param left, top pixels
    void Place(int left, int top) const
    {
        HWND previous = ::GetDlgItem(m_box, ZO_IDC_BOX_TEXT);
        for (int i = 0; i < m_count; ++i) {
            const HWND button = ::GetDlgItem(m_box, m_ids[i]);
            ::SetWindowPos(button, previous, left + i * (m_width + m_gap), top, m_width,
                           DialogUnits(m_box, kButtonHeight, true), SWP_NOACTIVATE);
            WatchKeys(button);
            previous = button;
        }
        if (const HWND keep = ::GetDlgItem(m_box, ZO_IDC_BOX_KEEP)) // the last that Tab reaches
            ::SetWindowPos(keep, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    HWND GetDefault() const
    {
        const auto index = static_cast<int>((MessageOf(m_box).type & MB_DEFMASK) / MB_DEFBUTTON2);
        return ::GetDlgItem(m_box, m_ids[index < m_count ? index : 0]);
    }

private:
    void Add(int id)
    {
        if (id != 0)
            m_ids[m_count++] = id;
    }

    HWND m_box;
    int m_ids[kButtons + 1] = {};
    int m_count = 0;
    int m_gap = 0;
    int m_width = 0;
};

/// The size of the check box; nothing if there is none. \param dc has the box's font
CSize MeasureKeep(HWND box, HDC dc)
{
    char text[128] = "";
    CRect area;
    if (::GetDlgItemTextA(box, ZO_IDC_BOX_KEEP, text, sizeof text) == 0)
        return CSize(0, 0);
    ::DrawTextA(dc, text, -1, &area, DT_CALCRECT | DT_SINGLELINE);
    const int mark = ::GetSystemMetrics(SM_CXMENUCHECK) + DialogUnits(box, kButtonPadding, false);
    return CSize(area.Width() + mark, DialogUnits(box, kKeepHeight, true));
}

/// Gives the box the size of its text, and its parts their places.
void LayOut(HWND box, ButtonRow& buttons)
{
    const Message& message = MessageOf(box);
    const HWND text = ::GetDlgItem(box, ZO_IDC_BOX_TEXT);
    const int margin = DialogUnits(box, kMargin, false);
    const int marginAbove = DialogUnits(box, kMargin, true);
    const int buttonHeight = DialogUnits(box, kButtonHeight, true);
    const bool hasIcon = IconOf(message.type) != nullptr;
    const int iconWidth = hasIcon ? ::GetSystemMetrics(SM_CXICON) : 0;
    const int iconHeight = hasIcon ? ::GetSystemMetrics(SM_CYICON) : 0;
    CRect work;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    CRect frame;
    const auto style = static_cast<DWORD>(::GetWindowLongA(box, GWL_STYLE));
    ::AdjustWindowRectEx(&frame, style, FALSE, static_cast<DWORD>(::GetWindowLongA(box, GWL_EXSTYLE)));

    RECT area = {0, 0, DialogUnits(box, kTextWidth, false), 0};
    CSize title, keep;
    {
        const WindowFontDC dc(box);
        ::DrawTextA(dc.m_hDC, message.text, -1, &area, kTextFormat | DT_CALCRECT);
        title = dc.GetTextExtent(message.title, message.title.GetLength());
        buttons.Measure(dc.m_hDC);
        keep = MeasureKeep(box, dc.m_hDC);
    }
    const int textLeft = margin + (hasIcon ? iconWidth + margin : 0);
    const int mostWidth = work.Width() - frame.Width() - margin;
    const int caption =
        (std::min<int>)(title.cx + 2 * ::GetSystemMetrics(SM_CXSIZE), mostWidth); // with the closing box
    const int width = (std::max<int>)({textLeft + static_cast<int>(area.right), margin + buttons.GetWidth(), caption,
                                       textLeft + static_cast<int>(keep.cx)}) +
                      margin;
    const int below = 3 * marginAbove + buttonHeight + (keep.cy > 0 ? marginAbove + keep.cy : 0);
    const int mostText = work.Height() - frame.Height() - below;
    const int textHeight = (std::min<int>)(area.bottom, mostText); // the buttons can be reached in any case
    const int above = (std::max)(textHeight, iconHeight);

    ::SetDlgItemTextA(box, ZO_IDC_BOX_TEXT, message.text);
    ::MoveWindow(text, textLeft, marginAbove + (above - textHeight) / 2, width - margin - textLeft, textHeight, FALSE);
    ::MoveWindow(::GetDlgItem(box, ZO_IDC_BOX_ICON), margin, marginAbove, iconWidth, iconHeight, FALSE);
    if (keep.cy > 0)
        ::MoveWindow(::GetDlgItem(box, ZO_IDC_BOX_KEEP), textLeft, 2 * marginAbove + above, keep.cx, keep.cy, FALSE);
    buttons.Place((width - buttons.GetWidth()) / 2, above + below - marginAbove - buttonHeight);
    ::SetWindowPos(box, nullptr, 0, 0, width + frame.Width(), above + below + frame.Height(),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
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
    if (const LPCSTR icon = IconOf(message.type))
        ::SendDlgItemMessageA(box, ZO_IDC_BOX_ICON, STM_SETICON, reinterpret_cast<WPARAM>(::LoadIconA(nullptr, icon)),
                              0);
    const HWND keep = ::GetDlgItem(box, ZO_IDC_BOX_KEEP);
    if (message.isForGood == nullptr)
        ::DestroyWindow(keep);
    else
        WatchKeys(keep);
    ButtonRow buttons(box);
    LayOut(box, buttons);
    WithoutThrowing([&] { CWnd::FromHandle(box)->CenterWindow(); });
    const UINT kind = message.type & MB_TYPEMASK;
    if (kind == MB_YESNO || kind == MB_ABORTRETRYIGNORE) // nothing but an answer closes it
        ::EnableMenuItem(::GetSystemMenu(box, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    if ((message.type & (MB_TOPMOST | MB_SYSTEMMODAL)) != 0)
        ::SetWindowPos(box, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if ((message.type & MB_SETFOREGROUND) != 0)
        ::SetForegroundWindow(box);
    const HWND button = buttons.GetDefault();
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
    if (dialog == nullptr || (type & MB_TYPEMASK) >= std::size(kButtonSets) ||
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

bool HasButton(UINT type, int button)
{
    const UINT kind = type & MB_TYPEMASK;
    return kind < std::size(kButtonSets) &&
           std::find(std::begin(kButtonSets[kind]), std::end(kButtonSets[kind]), button) != std::end(kButtonSets[kind]);
}

} // namespace

int ZoMessageBox(HWND owner, LPCSTR text, LPCSTR title, UINT type) { return Show(owner, text, title, type, nullptr); }

int ZoAskOnce(LPCSTR name, HWND owner, LPCSTR text, LPCSTR title, UINT type)
{
    const int kept = FindKeptAnswer(name);
    if (kept != 0 && HasButton(type, kept))
        return kept;
    bool isForGood = false;
    const int answer = Show(owner, text, title, type, &isForGood);
    if (isForGood && CanBeKept(answer))
        KeepAnswer(name, answer, text != nullptr ? text : ""); // if that fails, the question comes again
    return answer;
}
