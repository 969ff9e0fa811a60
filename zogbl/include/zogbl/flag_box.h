/// \file
/// The base of the boxes whose items have a flag and a name.
#pragma once

#include <zogbl/export.h>
#include <zogbl/type_ahead.h>

#include <afxwin.h>

/// The flags of the language library, drawn without their magenta background. All objects share one picture; it goes
/// with the last of them.
class ZOGBL_API CZoFlagBitmap {
public:
    CZoFlagBitmap() = default;
    ~CZoFlagBitmap();
    CZoFlagBitmap(const CZoFlagBitmap&) = delete;
    CZoFlagBitmap& operator=(const CZoFlagBitmap&) = delete;

    /// Takes bitmap 24530 (8 columns, 27 rows) at the first call: the picture of another object if that comes from the
    /// module in which the bitmap is found now, else a new one.
    /// \return FALSE, with nothing to draw: there is no language library or no memory. A later call tries again
    BOOL Load();
    SIZE GetCellSize() const { return m_cell; } ///< in pixels; 16 by 16 until it is loaded
    /// Draws a cell. The bitmap has 216 cells; flags are in 0 to 211. A number above 215 draws cell 0.
    void Draw(HDC dc, int left, int top, UINT flagIndex) const;

private:
    class Picture;

    Picture* m_pPicture = nullptr; // shared
    SIZE m_cell = {16, 16};
};

/// The parts of an item that a box shows.
struct ZoFlagItem {
    LPCSTR name;                ///< belongs to the item
    UINT flagIndex;             ///< cell of the flag bitmap
    LPCWSTR wideName = nullptr; ///< drawn in place of the name if the system can; null: none
};

constexpr int ZO_WIDE_NAME_SIZE = 192; ///< of a wide name, in characters, terminator included

/// Draws the items of such a box.
class ZOGBL_API CZoFlagBox {
public:
    BOOL LoadFlags() { return m_flags.Load(); }
    int GetItemHeight() const; ///< in pixels: the flag's height or, if greater, the desired one, plus 4
    void SetDesiredHeight(int height) { m_nDesiredHeight = height; } ///< in pixels, of the text
    int GetTextOffset() const; ///< in pixels from the left edge of an item: the flag's width plus 8

    /// Draws an item in the system's present colours. If the box is disabled, a selected item has the colour of
    /// disabled text as background and that of the window as text.
    /// \param item null for an empty place, such as the field of a combo box without selection
    /// \param rightText shown at the right edge; null: none
    void DrawItem(const DRAWITEMSTRUCT& place, const ZoFlagItem* item, LPCSTR rightText) const;
    /// Compares names in the order of the user's language, case ignored. \return -1, 0 or 1
    static int CompareNames(LPCSTR first, LPCSTR second);

private:
    CZoFlagBitmap m_flags;
    int m_nDesiredHeight = 0;
};

/// A sorted box of items with flags, made from CComboBox or CListBox. Its items are objects, not texts: CB_ADDSTRING or
/// LB_ADDSTRING takes an object's address, which becomes the item's data.
///
///   - The box is owner-drawn and sorted, and keeps the names as its texts for screen readers. Create adds the styles
///     for that; a dialog template must have them (country_box.h has an example):
///       combo box  CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_SORT | CBS_HASSTRINGS
///       list box   LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_SORT | LBS_HASSTRINGS
///     CBS_DROPDOWNLIST and LBS_NOTIFY are the caller's own: with them the parent hears of what typing selects.
///   - The typed text is forgotten when the box loses the focus, and with a click or a key that moves the selection.
///   - The message CZoLanguageSupport::GetUpdateMessage() makes the box take the names of the new language. CZoDialog
///     sends it to its controls; other windows must do so themselves.
//
// Every member but SelectFirst is defined in the library: a member with a body in the class, or made by the compiler,
// would not be exported.
template <class BOX> class ZOGBL_API CZoFlagControl : public BOX {
public:
    CZoFlagControl();
    ~CZoFlagControl() override;

    void SetDesiredHeight(int height); ///< of the text, in pixels; see CZoFlagBox::GetItemHeight
    int GetPictureWidth() const;       ///< where the text begins, in pixels from the left
    /// Selects the first item whose name begins with \p text, case ignored. An empty text selects the first item.
    /// \return its position; if there is none, the number of items, and the selection stays
    int SelectName(const char* text);

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    void DrawItem(DRAWITEMSTRUCT* item) override;
    void MeasureItem(MEASUREITEMSTRUCT* item) override;
    int CompareItem(COMPAREITEMSTRUCT* items) override; ///< used in boxes without texts

protected:
    virtual ZoFlagItem Describe(const void* data) const = 0; ///< of the item with that data
    /// The text at the right edge of an item. \p text is empty when this is called; leave it empty to show none.
    virtual void DescribeRight(const void* data, char (&text)[16]) const;
    /// The item's name in Unicode. If it is not empty and the system can draw it, it is drawn instead of the name from
    /// Describe. \p name is empty when this is called; leave it empty to have none.
    virtual void DescribeWide(const void* data, WCHAR (&name)[ZO_WIDE_NAME_SIZE]) const;
    /// Called when another language was loaded. The base does nothing.
    virtual void FollowLanguage();
    /// The data of an item; null if there is none.
    const void* GetDataAt(int item) const;
    /// That of the selected item; null if there is none.
    const void* GetSelectedData() const;
    /// Selects the first item for which \p matches(data) is true. \return its position, or the number of items
    template <class MATCHES> int SelectFirst(MATCHES matches)
    {
        const int count = this->GetCount();
        for (int i = 0; i < count; ++i) {
            const void* data = GetDataAt(i);
            if (data != nullptr && matches(data)) {
                this->SetCurSel(i);
                return i;
            }
        }
        return count;
    }
    /// Prepares for new items: loads the flags, sets the height, forgets the typed text.
    void BeginReset();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT OnAddString(LPARAM data);
    void OnTyped();
    void ApplyHeight();

    CZoFlagBox m_box;
    CZoTypeAhead m_typed;
};

extern template class CZoFlagControl<CComboBox>;
extern template class CZoFlagControl<CListBox>;
