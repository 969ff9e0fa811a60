/// \file
/// A window that shows a bitmap.
#pragma once

#include <zogbl/control.h>

class BitmapFile;
class BitmapPicture;

/// Notifications, with an NMHDR. What the program sets is not told.
constexpr UINT ZON_BITMAP_ZOOMED = ZON_FIRST - 160;   ///< the user has chosen another zoom
constexpr UINT ZON_BITMAP_SCROLLED = ZON_FIRST - 161; ///< the user has scrolled; of a drag, at its end

/// Shows a bitmap of a file, a resource or a handle: at its size, stretched, tiled; with a transparent colour; larger
/// than the window, and then scrolled and zoomed.
///
///     m_preview.Create(WS_VISIBLE | WS_TABSTOP | WS_BORDER | CZoBitmapWnd::kScroll, area, this, IDC_PREVIEW);
///     if (m_preview.LoadFile("C:\\Fax\\page.bmp") == 0)
///         m_preview.SetZoom(50);
///
/// With the style kScroll there are scroll bars if the picture has no room. Keys, wheel (with Ctrl: zoom) and dragging
/// move it; the keys are kKeys.
///
/// On displays of 256 colours the top-level window must hand on WM_QUERYNEWPALETTE and WM_PALETTECHANGED to it.
/// Screen readers are told its name (its window's text, or the label before it), the picture's size and the zoom.
class ZOGBL_API CZoBitmapWnd : public CZoControl {
    DECLARE_DYNAMIC(CZoBitmapWnd)
public:
    /// Styles, beside those of windows.
    enum Style : DWORD {
        kScroll = 0x01 ///< the user can scroll and zoom, if the placing is kTopLeft or kCentered
    };
    enum class Placing {
        kTopLeft,      ///< at its size; at the beginning
        kCentered,     ///< at its size; a picture that has no room is shown from its top left
        kStretched,    ///< over the whole window
        kProportional, ///< as large as it can be with its proportions; centred
        kTiled         ///< again and again, from the top left
    };
    enum Command { kLeft = 1, kRight, kUp, kDown, kPageUp, kPageDown, kBegin, kEnd, kZoomIn, kZoomOut, kZoomNone };
    static constexpr ZoKey kKeys[] = {{VK_LEFT, ZoKey::kNone, kLeft},
                                      {VK_RIGHT, ZoKey::kNone, kRight},
                                      {VK_UP, ZoKey::kNone, kUp},
                                      {VK_DOWN, ZoKey::kNone, kDown},
                                      {VK_PRIOR, ZoKey::kNone, kPageUp},
                                      {VK_NEXT, ZoKey::kNone, kPageDown},
                                      {VK_HOME, ZoKey::kNone, kBegin},
                                      {VK_END, ZoKey::kNone, kEnd},
                                      {VK_ADD, ZoKey::kNone, kZoomIn},
                                      {VK_SUBTRACT, ZoKey::kNone, kZoomOut},
                                      {VK_OEM_PLUS, ZoKey::kNone, kZoomIn},
                                      {VK_OEM_MINUS, ZoKey::kNone, kZoomOut},
                                      {VK_OEM_PLUS, ZoKey::kShift, kZoomIn},
                                      {VK_ADD, ZoKey::kControl, kZoomIn},
                                      {VK_SUBTRACT, ZoKey::kControl, kZoomOut},
                                      {VK_OEM_PLUS, ZoKey::kControl, kZoomIn},
                                      {VK_OEM_MINUS, ZoKey::kControl, kZoomOut},
                                      {'0', ZoKey::kControl, kZoomNone},
                                      {VK_NUMPAD0, ZoKey::kControl, kZoomNone}};

    CZoBitmapWnd();
    ~CZoBitmapWnd() override;

    // The picture. Each of these shows another one, from its beginning, at the present zoom. It is the control's own:
    // what it was made from may go. If it fails, the present picture stays.
    //
    // \return
    //   0                    done
    //   ZoErrBadData         no bitmap, or a damaged one
    //   ERROR_NOT_SUPPORTED  a bitmap of a kind that is not shown: JPEG, PNG, Huffman, RLE 24, several in one file; or
    //                        larger than 32,767 pixels across or down, or than 256 megabytes
    //   ZoErrOutOfMemory     no memory
    //   any other            the system's, or told at the function
    //
    // Pictures have 1 to 32 bits a pixel, from top or bottom, plain or as RLE 4 or 8. A fourth channel is not looked
    // at.

    DWORD LoadFile(LPCSTR path);
    /// \param bytes a whole file
    DWORD LoadMemory(const void* bytes, size_t size);
    /// A resource found through the resource chain. \return also ZoErrResourceNotFound
    DWORD LoadResource(LPCSTR name);
    DWORD LoadResource(UINT id) { return LoadResource(MAKEINTRESOURCE(id)); }
    /// Copies a bitmap, which must not be selected into a device context. \return also ERROR_INVALID_HANDLE
    DWORD SetBitmap(HBITMAP bitmap);
    void Clear(); ///< no picture
    BOOL HasPicture() const { return m_pPicture != nullptr; }
    CSize GetPictureSize() const; ///< in pixels; 0 by 0 if there is none

    // How it is shown

    void SetPlacing(Placing placing); ///< kTopLeft at the beginning
    Placing GetPlacing() const { return m_placing; }
    /// Pixels of this colour show the background.
    /// \param color CLR_NONE, as at the beginning: none; CLR_DEFAULT: that of the top left pixel
    void SetTransparentColor(COLORREF color);
    COLORREF GetTransparentColor() const { return m_crTransparent; }
    /// What is beside the picture. \param color CLR_DEFAULT, as at the beginning: that of dialogs in the user's scheme
    void SetBackColor(COLORREF color);
    COLORREF GetBackColor() const { return m_crBack; }

    // Zoom and scrolling, for the placings kTopLeft and kCentered, also without the style kScroll.

    static constexpr int kLeastZoom = 1, kMostZoom = 3200;
    /// The middle of what is seen stays there. \param percent 1 to 100, or a multiple of 100 up to 3200
    /// \return FALSE, changing nothing, for any other
    BOOL SetZoom(int percent);
    int GetZoom() const { return m_nZoom; }
    /// Which pixel of the screen, counted from the zoomed picture's top left, is at the window's top left. What lies
    /// beyond an end counts as that end.
    void SetScrollPosition(CPoint position);
    CPoint GetScrollPosition() const { return m_scroll; }

    BOOL DescribePart(int part, ZoPart& description) const override;

protected:
    void OnDraw(CDC* dc, const CRect& dirty) override;
    void OnLayout() override;
    void OnDragMove(CPoint point) override;
    void OnDragEnd(CPoint point) override;
    void OnDragUndo() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    DWORD Show(const BitmapFile& file, DWORD status);
    void Take(BitmapPicture* picture);
    bool IsZoomable() const;
    void TellZoom(bool wasZoomable) const;
    bool IsScrollable() const;
    CSize GetShownSize() const;
    CSize GetScrollRange() const;
    CRect GetPlace() const;
    COLORREF GetShownBackColor() const;
    void ShowScrollBars();
    bool ScrollTo(CPoint position);
    bool ZoomTo(int percent, CPoint fixed);
    bool StepZoom(bool isIn, CPoint fixed);
    void TellScrolled(bool isScrolled);
    bool Obey(int command);
    bool OnWheel(WPARAM wParam, LPARAM lParam, bool isDown);
    void OnScrollBar(int bar, WORD code);
    void DrawPicture(CDC* dc, HDC source, CRect seen) const;
    void RealizeColors(BOOL isBackground);

    BitmapPicture* m_pPicture = nullptr; // null: none
    Placing m_placing = Placing::kTopLeft;
    COLORREF m_crTransparent = CLR_NONE;
    COLORREF m_crBack = CLR_DEFAULT;
    int m_nZoom = 100;
    CPoint m_scroll;
    BOOL m_bLayingOut = FALSE;
    CPoint m_dragFrom;     // where the button went down
    CPoint m_scrollBefore; // the drag, or the tracking of a scroll bar
    BOOL m_bTracking = FALSE;
    int m_nWheel = 0; // what is left of a notch
};
