/// \file
/// What the tests of languages share: the libraries, the table of windows, the choice in the dialog.
#pragma once

#include <zogbl/language_dialog.h>
#include <zogbl/language_support.h>
#include <zogbl/module.h>
#include <zogbl/resource_ids.h>

#include "frame/language/language_window_table.h"
#include "support/product_test.h"

constexpr DWORD kJapanese = 0x0411;
constexpr DWORD kTurkish = 0x041F; // without a library

/// The language library, loaded for as long as the object lives.
struct LoadedLanguage {
    LoadedLanguage() { EXPECT_TRUE(ZoGblLoadLanguageDLL()); }
    ~LoadedLanguage() { EXPECT_TRUE(ZoGblDumpLanguageDLL()); }
};

inline LPCSTR LibraryOf(DWORD language)
{
    return language == kGerman ? "ZOGBLDEU.DLL" : language == kJapanese ? "ZOGBLJPN.DLL" : "ZOGBLENU.DLL";
}

inline CString LibraryPath() { return (ProgramFolder() + kZogbl).c_str(); }

/// What the registry says of a language, for the library or for a module's key; 77 if nothing.
inline DWORD StoredFlag(const RegisteredProduct& product, DWORD language, LPCSTR moduleKey = nullptr)
{
    CString name;
    name.Format("%04lx", language);
    DWORD flag = 0;
    const CString key = moduleKey != nullptr ? moduleKey + CString("\\Languages") : product.LanguagesKey();
    CZoGlobalConfig().GetValue(ZO_MODE_LOCAL_MACHINE, key, name, flag, 77);
    return flag;
}

/// The table inside the loaded library, found by the name of its section.
inline ZoLanguageWindowTable& SharedTable()
{
    auto* base = reinterpret_cast<BYTE*>(ZoGblGetInstanceHandle());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(headers);
    for (WORD i = 0; i < headers->FileHeader.NumberOfSections; ++i, ++section) {
        if (std::memcmp(section->Name, ".zoshare", 8) == 0)
            return *reinterpret_cast<ZoLanguageWindowTable*>(base + section->VirtualAddress);
    }
    ADD_FAILURE() << "the library has no shared section";
    static ZoLanguageWindowTable none = {};
    return none;
}

/// What an entry of the box (CB_GETITEMDATA) or a row of the list (LB_GETITEMDATA) stands for.
inline const CZoFlagLcid& ItemOf(HWND box, UINT message, int index)
{
    return *reinterpret_cast<const CZoFlagLcid*>(SendMessageA(box, message, static_cast<WPARAM>(index), 0));
}

/// Chooses a language in the box of the dialog, as the keyboard would; a failure if it is not offered.
inline void ChooseLanguage(HWND dialog, DWORD language)
{
    const HWND box = GetDlgItem(dialog, ZO_IDC_LANGUAGE_INSTALLED);
    int entry = 0;
    while (entry < SendMessageA(box, CB_GETCOUNT, 0, 0) &&
           ItemOf(box, CB_GETITEMDATA, entry).GetLcidValue() != language)
        ++entry;
    Choose(dialog, ZO_IDC_LANGUAGE_INSTALLED, entry);
}

/// An act that chooses it and presses OK.
inline DialogDriver::Act ChoosingLanguage(DWORD language)
{
    return [language](HWND dialog) {
        ChooseLanguage(dialog, language);
        Press(dialog, IDOK);
    };
}
