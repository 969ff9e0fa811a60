#include <zogbl/document_save.h>

#include <common/without_throwing.h>
#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/dialog_resource.h"
#include "files/file_identity.h"
#include "ground/bounded_text.h"

namespace {

constexpr char kEveryFile[] = "*.*";

/// The entries of a filter list, each ended by a NUL. Everything here throws CMemoryException*.
class Filter {
public:
    void Add(const CString& name, const CString& patterns) { m_text += name + '\0' + patterns + '\0'; }
    LPCSTR Get() const { return m_text; } // ends in a second NUL, that of the text itself

private:
    CString m_text;
};

/// The extension of a type, with its dot; empty when it has none.
CString ExtensionOf(const CDocTemplate* type)
{
    CString extension;
    type->GetDocString(extension, CDocTemplate::filterExt);
    return extension;
}

/// \return whether the type can be offered: it has a name and an extension.
bool AddType(Filter& filter, const CDocTemplate* type)
{
    CString name;
    const CString extension = ExtensionOf(type);
    if (!type->GetDocString(name, CDocTemplate::filterName) || name.IsEmpty() || extension.IsEmpty())
        return false;
    filter.Add(name, "*" + extension);
    return true;
}

void AddAllTypes(Filter& filter, const CWinApp* app)
{
    CString patterns;
    int count = 0;
    for (POSITION position = app->GetFirstDocTemplatePosition(); position != nullptr;) {
        const CString extension = ExtensionOf(app->GetNextDocTemplate(position));
        if (extension.IsEmpty())
            continue;
        if (count++ > 0)
            patterns += ';';
        patterns += "*" + extension;
    }
    patterns.MakeLower();
    if (count > 1)
        filter.Add(LoadText(ZO_IDS_FILTER_ALL_TYPES, patterns), patterns);
    for (POSITION position = app->GetFirstDocTemplatePosition(); position != nullptr;)
        AddType(filter, app->GetNextDocTemplate(position));
}

/// A file name made of a title, for the type of a document.
CString NameFromTitle(LPCSTR title, const CDocTemplate* type)
{
    char first[8 + 1];
    CopyBounded(first, sizeof first, title != nullptr ? title : "");
    CString name(first);
    const int end = name.FindOneOf(" #%;/\\");
    if (end >= 0)
        name = name.Left(end);
    return type != nullptr ? name + ExtensionOf(type) : name;
}

/// Whether a failed save may delete what stands under its name: only what that save itself has made, or emptied. What
/// cannot be told stays.
bool MayBeDeleted(const FileIdentity& before, const FileIdentity& after)
{
    if (!before.IsThere())
        return after.IsThere();
    if (!before.IsKnown() || !after.IsKnown())
        return false;
    return !before.IsSameAs(after) || (after.IsEmpty() && !before.IsEmpty());
}

/// Lets a document save itself, and tells the user of an exception that it lets go. \return FALSE when it is not saved
BOOL LetSave(CDocument* doc, LPCSTR name)
{
    try {
        const CWaitCursor wait;
        return doc->OnSaveDocument(name);
    } catch (CUserException* e) { // the user was told
        e->Delete();
    } catch (CException* e) {
        e->Delete();
        WithoutThrowing([&] { return AfxMessageBox(LoadText(ZO_IDS_DOCUMENT_NOT_SAVED, name), MB_ICONEXCLAMATION); });
    }
    return FALSE;
}

} // namespace

BOOL ZoIsSameFile(const char* first, const char* second)
{
    const FileIdentity one(first), other(second);
    return one.IsThere() && other.IsThere() && (::lstrcmpiA(first, second) == 0 || one.IsSameAs(other));
}

int ZoDoPromptFileName(CString& fileName, unsigned int titleId, unsigned long flags, int openDialog, CDocTemplate* tmpl,
                       CWinApp* app)
{
    return WithoutThrowing([&] {
        const CString title = LoadText(titleId != 0 ? titleId : ZO_IDS_PROMPT_TITLE);
        Filter filter;
        CString extension;
        if (tmpl != nullptr) {
            if (AddType(filter, tmpl))
                extension = ExtensionOf(tmpl).Mid(1); // without the dot
        } else if (app != nullptr) {
            AddAllTypes(filter, app);
        }
        filter.Add(LoadText(ZO_IDS_FILTER_ALL_FILES), kEveryFile);

        CZoFileOpen dialog(openDialog != 0, 0, extension.IsEmpty() ? nullptr : (LPCSTR)extension, nullptr,
                           OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | flags, filter.Get());
        dialog.m_ofn.lpstrTitle = title;
        dialog.m_ofn.lpstrFile = fileName.GetBuffer(MAX_PATH);
        dialog.m_ofn.nMaxFile = MAX_PATH;
        const INT_PTR result = dialog.DoModal();
        fileName.ReleaseBuffer();
        return result == IDOK ? 1 : 0;
    });
}

int ZoDoSave(CDocument* doc, const char* pathName, const char* currentPath, const char* title, int replace)
{
    if (doc == nullptr)
        return 0;
    CString name;
    const BOOL named = WithoutThrowing([&] {
        name = pathName;
        if (!name.IsEmpty())
            return TRUE;
        name = currentPath;
        if (replace != 0 && name.IsEmpty())
            name = NameFromTitle(title, doc->GetDocTemplate());
        return BOOL{ZoDoPromptFileName(name, replace != 0 ? ZO_IDS_SAVE_AS_TITLE : ZO_IDS_SAVE_COPY_TITLE,
                                       OFN_HIDEREADONLY | OFN_PATHMUSTEXIST, FALSE, doc->GetDocTemplate(),
                                       AfxGetApp())};
    });
    if (!named)
        return 0;
    const FileIdentity before(name);
    if (!LetSave(doc, name)) {
        if (pathName == nullptr && MayBeDeleted(before, FileIdentity(name)))
            WithoutThrowing([&] { CFile::Remove(name); });
        return 0;
    }
    if (replace != 0)
        WithoutThrowing([&] { doc->SetPathName(name, TRUE); });
    return 1;
}
