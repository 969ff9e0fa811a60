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
    MAILBOXFOLDER_ROOT = 4,    ///< the mailbox's own folder; any value not listed here counts as this
    MAILBOXFOLDER_ARCHIVE = 5
};

/// The mailboxes of the product that the running executable belongs to, shared by all users. The list keeps the order
/// of loading and adding. In the registry:
///
///     HKEY_LOCAL_MACHINE\<root key of the product>\MailBoxes            UserDefault
///     HKEY_LOCAL_MACHINE\<root key of the product>\MailBoxes\00000012   Name
///
/// On a system with named mutexes, Load and Write of the programs of one session never overlap. But if two programs
/// load, change and write, the one that writes last wins: the other's change is lost.
///
/// The list owns its records; a record's address is valid until the record is removed or the list is loaded again.
/// Nothing is thrown.
class ZOGBL_API CZoRegMailBoxes : public CObject {
public:
    CZoRegMailBoxes();
    ~CZoRegMailBoxes() override;

    /// Replaces the list by the registry's mailboxes. If there are none: an empty list and TRUE. A mailbox is named
    /// "BadBox" if its name cannot be read, is empty or has more than 255 bytes. A subkey whose name is no number has
    /// the number 0.
    ///
    /// Waits up to five seconds while another program is within Load or Write. If the registry changes in another way
    /// meanwhile, it is read again, at most 16 times in all.
    /// \return FALSE, with an empty list, if
    ///   - the executable belongs to no registered product,
    ///   - the registry cannot be listed, or no two readings in a row were the same,
    ///   - the other program did not end in time, or
    ///   - memory has run out
    BOOL Load();
    /// Replaces the registry's mailboxes by the list. Everything there is deleted first, also the user's default: call
    /// SetUserDefault afterwards to keep it.
    /// \return FALSE if
    ///   - the executable belongs to no registered product, a name has more than 255 bytes, or another program did not
    ///     end its Load or Write within five seconds: nothing is changed;
    ///   - the mailboxes of the registry could not all be deleted: nothing is written;
    ///   - a mailbox could not be written: the others are;
    ///   - memory has run out in one of these steps.
    BOOL Write();

    /// Appends a mailbox, even if another one has the number. \return null if memory has run out
    tagREGMAILBOXSTRUCT* Add(DWORD number, const CString& name);
    /// Deletes the first mailbox with that number, or with the number of \p mailBox. \return FALSE if there is none
    BOOL Remove(DWORD number);
    BOOL Remove(tagREGMAILBOXSTRUCT* mailBox);
    void RemoveAll();

    int GetCount() const { return static_cast<int>(m_mailBoxes.GetSize()); }
    /// The mailbox at a position, 0 to GetCount() - 1.
    tagREGMAILBOXSTRUCT* GetAt(int position) const { return m_mailBoxes.GetAt(position); }
    tagREGMAILBOXSTRUCT* GetByNumber(DWORD number) const; ///< the first with that number; null if there is none
    /// The first mailbox of the list, not the user's default; null if the list is empty.
    tagREGMAILBOXSTRUCT* GetDefault() const;

    /// The number of the user's default mailbox. If none was set or it cannot be read: the number of the first mailbox
    /// of the list, or 0 if the list is empty.
    DWORD GetUserDefault() const;
    static void SetUserDefault(DWORD number);

    // The next two load the list if it is empty. If that fails, no mailbox is known: TRUE and FALSE.

    BOOL IsNameUnique(const char* name); ///< FALSE if a mailbox of the list has that name, case ignored
    BOOL DoesNumberExist(DWORD number);

    /// Makes the path of a mailbox's folder, "MAILBOX\00000012\INBOX" beside the running executable, and creates the
    /// folder if it is missing. A number that no mailbox has counts as the first mailbox's.
    /// \return FALSE, with \p path unchanged, if no mailbox can be loaded, the executable's path is too long, or memory
    /// has run out. TRUE even if the folder could not be created.
    static BOOL GetMailBoxPath(DWORD number, CString& path, MAILBOXFOLDER folder);

protected:
    /// Deletes the registry's mailboxes and all that is stored with them. \return whether nothing of them is left
    BOOL ClearRegistry();
    /// Appends the name to a CStringArray. \return 0; ZoErrMemoryException ends the enumeration
    static DWORD EnumKeysCallback(void* array, const char* name);

private:
    BOOL LoadNames(const CString& key);
    static DWORD ReadNames(const CString& key, CStringArray& reading);
    BOOL AddNames(const CStringArray& reading);
    BOOL WriteNames(const CString& key);

    CArray<tagREGMAILBOXSTRUCT*, tagREGMAILBOXSTRUCT*> m_mailBoxes;
};
