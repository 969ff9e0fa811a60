// A host as a user may write one: no application object, nothing of the framework started, built without optimisation.
// \return 0, or the number of the step that failed.
#include <zogbl/zogbl.h>

#include <afxwin.h>

int main()
{
    for (int step = 1; step < 4; ++step) { // the language library comes and goes
        if (!ZoGblLoadLanguageDLL() || !ZoGblDumpLanguageDLL() || ZoGblGetLanguageDLL() != nullptr)
            return step;
    }
    if (!ZoGblLoadLanguageDLL())
        return 20;
    CWnd window;
    if (!window.CreateEx(0, nullptr, "host", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr))
        return 21;
    CCountryCodeComboBox countries;
    if (!countries.Create(WS_CHILD | CBS_DROPDOWNLIST, CRect(0, 0, 200, 100), &window, 1))
        return 22;
    countries.ResetInformation();
    if (countries.SelectCountryIndex(276) >= countries.GetCount() || countries.GetCountryCode() != 49)
        return 23;
    CZoFlagLcidList list;
    list.AddLcidCode(0x0409, ZoLcidEnglishLanguage);
    CFlagLcidComboBox locales;
    CFlagLcidListBox rows;
    if (!locales.Create(WS_CHILD | CBS_DROPDOWNLIST, CRect(0, 0, 200, 100), &window, 2) ||
        !rows.Create(WS_CHILD, CRect(0, 0, 200, 100), &window, 3))
        return 24;
    locales.SetList(&list);
    rows.SetList(&list);
    locales.ResetInformation();
    rows.ResetInformation();
    if (locales.GetLcidCode() != 0x0409 || rows.GetLcidCode() != 0x0409 || rows.GetPictureWidth() <= 0)
        return 25;
    // Some compilers take every member of the boxes from the library, those that nobody wrote too.
    for (const LPCSTR member : {"_ZN14CZoFlagControlI8CListBoxED2Ev", "_ZN19CCountryCodeControlI9CComboBoxED2Ev",
                                "_ZN16CFlagLcidControlI8CListBoxEC2Ev", "_ZN16CFlagLcidControlI8CListBoxED2Ev"}) {
        if (GetProcAddress(GetModuleHandleA("ZOGBLBRX.DLL"), member) == nullptr)
            return 27;
    }
    window.DestroyWindow();
    return ZoGblDumpLanguageDLL() ? 0 : 26;
}
