// The wizard that translates a file: a table, the file, the name of the new one.
#include "commands.h"

#include "options.h"
#include "workbench_ids.h"

#include <zogbl/ask_name_dialog.h>
#include <zogbl/file_open_wizard_page.h>
#include <zogbl/wizard.h>

namespace {

/// Which table, and in which direction.
class TablePage : public CZoWizardPage {
public:
    explicit TablePage(TranslationPage& page) : CZoWizardPage(ZO_IDD_WIZARD_TABLE), m_page(page) {}
    bool IsReceived() const { return m_isReceived; }

protected:
    BOOL OnInitDialog() override;
    int FindFault(CString& reason) override;
    BOOL OnNext() override;

private:
    TranslationPage& m_page;
    CStringArray m_paths; // of the tables, in the order of the list
    bool m_isReceived = true;
};

BOOL TablePage::OnInitDialog()
{
    CZoWizardPage::OnInitDialog();
    CheckRadioButton(ZO_IDC_WIZARD_RECEIVED, ZO_IDC_WIZARD_SENT, ZO_IDC_WIZARD_RECEIVED);
    CString chosen;
    m_page.GetTable().GetFilePath(chosen);
    WIN32_FIND_DATA found = {};
    const HANDLE search = ::FindFirstFile(TranslationPage::TablesFolder() + "*.IOT", &found);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = ::FindNextFile(search, &found)) {
        const CString path = TranslationPage::TablesFolder() + found.cFileName;
        CGblTranslate table;
        CString text;
        if (table.Load(path) == ZO_TRANSLATE_SUCCESS)
            table.GetDescription(text);
        text += text.IsEmpty() ? CString(found.cFileName) : CString(" (") + found.cFileName + ")";
        const auto row = SendDlgItemMessage(ZO_IDC_WIZARD_TABLES, LB_ADDSTRING, 0,
                                            reinterpret_cast<LPARAM>(static_cast<LPCSTR>(text)));
        if (row < 0)
            continue; // no memory for it
        m_paths.Add(path);
        if (m_paths.GetSize() == 1 || path.CompareNoCase(chosen) == 0)
            SendDlgItemMessage(ZO_IDC_WIZARD_TABLES, LB_SETCURSEL, static_cast<WPARAM>(row));
    }
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
    return TRUE;
}

int TablePage::FindFault(CString& reason)
{
    if (SendDlgItemMessage(ZO_IDC_WIZARD_TABLES, LB_GETCURSEL) >= 0)
        return 0;
    reason = Text(ZO_IDS_WIZARD_NO_TABLE);
    return ZO_IDC_WIZARD_TABLES;
}

BOOL TablePage::OnNext()
{
    const int row = static_cast<int>(SendDlgItemMessage(ZO_IDC_WIZARD_TABLES, LB_GETCURSEL));
    m_isReceived = IsDlgButtonChecked(ZO_IDC_WIZARD_RECEIVED) == BST_CHECKED;
    const DWORD status = m_page.LoadTable(m_paths[row]);
    TellStatus(ZO_IDS_WIZARD_BAD_TABLE, status);
    return status == ZO_TRANSLATE_SUCCESS;
}

/// What the new file is called.
class ResultPage : public CZoWizardPage {
public:
    explicit ResultPage(const CZoFileOpenWizardPage& source) : CZoWizardPage(ZO_IDD_WIZARD_RESULT), m_source(source) {}
    CString GetPath() const { return Folder() + m_name; }

protected:
    void OnShow() override;
    int FindFault(CString& reason) override;
    BOOL OnNext() override;

private:
    CString Folder() const
    {
        const CString path = m_source.GetPathName();
        return path.Left(path.GetLength() - m_source.GetFileName().GetLength());
    }
    CString TypedName() const;

    const CZoFileOpenWizardPage& m_source;
    CString m_shownSource; // for which a name was proposed
    CString m_name;
};

CString ResultPage::TypedName() const
{
    CString name;
    GetDlgItem(ZO_IDC_WIZARD_NAME)->GetWindowText(name);
    name.TrimLeft();
    name.TrimRight();
    return name;
}

void ResultPage::OnShow()
{
    if (m_shownSource == m_source.GetPathName())
        return;
    m_shownSource = m_source.GetPathName();
    SetDlgItemText(ZO_IDC_WIZARD_FOLDER, Folder());
    const CString file = m_source.GetFileName(), extension = m_source.GetFileExt();
    const int stem = file.GetLength() - extension.GetLength() - (file.Find('.') >= 0 ? 1 : 0);
    CString name;
    name.Format(Text(ZO_IDS_WIZARD_NEW_NAME), static_cast<LPCSTR>(file.Left(stem)),
                static_cast<LPCSTR>(file.Mid(stem)));
    SetDlgItemText(ZO_IDC_WIZARD_NAME, name);
}

int ResultPage::FindFault(CString& reason)
{
    const CString name = TypedName(), path = Folder() + name;
    CZoAskNameDialog rules("", ""); // it knows what a file can be called
    CString culprit;
    if (name.IsEmpty() || !rules.SetFileName())
        return ZO_IDC_WIZARD_NAME; // something is missing
    if (rules.FindFault(name, culprit) != CZoAskNameDialog::Fault::kNone || path.GetLength() >= MAX_PATH)
        reason = Text(ZO_IDS_WIZARD_BAD_NAME);
    else if (::GetFileAttributes(path) != INVALID_FILE_ATTRIBUTES)
        reason = Text(ZO_IDS_WIZARD_NAME_TAKEN);
    else
        return 0;
    return ZO_IDC_WIZARD_NAME;
}

BOOL ResultPage::OnNext()
{
    m_name = TypedName();
    return TRUE;
}

class DonePage : public CZoWizardPage {
public:
    explicit DonePage(const TranslationPage& page) : CZoWizardPage(ZO_IDD_WIZARD_DONE), m_page(page) {}

protected:
    void OnShow() override { SetDlgItemText(ZO_IDC_WIZARD_DONE, m_page.GetState()); }
    void ReloadTexts() override
    {
        CZoWizardPage::ReloadTexts();
        OnShow();
    }

private:
    const TranslationPage& m_page;
};

class TranslationWizard : public CZoWizardSheet {
public:
    TranslationWizard(CWnd* owner, TranslationPage& page, LPCSTR folder)
        : CZoWizardSheet(ZO_IDS_WIZARD_TITLE, owner), m_page(page), m_table(page), m_done(page)
    {
        m_source.m_ofn.lpstrInitialDir = folder;
        SetAct(ZO_IDS_WIZARD_ACT);
        SetPicture(ZO_IDB_WIZARD);
        m_areAdded = AddPage(&m_table) && AddPage(&m_source) && AddPage(&m_result);
        SetResultPage(&m_done);
    }
    bool AreAdded() const { return m_areAdded; }

protected:
    BOOL OnFinish() override;

private:
    TranslationPage& m_page;
    TablePage m_table;
    const CString m_filter = FileFilter();
    CZoFileOpenWizardPage m_source{TRUE, 0, nullptr, nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, m_filter};
    ResultPage m_result{m_source};
    DonePage m_done;
    bool m_areAdded;
};

BOOL TranslationWizard::OnFinish()
{
    bool isStarted = false, isCancelled = false;
    const auto onProgress = [&](ULONGLONG done, ULONGLONG size) {
        if (!isStarted)
            StartWork(Text(ZO_IDS_WIZARD_WORK), static_cast<LONGLONG>(size));
        isStarted = true;
        isCancelled = !SetPosition(static_cast<LONGLONG>(done));
        return !isCancelled;
    };
    const BOOL done =
        m_page.TranslateFile(m_source.GetPathName(), m_result.GetPath(), m_table.IsReceived(), onProgress);
    if (!done && !isCancelled)
        AfxMessageBox(m_page.GetState(), MB_ICONEXCLAMATION);
    return done;
}

} // namespace

INT_PTR TranslateFileByWizard(CWnd* owner, TranslationPage& page, LPCSTR folder)
{
    TranslationWizard wizard(owner, page, folder);
    const INT_PTR result = wizard.AreAdded() ? wizard.DoModal() : -1;
    if (result == -1)
        AfxMessageBox(Text(ZO_IDS_DIALOG_NOT_OPENED), MB_ICONEXCLAMATION);
    return result;
}
