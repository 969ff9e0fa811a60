#include <zogbl/translate_editor.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/drawing/bitmap_dc.h"
#include "controls/drawing/item_painting.h"
#include "ground/box_filling.h"
#include "table_save.h"

#include <algorithm>

namespace {

constexpr int kRows = 256;
constexpr int kMargin = 4;     // pixels at either side of a text
constexpr int kRowSpacing = 8; // pixels between the texts of two rows

/// A number as the pages show it.
struct NumberText {
    char text[8];
    NumberText(int number, bool isDecimal) { wsprintfA(text, isDecimal ? "%u" : "0x%02X", number); }
};

} // namespace

/// The controls of a page, and the part of a set of tables that it edits.
struct CGblIotTable::Direction {
    UINT page;
    int list, value, dbcs, enable;
    unsigned char (CGblTranslate::*getEntry)(unsigned char) const;
    void (CGblTranslate::*setEntry)(unsigned char, unsigned char);
    void (CGblTranslate::*reset)();
    int (CGblTranslate::*isDBCS)() const;
    void (CGblTranslate::*enableDBCS)(int);
    int (CGblTranslate::*isEnabled)() const;
    void (CGblTranslate::*enableTable)(int);
    unsigned long (CGblTranslate::*getLast)() const;
    void (CGblTranslate::*setLast)(unsigned long);
    unsigned long (CGblTranslate::*getMode)() const;
    void (CGblTranslate::*setMode)(unsigned long);

    static const Direction input;
    static const Direction output;
};

const CGblIotTable::Direction CGblIotTable::Direction::input = {
    ZO_IDD_TRANSLATE_INPUT,        ZO_IDC_TRANSLATE_INPUT_LIST,   ZO_IDC_TRANSLATE_INPUT_VALUE,
    ZO_IDC_TRANSLATE_INPUT_DBCS,   ZO_IDC_TRANSLATE_INPUT_ENABLE, &CGblTranslate::GetInputValue,
    &CGblTranslate::SetInputValue, &CGblTranslate::ResetGetTable, &CGblTranslate::IsGetDBCSEnabled,
    &CGblTranslate::EnableGetDBCS, &CGblTranslate::IsGetEnabled,  &CGblTranslate::EnableGet,
    &CGblTranslate::GetLastInput,  &CGblTranslate::SetLastInput,  &CGblTranslate::GetLastModeI,
    &CGblTranslate::SetLastModeI,
};

const CGblIotTable::Direction CGblIotTable::Direction::output = {
    ZO_IDD_TRANSLATE_OUTPUT,        ZO_IDC_TRANSLATE_OUTPUT_LIST,   ZO_IDC_TRANSLATE_OUTPUT_VALUE,
    ZO_IDC_TRANSLATE_OUTPUT_DBCS,   ZO_IDC_TRANSLATE_OUTPUT_ENABLE, &CGblTranslate::GetOutputValue,
    &CGblTranslate::SetOutputValue, &CGblTranslate::ResetPutTable,  &CGblTranslate::IsPutDBCSEnabled,
    &CGblTranslate::EnablePutDBCS,  &CGblTranslate::IsPutEnabled,   &CGblTranslate::EnablePut,
    &CGblTranslate::GetLastOutput,  &CGblTranslate::SetLastOutput,  &CGblTranslate::GetLastModeO,
    &CGblTranslate::SetLastModeO,
};

CGblIotTableI::CGblIotTableI() : CGblIotTable(Direction::input) {}
CGblIotTableO::CGblIotTableO() : CGblIotTable(Direction::output) {}

// The page of a table -------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CGblIotTable, CZoPropertyPage)
    ON_LBN_SELCHANGE(ZO_IDC_TRANSLATE_INPUT_LIST, OnRowSelected)
    ON_LBN_SELCHANGE(ZO_IDC_TRANSLATE_OUTPUT_LIST, OnRowSelected)
    ON_CBN_SELCHANGE(ZO_IDC_TRANSLATE_INPUT_VALUE, OnValueChosen)
    ON_CBN_SELCHANGE(ZO_IDC_TRANSLATE_OUTPUT_VALUE, OnValueChosen)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_MODE, OnModeChosen)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_DECIMAL, OnModeChosen)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_INPUT_DBCS, OnSwitched)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_OUTPUT_DBCS, OnSwitched)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_INPUT_ENABLE, OnSwitched)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_OUTPUT_ENABLE, OnSwitched)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_RESET, OnResetTable)
END_MESSAGE_MAP()

CGblIotTable::CGblIotTable(const Direction& direction) : CZoPropertyPage(direction.page), m_direction(direction) {}

HWND CGblIotTable::Values() const { return ::GetDlgItem(m_hWnd, m_direction.value); }

BYTE CGblIotTable::Entry(int row) const { return (m_pTranslation->*m_direction.getEntry)(static_cast<BYTE>(row)); }

bool CGblIotTable::IsDecimal() const { return (m_pTranslation->*m_direction.getMode)() == ZO_TRANSLATE_DECIMAL; }

BOOL CGblIotTable::OnInitDialog()
{
    const LPCSTR name = MAKEINTRESOURCEA(ZO_IDB_TRANSLATE_MARKER);
    m_marker.DeleteObject(); // of the sheet's window before
    const HBITMAP loaded = ::LoadBitmapA(ZoGblFindResourceModule(name, RT_BITMAP), name);
    if (!WithoutThrowing([&] { m_marker.Attach(loaded); }))
        ::DeleteObject(loaded); // without it rows have no mark
    BITMAP marker = {};
    m_marker.GetObject(sizeof marker, &marker);
    m_markerSize = CSize(static_cast<int>(marker.bmWidth / 2), static_cast<int>(marker.bmHeight));
    m_list.SubclassDlgItem(static_cast<UINT>(m_direction.list), this);
    m_list.SetItemHeight(0, static_cast<UINT>(RowHeight()));
    return CZoPropertyPage::OnInitDialog();
}

int CGblIotTable::RowHeight()
{
    return (std::max<int>)(WindowFontDC(m_hWnd).GetLineHeight(), m_markerSize.cy) + kRowSpacing;
}

void CGblIotTable::DoDataExchange(CDataExchange* pDX)
{
    CZoPropertyPage::DoDataExchange(pDX);
    int isDBCS = (m_pTranslation->*m_direction.isDBCS)();
    int isEnabled = (m_pTranslation->*m_direction.isEnabled)();
    DDX_Check(pDX, m_direction.dbcs, isDBCS);
    DDX_Check(pDX, m_direction.enable, isEnabled);
    if (pDX->m_bSaveAndValidate) {
        (m_pTranslation->*m_direction.enableDBCS)(isDBCS);
        (m_pTranslation->*m_direction.enableTable)(isEnabled);
        return;
    }
    int mode = IsDecimal() ? 1 : 0;
    DDX_Radio(pDX, ZO_IDC_TRANSLATE_MODE, mode);
    ShowValues();
    ShowRows();
    const unsigned long last = (m_pTranslation->*m_direction.getLast)();
    SelectRow(last < kRows ? static_cast<int>(last) : 0);
}

// What is shown -------------------------------------------------------------------------------------------------------

void CGblIotTable::ShowValues()
{
    const HWND values = Values();
    const DrawingPause pause(values);
    ::SendMessageA(values, CB_RESETCONTENT, 0, 0);
    for (int value = 0; value < kRows; ++value)
        ::SendMessageA(values, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(NumberText(value, IsDecimal()).text));
}

void CGblIotTable::ShowRows()
{
    const DrawingPause pause(m_list.m_hWnd);
    m_list.ResetContent();
    for (int row = 0; row < kRows; ++row)
        ShowRow(row);
}

/// Adds a row's text, in place of the one that is there.
void CGblIotTable::ShowRow(int row)
{
    char text[20];
    wsprintfA(text, "%s %s", NumberText(row, IsDecimal()).text, NumberText(Entry(row), IsDecimal()).text);
    if (row < m_list.GetCount())
        m_list.DeleteString(static_cast<UINT>(row));
    m_list.InsertString(row, text);
}

void CGblIotTable::SelectRow(int row)
{
    m_list.SetCurSel(row);
    ::SendMessageA(Values(), CB_SETCURSEL, Entry(row), 0);
}

void CGblIotList::DrawItem(DRAWITEMSTRUCT* item) { m_page.DrawRow(*item); }

void CGblIotTable::DrawRow(const DRAWITEMSTRUCT& item) const
{
    const HDC dc = item.hDC;
    const int row = static_cast<int>(item.itemID);
    const bool isRow = row >= 0 && row < kRows;
    const int middle = CRect(item.rcItem).CenterPoint().x;
    {
        const SelectedColors colors(dc, ColorsOf(item, COLOR_BTNTEXT, COLOR_BTNFACE));
        ::ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &item.rcItem, nullptr, 0, nullptr);
        if (isRow) {
            constexpr UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
            RECT half = item.rcItem;
            half.left += kMargin;
            half.right = middle;
            ::DrawTextA(dc, NumberText(row, IsDecimal()).text, -1, &half, format);
            half.left = middle + m_markerSize.cx + kMargin;
            half.right = item.rcItem.right;
            ::DrawTextA(dc, NumberText(Entry(row), IsDecimal()).text, -1, &half, format);
        }
    }
    if (isRow && Entry(row) != row)
        DrawMarker(dc, middle, (item.rcItem.top + item.rcItem.bottom - m_markerSize.cy) / 2);
    if ((item.itemState & ODS_FOCUS) != 0) {
        CRect focus = item.rcItem;
        focus.DeflateRect(1, 1);
        ::DrawFocusRect(dc, &focus);
    }
}

/// The left image, through the mask on its right.
void CGblIotTable::DrawMarker(HDC dc, int left, int top) const
{
    const BitmapDC marker(dc, m_marker);
    if (!marker.IsReady())
        return;
    const int width = m_markerSize.cx, height = m_markerSize.cy;
    ::BitBlt(dc, left, top, width, height, marker, width, 0, SRCAND);
    ::BitBlt(dc, left, top, width, height, marker, 0, 0, SRCPAINT);
}

// What the user changes -----------------------------------------------------------------------------------------------

void CGblIotTable::OnRowSelected()
{
    const int row = m_list.GetCurSel();
    if (row < 0)
        return;
    (m_pTranslation->*m_direction.setLast)(static_cast<unsigned long>(row));
    ::SendMessageA(Values(), CB_SETCURSEL, Entry(row), 0);
    SetModified();
}

void CGblIotTable::OnValueChosen()
{
    const int row = m_list.GetCurSel();
    const LRESULT value = ::SendMessageA(Values(), CB_GETCURSEL, 0, 0);
    if (row < 0 || value < 0)
        return;
    (m_pTranslation->*m_direction.setEntry)(static_cast<BYTE>(row), static_cast<BYTE>(value));
    {
        const DrawingPause pause(m_list.m_hWnd);
        const int top = m_list.GetTopIndex();
        ShowRow(row);
        m_list.SetCurSel(row);
        m_list.SetTopIndex(top);
    }
    SetModified();
}

void CGblIotTable::OnModeChosen()
{
    int mode = 0;
    CDataExchange exchange(this, TRUE);
    DDX_Radio(&exchange, ZO_IDC_TRANSLATE_MODE, mode);
    if ((mode != 0) == IsDecimal())
        return;
    (m_pTranslation->*m_direction.setMode)(mode != 0 ? ZO_TRANSLATE_DECIMAL : ZO_TRANSLATE_HEXADECIMAL);
    ShowAgain();
}

void CGblIotTable::OnSwitched() { SetModified(); }

void CGblIotTable::OnResetTable()
{
    (m_pTranslation->*m_direction.reset)();
    ShowAgain();
}

/// All numbers anew, the selection as it was.
void CGblIotTable::ShowAgain()
{
    const int row = (std::max)(m_list.GetCurSel(), 0);
    const int top = m_list.GetTopIndex();
    ShowValues();
    ShowRows();
    SelectRow(row);
    m_list.SetTopIndex(top);
    SetModified();
}

// The page of file and description ------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CGblIotOptions, CZoPropertyPage)
    ON_EN_CHANGE(ZO_IDC_TRANSLATE_DESCRIPTION, OnDescriptionChanged)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_LOAD, OnLoad)
    ON_BN_CLICKED(ZO_IDC_TRANSLATE_SAVE_AS, OnSaveAs)
END_MESSAGE_MAP()

CGblIotOptions::CGblIotOptions() : CZoPropertyPage(ZO_IDD_TRANSLATE_OPTIONS) {}

void CGblIotOptions::DoDataExchange(CDataExchange* pDX)
{
    CZoPropertyPage::DoDataExchange(pDX);
    CString path, description;
    m_pTranslation->GetFilePath(path);
    m_pTranslation->GetDescription(description);
    DDX_Text(pDX, ZO_IDC_TRANSLATE_FILE, path); // shown only: what comes back is not kept
    DDX_Text(pDX, ZO_IDC_TRANSLATE_DESCRIPTION, description);
    DDV_MaxChars(pDX, description, ZO_TRANSLATE_DESCRIPTION_LENGTH);
    if (pDX->m_bSaveAndValidate)
        m_pTranslation->SetDescription(description);
}

void CGblIotOptions::OnDescriptionChanged() { SetModified(); }

void CGblIotOptions::OnLoad() { ExchangeFile(TRUE); }

void CGblIotOptions::OnSaveAs()
{
    if (UpdateData(TRUE))
        ExchangeFile(FALSE);
}

/// Loads or saves, on a set of its own: one that succeeds alone is taken over.
void CGblIotOptions::ExchangeFile(BOOL open)
{
    INT_PTR result = -1;
    WithoutThrowing([&] {
        CGblTranslate translation;
        translation.CopyData(m_pTranslation);
        CString path;
        translation.GetFilePath(path);
        CIOTFileDialog dialog(open, path, this);
        result = dialog.DoModal();
        if (result != IDOK)
            return FALSE;
        const CString chosen = dialog.GetPathName();
        if (open) {
            if (translation.Load(chosen) != ZO_TRANSLATE_SUCCESS)
                return TellUser(this, 0, ZO_IDS_TRANSLATE_LOAD_FAILED), FALSE;
        } else if (const SaveResult saved = SaveTable(translation, chosen).result; saved != SaveResult::kSaved) {
            return TellSaveFailed(*this, saved, chosen), FALSE;
        }
        m_pTranslation->CopyData(&translation);
        UpdateData(FALSE);
        SetModified();
        return TRUE;
    });
    if (result == -1)
        TellUser(this, 0, ZO_IDS_TRANSLATE_NO_FILE_DIALOG);
}
