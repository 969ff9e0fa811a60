/// \file
/// What the tour does with windows that are open only for a while: menus, dialogs, sheets.
#pragma once

#include <common/picture.h>
#include <common/wait.h>

#include <afxwin.h>

#include <functional>
#include <utility>

/// A dialog that takes its own picture and closes.
template <class DIALOG> class PicturedDialog : public DIALOG {
public:
    static constexpr UINT kTakePicture = WM_APP + 1;

    template <class... ARGUMENTS> explicit PicturedDialog(const CString& picturePath, ARGUMENTS... arguments)
        : DIALOG(arguments...), m_picturePath(picturePath)
    {
    }
    bool IsSaved() const { return m_saved; }

protected:
    BOOL OnInitDialog() override
    {
        this->PostMessage(kTakePicture);
        return DIALOG::OnInitDialog();
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != kTakePicture)
            return DIALOG::WindowProc(message, wParam, lParam);
        this->UpdateWindow();
        Settle();
        m_saved = SavePicture(this->m_hWnd, m_picturePath);
        this->EndDialog(IDOK);
        return 0;
    }

private:
    CString m_picturePath;
    bool m_saved = false;
};

/// Does something, once, with a dialog of this thread that has a certain control, as soon as it is open.
class WhenOpen {
public:
    /// \param act closes the dialog. \return whether all went well
    WhenOpen(int control, std::function<bool(HWND dialog)> act)
        : m_outer(std::exchange(s_active, this)), m_control(control), m_act(std::move(act))
    {
        m_timer = ::SetTimer(nullptr, 0, 50, &WhenOpen::Look);
    }
    ~WhenOpen()
    {
        ::KillTimer(nullptr, m_timer);
        s_active = m_outer;
    }
    WhenOpen(const WhenOpen&) = delete;
    WhenOpen& operator=(const WhenOpen&) = delete;
    bool IsDone() const { return m_done; }

private:
    static BOOL CALLBACK FindDialog(HWND window, LPARAM found);
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD);

    static inline WhenOpen* s_active = nullptr;
    WhenOpen* m_outer; // whose dialog opens this one's
    int m_control;
    std::function<bool(HWND)> m_act;
    UINT_PTR m_timer;
    bool m_seen = false;
    bool m_done = false;
};

/// Takes a picture of each modal window that opens, of a sheet one of each page, and gives the window up.
class ModalPictures {
public:
    /// \param path pictures are numbered before its extension
    explicit ModalPictures(const CString& path)
        : m_path(path), m_timer(::SetTimer(nullptr, 0, 50, &ModalPictures::Look))
    {
        s_pictures = this;
    }
    ~ModalPictures()
    {
        ::KillTimer(nullptr, m_timer);
        s_pictures = nullptr;
    }
    ModalPictures(const ModalPictures&) = delete;
    ModalPictures& operator=(const ModalPictures&) = delete;
    int GetSaved() const { return m_saved; } ///< the number of pictures

private:
    static BOOL CALLBACK FindModal(HWND window, LPARAM found);
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD);
    void Picture(HWND window);

    static inline ModalPictures* s_pictures = nullptr;
    CString m_path;
    UINT_PTR m_timer;
    HWND m_met = nullptr;
    int m_number = 0;
    int m_saved = 0;
};

/// Opens a submenu of a window's menu as Alt and its letter do, and takes a picture of the window with it.
class MenuPicture {
public:
    MenuPicture(HWND window, int position, const CString& path);
    MenuPicture(const MenuPicture&) = delete;
    MenuPicture& operator=(const MenuPicture&) = delete;
    bool IsSaved() const { return m_saved; }

private:
    static void CALLBACK Take(HWND, UINT, UINT_PTR, DWORD);

    static inline MenuPicture* s_picture = nullptr;
    HWND m_window;
    CString m_path;
    UINT_PTR m_timer;
    bool m_saved = false;
};

/// Clicks a button of a dialog.
void Press(HWND dialog, int button);

/// Chooses a language in the dialog, and takes its picture. \return whether the language was offered and chosen
bool ChooseLanguage(HWND dialog, DWORD language, LPCSTR picturePath);
