/// \file
/// Mailboxes and their folders.
#pragma once

#include "record_page.h"

#include <zogbl/mailboxes.h>

class MailBoxPage : public RecordPage {
public:
    MailBoxPage();

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;

    /// Adds a mailbox and shows it. \return 0 or a status
    DWORD AddNamed(const CString& name);
    static void ListNames(CStringArray& names); ///< of the mailboxes that can be read

protected:
    DWORD FillList(CListBox& list) override;
    CString Describe(int index) const override;
    DWORD Do(int button, int index) override;
    bool CanDo(int button, int index) const override;
    CString GetStateText() const override;

private:
    DWORD AddMailBox(const CString& name); ///< empty: named by its number
    bool CanBeWritten() const;
    DWORD Write();
    DWORD MakeFolders(DWORD number);

    CZoRegMailBoxes m_mailBoxes; // as they were read last
    CString m_folders[6];        // paths by MAILBOXFOLDER, of the mailbox whose folders were made last
    DWORD m_folderOwner = 0;
};
