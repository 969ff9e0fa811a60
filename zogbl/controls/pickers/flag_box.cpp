#include <zogbl/flag_box.h>

#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/item_painting.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace {

constexpr COLORREF kTransparent = RGB(255, 0, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr int kMargin = 4; // pixels

const UINT s_languageMessage = CZoLanguageSupport::GetUpdateMessage();

/// What the two kinds of box call the same things.
template <class BOX> struct Messages;
template <> struct Messages<CComboBox> {
    static constexpr UINT kAdd = CB_ADDSTRING;
    static constexpr LONG kStyle = CBS_OWNERDRAWFIXED | CBS_SORT | CBS_HASSTRINGS, kHasStrings = CBS_HASSTRINGS;
};
template <> struct Messages<CListBox> {
    static constexpr UINT kAdd = LB_ADDSTRING;
    static constexpr LONG kStyle = LBS_OWNERDRAWFIXED | LBS_SORT | LBS_HASSTRINGS, kHasStrings = LBS_HASSTRINGS;
};
constexpr LONG kTellsOfSelection = 1; // LBS_NOTIFY; also in CBS_SIMPLE and CBS_DROPDOWNLIST
static_assert(CB_ERR == LB_ERR && LBS_NOTIFY == kTellsOfSelection && CBN_SELCHANGE == LBN_SELCHANGE);

} // namespace

// Flags ---------------------------------------------------------------------------------------------------------------

namespace {

/// What the shared picture is used under: boxes of two threads draw from one bitmap, which only one context can hold.
class FlagLock {
public:
    FlagLock() { EnterCriticalSection(&s_section.section); }
    ~FlagLock() { LeaveCriticalSection(&s_section.section); }
    FlagLock(const FlagLock&) = delete;
    FlagLock& operator=(const FlagLock&) = delete;

private:
    static inline struct Section {
        CRITICAL_SECTION section;
        Section() { InitializeCriticalSection(&section); }
        ~Section() { DeleteCriticalSection(&section); }
    } s_section;
};

} // namespace

/// The bitmap of the flags and its mask.
class CZoFlagBitmap::Picture {
public:
    /// The picture of the module in which the flags are found, with one user more; null: there is none, or no memory.
    static Picture* Take();
    /// Ends what Take began.
    void Release();
    SIZE GetCellSize() const { return {m_size.cx / ZO_FLAG_COLUMNS, m_size.cy / ZO_FLAG_ROWS}; }
    void Draw(HDC dc, int left, int top, UINT cell) const;

private:
    explicit Picture(HINSTANCE module) : m_module(module) {}
    ~Picture();
    bool Load();

    static Picture* s_newest; ///< null: there is none

    HINSTANCE m_module;
    int m_users = 1;
    HBITMAP m_pictures = nullptr; ///< black where a flag is transparent
    HBITMAP m_mask = nullptr;     ///< white there, black elsewhere
    SIZE m_size = {};
};

CZoFlagBitmap::Picture* CZoFlagBitmap::Picture::s_newest = nullptr;

CZoFlagBitmap::Picture* CZoFlagBitmap::Picture::Take()
{
    const HINSTANCE module = ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDB_FLAGS), RT_BITMAP);
    const FlagLock lock;
    if (s_newest != nullptr && s_newest->m_module == module) {
        ++s_newest->m_users;
        return s_newest;
    }
    auto* picture = new (std::nothrow) Picture(module);
    if (picture != nullptr && !picture->Load())
        delete std::exchange(picture, nullptr);
    if (picture != nullptr)
        s_newest = picture; // one of another module lives on with its users
    return picture;
}

void CZoFlagBitmap::Picture::Release()
{
    const FlagLock lock;
    if (--m_users > 0)
        return;
    if (s_newest == this)
        s_newest = nullptr;
    delete this;
}

CZoFlagBitmap::Picture::~Picture()
{
    for (const HBITMAP bitmap : {m_pictures, m_mask}) {
        if (bitmap != nullptr)
            DeleteObject(bitmap);
    }
}

bool CZoFlagBitmap::Picture::Load()
{
    m_pictures = LoadBitmapA(m_module, MAKEINTRESOURCEA(ZO_IDB_FLAGS));
    BITMAP description = {};
    if (m_pictures == nullptr || GetObjectA(m_pictures, sizeof description, &description) == 0)
        return false;
    m_size = {description.bmWidth, description.bmHeight};
    m_mask = CreateBitmap(m_size.cx, m_size.cy, 1, 1, nullptr);
    if (m_mask == nullptr)
        return false;
    const BitmapDC color(nullptr, m_pictures);
    const BitmapDC monochrome(nullptr, m_mask);
    if (!color.IsReady() || !monochrome.IsReady())
        return false;
    SetBkColor(color, kTransparent); // which is what becomes white in the copy
    const BOOL masked = BitBlt(monochrome, 0, 0, m_size.cx, m_size.cy, color, 0, 0, SRCCOPY);
    SetBkColor(color, kBlack); // black where the mask is white, and as it is elsewhere
    SetTextColor(color, kWhite);
    return masked && BitBlt(color, 0, 0, m_size.cx, m_size.cy, monochrome, 0, 0, SRCAND);
}

void CZoFlagBitmap::Picture::Draw(HDC dc, int left, int top, UINT cell) const
{
    const SIZE size = GetCellSize();
    const int x = static_cast<int>(cell % ZO_FLAG_COLUMNS) * size.cx;
    const int y = static_cast<int>(cell / ZO_FLAG_COLUMNS) * size.cy;
    const FlagLock lock;
    const SelectedColors colors(dc, {kBlack, kWhite}); // the mask's
    for (const auto& [bitmap, operation] : {std::pair(m_mask, SRCAND), std::pair(m_pictures, SRCPAINT)}) {
        const BitmapDC source(dc, bitmap);
        BitBlt(dc, left, top, size.cx, size.cy, source, x, y, operation);
    }
}

CZoFlagBitmap::~CZoFlagBitmap()
{
    if (m_pPicture != nullptr)
        m_pPicture->Release();
}

BOOL CZoFlagBitmap::Load()
{
    if (m_pPicture == nullptr) {
        m_pPicture = Picture::Take();
        if (m_pPicture != nullptr)
            m_cell = m_pPicture->GetCellSize();
    }
    return m_pPicture != nullptr;
}

void CZoFlagBitmap::Draw(HDC dc, int left, int top, UINT flagIndex) const
{
    if (m_pPicture != nullptr)
        m_pPicture->Draw(dc, left, top, flagIndex / ZO_FLAG_COLUMNS < ZO_FLAG_ROWS ? flagIndex : 0);
}

// What both boxes do --------------------------------------------------------------------------------------------------

int CZoFlagBox::GetItemHeight() const { return (std::max<int>)(m_flags.GetCellSize().cy, m_nDesiredHeight) + kMargin; }

int CZoFlagBox::GetTextOffset() const { return m_flags.GetCellSize().cx + 2 * kMargin; }

void CZoFlagBox::DrawItem(const DRAWITEMSTRUCT& place, const ZoFlagItem* item, LPCSTR rightText) const
{
    const HDC dc = place.hDC;
    const SelectedColors colors(dc, ColorsOf(place));
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &place.rcItem, nullptr, 0, nullptr);
    if (item != nullptr) {
        constexpr UINT kFormat = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
        const SIZE cell = m_flags.GetCellSize();
        m_flags.Draw(dc, place.rcItem.left + kMargin, (place.rcItem.top + place.rcItem.bottom - cell.cy) / 2,
                     item->flagIndex);
        const int oldMode = SetBkMode(dc, TRANSPARENT);
        RECT text = place.rcItem;
        text.left += GetTextOffset();
        text.right -= kMargin;
        if (rightText != nullptr) {
            CRect right = text;
            const bool measured = DrawTextA(dc, rightText, -1, &right, kFormat | DT_CALCRECT) != 0;
            DrawTextA(dc, rightText, -1, &text, kFormat | DT_RIGHT);
            if (measured) // otherwise the name may run into the code, which beats no name
                text.right -= right.Width() + kMargin;
        }
        constexpr UINT kNameFormat = kFormat | DT_LEFT | DT_END_ELLIPSIS;
        if (item->wideName == nullptr || DrawTextW(dc, item->wideName, -1, &text, kNameFormat) == 0)
            DrawTextA(dc, item->name, -1, &text, kNameFormat);
        SetBkMode(dc, oldMode);
    }
    if ((place.itemState & ODS_FOCUS) != 0)
        DrawFocusRect(dc, &place.rcItem);
}

int CZoFlagBox::CompareNames(LPCSTR first, LPCSTR second) { return std::clamp(lstrcmpiA(first, second), -1, 1); }

// The control ---------------------------------------------------------------------------------------------------------

template <class BOX> CZoFlagControl<BOX>::CZoFlagControl() { m_box.LoadFlags(); }

template <class BOX> CZoFlagControl<BOX>::~CZoFlagControl() = default;

template <class BOX> int CZoFlagControl<BOX>::GetPictureWidth() const { return m_box.GetTextOffset(); }

template <class BOX> void CZoFlagControl<BOX>::SetDesiredHeight(int height)
{
    m_box.SetDesiredHeight(height);
    ApplyHeight();
}

template <class BOX> void CZoFlagControl<BOX>::ApplyHeight()
{
    if (this->m_hWnd == nullptr)
        return;
    const int height = m_box.GetItemHeight();
    if (this->GetItemHeight(0) == height)
        return; // a height, if only the same, closes an open drop-down
    this->SetItemHeight(0, static_cast<UINT>(height));
    if constexpr (std::is_same_v<BOX, CComboBox>)
        this->SetItemHeight(-1, static_cast<UINT>(height)); // the field
    this->Invalidate();
}

template <class BOX> int CZoFlagControl<BOX>::SelectName(const char* text)
{
    return SelectFirst([&](const void* data) { return CZoTypeAhead::Begins(Describe(data).name, text); });
}

template <class BOX> BOOL CZoFlagControl<BOX>::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.style |= Messages<BOX>::kStyle;
    return BOX::PreCreateWindow(cs);
}

template <class BOX> void CZoFlagControl<BOX>::DrawItem(DRAWITEMSTRUCT* item)
{
    const auto* data = reinterpret_cast<const void*>(item->itemData);
    if (item->itemID == static_cast<UINT>(-1) || data == nullptr) {
        m_box.DrawItem(*item, nullptr, nullptr);
        return;
    }
    char right[16] = "";
    DescribeRight(data, right);
    WCHAR wideName[ZO_WIDE_NAME_SIZE] = L"";
    DescribeWide(data, wideName);
    ZoFlagItem described = Describe(data);
    if (wideName[0] != L'\0')
        described.wideName = wideName;
    m_box.DrawItem(*item, &described, right[0] != '\0' ? right : nullptr);
}

template <class BOX> void CZoFlagControl<BOX>::MeasureItem(MEASUREITEMSTRUCT* item)
{
    item->itemHeight = static_cast<UINT>(m_box.GetItemHeight());
}

template <class BOX> int CZoFlagControl<BOX>::CompareItem(COMPAREITEMSTRUCT* items)
{
    return CZoFlagBox::CompareNames(Describe(reinterpret_cast<const void*>(items->itemData1)).name,
                                    Describe(reinterpret_cast<const void*>(items->itemData2)).name);
}

template <class BOX> void CZoFlagControl<BOX>::DescribeRight(const void*, char (&)[16]) const {}

template <class BOX> void CZoFlagControl<BOX>::DescribeWide(const void*, WCHAR (&)[ZO_WIDE_NAME_SIZE]) const {}
template <class BOX> void CZoFlagControl<BOX>::FollowLanguage() {}

template <class BOX> const void* CZoFlagControl<BOX>::GetDataAt(int item) const
{
    const void* data = this->GetItemDataPtr(item);
    return reinterpret_cast<INT_PTR>(data) != LB_ERR ? data : nullptr; // as CB_ERR
}

template <class BOX> const void* CZoFlagControl<BOX>::GetSelectedData() const
{
    const int selected = this->m_hWnd != nullptr ? this->GetCurSel() : LB_ERR;
    return selected >= 0 ? GetDataAt(selected) : nullptr;
}

template <class BOX> void CZoFlagControl<BOX>::BeginReset()
{
    m_box.LoadFlags();
    m_typed.Forget();
    ApplyHeight();
}

template <class BOX> LRESULT CZoFlagControl<BOX>::OnAddString(LPARAM data)
{
    if ((GetWindowLong(this->m_hWnd, GWL_STYLE) & Messages<BOX>::kHasStrings) == 0)
        return this->DefWindowProc(Messages<BOX>::kAdd, 0, data);
    const LPCSTR name = Describe(reinterpret_cast<const void*>(data)).name;
    const LRESULT place = this->DefWindowProc(Messages<BOX>::kAdd, 0, reinterpret_cast<LPARAM>(name));
    if (place >= 0)
        this->SetItemData(static_cast<int>(place), static_cast<DWORD_PTR>(data));
    return place;
}

template <class BOX> void CZoFlagControl<BOX>::OnTyped()
{
    const int before = this->GetCurSel();
    SelectName(m_typed.Get());
    if (this->GetCurSel() == before || (GetWindowLong(this->m_hWnd, GWL_STYLE) & kTellsOfSelection) == 0)
        return;
    const auto id = static_cast<WORD>(GetDlgCtrlID(this->m_hWnd));
    ::SendMessage(GetParent(this->m_hWnd), WM_COMMAND, MAKEWPARAM(id, LBN_SELCHANGE),
                  reinterpret_cast<LPARAM>(this->m_hWnd));
}

template <class BOX> LRESULT CZoFlagControl<BOX>::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case Messages<BOX>::kAdd:
        return OnAddString(lParam);
    case WM_CHAR:
        if (!m_typed.Type(static_cast<UINT>(wParam)))
            break;
        // The key goes no further: the system's own search, by the first letter alone, would move the selection away.
        OnTyped();
        return 0;
    case WM_KEYDOWN:
        if (wParam >= VK_PRIOR && wParam <= VK_DOWN) // pages, ends, arrows
            m_typed.Forget();
        break;
    case WM_KILLFOCUS:
    case WM_LBUTTONDOWN:
        m_typed.Forget();
        break;
    case WM_SYSCOLORCHANGE:
        this->Invalidate();
        break;
    default:
        if (message == s_languageMessage) {
            FollowLanguage();
            return 0;
        }
        break;
    }
    return BOX::WindowProc(message, wParam, lParam);
}

template class CZoFlagControl<CComboBox>;
template class CZoFlagControl<CListBox>;
