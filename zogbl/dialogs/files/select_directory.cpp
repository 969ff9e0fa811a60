#include <zogbl/select_directory.h>

#include <common/without_throwing.h>
#include <zogbl/global_error.h>

#include "folder_picker.h"
#include "ground/bounded_text.h"
#include "places.h"

#include <algorithm>
#include <memory>

namespace {

/// A window object for the owner: its own, or one for as long as this lives.
class OwnerWindow {
public:
    /// \return the minor error, 0 on success
    DWORD Find(HWND handle)
    {
        m_window = CWnd::FromHandlePermanent(handle);
        if (m_window != nullptr)
            return ERROR_SUCCESS;
        if (!WithoutThrowing([&] { m_temporary.reset(new CWnd); }))
            return ZO_SELECT_ERROR_OBJECT;
        if (!WithoutThrowing([&] { return m_temporary->Attach(handle); }))
            return ZO_SELECT_ERROR_ATTACH;
        m_window = m_temporary.get();
        return ERROR_SUCCESS;
    }
    OwnerWindow() = default;
    ~OwnerWindow()
    {
        if (m_temporary)
            m_temporary->Detach();
    }
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    CWnd* Get() const { return m_window; }

private:
    CWnd* m_window = nullptr;
    std::unique_ptr<CWnd> m_temporary;
};

void ChangeCase(char* text, int options)
{
    if ((options & ZO_SELECT_UPPER_CASE) != 0)
        ::CharUpperA(text);
    else if ((options & ZO_SELECT_KEEP_CASE) == 0)
        ::CharLowerA(text);
}

/// Whether a folder's drive says at once that there is no such folder.
bool IsMissing(LPCSTR folder)
{
    PlaceQuestion question;
    question.named = TrimBackslash(folder);
    BackgroundPtr<PlaceWork> work(new PlaceWork(std::move(question)));
    work->Begin();
    return work->IsOver(kPlacePatience) && !work->HasFailed() && !work->GetAnswer().isFolder;
}

/// \param error takes the minor error that is to be told
int Choose(char* buffer, unsigned int bufferSize, HWND owner, LPCSTR initialDir, int options, UINT helpContext,
           LPCSTR title, LPCSTR instruction, DWORD& error)
{
    OwnerWindow window;
    error = window.Find(owner);
    if (error != ERROR_SUCCESS)
        return ZO_SELECT_CANCEL;
    if ((options & ZO_SELECT_CREATE_INITIAL) != 0 && initialDir != nullptr && *initialDir != '\0')
        WithoutThrowing([&] { return BOOL{!IsMissing(initialDir) || OfferToCreateFolder(initialDir, helpContext)}; });

    FolderPicker picker(initialDir, title, instruction, helpContext, window.Get());
    const INT_PTR result = picker.DoModal();
    if (result == -1)
        error = ZO_SELECT_ERROR_DIALOG;
    if (result != IDOK)
        return ZO_SELECT_CANCEL;
    // Cut short it would be another folder.
    if (picker.GetPath().GetLength() >= static_cast<int>((std::min)(bufferSize, 0x7FFFu)))
        return ZO_SELECT_CANCEL;
    CopyBounded(buffer, bufferSize, picker.GetPath());
    ChangeCase(buffer, options);
    return IDOK;
}

} // namespace

int ZoSelectDirectory(char* buffer, unsigned int bufferSize, HWND owner, char* initialDir, int options,
                      unsigned int helpContext, const char* title, const char* instruction)
{
    if (buffer == nullptr)
        return ZO_SELECT_CANCEL;
    std::memset(buffer, 0, bufferSize);
    if (!::IsWindow(owner))
        return ZO_SELECT_CANCEL;
    DWORD error = ERROR_SUCCESS;
    const int result = Choose(buffer, bufferSize, owner, initialDir, options, helpContext, title, instruction, error);
    if (error != ERROR_SUCCESS)
        CZoGlobalError::Minor(error); // last of all: letting go of the owner would change it
    return result;
}
