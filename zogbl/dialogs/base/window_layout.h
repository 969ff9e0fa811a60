/// \file
/// Windows that can be made larger, and keep their size.
#pragma once

#include <zogbl/dialog.h>

#include <vector>

/// Where the controls of a window stand, in relation to its edges. Sizes are kept in dialog units, so they are right in
/// another language and at another resolution, too.
class WindowLayout {
public:
    /// Takes the window's size now for the least one. Throws CMemoryException*.
    /// \param window has its controls, at the places of its template
    /// \param name the size is kept under it; null: it is not kept. A string that lives as long as this
    WindowLayout(CWnd& window, const ZoFollowing* controls, int count, LPCSTR name);

    /// Gives the window the size that it had last time, as far as the screen allows. It stays where it is.
    void Restore();
    /// Keeps the window's size. \return FALSE: it could not be kept
    BOOL Keep() const;

    void OnSize();                                ///< after the window's size has changed
    void OnGetMinMaxInfo(MINMAXINFO& info) const; ///< it gets no smaller than it was

private:
    struct Control {
        HWND window;
        BYTE how;
        CRect area; // at the least size; of a combo box, with its list
        int list;   // height of a combo box's list; 0: another control
    };

    CSize DialogUnits() const;

    CWnd& m_window;
    LPCSTR m_name;
    CSize m_least;       // of the whole window
    CSize m_leastClient; // of its inside
    std::vector<Control> m_controls;
};
