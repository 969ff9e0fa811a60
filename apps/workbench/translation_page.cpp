#include "translation_page.h"

#include "workbench_ids.h"

#include <zogbl/file_open.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr UINT kBlock = 64 * 1024;
constexpr UINT kMostShown = 8 * 1024; // of a file's beginning
constexpr int kMargin = 8;

enum ControlId : UINT { kChooseId = 100, kEditId, kReceivedId, kSentId, kTranslateId, kBeforeId, kAfterId };

/// The beginning of a file, for the eye: without zeros, which would end the text. Throws CFileException*.
CString ReadBeginning(LPCSTR path)
{
    CFile file(path, CFile::modeRead | CFile::shareDenyNone);
    CString text;
    const LPSTR buffer = text.GetBuffer(kMostShown);
    const UINT read = file.Read(buffer, kMostShown);
    std::replace(buffer, buffer + read, '\0', ' ');
    text.ReleaseBuffer(static_cast<int>(read));
    return text;
}

CString FullPath(LPCSTR path)
{
    char full[MAX_PATH] = "";
    const DWORD length = ::GetFullPathName(path, sizeof full, full, nullptr);
    return length > 0 && length < sizeof full ? full : path;
}

} // namespace

CString FileFilter()
{
    CString filter = Text(ZO_IDS_TRANSLATION_FILTER);
    for (int bar = filter.Find('|'); bar >= 0; bar = filter.Find('|', bar + 1))
        filter.SetAt(bar, '\0');
    return filter;
}

namespace {

/// Asks for a file. \return its path, empty when the user gives up.
CString AskForFile(CWnd* parent, BOOL open, UINT title, LPCSTR name)
{
    const CString filter = FileFilter(), caption = Text(title);
    CZoFileOpen dialog(open, 0, nullptr, name,
                       OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | (open ? OFN_FILEMUSTEXIST : OFN_NOREADONLYRETURN),
                       filter, parent);
    dialog.m_ofn.lpstrTitle = caption;
    return dialog.DoModal() == IDOK ? dialog.GetPathName() : CString();
}

} // namespace

BEGIN_MESSAGE_MAP(TranslationPage, Page)
    ON_BN_CLICKED(kChooseId, OnChoose)
    ON_BN_CLICKED(kEditId, OnEdit)
    ON_BN_CLICKED(kTranslateId, OnTranslate)
END_MESSAGE_MAP()

TranslationPage::TranslationPage() : m_nStateText(ZO_IDS_TRANSLATION_READY) {}

UINT TranslationPage::GetTitleId() const { return ZO_IDS_PAGE_TRANSLATION; }
UINT TranslationPage::GetCommandId() const { return ZO_ID_VIEW_TRANSLATION; }

CString TranslationPage::TablesFolder()
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(nullptr, path, sizeof path - 1);
    const CString program = path;
    return program.Left(program.ReverseFind('\\') + 1) + "TABLES\\";
}

void TranslationPage::CreateControls()
{
    const CRect nowhere;
    constexpr DWORD label = WS_VISIBLE | SS_LEFT | SS_NOPREFIX;
    constexpr DWORD button = WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON;
    constexpr DWORD radio = WS_VISIBLE | BS_AUTORADIOBUTTON;
    m_tableLabel.Create("", label, nowhere, this);
    m_tableName.Create("", label | SS_ENDELLIPSIS, nowhere, this);
    m_choose.Create("", button, nowhere, this, kChooseId);
    m_edit.Create("", button, nowhere, this, kEditId);
    m_received.Create("", radio | WS_GROUP | WS_TABSTOP, nowhere, this, kReceivedId);
    m_sent.Create("", radio, nowhere, this, kSentId);
    m_translate.Create("", button | WS_GROUP, nowhere, this, kTranslateId);
    m_beforeLabel.Create("", label, nowhere, this);
    m_before.Create(this, kBeforeId);
    m_afterLabel.Create("", label, nowhere, this);
    m_after.Create(this, kAfterId);
    m_stateLine.Create("", label | SS_ENDELLIPSIS, nowhere, this);
    m_received.SetCheck(BST_CHECKED);
    m_table.Load(TablesFolder() + "CP437.IOT"); // a table to begin with, if the samples are there
}

void TranslationPage::Reload()
{
    const std::pair<CWnd*, UINT> texts[] = {
        {&m_tableLabel, ZO_IDS_TRANSLATION_TABLE},   {&m_choose, ZO_IDS_TRANSLATION_CHOOSE},
        {&m_edit, ZO_IDS_TRANSLATION_EDIT},          {&m_received, ZO_IDS_TRANSLATION_RECEIVED},
        {&m_sent, ZO_IDS_TRANSLATION_SENT},          {&m_translate, ZO_IDS_TRANSLATION_FILE},
        {&m_beforeLabel, ZO_IDS_TRANSLATION_BEFORE}, {&m_afterLabel, ZO_IDS_TRANSLATION_AFTER}};
    for (const auto& [control, text] : texts)
        control->SetWindowText(Text(text));
    Refresh();
    LayOutAgain();
}

void TranslationPage::Refresh()
{
    CString description, path;
    m_table.GetDescription(description);
    m_table.GetFilePath(path);
    m_tableName.SetWindowText(path.IsEmpty() ? description : description + " (" + path + ")");
    m_stateLine.SetWindowText(GetState());
}

void TranslationPage::Layout(int width, int height)
{
    const int line = LineHeight();
    const int row = line + 10;
    int left = kMargin;
    int top = kMargin;
    const auto place = [&](CWnd& control, int leastWidth, int controlHeight) {
        CString text;
        control.GetWindowText(text);
        const int controlWidth = (std::max)(leastWidth, TextWidth(text) + 24);
        control.MoveWindow(left, top + (row - controlHeight) / 2, controlWidth, controlHeight);
        left += controlWidth + kMargin;
    };
    place(m_tableLabel, 0, line);
    m_tableName.MoveWindow(left, top + (row - line) / 2, (std::max)(width - left - kMargin, 0), line);

    top += row;
    left = kMargin;
    place(m_choose, 90, row);
    place(m_edit, 90, row);

    top += row + kMargin;
    left = kMargin;
    place(m_received, 0, row);
    place(m_sent, 0, row);
    place(m_translate, 90, row);

    top += row + kMargin;
    const int bottom = height - line - kMargin;
    const int half = (bottom - kMargin - top) / 2;
    const std::pair<CWnd*, CWnd*> views[] = {{&m_beforeLabel, &m_before}, {&m_afterLabel, &m_after}};
    for (const auto& [label, view] : views) {
        label->MoveWindow(kMargin, top, width - 2 * kMargin, line);
        view->MoveWindow(kMargin, top + line + 2, width - 2 * kMargin, (std::max)(half - line - kMargin, 0));
        top += half;
    }
    m_stateLine.MoveWindow(kMargin, bottom, width - 2 * kMargin, line);
}

// What the user does --------------------------------------------------------------------------------------------------

void TranslationPage::TellStatus(DWORD status, UINT message)
{
    if (status != ZO_TRANSLATE_SUCCESS) {
        CString text;
        text.Format(Text(message), status);
        AfxMessageBox(text, MB_ICONEXCLAMATION);
    }
    Refresh();
}

void TranslationPage::OnChoose()
{
    CString path;
    m_table.GetFilePath(path);
    TellStatus(m_table.Load(this, path.IsEmpty() ? TablesFolder() + "*.IOT" : path), ZO_IDS_TRANSLATION_TABLE_FAILED);
}

void TranslationPage::OnEdit() { TellStatus(m_table.Edit(this), ZO_IDS_TRANSLATION_NOT_SAVED); }

void TranslationPage::OnTranslate()
{
    const CString from = AskForFile(this, TRUE, ZO_IDS_TRANSLATION_OPEN_TITLE, nullptr);
    const CString to = from.IsEmpty() ? from : AskForFile(this, FALSE, ZO_IDS_TRANSLATION_SAVE_TITLE, from);
    const CWaitCursor wait;
    if (!to.IsEmpty() && !TranslateFile(from, to, m_received.GetCheck() == BST_CHECKED))
        AfxMessageBox(GetState(), MB_ICONEXCLAMATION);
}

DWORD TranslationPage::LoadTable(LPCSTR path)
{
    const DWORD status = m_table.Load(path);
    Refresh();
    return status;
}

CString TranslationPage::GetTranslatedText() const
{
    CString text;
    m_after.GetWindowText(text);
    return text;
}

// Translating ---------------------------------------------------------------------------------------------------------

void TranslationPage::ShowState(UINT text, LPCSTR file, LPCSTR detail)
{
    m_nStateText = text;
    m_csStateFile = file;
    m_csStateDetail = detail;
    Refresh();
}

/// In the present language.
CString TranslationPage::GetState() const
{
    CString state = Text(m_nStateText);
    if (!m_csStateFile.IsEmpty())
        state.Format(CString(state), (LPCSTR)m_csStateFile, (LPCSTR)m_csStateDetail);
    return state;
}

BOOL TranslationPage::TranslateFile(LPCSTR from, LPCSTR to, bool received, const Progress& progress)
{
    if (FullPath(from).CompareNoCase(FullPath(to)) == 0) {
        ShowState(ZO_IDS_TRANSLATION_SAME_FILE);
        return FALSE;
    }
    bool isOpen = false; // the target, which is removed when it cannot be finished
    try {
        CFile source(from, CFile::modeRead | CFile::shareDenyWrite);
        CFile target(to, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
        isOpen = true;
        ULONGLONG bytes = 0;
        const bool isWhole = Translate(source, target, received, progress, bytes);
        target.Close();
        isOpen = false;
        if (!isWhole) {
            ::DeleteFile(to);
            ShowState(ZO_IDS_TRANSLATION_READY);
            return FALSE;
        }
        m_before.SetWindowText(ReadBeginning(from));
        m_after.SetWindowText(ReadBeginning(to));
        ShowState(ZO_IDS_TRANSLATION_DONE, to, std::to_string(bytes).c_str());
        return TRUE;
    } catch (CException* e) {
        const auto* failure = DYNAMIC_DOWNCAST(CFileException, e);
        const CString name =
            failure != nullptr && !failure->m_strFileName.IsEmpty() ? failure->m_strFileName : CString(to);
        char reason[256] = "";
        e->GetErrorMessage(reason, sizeof reason);
        e->Delete();
        if (isOpen)
            ::DeleteFile(to);
        ShowState(ZO_IDS_TRANSLATION_FAILED, name, reason);
    }
    return FALSE;
}

/// \return false: it was ended by \p progress. Throws CFileException*.
bool TranslationPage::Translate(CFile& source, CFile& target, bool received, const Progress& progress, ULONGLONG& done)
{
    std::string block(kBlock, '\0');
    const ULONGLONG size = source.GetLength();
    while (const UINT count = source.Read(block.data(), kBlock)) {
        for (UINT i = 0; i < count; ++i) {
            const auto byte = static_cast<BYTE>(block[i]);
            block[i] = static_cast<char>(received ? m_table.DoGet(byte) : m_table.DoPut(byte));
        }
        target.Write(block.data(), count);
        done += count;
        if (progress != nullptr && !progress(done, size))
            return false;
    }
    return true;
}
