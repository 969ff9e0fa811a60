#include <zogbl/dialog.h>

#include <zogbl/resource_lookup.h>

#include "../controls/dialog_template.h"

#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr WORD kNoIdentifier = 0xFFFF;

/// A text as the window procedures of this code page take it. Throws CMemoryException*.
CString Narrow(LPCWSTR text)
{
    CString narrow;
    const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    WideCharToMultiByte(CP_ACP, 0, text, -1, narrow.GetBuffer(size), size, nullptr, nullptr);
    narrow.ReleaseBuffer();
    return narrow;
}

/// The child that follows \p previous in the order in which the template lists them, among those without identifier.
HWND NextNameless(HWND dialog, HWND previous)
{
    HWND child = previous != nullptr ? GetWindow(previous, GW_HWNDNEXT) : GetWindow(dialog, GW_CHILD);
    while (child != nullptr && static_cast<WORD>(GetDlgCtrlID(child)) != kNoIdentifier)
        child = GetWindow(child, GW_HWNDNEXT);
    return child;
}

/// A dialog is listed as the innermost while this lives.
class OpenDialog {
public:
    OpenDialog(CZoDialog*& innermost, CZoDialog* dialog)
        : m_innermost(innermost), m_outer(std::exchange(innermost, dialog))
    {
    }
    ~OpenDialog() { m_innermost = m_outer; }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;
    CZoDialog* GetOuter() const { return m_outer; }

private:
    CZoDialog*& m_innermost;
    CZoDialog* m_outer;
};

} // namespace

CZoDialog* CZoDialog::s_innermost = nullptr;

CZoDialog::CZoDialog(UINT templateId, CWnd* parent) : m_nTemplateId(templateId), m_pParent(parent) {}

CZoDialog::~CZoDialog() = default;

INT_PTR CZoDialog::DoModal()
{
    DWORD size = 0;
    const void* resource = ZoGblLockResource(MAKEINTRESOURCEA(m_nTemplateId), RT_DIALOG, &size);
    if (resource == nullptr)
        return -1;
    // A copy, for the language library may go while the dialog is open.
    const std::unique_ptr<BYTE[]> copy(new (std::nothrow) BYTE[size]);
    if (!copy)
        return -1;
    std::memcpy(copy.get(), resource, size);
    InitModalIndirect(reinterpret_cast<LPCDLGTEMPLATE>(copy.get()), m_pParent);
    const OpenDialog open(s_innermost, this);
    m_pOuter = open.GetOuter();
    return CDialog::DoModal();
}

void CZoDialog::ReloadOpenDialogs()
{
    for (CZoDialog* dialog = s_innermost; dialog != nullptr; dialog = dialog->m_pOuter) {
        if (dialog->m_hWnd != nullptr)
            dialog->ReloadTexts();
    }
}

void CZoDialog::ReloadTexts()
{
    DWORD size = 0;
    const void* resource = ZoGblLockResource(MAKEINTRESOURCEA(m_nTemplateId), RT_DIALOG, &size);
    if (resource == nullptr)
        return;
    DialogTemplateReader reader(resource, size);
    try {
        if (*reader.GetTitle() != 0)
            SetWindowText(Narrow(reader.GetTitle()));
        HWND nameless = nullptr;
        for (DialogTemplateReader::Item item; reader.Next(item);) {
            HWND control;
            if (item.id == kNoIdentifier)
                control = nameless = NextNameless(m_hWnd, nameless);
            else
                control = ::GetDlgItem(m_hWnd, item.id);
            if (control != nullptr && *item.text != 0)
                ::SetWindowTextA(control, Narrow(item.text));
        }
    } catch (CMemoryException* e) {
        e->Delete(); // the rest stays as it is
    }
}
