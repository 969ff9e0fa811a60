/// \file
/// A tool bar that the user can set up.
#pragma once

#include <zogbl/control.h>

#include <afxext.h>

#include <memory>

class LanguageFollower;
class ToolBarContent;
class ToolBarPictures;
class ToolBarStrip;

/// A button of a tool bar, as the program ships it.
struct ZoToolButton {
    UINT command;        ///< 1 to 0xFFFF, each once; 0: a separator
    int picture = 0;     ///< of the bar's pictures, from 0
    BOOL isShown = TRUE; ///< FALSE: the user finds it in the set-up
};

/// A bar of buttons with pictures at the top or the bottom of a frame. The string of a command says what its button
/// does: "Opens a document.\nOpen". The second part is the tip, the name for screen readers and in menus; the first one
/// is the frame's message while the button is under the pointer or has the keyboard.
///
///     const ZoToolButton kButtons[] = {{ID_FILE_NEW, 0}, {ID_FILE_OPEN, 1}, {0}, {ID_FILE_PRINT, 2},
///                                      {ID_FILE_CLOSE, 3, FALSE}};
///     m_toolBar.Create(this);
///     m_toolBar.SetButtons(kButtons, 5, IDB_TOOLS, 16, "MainTools");
///     RecalcLayout();
///
/// A button is enabled and checked as the update handler of its command says, when the program is idle. Pressed, it
/// sends the command to the bar's owner, by WM_COMMAND. Buttons that have no room are in a menu at the bar's end.
///
/// The user chooses buttons in CZoToolBarSetup. In the bar's context menu the bar can be unlocked: then it has a
/// handle, by which it can be dragged to the other edge. All of this is kept for this user under the name given to
/// SetButtons, by the commands' numbers: buttons that a later version of the program adds appear once, at their place
/// in the table; a button that was removed stays removed; numbers that the program does not know keep their places for
/// one that does. Whether the bar is shown is the program's: see ZoWorkspace.
///
/// The frame's PreTranslateMessage lets F6 lead to the bar. Its texts follow CZoDialog::ReloadOpenDialogs. Nothing is
/// thrown.
class ZOGBL_API CZoToolBar : public CControlBar {
    DECLARE_DYNAMIC(CZoToolBar)
public:
    static constexpr int MOST_BUTTONS = 128; ///< of a program, separators included

    enum Command { kPrevious = 1, kNext, kFirst, kLast, kPress, kOpen, kLeave };
    static constexpr ZoKey kKeys[] = {
        {VK_LEFT, ZoKey::kNone, kPrevious}, {VK_RIGHT, ZoKey::kNone, kNext},  {VK_HOME, ZoKey::kNone, kFirst},
        {VK_END, ZoKey::kNone, kLast},      {VK_SPACE, ZoKey::kNone, kPress}, {VK_RETURN, ZoKey::kNone, kPress},
        {VK_DOWN, ZoKey::kNone, kOpen}, // the menu of the buttons that have no room
        {VK_ESCAPE, ZoKey::kNone, kLeave},  {VK_F6, ZoKey::kNone, kLeave},    {VK_TAB, ZoKey::kNone, kLeave},
    };

    CZoToolBar();
    ~CZoToolBar() override;

    /// \param style of the window, and CBRS_ALIGN_TOP or CBRS_ALIGN_BOTTOM \return FALSE: it has a window, gets none,
    /// or no memory
    BOOL Create(CWnd* parent, DWORD style = WS_CHILD | WS_VISIBLE | CBRS_TOP, UINT id = AFX_IDW_TOOLBAR);
    using CWnd::Create;

    /// Shows buttons as the user wants them: at first, and if what is kept is damaged, as shipped, locked, at the edge
    /// of Create. The frame lays itself out anew.
    /// \param buttons in the order as shipped; must live as long as the bar \param count 1 to MOST_BUTTONS
    /// \param picturesId a bitmap found through the resource chain: pictures side by side on the colour of its upper
    /// left pixel. White should be the inside of shapes: it is left out where pictures are drawn in one colour. On a
    /// screen of more than 96 dots an inch they are enlarged
    /// \param pictureWidth in pixels
    /// \param name what is kept is a value of this name of the key "ToolBars" below the user's. It must live as long as
    /// the bar. Null: nothing is kept
    /// \return FALSE, changing nothing: no window, a value out of bounds, a command twice, no such bitmap, a width that
    /// is no part of the bitmap's, a picture that is not there, or no memory
    BOOL SetButtons(const ZoToolButton* buttons, int count, UINT picturesId, int pictureWidth, LPCSTR name);

    /// Opens the set-up. \return as CZoToolBarSetup::DoModal
    INT_PTR SetUp();

    // These are kept with the next Keep, which all that the user does calls by itself.

    BOOL IsLocked() const;
    void SetLocked(BOOL isLocked);
    BOOL IsAtBottom() const;
    void SetAtBottom(BOOL isAtBottom);
    /// \return 0; else the registry's status, or ERROR_FILE_NOT_FOUND without a product, ERROR_NOT_ENOUGH_MEMORY
    DWORD Keep() const;

    /// Gives the bar the keyboard, and shows so. It goes back to where it was by Esc, F6 or Tab, and when a button is
    /// pressed. \return FALSE: the bar is not to be seen, is disabled or has no button
    BOOL TakeKeyboard();
    BOOL HasKeyboard() const;
    void LeaveKeyboard(); ///< as by Esc; no effect if it has not the keyboard

    /// The buttons and menu that can be seen, numbered from 1: see its parts. Null before Create.
    CZoControl* GetControl() const;

    CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz) override;
    void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    friend class CZoToolBarSetup;
    friend class ToolBarStrip;

    static void FollowLanguage(void* what);

    CFrameWnd* GetFrame() const;
    void Take(const ToolBarContent& content);
    void Apply();
    void KeepOrTell();
    int AskMenu(CPoint point) const;
    void OnMenu(int command);

    std::unique_ptr<ToolBarContent> m_content; // these are null before Create
    std::unique_ptr<ToolBarPictures> m_pictures;
    std::unique_ptr<ToolBarStrip> m_strip;
    std::unique_ptr<LanguageFollower> m_follower;
    LPCSTR m_lpszName = nullptr;
};
