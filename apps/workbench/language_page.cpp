#include "language_page.h"

#include "registration.h"
#include "workbench_ids.h"

#include <zogbl/country_code.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

#include <cstdlib>

namespace {

constexpr int kMargin = 12;

CString ModulePath(HINSTANCE module)
{
    char path[MAX_PATH] = {};
    if (module != nullptr)
        ::GetModuleFileName(module, path, sizeof path - 1);
    return path;
}

CString LocaleText(LCID id, LCTYPE what)
{
    char text[128] = {};
    // Without the flag the text would be in the code page of that locale's own systems.
    ::GetLocaleInfo(id, what | LOCALE_USE_CP_ACP, text, sizeof text);
    return text;
}

/// A language's own name, or its English one where the system's code page lacks letters of it.
CString LanguageName(LCID id)
{
    const CString name = LocaleText(id, LOCALE_SNATIVELANGNAME);
    return name.Find('?') < 0 ? name : LocaleText(id, LOCALE_SENGLANGUAGE);
}

CString InstalledLanguages()
{
    CStringArray ids;
    ListLanguages(ids); // what could be listed until a failure
    CString names;
    for (INT_PTR i = 0; i < ids.GetSize(); ++i)
        names += (i == 0 ? "" : ", ") + LanguageName(std::strtoul(ids[i], nullptr, 16));
    return names;
}

} // namespace

CString LanguagePage::GetLanguageName() { return LanguageName(ZoGblGetLanguageLCID()); }

UINT LanguagePage::GetTitleId() const { return ZO_IDS_PAGE_LANGUAGE; }
UINT LanguagePage::GetCommandId() const { return ZO_ID_VIEW_LANGUAGE; }

void LanguagePage::CreateControls()
{
    for (int row = 0; row < kRows; ++row) {
        m_labels[row].Create("", WS_VISIBLE | SS_LEFT | SS_NOPREFIX, CRect(0, 0, 0, 0), this);
        m_values[row].Create("", WS_VISIBLE | SS_LEFT | SS_NOPREFIX, CRect(0, 0, 0, 0), this);
    }
}

void LanguagePage::Reload()
{
    const HINSTANCE library = ZoGblGetLanguageDLL();
    const LCID language = ZoGblGetLanguageLCID();
    const CString path = ModulePath(library);
    CString id;
    id.Format("%04X", static_cast<unsigned>(language));
    CString countries;
    const CZoCountryCodeList* list = GetGlobalCountryList();
    countries.Format("%d", list != nullptr ? list->GetCount() : 0);
    CZoVersionResource product;
    product.ExtractVersionInfo();
    CZoVersionResource own;
    own.ExtractVersionInfo(ZoGblGetInstanceHandle());

    const struct {
        UINT label;
        CString value;
    } rows[kRows] = {
        {ZO_IDS_LABEL_LANGUAGE_LIBRARY,
         library != nullptr ? path.Mid(path.ReverseFind('\\') + 1) : Text(ZO_IDS_STATE_NOT_LOADED)},
        {ZO_IDS_LABEL_LANGUAGE, LanguageName(language) + " (" + id + ")"},
        {ZO_IDS_LABEL_LANGUAGES, InstalledLanguages()},
        {ZO_IDS_LABEL_LIBRARY_PATH, path},
        {ZO_IDS_LABEL_COUNTRIES, countries},
        {ZO_IDS_LABEL_NOVICE_MODE, Text(ZoGblGetRegNoviceMode() != 0 ? ZO_IDS_STATE_ON : ZO_IDS_STATE_OFF)},
        {ZO_IDS_LABEL_PRODUCT_KEY, product.GetBrixelsRootKey()},
        {ZO_IDS_LABEL_MODULE_KEY, own.GetModuleRootKey()},
    };
    for (int row = 0; row < kRows; ++row) {
        m_labels[row].SetWindowText(Text(rows[row].label));
        m_values[row].SetWindowText(rows[row].value);
    }
    LayOutAgain();
}

int LanguagePage::WidestLabel()
{
    int widest = 0;
    for (CStatic& label : m_labels) {
        CString text;
        label.GetWindowText(text);
        widest = (std::max)(widest, TextWidth(text));
    }
    return widest;
}

void LanguagePage::Layout(int width, int)
{
    const int lineHeight = LineHeight();
    const int labelWidth = WidestLabel();
    const int left = labelWidth + 3 * kMargin;
    int top = kMargin;
    for (int row = 0; row < kRows; ++row) {
        m_labels[row].MoveWindow(kMargin, top, labelWidth, lineHeight);
        m_values[row].MoveWindow(left, top, width - left - kMargin, 2 * lineHeight); // a long key wraps
        top += 2 * lineHeight + kMargin / 2;
    }
}
