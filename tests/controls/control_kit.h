/// \file
/// What the tests of controls share: a parent that writes down what it is told, screen readers' view, schemes, faults.
#pragma once

#include "support/test.h"

#include <zogbl/control.h>

#include <cwchar>
#include <random>

#include <oleacc.h>

/// A window on the screen whose controls' notifications it writes down. It has room for controls of 400 by 300 pixels.
class ControlParent : public CWnd {
public:
    explicit ControlParent(DWORD styleEx = 0)
    {
        EXPECT_TRUE(CreateEx(styleEx, AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_3DFACE)), "",
                             WS_POPUP | WS_VISIBLE, 50, 50, 400, 300, nullptr, nullptr));
        SetForegroundWindow();
    }
    ~ControlParent() override { DestroyWindow(); }

    /// What a notification is called in m_told, if it is to be told; may answer it, or destroy the control.
    std::function<std::string(NMHDR& header, LRESULT& answer)> m_describe;
    std::function<void(const std::string& what)> m_onTold; ///< gets each name; may destroy the control
    /// "name name ..." in the order in which they came; a WM_COMMAND is "command:CODE". Reading it empties it.
    std::string Told() { return std::exchange(m_told, ""); }

protected:
    BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT* result) override
    {
        if (m_describe)
            Tell(m_describe(*reinterpret_cast<NMHDR*>(lParam), *result));
        return TRUE;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM) override
    {
        Tell("command:" + std::to_string(HIWORD(wParam)));
        return TRUE;
    }

private:
    void Tell(const std::string& what)
    {
        m_told += (m_told.empty() || what.empty() ? "" : " ") + what;
        if (m_onTold)
            m_onTold(what);
    }

    std::string m_told;
};

/// Whether long checks run in full: where the code is the same, the other environments need not repeat them.
inline bool IsThorough() { return Family() == WindowsFamily::kWindows10 && !IsDoubleByte() && !IsGuardHeapInstalled(); }

/// Runs the messages that wait.
inline void PumpWaiting()
{
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

/// A key through the thread's queue, so that drags and popups hear of it, with modifiers that controls ask for.
inline void PressKey(CWnd& control, UINT key, int modifiers = 0)
{
    BYTE before[256], during[256];
    GetKeyboardState(before);
    std::copy(std::begin(before), std::end(before), during);
    during[VK_SHIFT] = (modifiers & ZoKey::kShift) != 0 ? 0x80 : 0;
    during[VK_CONTROL] = (modifiers & ZoKey::kControl) != 0 ? 0x80 : 0;
    SetKeyboardState(during);
    const HWND window = control.m_hWnd; // the key may end the control
    control.PostMessage(WM_KEYDOWN, key, 1);
    MSG message;
    while (PeekMessageA(&message, window, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE))
        DispatchMessageA(&message); // not translated: characters are sent by the tests that want them
    SetKeyboardState(before);
}
/// A mouse message through the queue. What the real mouse has to say behind it is dropped.
/// \param buttons MK_... that are down
inline void SendMouse(CWnd& control, UINT message, CPoint point, WPARAM buttons = 0)
{
    control.PostMessage(message, buttons, MAKELPARAM(point.x, point.y));
    MSG taken;
    for (bool isPosted = true; PeekMessageA(&taken, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE);
         isPosted = false) {
        if (isPosted)
            DispatchMessageA(&taken);
    }
}
inline void Click(CWnd& control, CPoint point)
{
    const HWND window = control.m_hWnd;
    SendMouse(control, WM_LBUTTONDOWN, point, MK_LBUTTON);
    if (::IsWindow(window))
        SendMouse(control, WM_LBUTTONUP, point);
}

/// A control's picture, as WM_PRINTCLIENT gives it.
inline std::unique_ptr<Canvas> PictureOf(CWnd& control)
{
    CRect area;
    control.GetClientRect(&area);
    auto canvas = std::make_unique<Canvas>(area.Width(), area.Height(), RGB(1, 2, 3));
    control.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(static_cast<HDC>(*canvas)), PRF_CLIENT);
    return canvas;
}
/// What a control shows on the screen, after its painting.
inline std::unique_ptr<Canvas> ScreenOf(CWnd& control)
{
    control.UpdateWindow();
    CRect area;
    control.GetClientRect(&area);
    auto canvas = std::make_unique<Canvas>(area.Width(), area.Height(), RGB(1, 2, 3));
    const HDC dc = ::GetDC(control.m_hWnd);
    BitBlt(*canvas, 0, 0, area.Width(), area.Height(), dc, 0, 0, SRCCOPY);
    ::ReleaseDC(control.m_hWnd, dc);
    return canvas;
}
inline bool AreEqual(const Canvas& one, const Canvas& other)
{
    const CSize size = one.Size();
    if (size != other.Size())
        return false;
    for (int x = 0; x < size.cx; ++x) {
        for (int y = 0; y < size.cy; ++y) {
            if (one.At(x, y) != other.At(x, y))
                return false;
        }
    }
    return true;
}

/// A control as a screen reader has it.
class Reader {
public:
    /// Asks for the object of the window's inside, as a screen reader does.
    explicit Reader(HWND window)
    {
        EXPECT_EQ(S_OK, ::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                                     reinterpret_cast<void**>(&m_object)));
    }
    ~Reader()
    {
        if (m_object != nullptr)
            m_object->Release();
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    IAccessible* operator->() const { return m_object; }
    static VARIANT Part(LONG number)
    {
        VARIANT part = {};
        part.vt = VT_I4;
        part.lVal = number;
        return part;
    }
    std::string Name(LONG part = 0) const { return Text(&IAccessible::get_accName, part); }
    std::string Value(LONG part = 0) const { return Text(&IAccessible::get_accValue, part); }
    std::string Description(LONG part = 0) const { return Text(&IAccessible::get_accDescription, part); }
    std::string Action(LONG part = 0) const { return Text(&IAccessible::get_accDefaultAction, part); }
    LONG Role(LONG part = 0) const { return Number(&IAccessible::get_accRole, part); }
    LONG State(LONG part = 0) const { return Number(&IAccessible::get_accState, part); }
    /// "name|value|description|action|role|state"
    std::string Says(LONG part = 0) const
    {
        return Name(part) + "|" + Value(part) + "|" + Description(part) + "|" + Action(part) + "|" +
               std::to_string(Role(part)) + "|" + std::to_string(State(part));
    }
    LONG Count() const
    {
        LONG count = -1;
        EXPECT_EQ(S_OK, m_object->get_accChildCount(&count));
        return count;
    }
    /// On the screen; empty if there is no such part.
    CRect Area(LONG part = 0) const
    {
        LONG left = 0, top = 0, width = 0, height = 0;
        m_object->accLocation(&left, &top, &width, &height, Part(part));
        return CRect(CPoint(left, top), CSize(width, height));
    }
    /// The part that has the focus, or lies at a point of the screen; -1: none.
    LONG Focus() const
    {
        VARIANT part = {};
        return m_object->get_accFocus(&part) == S_OK ? part.lVal : -1;
    }
    LONG At(CPoint point) const
    {
        VARIANT part = {};
        return m_object->accHitTest(point.x, point.y, &part) == S_OK ? part.lVal : -1;
    }

private:
    std::string Text(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, BSTR*), LONG part) const
    {
        BSTR text = nullptr;
        char converted[256] = "";
        if ((m_object->*ask)(Part(part), &text) == S_OK)
            WideCharToMultiByte(CP_ACP, 0, text, -1, converted, sizeof converted, nullptr, nullptr);
        EXPECT_EQ(text != nullptr ? std::wcslen(text) : 0, ::SysStringLen(text));
        ::SysFreeString(text);
        return converted;
    }
    LONG Number(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, VARIANT*), LONG part) const
    {
        VARIANT number = {};
        return (m_object->*ask)(Part(part), &number) == S_OK && number.vt == VT_I4 ? number.lVal : -1;
    }

    IAccessible* m_object = nullptr;
};

/// What the controls of this process tell screen readers while it lives: "FOCUS:3 VALUECHANGE:0 ...".
class Events {
public:
    explicit Events(HWND window)
        : m_hook(::SetWinEventHook(EVENT_OBJECT_FOCUS, EVENT_OBJECT_VALUECHANGE, ::GetModuleHandleA(nullptr), &Hear,
                                   ::GetCurrentProcessId(), 0, WINEVENT_INCONTEXT))
    {
        s_window = window;
        s_heard.clear();
    }
    ~Events() { ::UnhookWinEvent(m_hook); }
    Events(const Events&) = delete;
    Events& operator=(const Events&) = delete;

    /// Reading them empties them.
    static std::vector<std::pair<DWORD, LONG>> Heard() { return std::exchange(s_heard, {}); }
    static int Count(DWORD event)
    {
        const auto heard = Heard();
        return static_cast<int>(std::count_if(heard.begin(), heard.end(), [=](auto& e) { return e.first == event; }));
    }

private:
    static void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG part, DWORD, DWORD)
    {
        if (window == s_window && object == OBJID_CLIENT)
            s_heard.emplace_back(event, part);
    }

    static inline HWND s_window = nullptr;
    static inline std::vector<std::pair<DWORD, LONG>> s_heard;
    HWINEVENTHOOK m_hook;
};

/// Other colours of the system, until it ends. A pair is the number of a colour and the colour.
class Scheme {
public:
    explicit Scheme(std::initializer_list<std::pair<int, COLORREF>> colors)
    {
        for (const auto& [number, color] : colors) {
            m_numbers.push_back(number);
            m_before.push_back(::GetSysColor(number));
            ::SetSysColors(1, &number, &color);
        }
        PumpWaiting();
    }
    ~Scheme()
    {
        ::SetSysColors(static_cast<int>(m_numbers.size()), m_numbers.data(), m_before.data());
        PumpWaiting();
    }
    Scheme(const Scheme&) = delete;
    Scheme& operator=(const Scheme&) = delete;

private:
    std::vector<int> m_numbers;
    std::vector<COLORREF> m_before;
};

/// Gives a control 1,000 sizes up to that one and paints each; \p look sees it. Nothing is left behind.
inline void ResizeAtRandom(
    CWnd& control, CSize most, const std::function<void()>& look = [] {})
{
    std::mt19937 random(3);
    std::optional<ProcessCounts> before; // behind the first ones, for the system keeps contexts
    for (int i = 0; i < 1000; ++i) {
        if (i == 100)
            before = ProcessCounts::Take();
        control.MoveWindow(0, 0, static_cast<int>(random() % 1000) * most.cx / 1000,
                           static_cast<int>(random() % 1000) * most.cy / 1000);
        control.UpdateWindow();
        look();
        ReportProgress();
    }
    EXPECT_EQ(*before, ProcessCounts::Take());
}

/// A control is deleted in the notification that each of these acts makes it send.
template <class CONTROL> void ExpectEndByNotification(ControlParent& parent, UINT code,
                                                      const std::function<void(CONTROL&)>& make,
                                                      std::initializer_list<std::function<void(CONTROL&)>> acts)
{
    for (const auto& act : acts) {
        auto control = std::make_unique<CONTROL>();
        make(*control);
        parent.m_describe = [&](NMHDR& header, LRESULT&) {
            if (header.code == code)
                control.reset();
            return "";
        };
        act(*control);
        EXPECT_EQ(nullptr, control);
    }
}

/// A font without smooth edges: its text is of one colour alone.
class PlainFont : public CFont {
public:
    PlainFont()
    {
        EXPECT_TRUE(CreateFont(-11, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0,
                               NONANTIALIASED_QUALITY, 0, "Arial"));
    }
};

/// Calls of the library that draw and make windows.
class DrawingFaults : public FaultSource {
public:
    DrawingFaults() : FaultSource("drawing") {}

private:
    ZO_FAULTY_CALL(CreateCompatibleBitmap) m_bitmap{*this, kZogbl, nullptr};
    ZO_FAULTY_CALL(CreateCompatibleDC) m_context{*this, kZogbl, nullptr};
    ZO_FAULTY_CALL(CreateBitmap) m_pattern{*this, kZogbl, nullptr};
    ZO_FAULTY_CALL(CreatePatternBrush) m_brush{*this, kZogbl, nullptr};
    ZO_FAULTY_CALL(CreatePen) m_pen{*this, kZogbl, nullptr};
    ZO_FAULTY_CALL(SetWindowsHookExA) m_hook{*this, kZogbl, nullptr};
    ZO_FAULTY_CALL(SaveDC) m_save{*this, kZogbl, 0};
};
