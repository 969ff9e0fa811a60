#include "dialog_resource.h"

#include <zogbl/control.h>

#include <common/dialog_template.h>
#include <common/without_throwing.h>
#include <zogbl/language_support.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr WORD kNoIdentifier = 0xFFFF;

// The beginning of a dialog template, in words: plain, or extended with this signature.
constexpr WORD kExtended = 0xFFFF;
constexpr size_t kStyle = 0, kExStyle = 2, kSize = 7;
constexpr size_t kExtendedStyle = 6, kExtendedExStyle = 4, kExtendedSize = 11;
constexpr DWORD kLongestBeginning = 13 * sizeof(WORD);

bool IsExtended(const BYTE* dialogTemplate) { return reinterpret_cast<const WORD*>(dialogTemplate)[1] == kExtended; }

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

} // namespace

DialogTemplate::DialogTemplate(UINT templateId)
{
    CZoControl::RegisterControlClass(); // which the template may name
    DWORD size = 0;
    const void* resource = ZoGblLockResource(MAKEINTRESOURCEA(templateId), RT_DIALOG, &size);
    if (resource == nullptr)
        return;
    m_copy.reset(new (std::nothrow) BYTE[(std::max)(size, kLongestBeginning)]());
    if (m_copy)
        std::memcpy(m_copy.get(), resource, size);
}

void DialogTemplate::MakeChild()
{
    constexpr DWORD kKept = DS_SETFONT | DS_FIXEDSYS | DS_LOCALEDIT;
    auto* words = reinterpret_cast<WORD*>(m_copy.get());
    const auto set = [&](size_t at, DWORD kept, DWORD added) {
        DWORD value;
        std::memcpy(&value, words + at, sizeof value);
        value = (value & kept) | added;
        std::memcpy(words + at, &value, sizeof value);
    };
    const bool isExtended = IsExtended(m_copy.get());
    set(isExtended ? kExtendedStyle : kStyle, kKept, WS_CHILD | WS_CLIPSIBLINGS | DS_CONTROL);
    set(isExtended ? kExtendedExStyle : kExStyle, 0, WS_EX_CONTROLPARENT);
}

CSize DialogTemplate::GetSize() const
{
    if (!m_copy)
        return {};
    const WORD* size = reinterpret_cast<const WORD*>(m_copy.get()) + (IsExtended(m_copy.get()) ? kExtendedSize : kSize);
    return {size[0], size[1]};
}

void ReloadDialogTexts(CWnd& dialog, UINT templateId)
{
    DWORD size = 0;
    const void* resource = ZoGblLockResource(MAKEINTRESOURCEA(templateId), RT_DIALOG, &size);
    if (resource == nullptr)
        return;
    DialogTemplateReader reader(resource, size);
    WithoutThrowing([&] {
        if (*reader.GetTitle() != 0)
            dialog.SetWindowText(Narrow(reader.GetTitle()));
        HWND nameless = nullptr;
        for (DialogTemplateReader::Item item; reader.Next(item);) {
            HWND control;
            if (item.id == kNoIdentifier)
                control = nameless = NextNameless(dialog.m_hWnd, nameless);
            else
                control = ::GetDlgItem(dialog.m_hWnd, item.id);
            if (control != nullptr && *item.text != 0)
                ::SetWindowTextA(control, Narrow(item.text));
        }
    });
    for (HWND control = GetWindow(dialog.m_hWnd, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT))
        SendMessageA(control, CZoLanguageSupport::GetUpdateMessage(), 0, 0); // for what shows names of its own
}

CString LoadText(UINT id)
{
    CString text;
    if (!ZoGblLoadString(id, text) && ZoGblFindStringModule(id) != nullptr)
        AfxThrowMemoryException();
    return text;
}

CString LoadText(UINT id, LPCSTR first, LPCSTR second)
{
    CString text;
    text.Format(LoadText(id), first, second);
    return text;
}

CString DialogTitle(UINT templateId)
{
    DWORD size = 0;
    const void* resource = ZoGblLockResource(MAKEINTRESOURCEA(templateId), RT_DIALOG, &size);
    return resource != nullptr ? Narrow(DialogTemplateReader(resource, size).GetTitle()) : CString();
}

CString TemplateTexts(UINT templateId)
{
    DWORD size = 0;
    const void* resource = ZoGblLockResource(MAKEINTRESOURCEA(templateId), RT_DIALOG, &size);
    CString texts;
    if (resource == nullptr)
        return texts;
    DialogTemplateReader reader(resource, size);
    texts = Narrow(reader.GetTitle()) + "\n";
    for (DialogTemplateReader::Item item; reader.Next(item);)
        texts += Narrow(item.text) + "\n";
    return texts;
}

CString WindowText(HWND window)
{
    CString text;
    const int length = ::GetWindowTextLengthA(window);
    text.ReleaseBuffer(::GetWindowTextA(window, text.GetBuffer(length), length + 1));
    return text;
}
