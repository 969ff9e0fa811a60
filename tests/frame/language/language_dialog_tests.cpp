// The dialog in which the user chooses the language.
#include "language_driver.h"

namespace {

std::string NameOf(LCID language, LCTYPE item)
{
    char name[100] = "";
    GetLocaleInfoA(language, item, name, sizeof name);
    return name;
}

/// English and German are offered by the names that the button stands for, as the system knows them.
void ExpectNamed(HWND dialog, int button, LCTYPE item)
{
    SCOPED_TRACE(button);
    for (const int id : {ZO_IDC_LANGUAGE_NATIVE, ZO_IDC_LANGUAGE_LOCALIZED, ZO_IDC_LANGUAGE_ENGLISH})
        EXPECT_EQ(id == button, IsChecked(dialog, id)) << id;
    const HWND box = GetDlgItem(dialog, ZO_IDC_LANGUAGE_INSTALLED);
    std::multiset<std::string> names;
    for (int i = 0; i < SendMessageA(box, CB_GETCOUNT, 0, 0); ++i)
        names.emplace(ItemOf(box, CB_GETITEMDATA, i).GetName());
    EXPECT_EQ((std::multiset<std::string>{NameOf(kEnglish, item), NameOf(kGerman, item)}), names);
    EXPECT_EQ(NameOf(GetUserDefaultLCID(), item), TextOf(dialog, ZO_IDC_LANGUAGE_OF_LOCALE));
}

/// The list of the system's languages is folded away until it is asked for.
void ExpectFolds(HWND dialog)
{
    const CRect folded = AreaOf(dialog);
    CRect client;
    GetClientRect(dialog, &client);
    MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
    EXPECT_EQ(AreaOf(dialog, ZO_IDC_LANGUAGE_FRAME).bottom, client.bottom);
    EXPECT_FALSE(IsEnabled(dialog, ZO_IDC_LANGUAGE_SYSTEM));
    const std::string caption = TextOf(dialog, ZO_IDC_LANGUAGE_TOGGLE), text = caption.substr(0, caption.size() - 2);
    EXPECT_EQ(text + ">>", caption);
    Press(dialog, ZO_IDC_LANGUAGE_TOGGLE);
    const CRect unfolded = AreaOf(dialog);
    EXPECT_LT(AreaOf(dialog, ZO_IDC_LANGUAGE_SYSTEM).bottom, unfolded.bottom);
    EXPECT_EQ(folded.top, unfolded.top);
    EXPECT_TRUE(IsEnabled(dialog, ZO_IDC_LANGUAGE_SYSTEM));
    EXPECT_EQ(text + "<<", TextOf(dialog, ZO_IDC_LANGUAGE_TOGGLE));
    const int chosen = ChosenRow(dialog, ZO_IDC_LANGUAGE_SYSTEM);
    const HWND list = GetDlgItem(dialog, ZO_IDC_LANGUAGE_SYSTEM);
    EXPECT_EQ(GetUserDefaultLCID() & 0xFFFF, ItemOf(list, LB_GETITEMDATA, chosen).GetLcidValue());
    Press(dialog, ZO_IDC_LANGUAGE_TOGGLE);
    EXPECT_TRUE(EqualRect(&folded, AreaOf(dialog)));
}

class LanguageDialog : public ProductTest {};

} // namespace

TEST_F(LanguageDialog, NamesLanguagesAsAskedAndFoldsAway)
{
    const bool doubleByte = GetSystemMetrics(SM_DBCSENABLED) != 0;
    for (const DWORD loaded : {kEnglish, kGerman}) {
        ChangeLanguage(loaded);
        CObArray languages;
        CZoLanguageEntry entries[] = {
            {kEnglish, "ENU", loaded == kEnglish}, {kGerman, "DEU", loaded == kGerman}, {0x0999, "???", 0}};
        for (CZoLanguageEntry& entry : entries)
            languages.Add(&entry);
        CZoLanguageSelectionDlg dialog(languages, nullptr);
        const auto expectOwn = [&](HWND window, bool english) { // for English has no double-byte names
            ExpectNamed(window, english ? ZO_IDC_LANGUAGE_ENGLISH : ZO_IDC_LANGUAGE_LOCALIZED,
                        english ? LOCALE_SENGLANGUAGE : LOCALE_SLANGUAGE);
        };
        const DialogDriver driver{[&](HWND window) {
            expectOwn(window, doubleByte && loaded == kEnglish);
            Press(window, ZO_IDC_LANGUAGE_NATIVE);
            ExpectNamed(window, ZO_IDC_LANGUAGE_NATIVE, LOCALE_SNATIVELANGNAME);
            CheckDlgButton(window, ZO_IDC_LANGUAGE_CHECK, BST_CHECKED);
            Press(window, ZO_IDC_LANGUAGE_LOCALIZED);
            expectOwn(window, false);
            EXPECT_EQ(loaded, dialog.GetLanguageId());
            ChooseLanguage(window, kGerman);
            ChooseLanguage(window, kEnglish);
            expectOwn(window, doubleByte);
            ExpectFolds(window);
            Press(window, IDOK);
        }};
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(kEnglish, dialog.GetLanguageId());
        EXPECT_TRUE(dialog.GetCheckBoxState());
        EXPECT_EQ(doubleByte ? ZO_NAMING_ENGLISH : ZO_NAMING_LOCALIZED, dialog.GetNamingMode());
    }
}

TEST_F(LanguageDialog, OpensWithWhatMemoryThereIs)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10, "the same everywhere, and slow");
    CZoLanguageSupport chooser;
    ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
    const AnyDialogDriver driver{[](HWND dialog) { Command(dialog, IDCANCEL); }};
    const auto choose = [&](const FaultRun& run) {
        EXPECT_TRUE(chooser.SelectLanguage(nullptr));
        run.Stop();
        EXPECT_EQ(kEnglish, ZoGblGetLanguageLCID());
    };
    RunFaultLoop<AllocationFaults>(choose, {.stride = 499}); // some hundred locales, with a few allocations each
}
