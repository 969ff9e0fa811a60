/// \file
/// The base of the suite's own controls.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

class ControlAccess;
class ControlDrag;
class ControlPopup;

/// The window class for dialog templates: `CONTROL "", IDC_DATE, "ZoControl", WS_TABSTOP, 7, 7, 120, 90`. Which control
/// it is says the object that is put over it by SubclassDlgItem or DDX_Control. Controls can also be put over a static
/// control.
#define ZO_CONTROL_CLASS "ZoControl"

/// Numbers of the controls' notifications by WM_NOTIFY: each control has twenty of them, which its header lists.
constexpr UINT ZON_FIRST = 0U - 3000U;

/// What a screen reader is told of a control or of one of its parts: what a sighted person sees.
struct ZoPart {
    CString name;        ///< "14 March 2026"
    CString value;       ///< "40 %"; empty: it has none
    CString description; ///< "sorted ascending"
    CString action;      ///< what DoPartAction does, as a verb; empty: nothing
    LONG role = 0;       ///< ROLE_SYSTEM_... of oleacc.h
    LONG state = 0;      ///< STATE_SYSTEM_... of oleacc.h
    CRect area;          ///< in client coordinates
};

/// A key that a control obeys. Each control has a table of them in its header.
struct ZoKey {
    enum Modifier : BYTE { kNone = 0, kShift = 1, kControl = 2 };

    WORD key;       ///< VK_...
    BYTE modifiers; ///< all that are held down
    int command;    ///< the control's own number, not 0
};

/// A control that draws itself. Its base does what all of them do:
///
///   - It paints without flicker, and only what is dirty; it answers WM_PRINTCLIENT.
///   - It takes its font by WM_SETFONT, or from the dialog over whose control it is put. Without one it has the shared
///     thin font of CZoGlobalGDIData.
///   - It follows WM_ENABLE, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, and the message
///     CZoLanguageSupport::GetUpdateMessage(), which CZoDialog sends to its controls; other windows must do so
///     themselves.
///   - It shows the focus only after the keyboard was used, as the system's controls do.
///   - A drag ends without effect by Esc, if the mouse is lost, if the control is disabled, hidden or destroyed.
///   - It tells screen readers of itself and of its parts, and of changes. Parts are numbered from 1.
///
/// Make it by Create, or put it over a control of a dialog template. The object must live as long as its window. A
/// handler of its notifications may destroy the control.
class ZOGBL_API CZoControl : public CWnd {
    DECLARE_DYNAMIC(CZoControl)
public:
    CZoControl();
    ~CZoControl() override;
    CZoControl(const CZoControl&) = delete;
    CZoControl& operator=(const CZoControl&) = delete;

    /// Makes the class for dialog templates. Create does it, and CZoDialog, CZoPropertyPage before they open; other
    /// dialogs must do so themselves. \return FALSE if the system refuses it
    static BOOL RegisterControlClass();

    /// \param style of the window and of the control; WS_CHILD is added
    virtual BOOL Create(DWORD style, const RECT& area, CWnd* parent, UINT id);
    using CWnd::Create;

    // Parts, as screen readers see them

    virtual int GetPartCount() const; ///< 0
    /// \param part 0: the control itself. The base gives it the name that stands in the label before it or, if there
    /// is none or its text is empty, its window's text; its area and state; and the role of a client area.
    /// \return FALSE for a number that is no part. May throw CMemoryException*
    virtual BOOL DescribePart(int part, ZoPart& description) const;
    virtual int FindPart(CPoint point) const; ///< in client coordinates \return 0 if none is there
    virtual int GetFocusedPart() const;       ///< \return 0: the control itself
    virtual BOOL DoPartAction(int part);      ///< what a click on it would do \return FALSE: nothing

    /// The keyboard belongs to another window: the control never takes the focus, and shows it while that window has
    /// it. Used in popups. \param owner null: the control itself
    void SetKeyboardOwner(HWND owner);
    HWND GetKeyboardOwner() const { return m_hKeyboardOwner; }

protected:
    // What a control does

    /// Draws all of \p dirty. The context has the control's font, and its background is transparent. In a drawing that
    /// throws an exception of the framework, the rest is missing until the next one.
    virtual void OnDraw(CDC* dc, const CRect& dirty) = 0;
    // An exception of the framework ends one of the next three alone: what it has not done stays as it was.

    virtual void OnLayout();      ///< The size, the font, the scheme, a style or the language has changed.
    virtual void OnReloadTexts(); ///< The language has changed; OnLayout follows.
    virtual void OnDragUndo();    ///< All must be as before the drag.
    virtual void OnDragMove(CPoint point);
    virtual void OnDragEnd(CPoint point); ///< the button was released

    // What it can use

    /// Sends WM_NOTIFY to the window that is the parent now. \param header filled in; null: only an NMHDR is sent
    /// \param answer null, or gets the parent's answer; 0 if there is no parent
    /// \return FALSE if the control's window is gone: then the object may be, too. Return at once
    BOOL Notify(UINT code, NMHDR* header = nullptr, LRESULT* answer = nullptr);
    /// The same by WM_COMMAND. \param code BN_... and the like
    BOOL NotifyCommand(WORD code);
    /// Tells screen readers. Call it after the change, and only if something has changed. \param event EVENT_OBJECT_...
    void RaiseEvent(DWORD event, int part = 0) const;
    /// OnLayout, and all is drawn again.
    void Relayout();

    /// Begins a drag: the mouse is captured. One that lasts is undone before. \return FALSE: there will be none, or the
    /// control's window is gone, as in Notify
    BOOL BeginDrag();
    BOOL IsDragging() const { return m_pDrag != nullptr; }
    void UndoDrag(); ///< also if there is none

    /// The command of a key in a control's table, with the modifiers that are held down now. In a control that runs
    /// from right to left, Left and Right change places. \return 0 if it is not in the table
    template <size_t COUNT> int CommandOf(const ZoKey (&keys)[COUNT], UINT key) const
    {
        return CommandOf(keys, COUNT, key);
    }
    CRect GetClientArea() const;
    HFONT GetFontHandle() const;
    BOOL IsMirrored() const; ///< whether it runs from right to left
    BOOL HasFocus() const;   ///< the keyboard's owner
    BOOL IsFocusShown() const;
    void TakeFocus(); ///< as after a click; not if the keyboard belongs to another window

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    /// Lays out a control that is put over a window. One that is made is laid out when it gets its size.
    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override;

    /// Whether a control outlives what happens meanwhile: its window, and so its object.
    class ZOGBL_API Life {
    public:
        explicit Life(CZoControl* control);
        ~Life();
        Life(const Life&) = delete;
        Life& operator=(const Life&) = delete;
        BOOL IsOver() const { return m_pControl == nullptr; }

    private:
        friend class CZoControl;
        CZoControl* m_pControl; // null: over
        Life* m_pOuter;
    };

private:
    friend class ControlAccess;
    friend class ControlDrag;
    friend class ControlPopup;

    int CommandOf(const ZoKey* keys, size_t count, UINT key) const;
    BOOL Call(void (CZoControl::*overridden)());
    void OnPaint();
    void Draw(CDC* dc, const CRect& dirty);
    LRESULT OnGetObject(WPARAM wParam, LPARAM lParam);
    void OnFocusChanged();
    BOOL OnMouse(UINT message, CPoint point);
    void End();

    HFONT m_hFont = nullptr; // null: the shared one
    BOOL m_bBeingCreated = FALSE;
    HWND m_hKeyboardOwner = nullptr;
    ControlAccess* m_pAccess = nullptr; // null until a screen reader asks
    ControlDrag* m_pDrag = nullptr;     // null: no drag
    Life* m_pLife = nullptr;            // the innermost
};
