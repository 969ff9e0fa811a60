#include <zogbl/tool_sheet.h>

#include <common/without_throwing.h>
#include <zogbl/file_name_functions.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "dialogs/base/kept_file_box.h"
#include "dialogs/base/tell_user.h"
#include "ground/bounded_text.h"

#include "frame/language/language_help.h"
#include "ground/box_filling.h"
#include "program_dialog.h"

#include <algorithm>

namespace {

constexpr UINT kTellLoadFailure = WM_APP + 1;
constexpr BYTE kVersionOfNewShell = 4;

// Dialog units.
constexpr UINT kListWidth = 220;
constexpr UINT kListWidthOldShell = 190;
constexpr int kGap = 4;
constexpr int kMargin = 7;
constexpr int kCaptionHeight = 11; // of the group box
constexpr int kButtonHeight = 14;

/// Whether a file holds the header and \p items whole records, nothing more. -1: any number of them.
bool IsWhole(LPCSTR path, INT_PTR items)
{
    return WithoutThrowing([&] {
        CFile file;
        if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
            return FALSE;
        const ULONGLONG length = file.GetLength();
        return static_cast<BOOL>(
            items >= 0 ? length == ZO_TLM_HEADER_SIZE + static_cast<ULONGLONG>(items) * ZO_TLM_ITEM_SIZE
                       : length >= ZO_TLM_HEADER_SIZE && (length - ZO_TLM_HEADER_SIZE) % ZO_TLM_ITEM_SIZE == 0);
    });
}

} // namespace

BEGIN_MESSAGE_MAP(CTlmSheet, CZoPropertySheet)
    ON_BN_CLICKED(ZO_IDC_TOOL_ADD, OnPshAdd)
    ON_BN_CLICKED(ZO_IDC_TOOL_REMOVE, OnPshRemove)
    ON_BN_CLICKED(ZO_IDC_TOOL_MOVE_UP, OnPshMoveUp)
    ON_BN_CLICKED(ZO_IDC_TOOL_MOVE_DOWN, OnPshMoveDown)
    ON_LBN_SELCHANGE(ZO_IDC_TOOL_LIST, OnSelchangeItem)
    ON_MESSAGE(kTellLoadFailure, OnTellLoadFailure)
    ON_MESSAGE(ZO_TLM_MENU_TEXT_CHANGED, OnMenuTextChanged)
END_MESSAGE_MAP()

// Life ----------------------------------------------------------------------------------------------------------------

CTlmSheet::CTlmSheet(UINT titleId, CWnd* parent, UINT firstPage) : CZoPropertySheet(titleId, parent, firstPage)
{
    InitializeData();
}

CTlmSheet::CTlmSheet(LPCSTR title, CWnd* parent, UINT firstPage) : CZoPropertySheet(title, parent, firstPage)
{
    InitializeData();
}

CTlmSheet::~CTlmSheet()
{
    FreeItemList();
    CTlmSheet::DeletePages();
}

void CTlmSheet::InitializeData()
{
    m_nListWidth = LOBYTE(LOWORD(GetVersion())) >= kVersionOfNewShell ? kListWidth : kListWidthOldShell;
    m_psh.dwFlags |= PSH_NOAPPLYNOW; // items are saved as a whole, with OK
    m_group = std::make_unique<CButton>();
    m_list = std::make_unique<CListBox>();
    m_generalPage = std::make_unique<CTlmGeneralPage>();
    m_windowPage = std::make_unique<CTlmWindowPage>();
    m_consolePage = std::make_unique<CTlmConsolePage>();
    m_optionsPage = std::make_unique<CTlmOptionsPage>();
    CTlmBasePage* const pages[] = {m_generalPage.get(), m_windowPage.get(), m_consolePage.get(), m_optionsPage.get()};
    std::copy(std::begin(pages), std::end(pages), m_pages);
    for (CTlmBasePage* page : m_pages)
        AddPage(page);
}

void CTlmSheet::DeletePages()
{
    std::fill(std::begin(m_pages), std::end(m_pages), nullptr);
    m_group.reset();
    m_list.reset();
    m_generalPage.reset();
    m_windowPage.reset();
    m_consolePage.reset();
    m_optionsPage.reset();
}

INT_PTR CTlmSheet::DoModal()
{
    const INT_PTR result = CZoPropertySheet::DoModal();
    if (result != IDOK)
        m_bLoaded = FALSE; // what was entered is given up
    return result;
}

BOOL CTlmSheet::OnInitDialog()
{
    CZoPropertySheet::OnInitDialog();
    if (!WithoutThrowing([this] { return CreateControls(); })) {
        EndDialog(-1);
        return TRUE;
    }
    WithoutThrowing([this] { ReloadTexts(); });
    if (!m_bLoaded) {
        LoadAndShow();
    } else {
        RefillList();
        Select(m_nSelected);
    }
    return TRUE;
}

/// Makes room at the left, and puts list and buttons there; they come first in the order of Tab.
BOOL CTlmSheet::CreateControls()
{
    CRect units(kMargin, kCaptionHeight, static_cast<int>(m_nListWidth), kButtonHeight);
    CRect gaps(kGap, kGap, 0, 0);
    MapDialogRect(&units);
    MapDialogRect(&gaps);
    const int margin = units.left;
    const int width = units.right;
    const CRect tab = PlaceOf(TabControl());
    MakeRoomAtLeft(width + 3 * margin);
    const CRect frame(tab.left, tab.top, tab.left + width + 2 * margin, tab.bottom);
    // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): MapWindowPoints is opaque to the analyser
    const CRect rest(frame.left + margin, frame.top + units.top, frame.right - margin, frame.bottom - margin);
    const int buttonTop = rest.bottom - units.bottom;
    const CRect list(rest.left, rest.top, rest.right, buttonTop - gaps.top);
    if (!m_group->Create("", WS_CHILD | WS_VISIBLE | BS_GROUPBOX, frame, this, ZO_IDC_TOOL_GROUP) ||
        !m_list->Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                        list, this, ZO_IDC_TOOL_LIST))
        return FALSE;
    CButton* const buttons[] = {&m_add, &m_remove, &m_moveUp, &m_moveDown};
    const int buttonWidth = // as OK's, if there is room
        (std::min<int>)((rest.Width() - 3 * gaps.left) / 4, PlaceOf(::GetDlgItem(m_hWnd, IDOK)).Width());
    for (int i = 0; i < 4; ++i) {
        const int left = rest.left + i * (buttonWidth + gaps.left);
        const CRect place(left, buttonTop, left + buttonWidth, rest.bottom);
        if (!buttons[i]->Create("", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, place, this,
                                static_cast<UINT>(ZO_IDC_TOOL_ADD + i)))
            return FALSE;
    }
    CWnd* const controls[] = {&m_moveDown, &m_moveUp, &m_remove, &m_add, m_list.get(), m_group.get()};
    for (CWnd* control : controls) {
        control->SetFont(GetFont());
        control->SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); // to the front
    }
    CenterWindow();
    return TRUE;
}

void CTlmSheet::ReloadTexts()
{
    CZoPropertySheet::ReloadTexts();
    const struct {
        CWnd* control;
        UINT text;
    } rows[] = {{m_group.get(), ZO_IDS_TOOL_LIST},
                {&m_add, ZO_IDS_TOOL_ADD},
                {&m_remove, ZO_IDS_TOOL_REMOVE},
                {&m_moveUp, ZO_IDS_TOOL_MOVE_UP},
                {&m_moveDown, ZO_IDS_TOOL_MOVE_DOWN}};
    for (const auto& row : rows) {
        CString text;
        if (ZoGblLoadString(row.text, text)) // without memory the old one stays
            row.control->SetWindowText(text);
    }
}

void CTlmSheet::SetRunMode(int mode)
{
    m_nRunMode = mode;
    for (CTlmBasePage* page : m_pages)
        page->SetRunMode(mode);
}

// The file ------------------------------------------------------------------------------------------------------------

void CTlmSheet::SetFilePath(const char* path)
{
    m_bLoaded = FALSE;
    m_csFilePath.Empty();
    WithoutThrowing([&] { m_csFilePath = path; });
    if (m_hWnd != nullptr)
        LoadAndShow();
}

void CTlmSheet::LoadAndShow()
{
    const DWORD status = LoadFileData();
    m_bLoaded = TRUE;
    RefillList();
    FillItemList();
    // A file that is not there yet is no failure. One that was cut may end within an item, which loading passes over.
    if ((status != 0 || !IsWhole(m_csFilePath, -1)) && ::GetFileAttributesA(m_csFilePath) != INVALID_FILE_ATTRIBUTES)
        PostMessage(kTellLoadFailure); // once the sheet is seen
}

LRESULT CTlmSheet::OnTellLoadFailure(WPARAM, LPARAM)
{
    TellUser(this, ZO_IDS_TOOL_SHEET_TITLE, [this] { return LoadText(ZO_IDS_TOOL_LOAD_FAILED, m_csFilePath); });
    return 0;
}

DWORD CTlmSheet::LoadFileData()
{
    if (m_csFilePath.IsEmpty())
        return ZO_TLM_NO_NAME;
    FreeItemList();
    m_csDescription.Empty();
    return ResultOr(ZO_TLM_NO_MEMORY, [this]() -> DWORD {
        const auto file = std::make_unique<CTlmFile>();
        const DWORD status = file->LoadFileData(m_csFilePath, ZO_TLM_FILE_VERSION, ZO_TLM_HEADER_SIZE, &m_items, 0);
        file->GetDescription(m_csDescription);
        return status;
    });
}

DWORD CTlmSheet::SaveFileData()
{
    if (m_csFilePath.IsEmpty())
        return ZO_TLM_NO_NAME;
    return ResultOr(ZO_TLM_NO_MEMORY, [this]() -> DWORD {
        const auto file = std::make_unique<CTlmFile>();
        file->SetDescription(m_csDescription);
        return file->SaveFileData(m_csFilePath, ZO_TLM_FILE_VERSION, ZO_TLM_HEADER_SIZE, &m_items);
    });
}

void CTlmSheet::FreeItemList()
{
    m_nSelected = -1;
    if (m_hWnd != nullptr && m_list && ::GetFocus() == m_list->m_hWnd)
        ::SetFocus(::GetDlgItem(m_hWnd, IDOK));
    ItemToPage(nullptr);
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        delete m_items[i];
    m_items.RemoveAll();
}

// The list and the pages ----------------------------------------------------------------------------------------------

/// Shows a menu text as the menu does: without the mark of its access key. The row keeps its selection.
void CTlmSheet::ShowRow(INT_PTR index, const CString& menuText)
{
    CString text;
    for (int i = 0; i < menuText.GetLength(); ++i) {
        const auto width = static_cast<int>(CharacterWidth((LPCSTR)menuText + i));
        if (menuText[i] == '&' && ++i >= menuText.GetLength())
            break;
        text += menuText.Mid(i, width);
        i += width - 1;
    }
    const auto row = static_cast<int>(index);
    const int top = m_list->GetTopIndex();
    const DrawingPause pause(m_list->m_hWnd);
    m_list->DeleteString(static_cast<UINT>(row));
    m_list->InsertString(row, text);
    if (row == m_nSelected)
        m_list->SetCurSel(row);
    m_list->SetTopIndex(top);
}

void CTlmSheet::ShowRow(INT_PTR index)
{
    CString text;
    Item(index)->GetDataMenuText(text);
    ShowRow(index, text);
}

/// The list follows what is typed.
LRESULT CTlmSheet::OnMenuTextChanged(WPARAM, LPARAM item)
{
    if (m_nSelected >= 0 && m_nSelected < m_list->GetCount() && Item(m_nSelected) == reinterpret_cast<CTlmItem*>(item))
        WithoutThrowing([this] {
            char text[2 * ZO_TLM_MENU_TEXT_SIZE] = "";
            ::GetDlgItemTextA(m_generalPage->m_hWnd, ZO_IDC_TOOL_MENU_TEXT, text, sizeof text);
            return ShowRow(m_nSelected, text), TRUE;
        });
    return 0;
}

void CTlmSheet::RefillList()
{
    const DrawingPause pause(m_list->m_hWnd);
    m_list->ResetContent();
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        ShowRow(i);
}

void CTlmSheet::FillItemList() { Select(m_items.IsEmpty() ? -1 : 0); }

/// Shows an item in list and pages; -1 for none. What the pages showed before is not taken over.
void CTlmSheet::Select(INT_PTR index)
{
    m_nSelected = static_cast<int>(index);
    m_list->SetCurSel(m_nSelected);
    ItemToPage(m_nSelected >= 0 ? Item(m_nSelected) : nullptr);
    UpdateControlStates();
}

BOOL CTlmSheet::PageToItem()
{
    if (m_nSelected < 0)
        return TRUE;
    for (int i = 0; i < 4; ++i) {
        if (m_pages[i]->Save())
            continue;
        const HWND refused = ::GetFocus(); // the control that does not hold what it should
        if (i != GetActiveIndex() && SetActivePage(i))
            ::SetFocus(refused);
        return FALSE;
    }
    ShowRow(m_nSelected);
    return TRUE;
}

void CTlmSheet::ItemToPage(CTlmItem* item)
{
    for (CTlmBasePage* page : m_pages) {
        if (page == nullptr)
            continue;
        page->SetItem(item);
        page->Load();
    }
}

void CTlmSheet::EnableAllPages(int enable)
{
    if (enable == m_nPagesEnabled)
        return;
    m_nPagesEnabled = enable;
    for (CTlmBasePage* page : m_pages)
        page->EnablePage(enable);
}

/// A button that is disabled with the focus on it gives that to its neighbour, or else to OK.
void CTlmSheet::EnableButton(CButton& button, BOOL enable, CButton& neighbour)
{
    if (!enable && ::GetFocus() == button.m_hWnd) {
        const HWND next = ::IsWindowEnabled(neighbour.m_hWnd) ? neighbour.m_hWnd : ::GetDlgItem(m_hWnd, IDOK);
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    }
    button.EnableWindow(enable);
}

void CTlmSheet::UpdateControlStates()
{
    const int count = static_cast<int>(m_items.GetSize());
    if (m_nSelected >= count)
        m_nSelected = count - 1;
    const struct {
        CButton& button;
        BOOL enable;
        CButton& neighbour;
    } rows[] = {{m_add, count < ZO_TLM_MAXIMUM_ITEMS, m_remove},
                {m_remove, count > 0, m_add},
                {m_moveUp, count > 1 && m_nSelected > 0, m_moveDown},
                {m_moveDown, count > 1 && m_nSelected < count - 1, m_moveUp}};
    for (const auto& row : rows) { // first, so that a neighbour can take the focus
        if (row.enable)
            row.button.EnableWindow();
    }
    for (const auto& row : rows)
        EnableButton(row.button, row.enable, row.neighbour);
    EnableAllPages(count > 0);
}

void CTlmSheet::OnSelchangeItem()
{
    const int chosen = m_list->GetCurSel();
    if (chosen < 0 || chosen == m_nSelected)
        return;
    if (!PageToItem())
        m_list->SetCurSel(m_nSelected);
    else
        Select(chosen);
}

// The buttons ---------------------------------------------------------------------------------------------------------

void CTlmSheet::OnPshAdd()
{
    if (m_items.GetSize() >= ZO_TLM_MAXIMUM_ITEMS)
        return;
    WithoutThrowing([this]() -> BOOL {
        // First what the pages show, lest a program be chosen in vain.
        auto item = std::make_unique<CTlmItem>();
        if (!PageToItem() || !ChooseProgram(*item))
            return FALSE;
        const INT_PTR index = m_items.Add(item.get());
        item.release();
        ShowRow(index);
        Select(index);
        return TRUE;
    });
}

/// Asks for a program, and puts it into an item. \return FALSE when the user gives up. Throws CMemoryException*.
BOOL CTlmSheet::ChooseProgram(CTlmItem& item)
{
    char path[ZO_TLM_PATH_SIZE] = "";
    if (!AskForProgram(this, ZO_IDS_TOOL_PROGRAM_TITLE, path))
        return FALSE;
    item.SetDataProgramPath(path);
    CString name;
    CZoGlobalFileNameFunctions::ExtractNameFromPath(path, name);
    name.Replace("&", "&&"); // of a file's name it is no access key
    item.SetDataMenuText(name);
    CString folder;
    CZoGlobalFileNameFunctions::ExtractPathFromPath(path, folder);
    item.SetDataWorkingDirectory(folder);
    return TRUE;
}

void CTlmSheet::OnPshRemove()
{
    if (m_nSelected < 0)
        return;
    const int index = m_nSelected;
    ItemToPage(nullptr);
    delete m_items[index];
    m_items.RemoveAt(index);
    m_list->DeleteString(static_cast<UINT>(index));
    const int last = static_cast<int>(m_items.GetSize()) - 1;
    Select(index > last ? last : index);
}

void CTlmSheet::Move(int distance)
{
    const int target = m_nSelected + distance;
    if (m_nSelected < 0 || target < 0 || target >= m_items.GetSize())
        return;
    std::swap(m_items[m_nSelected], m_items[target]);
    ShowRow(m_nSelected);
    ShowRow(target);
    m_nSelected = target;
    m_list->SetCurSel(target);
    UpdateControlStates();
}

void CTlmSheet::OnPshMoveUp() { Move(-1); }
void CTlmSheet::OnPshMoveDown() { Move(1); }

// The editor ----------------------------------------------------------------------------------------------------------

void EditToolItemFile(const char* path, CWnd* parent)
{
    const LanguageHelp help;
    WithoutThrowing([&]() -> BOOL {
        const CWnd* owner = parent != nullptr ? parent : AfxGetMainWnd();
        OfferKeptFile(owner, path, LoadText(ZO_IDS_TOOL_SHEET_TITLE));
        CTlmSheet sheet(ZO_IDS_TOOL_SHEET_TITLE, parent);
        sheet.SetFilePath(path);
        while (sheet.DoModal() == IDOK) {
            // Saving itself does not tell whether all records are there.
            const SaveResult result =
                SaveKeeping(path, [&] { return sheet.SaveFileData() == 0 && IsWhole(path, sheet.GetItemCount()); });
            // Without memory for the question it is Yes, which loses nothing.
            const auto question = [&] { return LoadText(ZO_IDS_TOOL_SAVE_FAILED, path, DescribeSave(result, path)); };
            if (result == SaveResult::kSaved || TellUser(owner, ZO_IDS_TOOL_SHEET_TITLE, question, MB_YESNO) != IDYES)
                break;
        }
        return TRUE;
    });
}
