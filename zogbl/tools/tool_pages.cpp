#include <zogbl/tool_pages.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/select_directory.h>
#include <zogbl/validators.h>

#include "field.h"

#include "program_dialog.h"

#include <commctrl.h>

namespace {

constexpr int kConsoleMaximum = 1024; // columns and rows
constexpr WPARAM kDigits = 5;         // of a number: more than any of them has

struct SpinField {
    int edit;
    int spin;
    int metric; // of the system that is the maximum, -1 for a console's
};
constexpr SpinField kWindowFields[] = {
    {ZO_IDC_TOOL_LEFT, ZO_IDC_TOOL_LEFT_SPIN, SM_CXSCREEN},
    {ZO_IDC_TOOL_TOP, ZO_IDC_TOOL_TOP_SPIN, SM_CYSCREEN},
    {ZO_IDC_TOOL_WIDTH, ZO_IDC_TOOL_WIDTH_SPIN, SM_CXSCREEN},
    {ZO_IDC_TOOL_HEIGHT, ZO_IDC_TOOL_HEIGHT_SPIN, SM_CYSCREEN},
};
constexpr SpinField kConsoleFields[] = {
    {ZO_IDC_TOOL_COLUMNS, ZO_IDC_TOOL_COLUMNS_SPIN, -1},
    {ZO_IDC_TOOL_ROWS, ZO_IDC_TOOL_ROWS_SPIN, -1},
};

int Maximum(const SpinField& field) { return field.metric >= 0 ? GetSystemMetrics(field.metric) : kConsoleMaximum; }

template <size_t COUNT> void SetRanges(HWND page, const SpinField (&fields)[COUNT])
{
    for (const SpinField& field : fields)
        SendDlgItemMessageA(page, field.spin, UDM_SETRANGE, 0, MAKELPARAM(Maximum(field), 1));
    for (const SpinField& field : fields)
        SendDlgItemMessageA(page, field.edit, EM_LIMITTEXT, kDigits, 0);
}

/// The texts of the general page, and the sizes of their fields.
constexpr struct {
    int edit;
    size_t size;
} kTexts[] = {{ZO_IDC_TOOL_MENU_TEXT, ZO_TLM_MENU_TEXT_SIZE},
              {ZO_IDC_TOOL_DESCRIPTION, ZO_TLM_DESCRIPTION_SIZE},
              {ZO_IDC_TOOL_PROGRAM, ZO_TLM_PATH_SIZE},
              {ZO_IDC_TOOL_FOLDER, ZO_TLM_PATH_SIZE},
              {ZO_IDC_TOOL_ARGUMENTS, ZO_TLM_PATH_SIZE}};

/// Priority classes in the order of the buttons.
constexpr DWORD kPriorities[] = {NORMAL_PRIORITY_CLASS, HIGH_PRIORITY_CLASS, IDLE_PRIORITY_CLASS,
                                 REALTIME_PRIORITY_CLASS};
constexpr DWORD kAllPriorities =
    NORMAL_PRIORITY_CLASS | HIGH_PRIORITY_CLASS | IDLE_PRIORITY_CLASS | REALTIME_PRIORITY_CLASS;

/// The button of the first class that is set, the normal one last.
int PriorityButton(DWORD creationFlags)
{
    for (int button = 1; button < 4; ++button) {
        if ((creationFlags & kPriorities[button]) != 0)
            return button;
    }
    return 0;
}

} // namespace

// All pages -----------------------------------------------------------------------------------------------------------

CTlmBasePage::CTlmBasePage(UINT templateId) : CZoPropertyPage(templateId), m_record{} {}

CTlmBasePage::~CTlmBasePage() = default;

BOOL CTlmBasePage::Exchange(BOOL save)
{
    return WithoutThrowing([&]() -> BOOL {
        m_record = m_pItem != nullptr ? m_pItem->GetRecord() : ZoToolItemRecord{};
        if (!UpdateData(save))
            return FALSE;
        if (save && m_pItem != nullptr)
            m_pItem->GetRecord() = m_record;
        return TRUE;
    });
}

void CTlmBasePage::Load()
{
    if (m_hWnd == nullptr)
        return;
    Exchange(FALSE);
    if (m_bEnabled)
        UpdateControls();
}

BOOL CTlmBasePage::Save() { return m_hWnd == nullptr || m_pItem == nullptr || Exchange(TRUE); }

void CTlmBasePage::EnablePage(int enable)
{
    m_bEnabled = enable;
    if (m_hWnd == nullptr)
        return;
    for (HWND control = ::GetWindow(m_hWnd, GW_CHILD); control != nullptr; control = ::GetWindow(control, GW_HWNDNEXT))
        ::EnableWindow(control, enable);
    if (enable)
        UpdateControls();
}

BOOL CTlmBasePage::OnInitDialog()
{
    Load();
    EnablePage(m_bEnabled);
    return TRUE;
}

BOOL CTlmBasePage::OnSetActive()
{
    Load();
    return TRUE;
}

BOOL CTlmBasePage::OnKillActive() { return Save(); }

void CTlmBasePage::EnableField(int edit, BOOL enable) const
{
    const HWND field = Control(edit);
    ::EnableWindow(::GetWindow(field, GW_HWNDPREV), enable && m_bEnabled); // its label
    ::EnableWindow(field, enable && m_bEnabled);
    ::EnableWindow(::GetWindow(field, GW_HWNDNEXT), enable && m_bEnabled); // its spin buttons
}

BOOL CTlmBasePage::IsChecked(int check) const { return IsDlgButtonChecked(check) == BST_CHECKED; }

void CTlmBasePage::ExchangeFlag(CDataExchange* exchange, int check, DWORD& flags, DWORD bits)
{
    int checked = (flags & bits) != 0;
    DDX_Check(exchange, check, checked);
    if (exchange->m_bSaveAndValidate)
        flags = checked != 0 ? flags | bits : flags & ~bits;
}

void CTlmBasePage::ExchangeNumber(CDataExchange* exchange, int edit, DWORD& number, int maximum) const
{
    if (exchange->m_bSaveAndValidate && !::IsWindowEnabled(Control(edit))) {
        // A number that nobody uses is no reason to stay, but one that was entered while it was used is kept.
        const int entered = static_cast<int>(GetDlgItemInt(edit, nullptr, FALSE));
        if (entered >= 1 && entered <= maximum)
            number = static_cast<DWORD>(entered);
        return;
    }
    DDX_Text(exchange, edit, number);
    ZoDDV_CfgMinMaxDWordStr(exchange, number, 1, static_cast<DWORD>(maximum), 0);
}

void CTlmBasePage::ExchangeText(CDataExchange* exchange, int edit, char* field, size_t size)
{
    // Not by the item's operations, which leave the last byte but one unused: what a person sees in the field is kept.
    CString text(field, static_cast<int>(strnlen(field, size)));
    DDX_Text(exchange, edit, text);
    ZoDDV_CfgMaxMinCharsStr(exchange, text, static_cast<int>(size) - 1, 0, 0, 0);
    if (exchange->m_bSaveAndValidate)
        std::strncpy(field, text, size); // with zeros behind
}

// The general page ----------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CTlmGeneralPage, CTlmBasePage)
    ON_BN_CLICKED(ZO_IDC_TOOL_ASK, OnAsk)
    ON_EN_CHANGE(ZO_IDC_TOOL_MENU_TEXT, OnMenuText)
    ON_BN_CLICKED(ZO_IDC_TOOL_BROWSE_PROGRAM, OnBrowseProgram)
    ON_BN_CLICKED(ZO_IDC_TOOL_BROWSE_FOLDER, OnBrowseFolder)
END_MESSAGE_MAP()

CTlmGeneralPage::CTlmGeneralPage() : CTlmBasePage(ZO_IDD_TOOL_GENERAL) {}

BOOL CTlmGeneralPage::OnInitDialog()
{
    for (const auto& text : kTexts) // counts characters: the exchange counts bytes
        ::SendMessageA(Control(text.edit), EM_LIMITTEXT, text.size - 1, 0);
    return CTlmBasePage::OnInitDialog();
}

void CTlmGeneralPage::DoDataExchange(CDataExchange* pDX)
{
    ExchangeText(pDX, ZO_IDC_TOOL_MENU_TEXT, m_record.szMenuText, sizeof m_record.szMenuText);
    ExchangeText(pDX, ZO_IDC_TOOL_DESCRIPTION, m_record.szDescription, sizeof m_record.szDescription);
    ExchangeText(pDX, ZO_IDC_TOOL_PROGRAM, m_record.szProgramPath, sizeof m_record.szProgramPath);
    ExchangeText(pDX, ZO_IDC_TOOL_FOLDER, m_record.szWorkingDirectory, sizeof m_record.szWorkingDirectory);
    ExchangeText(pDX, ZO_IDC_TOOL_ARGUMENTS, m_record.szArguments, sizeof m_record.szArguments);
    ExchangeFlag(pDX, ZO_IDC_TOOL_IN_MENU, m_record.dwFlags, ZO_TLM_IN_MENU);
    ExchangeFlag(pDX, ZO_IDC_TOOL_ASK, m_record.dwFlags, ZO_TLM_ASK_ARGUMENTS);
    ExchangeFlag(pDX, ZO_IDC_TOOL_MINIMIZED, m_record.dwFlags, ZO_TLM_START_MINIMIZED);
}

void CTlmGeneralPage::ReloadTexts()
{
    CTlmBasePage::ReloadTexts();
    UpdateControls();
}

void CTlmGeneralPage::UpdateControls()
{
    CString caption;
    if (ZoGblLoadString(IsChecked(ZO_IDC_TOOL_ASK) ? ZO_IDS_TOOL_DEFAULT_ARGUMENTS : ZO_IDS_TOOL_ARGUMENTS, caption))
        SetDlgItemText(ZO_IDC_TOOL_ARGUMENTS_LABEL, caption);
}

void CTlmGeneralPage::OnAsk() { UpdateControls(); }

void CTlmGeneralPage::OnMenuText()
{
    ::SendMessageA(::GetParent(m_hWnd), ZO_TLM_MENU_TEXT_CHANGED, 0, reinterpret_cast<LPARAM>(GetItem()));
}

void CTlmGeneralPage::OnBrowseProgram()
{
    WithoutThrowing([this] {
        char path[ZO_TLM_PATH_SIZE] = "";
        GetDlgItemText(ZO_IDC_TOOL_PROGRAM, path, sizeof path);
        if (AskForProgram(this, ZO_IDS_TOOL_CHOOSE_PROGRAM, path))
            SetDlgItemText(ZO_IDC_TOOL_PROGRAM, path);
        return TRUE;
    });
}

void CTlmGeneralPage::OnBrowseFolder()
{
    WithoutThrowing([this] {
        char initial[ZO_TLM_PATH_SIZE] = "";
        char path[ZO_TLM_PATH_SIZE];
        GetDlgItemText(ZO_IDC_TOOL_FOLDER, initial, sizeof initial);
        const CString instruction = LoadText(ZO_IDS_TOOL_CHOOSE_FOLDER);
        if (ZoSelectDirectory(path, sizeof path, m_hWnd, initial, ZO_SELECT_KEEP_CASE, 0, nullptr, instruction) == IDOK)
            SetDlgItemText(ZO_IDC_TOOL_FOLDER, path);
        return TRUE;
    });
}

// The window page -----------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CTlmWindowPage, CTlmBasePage)
    ON_BN_CLICKED(ZO_IDC_TOOL_USE_POSITION, OnUse)
    ON_BN_CLICKED(ZO_IDC_TOOL_USE_SIZE, OnUse)
END_MESSAGE_MAP()

CTlmWindowPage::CTlmWindowPage() : CTlmBasePage(ZO_IDD_TOOL_WINDOW) {}

BOOL CTlmWindowPage::OnInitDialog()
{
    SetRanges(m_hWnd, kWindowFields);
    return CTlmBasePage::OnInitDialog();
}

void CTlmWindowPage::DoDataExchange(CDataExchange* pDX)
{
    ExchangeFlag(pDX, ZO_IDC_TOOL_USE_POSITION, m_record.dwStartupFlags, STARTF_USEPOSITION);
    ExchangeFlag(pDX, ZO_IDC_TOOL_USE_SIZE, m_record.dwStartupFlags, STARTF_USESIZE);
    ExchangeFlag(pDX, ZO_IDC_TOOL_USE_SHOW, m_record.dwStartupFlags, STARTF_USESHOWWINDOW);
    ExchangeFlag(pDX, ZO_IDC_TOOL_BUSY, m_record.dwStartupFlags, STARTF_FORCEONFEEDBACK);
    DWORD* const numbers[] = {&m_record.dwX, &m_record.dwY, &m_record.dwWidth, &m_record.dwHeight};
    for (size_t i = 0; i < std::size(kWindowFields); ++i)
        ExchangeNumber(pDX, kWindowFields[i].edit, *numbers[i], Maximum(kWindowFields[i]));
}

void CTlmWindowPage::UpdateControls()
{
    const BOOL usesPosition = IsChecked(ZO_IDC_TOOL_USE_POSITION);
    const BOOL usesSize = IsChecked(ZO_IDC_TOOL_USE_SIZE);
    EnableField(ZO_IDC_TOOL_LEFT, usesPosition);
    EnableField(ZO_IDC_TOOL_TOP, usesPosition);
    EnableField(ZO_IDC_TOOL_WIDTH, usesSize);
    EnableField(ZO_IDC_TOOL_HEIGHT, usesSize);
}

void CTlmWindowPage::OnUse() { UpdateControls(); }

// The console page ----------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CTlmConsolePage, CTlmBasePage)
    ON_BN_CLICKED(ZO_IDC_TOOL_USE_CONSOLE_SIZE, OnUse)
END_MESSAGE_MAP()

CTlmConsolePage::CTlmConsolePage() : CTlmBasePage(ZO_IDD_TOOL_CONSOLE) {}

BOOL CTlmConsolePage::OnInitDialog()
{
    SetRanges(m_hWnd, kConsoleFields);
    return CTlmBasePage::OnInitDialog();
}

void CTlmConsolePage::DoDataExchange(CDataExchange* pDX)
{
    ExchangeFlag(pDX, ZO_IDC_TOOL_USE_CONSOLE_SIZE, m_record.dwStartupFlags, STARTF_USECOUNTCHARS);
    ExchangeNumber(pDX, ZO_IDC_TOOL_COLUMNS, m_record.dwColumns, kConsoleMaximum);
    ExchangeNumber(pDX, ZO_IDC_TOOL_ROWS, m_record.dwRows, kConsoleMaximum);
    const bool wasFullScreen = (m_record.dwStartupFlags & STARTF_RUNFULLSCREEN) != 0;
    ExchangeFlag(pDX, ZO_IDC_TOOL_FULL_SCREEN, m_record.dwStartupFlags, STARTF_RUNFULLSCREEN);
    if (!wasFullScreen && (m_record.dwStartupFlags & STARTF_RUNFULLSCREEN) != 0)
        ZoDDV_CfgMessageBox(pDX, ZO_IDS_TOOL_FULL_SCREEN, ZO_IDC_TOOL_FULL_SCREEN, MB_YESNO | MB_ICONQUESTION, 0);
}

void CTlmConsolePage::UpdateControls()
{
    const BOOL usesSize = IsChecked(ZO_IDC_TOOL_USE_CONSOLE_SIZE);
    EnableField(ZO_IDC_TOOL_COLUMNS, usesSize);
    EnableField(ZO_IDC_TOOL_ROWS, usesSize);
}

void CTlmConsolePage::OnUse() { UpdateControls(); }

// The options page ----------------------------------------------------------------------------------------------------

CTlmOptionsPage::CTlmOptionsPage() : CTlmBasePage(ZO_IDD_TOOL_OPTIONS) {}

void CTlmOptionsPage::DoDataExchange(CDataExchange* pDX)
{
    DWORD& flags = m_record.dwCreationFlags;
    int button = PriorityButton(flags);
    DDX_Radio(pDX, ZO_IDC_TOOL_PRIORITY, button);
    if (pDX->m_bSaveAndValidate)
        flags = (flags & ~kAllPriorities) | kPriorities[button >= 0 ? button : 0];
    ExchangeFlag(pDX, ZO_IDC_TOOL_NEW_CONSOLE, flags, CREATE_NEW_CONSOLE);
    ExchangeFlag(pDX, ZO_IDC_TOOL_DETACHED, flags, DETACHED_PROCESS);
    ExchangeFlag(pDX, ZO_IDC_TOOL_NEW_GROUP, flags, CREATE_NEW_PROCESS_GROUP);
    ExchangeFlag(pDX, ZO_IDC_TOOL_SEPARATE, flags, CREATE_SEPARATE_WOW_VDM);
}
