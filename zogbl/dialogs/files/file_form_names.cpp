// What is typed as a name: a folder, a pattern, or the name itself.
#include "file_form_parts.h"

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/tell_user.h"
#include "ground/bounded_text.h"
#include "place_list.h"
#include "recent_folders.h"

#include <algorithm>

namespace {

/// Puts back what a buffer held, unless told that it may stay.
class Restored {
public:
    explicit Restored(LPSTR buffer) : m_buffer(buffer), m_before(buffer) {}
    ~Restored()
    {
        if (!m_stays)
            std::memcpy(m_buffer, (LPCSTR)m_before, static_cast<size_t>(m_before.GetLength()) + 1);
    }
    Restored(const Restored&) = delete;
    Restored& operator=(const Restored&) = delete;
    void Stay() { m_stays = true; }

private:
    LPSTR m_buffer;
    CString m_before;
    bool m_stays = false;
};

bool IsThere(DWORD attributes) { return attributes != INVALID_FILE_ATTRIBUTES; }

bool IsQuotedName(const CString& typed)
{
    const int length = typed.GetLength();
    return length >= 2 && typed[0] == '"' && typed[length - 1] == '"';
}

CString WithoutQuotes(const CString& typed)
{
    return IsQuotedName(typed) ? typed.Mid(1, typed.GetLength() - 2) : typed;
}

} // namespace

BOOL FileFormParts::TakeName()
{
    const HWND focus = ::GetFocus();
    if (focus != nullptr && focus == m_folders.m_hWnd) {
        if (!m_folders.GetSelectedFolder().IsEmpty())
            GoTo(m_folders.GetSelectedFolder());
        return FALSE;
    }
    const CString typed = m_name.GetTyped();
    const bool isSame = typed == m_csTyped;
    if (std::exchange(m_bWaits, false) && isSame)
        return TRUE;
    if (m_work != nullptr && m_purpose == Purpose::kName && isSame)
        return FALSE; // it is being looked up
    m_bTaken = false;
    if (typed.IsEmpty())
        m_name.TakeFocus();
    else
        LookUp(typed);
    return m_bTaken;
}

BOOL FileFormParts::IsUnchanged() const
{
    const CString typed = m_name.GetTyped();
    return typed == m_csSettled && (typed.IsEmpty() || m_csFolder == m_csSettledFolder);
}

void FileFormParts::LookUp(const CString& typed)
{
    m_csTyped = typed;
    const CString name = WithoutQuotes(typed);
    if (!IsQuotedName(typed) && name.FindOneOf("*?") >= 0) {
        TakePattern(name);
        return;
    }
    const CString path = ResolvePath(m_csFolder, name);
    if (path.IsEmpty()) {
        Refuse(ZO_IDS_FILE_TOO_LONG, name);
    } else if (!IsValidPath(path)) {
        Refuse(ZO_IDS_FILE_INVALID, name);
    } else {
        PlaceQuestion question;
        question.named = path;
        if (WantsExtension(typed))
            question.extended = path + '.' + m_form.m_ofn.lpstrDefExt;
        question.patterns = PatternsInForce();
        Ask(Purpose::kName, path, std::move(question));
    }
}

/// A pattern for the list, perhaps with a folder before it.
void FileFormParts::TakePattern(const CString& typed)
{
    const int offset = NameOffset(typed);
    const CString folder = offset > 0 ? ResolvePath(m_csFolder, typed.Left(offset)) : m_csFolder;
    if (!IsValidPath(folder)) {
        Refuse(ZO_IDS_FILE_INVALID, typed);
        return;
    }
    m_csPattern = typed.Mid(offset);
    GoTo(folder);
    m_name.ShowName(m_csPattern);
}

bool FileFormParts::WantsExtension(const CString& typed) const
{
    const OPENFILENAMEA& ofn = m_form.m_ofn;
    return !IsQuotedName(typed) && ofn.lpstrDefExt != nullptr && *ofn.lpstrDefExt != '\0' &&
           !HasExtension(typed.Mid(NameOffset(typed)), ofn.lpstrDefExt, ofn.lpstrFilter);
}

void FileFormParts::TakeLookedUp(const PlaceAnswer& answer)
{
    const CString name = WithoutQuotes(m_csTyped);
    CString path = m_csTarget;
    DWORD attributes = answer.attributes;
    if (answer.isFolder && !answer.folder.IsEmpty()) {
        Show(answer);
        m_name.ShowName("");
        return;
    }
    GiveUp();
    if (answer.isFolder) {
        Refuse(ZO_IDS_FOLDER_UNREADABLE, path);
    } else if (NameOffset(name) == name.GetLength() || NameOffset(path) == path.GetLength()) { // ends in a backslash
        Refuse(ZO_IDS_FILE_FOLDER_MISSING, path);
    } else {
        if (WantsExtension(m_csTyped) && !(m_form.IsOpenDialog() && IsThere(attributes))) {
            path += CString('.') + m_form.m_ofn.lpstrDefExt;
            attributes = answer.extendedAttributes;
        }
        if (path.GetLength() >= (std::min)(static_cast<int>(m_form.m_ofn.nMaxFile), MAX_PATH))
            Refuse(ZO_IDS_FILE_TOO_LONG, name);
        else if (IsAcceptable(path, attributes, answer.hasParent))
            Finish(path);
    }
}

bool FileFormParts::IsAcceptable(const CString& path, DWORD attributes, bool hasFolder)
{
    const DWORD flags = m_form.m_ofn.Flags;
    const bool exists = IsThere(attributes);
    if ((flags & OFN_NOVALIDATE) != 0)
        return true;
    if ((flags & (OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST)) != 0 && !hasFolder)
        return Refuse(ZO_IDS_FILE_FOLDER_MISSING, path);
    if (!exists && (flags & OFN_FILEMUSTEXIST) != 0)
        return Refuse(ZO_IDS_FILE_MISSING, path);
    if (!exists && (flags & OFN_CREATEPROMPT) != 0)
        return Tell(ZO_IDS_FILE_CREATE, path, MB_YESNO | MB_ICONQUESTION) == IDYES;
    if (exists && (flags & OFN_NOREADONLYRETURN) != 0 && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return Refuse(ZO_IDS_FILE_WRITE_PROTECTED, path);
    if (exists && !m_form.IsOpenDialog() && (flags & OFN_OVERWRITEPROMPT) != 0)
        return Tell(ZO_IDS_FILE_EXISTS, path, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
    return true;
}

/// Hands the path over, if a derived class agrees.
void FileFormParts::Finish(const CString& path)
{
    OPENFILENAMEA& ofn = m_form.m_ofn;
    Restored buffer(ofn.lpstrFile);
    CopyBounded(ofn.lpstrFile, ofn.nMaxFile, path);
    if (m_form.OnFileNameOK())
        return;
    buffer.Stay();
    const int offset = path.ReverseFind('\\') + 1;
    const int dot = path.ReverseFind('.');
    ofn.nFileOffset = static_cast<WORD>(offset);
    ofn.nFileExtension = static_cast<WORD>(dot >= offset ? dot + 1 : 0);
    ofn.Flags &= ~static_cast<DWORD>(OFN_EXTENSIONDIFFERENT | OFN_READONLY);
    if (ofn.lpstrDefExt != nullptr && ofn.nFileExtension != 0 &&
        ::lstrcmpiA((LPCSTR)path + ofn.nFileExtension, ofn.lpstrDefExt) != 0)
        ofn.Flags |= OFN_EXTENSIONDIFFERENT;
    if ((ofn.Flags & OFN_HIDEREADONLY) == 0 && m_window.IsDlgButtonChecked(ZO_IDC_FILE_READ_ONLY) == BST_CHECKED)
        ofn.Flags |= OFN_READONLY;
    if (m_types.GetIndex() > 0)
        ofn.nFilterIndex = m_types.GetIndex();
    m_csSettled = m_csTyped;
    m_csSettledFolder = m_csFolder;
    m_bTaken = true;
    WithoutThrowing([&] { KeepRecentFolder(ParentOf(path)); });
}

/// The window, or the sheet that it is a page of.
const CWnd& FileFormParts::Owner() const
{
    const CWnd* parent = (m_window.GetStyle() & WS_CHILD) != 0 ? m_window.GetParent() : nullptr;
    return parent != nullptr ? *parent : m_window;
}

/// \return the answer
int FileFormParts::Tell(UINT message, LPCSTR path, UINT type) const { return AskUser(Owner(), message, path, type); }

/// Says why a name cannot be taken, and lets it be corrected. \return false
bool FileFormParts::Refuse(UINT message, LPCSTR path)
{
    Tell(message, path, MB_OK | MB_ICONEXCLAMATION);
    m_name.TakeFocus();
    return false;
}
