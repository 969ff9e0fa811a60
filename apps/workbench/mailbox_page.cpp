#include "mailbox_page.h"

#include "workbench_ids.h"

#include <zogbl/status.h>

#include <iterator>

namespace {

enum Button { kNew, kDelete, kMakeDefault, kMakeFolders };
constexpr UINT kButtonTexts[] = {ZO_IDS_RECORDS_NEW, ZO_IDS_RECORDS_DELETE, ZO_IDS_MAILBOX_MAKE_DEFAULT,
                                 ZO_IDS_MAILBOX_MAKE_FOLDERS};

CString NumberText(DWORD number)
{
    CString text;
    text.Format("%08lu", number);
    return text;
}

} // namespace

MailBoxPage::MailBoxPage() : RecordPage(kButtonTexts) {}

UINT MailBoxPage::GetTitleId() const { return ZO_IDS_PAGE_MAILBOXES; }
UINT MailBoxPage::GetCommandId() const { return ZO_ID_VIEW_MAILBOXES; }

// The list ------------------------------------------------------------------------------------------------------------

DWORD MailBoxPage::FillList(CListBox& list)
{
    const BOOL loaded = m_mailBoxes.Load();
    const DWORD standard = m_mailBoxes.GetUserDefault();
    for (int i = 0; i < m_mailBoxes.GetCount(); ++i) {
        const tagREGMAILBOXSTRUCT& mailBox = *m_mailBoxes.GetAt(i);
        CString text = mailBox.m_csName;
        if (mailBox.m_dwNumber == standard)
            text.Format(Text(ZO_IDS_MAILBOX_DEFAULT), static_cast<LPCSTR>(mailBox.m_csName));
        list.AddString(text);
    }
    return loaded && CanBeWritten() ? ERROR_SUCCESS : ZoErrBadData;
}

/// Whether writing the list would put everything back that was read: not a mailbox without a readable name, which is
/// loaded as "BadBox", one without a number, loaded as 0, or two with one number.
bool MailBoxPage::CanBeWritten() const
{
    for (int i = 0; i < m_mailBoxes.GetCount(); ++i) {
        const tagREGMAILBOXSTRUCT* mailBox = m_mailBoxes.GetAt(i);
        if (mailBox->m_dwNumber == 0 || mailBox->m_csName == "BadBox" ||
            m_mailBoxes.GetByNumber(mailBox->m_dwNumber) != mailBox)
            return false;
    }
    return true;
}

CString MailBoxPage::GetStateText() const
{
    CString text;
    text.Format(Text(ZO_IDS_MAILBOX_COUNT), m_mailBoxes.GetCount());
    return text;
}

CString MailBoxPage::Describe(int index) const
{
    const tagREGMAILBOXSTRUCT& mailBox = *m_mailBoxes.GetAt(index);
    CString description;
    AddLine(description, ZO_IDS_MAILBOX_NUMBER, NumberText(mailBox.m_dwNumber));
    AddLine(description, ZO_IDS_MAILBOX_NAME, mailBox.m_csName);
    if (m_folderOwner == mailBox.m_dwNumber && !m_folders[0].IsEmpty()) {
        for (int folder = 0; folder < static_cast<int>(std::size(m_folders)); ++folder)
            AddLine(description, ZO_IDS_MAILBOX_FOLDER_FIRST + static_cast<UINT>(folder), m_folders[folder]);
    }
    return description;
}

DWORD MailBoxPage::AddNamed(const CString& name)
{
    const DWORD status = AddMailBox(name);
    Refresh();
    return status;
}

void MailBoxPage::ListNames(CStringArray& names)
{
    CZoRegMailBoxes mailBoxes;
    mailBoxes.Load(); // as many as can be; the rest is told when one is added
    for (int i = 0; i < mailBoxes.GetCount(); ++i)
        names.Add(mailBoxes.GetAt(i)->m_csName);
}

// Buttons -------------------------------------------------------------------------------------------------------------

bool MailBoxPage::CanDo(int button, int index) const
{
    const bool writes = button == kNew || button == kDelete;
    return (button == kNew || index >= 0) && (!writes || IsComplete());
}

DWORD MailBoxPage::Do(int button, int index)
{
    if (button == kNew)
        return AddMailBox("");
    const DWORD number = m_mailBoxes.GetAt(index)->m_dwNumber;
    switch (button) {
    case kDelete:
        if (!m_mailBoxes.Load() || !CanBeWritten()) // with what others have written
            return ZoErrBadData;
        return m_mailBoxes.Remove(number) ? Write() : ERROR_SUCCESS;
    case kMakeDefault:
        CZoRegMailBoxes::SetUserDefault(number);
        return ERROR_SUCCESS;
    default:
        return MakeFolders(number);
    }
}

DWORD MailBoxPage::AddMailBox(const CString& name)
{
    if (!m_mailBoxes.Load() || !CanBeWritten()) // with what others have written
        return ZoErrBadData;
    DWORD number = 1;
    while (m_mailBoxes.DoesNumberExist(number))
        ++number;
    CString numbered;
    numbered.Format(Text(ZO_IDS_MAILBOX_NEW_NAME), number);
    if (m_mailBoxes.Add(number, name.IsEmpty() ? numbered : name) == nullptr)
        return ZoErrOutOfMemory;
    Choose(m_mailBoxes.GetCount() - 1);
    return Write();
}

/// Writing deletes the user's default, so it is set again unless its mailbox is gone.
DWORD MailBoxPage::Write()
{
    const DWORD standard = m_mailBoxes.GetUserDefault();
    const BOOL written = m_mailBoxes.Write();
    if (m_mailBoxes.GetByNumber(standard) != nullptr)
        CZoRegMailBoxes::SetUserDefault(standard);
    return written ? ERROR_SUCCESS : ZoErrBadData;
}

DWORD MailBoxPage::MakeFolders(DWORD number)
{
    for (int folder = 0; folder < static_cast<int>(std::size(m_folders)); ++folder) {
        if (!CZoRegMailBoxes::GetMailBoxPath(number, m_folders[folder], static_cast<MAILBOXFOLDER>(folder)))
            return ZoErrBadData;
    }
    m_folderOwner = number;
    return ERROR_SUCCESS;
}
