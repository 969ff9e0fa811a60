/// \file
/// What the boxes share whose items have a flag and a name.
#pragma once

#include <zogbl/export.h>

#include <afxwin.h>

/// The flags of the language library, drawn without their magenta background.
class ZOGBL_API CZoFlagBitmap {
public:
    CZoFlagBitmap() = default;
    ~CZoFlagBitmap();
    CZoFlagBitmap(const CZoFlagBitmap&) = delete;
    CZoFlagBitmap& operator=(const CZoFlagBitmap&) = delete;

    /// Loads bitmap 24530, 8 by 27 cells, unless that has been done. FALSE, and nothing to draw, without a language
    /// library or memory; it may be tried again.
    BOOL Load();
    SIZE GetCellSize() const { return m_cell; } ///< in pixels; as wide and high as a small icon until it is loaded
    /// Draws the flag of a cell, 0 to 215; for a higher number, that of cell 0.
    void Draw(HDC dc, int left, int top, UINT flagIndex) const;

private:
    HBITMAP m_hPictures = nullptr; // black where a flag is transparent
    HBITMAP m_hMask = nullptr;     // white there, black elsewhere
    SIZE m_cell = {16, 16};
};

/// What a box shows of an item.
struct ZoFlagItem {
    LPCSTR name;                ///< belongs to the item
    UINT flagIndex;             ///< cell of the flag bitmap
    LPCWSTR wideName = nullptr; ///< drawn in place of the name, on systems that can; null for none
};

constexpr int ZO_WIDE_NAME_SIZE = 192; ///< characters that such a wide name may have, terminator included

/// How such a box draws its items and collects what is typed.
class ZOGBL_API CZoFlagBox {
public:
    BOOL LoadFlags() { return m_flags.Load(); }
    int GetItemHeight() const; ///< in pixels: the flag's or the desired height, whichever is more, and 4
    void SetDesiredHeight(int height) { m_nDesiredHeight = height; } ///< in pixels, of the text
    int GetTextOffset() const; ///< in pixels from the left edge of an item: the flag's width and 8

    /// Draws an item in the system's colours of this moment. In a disabled box a selected item has the disabled text's
    /// colour as its background, and the window's as its text.
    /// \param item null for an empty place, such as the field of a combo box without selection
    /// \param rightText shown at the right edge; null for none
    void DrawItem(const DRAWITEMSTRUCT& place, const ZoFlagItem* item, LPCSTR rightText) const;
    /// Order by name as the user's language has it: -1, 0 or 1.
    static int CompareNames(LPCSTR first, LPCSTR second);
    /// Whether \p name begins with \p text, without regard to case. Every name begins with an empty text.
    static BOOL HasPrefix(LPCSTR name, LPCSTR text);

    /// Adds a printable character (32 to 255) to what was typed; a text of more than 64 characters is begun anew.
    /// Backspace empties it. \return whether there is something to look for.
    BOOL Type(UINT character);
    void ForgetTyped() { m_szTyped[0] = '\0'; }
    LPCSTR GetTyped() const { return m_szTyped; }

private:
    static constexpr int kLongestTyped = 64;

    CZoFlagBitmap m_flags;
    int m_nDesiredHeight = 0;
    char m_szTyped[kLongestTyped + 2] = "";
};

/// A sorted box of items with flags, made from CComboBox or CListBox. Create it without text; CB_ADDSTRING or LB_ADDSTRING
/// takes an item's address, which becomes the item's data. Made by Create, it is owner-drawn and sorted and keeps the
/// names as its texts too, for that is what screen readers speak; in a dialog, give it the styles OWNERDRAWFIXED, SORT and
/// HASSTRINGS. What was typed is forgotten when the focus goes, and with a click or a key that moves the selection. When
/// the box is sent the message CZoLanguageSupport::GetUpdateMessage(), it takes the names of the new language; CZoDialog
/// passes that on to its controls, other windows have to.
///
/// No member has a body here, and none is left to the compiler: only what the library instantiates is exported, and
/// that leaves out bodies in the class.
template <class BOX> class ZOGBL_API CZoFlagControl : public BOX {
public:
    CZoFlagControl();
    ~CZoFlagControl() override;

    void SetDesiredHeight(int height); ///< of the text, in pixels; an item has 4 more
    int GetPictureWidth() const;       ///< where the text begins, in pixels
    /// Selects the first item whose name begins with \p text, without regard to case; the first one for an empty text.
    /// \return its position, or the number of items when there is none; the selection then stays.
    int SelectName(const char* text);

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    // NOLINTBEGIN(clang-diagnostic-inconsistent-missing-override): of the two boxes, one has them to override
    virtual void DrawItem(DRAWITEMSTRUCT* item);
    virtual void MeasureItem(MEASUREITEMSTRUCT* item);
    virtual int CompareItem(COMPAREITEMSTRUCT* items); ///< asked for in boxes without texts
    // NOLINTEND(clang-diagnostic-inconsistent-missing-override)

protected:
    virtual ZoFlagItem Describe(const void* data) const = 0;
    /// Text at the right edge of an item; empty for none.
    virtual void DescribeRight(const void* data, char (&text)[16]) const;
    /// An item's name in Unicode, to be drawn in place of the other; as it is, empty: none.
    virtual void DescribeWide(const void* data, WCHAR (&name)[ZO_WIDE_NAME_SIZE]) const;
    /// Another language was loaded. Does nothing here, for names that do not depend on that.
    virtual void FollowLanguage();
    /// The address of the selected item; null when there is none.
    const void* GetSelectedData() const;
    /// Selects the first item that \p matches. \return its position, or the number of items.
    template <class MATCHES> int SelectFirst(MATCHES matches)
    {
        const int count = this->GetCount();
        for (int i = 0; i < count; ++i) {
            if (matches(this->GetItemDataPtr(i))) {
                this->SetCurSel(i);
                return i;
            }
        }
        return count;
    }
    /// Prepares for new items: flags, height, nothing typed.
    void BeginReset();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

private:
    LRESULT OnAddString(LPARAM data);
    void OnTyped();
    void ApplyHeight();

    CZoFlagBox m_box;
};

extern template class CZoFlagControl<CComboBox>;
extern template class CZoFlagControl<CListBox>;
