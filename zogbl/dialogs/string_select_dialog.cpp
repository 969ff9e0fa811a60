#include <zogbl/string_select_dialog.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "controls/drawing/item_painting.h"
#include "dialogs/base/dialog_resource.h"
#include "ground/box_filling.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr LPCSTR kSizeName = "StringSelect";
constexpr int kRowMargin = 4;    // pixels of a row beside its text
constexpr int kBytesOfText = 32; // of a usual text, for which the list prepares

/// A number with the thousands set apart as the user has them. Throws CMemoryException*.
CString NumberText(int number)
{
    constexpr int kGroup = 3;
    char separator[8] = "";
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, separator, sizeof separator);
    CString text, grouped;
    text.Format("%d", number);
    while (text.GetLength() > kGroup) {
        grouped = separator + text.Right(kGroup) + grouped;
        text = text.Left(text.GetLength() - kGroup);
    }
    return text + grouped;
}

/// In small letters of the user's language.
void Lower(CString& text)
{
    const int length = text.GetLength();
    ::CharLowerBuffA(text.GetBuffer(length), static_cast<DWORD>(length));
    text.ReleaseBuffer(length);
}

} // namespace

BEGIN_MESSAGE_MAP(CZoStringSelectDialog, CZoDialog)
    ON_EN_CHANGE(ZO_IDC_STRING_FILTER, OnFilter)
    ON_LBN_SELCHANGE(ZO_IDC_STRING_LIST, OnChosen)
    ON_LBN_DBLCLK(ZO_IDC_STRING_LIST, OnDoubleClick)
    ON_BN_CLICKED(ZO_IDC_STRING_ALL, OnAll)
    ON_BN_CLICKED(ZO_IDC_STRING_NONE, OnNone)
END_MESSAGE_MAP()

CZoStringSelectDialog::CZoStringSelectDialog(LPCSTR title, LPCSTR prompt, Mode mode, CWnd* parent)
    : CZoDialog(mode == Mode::kSeveral ? ZO_IDD_STRINGS_SELECT : ZO_IDD_STRING_SELECT, parent), m_mode(mode)
{
    WithoutThrowing([&] {
        m_csTitle = title;
        m_csPrompt = prompt;
    });
}

CZoStringSelectDialog::~CZoStringSelectDialog() = default;

// Before and after ----------------------------------------------------------------------------------------------------

BOOL CZoStringSelectDialog::SetStrings(const CStringArray& strings)
{
    return strings.GetSize() <= MOST && WithoutThrowing([&] {
               auto texts = std::make_unique<Texts>();
               texts->strings.Copy(strings);
               texts->selected.SetSize(strings.GetSize());
               texts->before.SetSize(strings.GetSize());
               std::fill_n(texts->selected.GetData(), strings.GetSize(), static_cast<BYTE>(FALSE));
               m_texts = std::move(texts);
           });
}

BOOL CZoStringSelectDialog::Select(int index, BOOL isSelected)
{
    if (index < 0 || index >= Count())
        return FALSE;
    if (m_mode == Mode::kOne && isSelected)
        std::fill_n(m_texts->selected.GetData(), Count(), static_cast<BYTE>(FALSE));
    m_texts->selected[index] = isSelected != FALSE;
    return TRUE;
}

BOOL CZoStringSelectDialog::IsSelected(int index) const
{
    return index >= 0 && index < Count() && m_texts->selected[index] != FALSE;
}

int CZoStringSelectDialog::GetSelected() const
{
    int index = 0;
    while (index < Count() && !IsSelected(index))
        ++index;
    return index < Count() ? index : -1;
}

int CZoStringSelectDialog::GetSelectedCount() const
{
    int count = 0;
    for (int i = 0; i < Count(); ++i)
        count += IsSelected(i);
    return count;
}

INT_PTR CZoStringSelectDialog::DoModal()
{
    const auto copy = [this](const CByteArray& from, CByteArray& to) {
        std::copy_n(from.GetData(), Count(), to.GetData());
    };
    if (m_texts != nullptr)
        copy(m_texts->selected, m_texts->before);
    const INT_PTR result = ResultOr(-1, [this] { return CZoDialog::DoModal(); });
    if (m_texts != nullptr && result != IDOK)
        copy(m_texts->before, m_texts->selected);
    return result;
}

// The dialog ----------------------------------------------------------------------------------------------------------

HWND CZoStringSelectDialog::List() const { return ::GetDlgItem(m_hWnd, ZO_IDC_STRING_LIST); }

/// The text that a row shows.
int CZoStringSelectDialog::IndexOf(LRESULT row) const
{
    return row >= 0 ? static_cast<int>(::SendMessageA(List(), LB_GETITEMDATA, static_cast<WPARAM>(row), 0)) : -1;
}

BOOL CZoStringSelectDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    const BOOL isSeveral = m_mode == Mode::kSeveral;
    constexpr ZoFollowing kFollowing[] = {
        {ZO_IDC_STRING_PROMPT, ZoFollowing::kWiden},
        {ZO_IDC_STRING_FILTER, ZoFollowing::kWiden},
        {ZO_IDC_STRING_LIST, ZoFollowing::kWiden | ZoFollowing::kHeighten},
        {ZO_IDC_STRING_COUNT, ZoFollowing::kMoveDown | ZoFollowing::kWiden},
        {IDOK, ZoFollowing::kMoveRight},
        {IDCANCEL, ZoFollowing::kMoveRight},
        {ZO_IDC_STRING_ALL, ZoFollowing::kMoveRight},
        {ZO_IDC_STRING_NONE, ZoFollowing::kMoveRight},
    };
    constexpr int kOfSeveral = 2;
    SetWindowText(m_csTitle);
    SetDlgItemText(ZO_IDC_STRING_PROMPT, m_csPrompt);
    m_csFilter.Empty();
    m_typed.Forget();
    Widen();
    Fill();
    MakeSizable(kFollowing, static_cast<int>(std::size(kFollowing)) - (isSeveral ? 0 : kOfSeveral), kSizeName);
    CenterWindow();
    ::SetFocus(List());
    return FALSE;
}

/// Lets the list scroll as far as its widest text needs.
void CZoStringSelectDialog::Widen()
{
    const WindowFontDC dc(List());
    int width = 0;
    for (int i = 0; i < Count(); ++i) {
        SIZE size = {};
        ::GetTextExtentPoint32A(dc, m_texts->strings[i], m_texts->strings[i].GetLength(), &size);
        width = (std::max)(width, static_cast<int>(size.cx));
    }
    ::SendMessageA(List(), LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(width + kRowMargin), 0);
}

/// Shows the texts that contain the filter's. What is chosen and cannot be seen stays chosen.
void CZoStringSelectDialog::Fill()
{
    const HWND list = List();
    {
        const DrawingPause pause(list);
        const LRESULT top = ::SendMessageA(list, LB_GETTOPINDEX, 0, 0);
        const int atTop = IndexOf(::SendMessageA(list, LB_GETCOUNT, 0, 0) > 0 ? top : -1);
        LRESULT newTop = 0;
        ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
        ::SendMessageA(list, LB_INITSTORAGE, static_cast<WPARAM>(Count()), static_cast<LPARAM>(Count() * kBytesOfText));
        CString lower;
        for (int i = 0; i < Count(); ++i) {
            const CString& text = m_texts->strings[i];
            lower = text;
            Lower(lower);
            if (FindText(lower, static_cast<size_t>(lower.GetLength()), m_csFilter,
                         static_cast<size_t>(m_csFilter.GetLength())) == nullptr)
                continue;
            const LRESULT row = ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>((LPCSTR)text));
            if (row < 0)
                break; // the system has no memory for more
            ::SendMessageA(list, LB_SETITEMDATA, static_cast<WPARAM>(row), i);
            if (m_texts->selected[i] != FALSE && m_mode == Mode::kSeveral)
                ::SendMessageA(list, LB_SETSEL, TRUE, row);
            else if (m_texts->selected[i] != FALSE)
                ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
            if (i <= atTop)
                newTop = row;
        }
        ::SendMessageA(list, LB_SETTOPINDEX, static_cast<WPARAM>(newTop), 0);
        const LRESULT chosen = ::SendMessageA(list, LB_GETCURSEL, 0, 0);
        if (m_mode == Mode::kOne && chosen >= 0) // and so that it can be seen
            ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    }
    ShowCount();
}

void CZoStringSelectDialog::ShowCount()
{
    WithoutThrowing([this] {
        const BOOL isSeveral = m_mode == Mode::kSeveral;
        const LRESULT count = isSeveral ? GetSelectedCount() : ::SendMessageA(List(), LB_GETCOUNT, 0, 0);
        SetDlgItemText(ZO_IDC_STRING_COUNT, LoadText(isSeveral ? ZO_IDS_STRING_SELECTED : ZO_IDS_STRING_SHOWN,
                                                     NumberText(static_cast<int>(count)), NumberText(Count())));
    });
}

void CZoStringSelectDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    ShowCount();
}

// What the user does --------------------------------------------------------------------------------------------------

void CZoStringSelectDialog::OnFilter()
{
    WithoutThrowing([this] {
        CString filter;
        GetDlgItemText(ZO_IDC_STRING_FILTER, filter);
        Lower(filter);
        if (filter == m_csFilter)
            return;
        m_csFilter = filter;
        Fill();
    });
}

void CZoStringSelectDialog::OnChosen()
{
    if (m_mode == Mode::kOne) {
        Select(IndexOf(::SendMessageA(List(), LB_GETCURSEL, 0, 0)));
    } else {
        const LRESULT count = ::SendMessageA(List(), LB_GETCOUNT, 0, 0);
        for (LRESULT row = 0; row < count; ++row) // a drag may have changed many
            Select(IndexOf(row), ::SendMessageA(List(), LB_GETSEL, static_cast<WPARAM>(row), 0) > 0);
    }
    ShowCount();
}

void CZoStringSelectDialog::OnDoubleClick()
{
    if (m_mode == Mode::kOne)
        OnOK();
}

void CZoStringSelectDialog::ChooseRows(BOOL isSelected)
{
    ::SendMessageA(List(), LB_SETSEL, static_cast<WPARAM>(isSelected), -1);
    OnChosen();
}

void CZoStringSelectDialog::OnAll() { ChooseRows(TRUE); }

void CZoStringSelectDialog::OnNone() { ChooseRows(FALSE); }

void CZoStringSelectDialog::OnOK()
{
    const HWND list = List();
    if (m_mode == Mode::kOne && ::SendMessageA(list, LB_GETCURSEL, 0, 0) < 0) {
        if (::SendMessageA(list, LB_GETCOUNT, 0, 0) != 1) { // what is chosen must be seen
            ::MessageBeep(MB_ICONEXCLAMATION);
            ::SetFocus(::SendMessageA(list, LB_GETCOUNT, 0, 0) > 0 ? list : ::GetDlgItem(m_hWnd, ZO_IDC_STRING_FILTER));
            return;
        }
        Select(IndexOf(0));
    }
    EndDialog(IDOK);
}

/// Goes to the next row that begins with what was typed. \return whether it was the beginning of a text
BOOL CZoStringSelectDialog::TypeAhead(UINT character)
{
    const HWND list = List();
    const bool isFirst = *m_typed.Get() == '\0';
    if ((character == ' ' && (isFirst || m_mode == Mode::kSeveral)) || !m_typed.Type(character))
        return FALSE; // the space bar chooses a row
    const LPCSTR typed = m_typed.Get();
    const LPCSTR last = PreviousCharacter(typed, typed + lstrlenA(typed));
    if (IsLeadByte(*last) && last[1] == '\0')
        return TRUE; // the other half is coming
    const LRESULT at = ::SendMessageA(list, m_mode == Mode::kOne ? LB_GETCURSEL : LB_GETCARETINDEX, 0, 0);
    const LRESULT count = ::SendMessageA(list, LB_GETCOUNT, 0, 0);
    for (LRESULT i = isFirst ? 1 : 0; i < count + (isFirst ? 1 : 0); ++i) {
        const LRESULT row = ((std::max<LRESULT>)(at, isFirst ? -1 : 0) + i + count) % count;
        if (!CZoTypeAhead::Begins(m_texts->strings[IndexOf(row)], typed))
            continue;
        if (m_mode == Mode::kSeveral) {
            ::SendMessageA(list, LB_SETCARETINDEX, static_cast<WPARAM>(row), FALSE);
        } else {
            ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
            OnChosen();
        }
        return TRUE;
    }
    ::MessageBeep(MB_OK);
    return TRUE;
}

/// Keys that the system's list does not know, or knows for its own window alone.
BOOL CZoStringSelectDialog::PreTranslateMessage(MSG* message)
{
    const HWND list = List();
    const bool isToFilter = message->hwnd == ::GetDlgItem(m_hWnd, ZO_IDC_STRING_FILTER);
    const bool isToList = message->hwnd == list;
    const WPARAM key = message->wParam;
    if (message->message == WM_CHAR && isToList && TypeAhead(static_cast<UINT>(key)))
        return TRUE;
    if ((message->message == WM_KEYDOWN && key != VK_SHIFT && key < '0') || message->message == WM_LBUTTONDOWN)
        m_typed.Forget();
    if (message->message == WM_KEYDOWN && isToList && key == VK_SPACE && m_mode == Mode::kSeveral) {
        const LRESULT row = ::SendMessageA(list, LB_GETCARETINDEX, 0, 0); // not all systems do it themselves
        ::SendMessageA(list, LB_SETSEL, !IsSelected(IndexOf(row)), row);
        OnChosen();
        return TRUE;
    }
    if (message->message == WM_KEYDOWN && isToFilter &&
        (key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT)) {
        ::SendMessageA(list, WM_KEYDOWN, key, message->lParam);
        return TRUE;
    }
    return CZoDialog::PreTranslateMessage(message);
}
