/// \file
/// Mailboxes: where answering functions keep messages.
#pragma once

#include <zogbl/export.h>

#include <afxcoll.h>
#include <afxtempl.h>

struct tagREGMAILBOXSTRUCT {
    DWORD m_dwNumber;
    CString m_csName;
};
using REGMAILBOXSTRUCT = tagREGMAILBOXSTRUCT;

/// The folders of a mailbox.
enum MAILBOXFOLDER {
    MAILBOXFOLDER_INBOX = 0,
    MAILBOXFOLDER_OUTBOX = 1,
    MAILBOXFOLDER_BOXSETUP = 2,
    MAILBOXFOLDER_PROMPTS = 3, ///< below BOXSETUP
    MAILBOXFOLDER_ROOT = 4,    ///< the mailbox's own folder; so is any other value
    MAILBOXFOLDER_ARCHIVE = 5
};

/// The mailboxes of the product that the running executable belongs to, all its users' alike, in the order in which
/// they were loaded or added. In the registry:
///
///     HKEY_LOCAL_MACHINE\<root key of the product>\MailBoxes            UserDefault
///     HKEY_LOCAL_MACHINE\<root key of the product>\MailBoxes\00000012   Name
///
/// Records belong to the list; their addresses hold until they are removed or loaded anew. Nothing is thrown.
class ZOGBL_API CZoRegMailBoxes : public CObject {
public:
    CZoRegMailBoxes();
    ~CZoRegMailBoxes() override;

    /// Replaces the list by what the registry has; nothing there gives an empty list and TRUE. A mailbox whose name
    /// cannot be read, or has more than 255 characters, is named "BadBox"; a subkey whose name is no number has the
    /// number 0. The Write of another program is waited for, up to five seconds. If the registry changes in another way
    /// meanwhile, it is read again, at most 16 times in all.
    /// \return FALSE, with an empty list: the executable belongs to no registered product, the registry cannot be
    /// listed, no two readings in a row were the same, another program did not end its Write, or memory has run out.
    BOOL Load();
    /// Replaces the registry's mailboxes by the list, for good or ill: everything there is deleted first, the user's
    /// default included, so follow with SetUserDefault to keep it.
    /// \return FALSE: the executable belongs to no registered product, a name has more than 255 bytes, or another
    /// program did not end its own Write or Load within five seconds, nothing is changed then; what was there could not
    /// be deleted, or not all of it, nothing is written then; a mailbox could not be written, the others are.
    BOOL Write();

    /// Appends a mailbox; that another has the number is not looked at. Null when memory has run out.
    tagREGMAILBOXSTRUCT* Add(DWORD number, const CString& name);
    /// Deletes the first mailbox with that number, or with that mailbox's number. FALSE if there is none.
    BOOL Remove(DWORD number);
    BOOL Remove(tagREGMAILBOXSTRUCT* mailBox);
    void RemoveAll();

    int GetCount() const { return static_cast<int>(m_mailBoxes.GetSize()); }
    /// The mailbox at a position, 0 to GetCount() - 1.
    tagREGMAILBOXSTRUCT* GetAt(int position) const { return m_mailBoxes.GetAt(position); }
    tagREGMAILBOXSTRUCT* GetByNumber(DWORD number) const; ///< the first with that number, or null
    /// The first mailbox of the list, whichever the user's default is; null for an empty list.
    tagREGMAILBOXSTRUCT* GetDefault() const;

    /// The number of the user's default mailbox. As long as none was set: that of the first one, 0 for an empty list.
    DWORD GetUserDefault() const;
    static void SetUserDefault(DWORD number);

    // These two load the list if it is empty.

    BOOL IsNameUnique(const char* name); ///< FALSE if a mailbox has that name, case ignored
    BOOL DoesNumberExist(DWORD number);

    /// Puts together the path of a mailbox's folder, "MAILBOX\00000012\INBOX" beside the running executable, and makes
    /// the folder if it is not there. A number that no mailbox has stands for the first mailbox.
    /// \return FALSE, \p path unchanged: there are no mailboxes, or no memory. TRUE also when the folder could not be
    /// made.
    static BOOL GetMailBoxPath(DWORD number, CString& path, MAILBOXFOLDER folder);

protected:
    /// Deletes the registry's mailboxes with all that is kept with them. \return whether nothing is there any more.
    BOOL ClearRegistry();
    /// Appends the name to a CStringArray. \return 0, or ZoErrMemoryException, which ends the enumeration.
    static DWORD EnumKeysCallback(void* array, const char* name);

private:
    BOOL LoadNames(const CString& key);
    static DWORD ReadNames(const CString& key, CStringArray& reading);
    BOOL AddNames(const CStringArray& reading);
    BOOL WriteNames(const CString& key);

    CArray<tagREGMAILBOXSTRUCT*, tagREGMAILBOXSTRUCT*> m_mailBoxes;
};
