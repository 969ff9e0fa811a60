// The dialog in which the user chooses the language.
#include "language_driver.h"
#include "product/registered_product.h"
#include "support/test.h"

namespace {

class LanguageDialog : public testing::Test {
protected:
    RegisteredProduct m_product;
};

} // namespace

TEST_F(LanguageDialog, NamesLanguagesAsAskedAndFoldsAway)
{
    const bool doubleByte = GetSystemMetrics(SM_DBCSENABLED) != 0;
    for (const DWORD loaded : {kEnglish, kGerman}) {
        m_product.MakeCurrent(loaded);
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        CZoLanguageSupport chooser;
        ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
        CObArray languages;
        CZoLanguageEntry entries[] = {
            {kEnglish, "ENU", loaded == kEnglish}, {kGerman, "DEU", loaded == kGerman}, {0x0999, "???", 0}};
        for (CZoLanguageEntry& entry : entries)
            languages.Add(&entry);
        CZoLanguageSelectionDlg dialog(languages, nullptr);
        const auto texts = [&](HWND window) {
            const HWND box = GetDlgItem(window, ZO_IDC_LANGUAGE_INSTALLED);
            std::vector<std::string> names;
            for (int i = 0; i < SendMessageA(box, CB_GETCOUNT, 0, 0); ++i)
                names.emplace_back(
                    reinterpret_cast<const CZoFlagLcid*>(SendMessageA(box, CB_GETITEMDATA, i, 0))->GetName());
            return names;
        };
        const auto expectNamed = [&](HWND window, UINT button, LCTYPE item) {
            SCOPED_TRACE(button);
            for (const UINT id : {ZO_IDC_LANGUAGE_NATIVE, ZO_IDC_LANGUAGE_LOCALIZED, ZO_IDC_LANGUAGE_ENGLISH})
                EXPECT_EQ(id == button, IsDlgButtonChecked(window, static_cast<int>(id)) == BST_CHECKED) << id;
            std::vector<std::string> expected;
            for (const DWORD id : {kEnglish, kGerman}) {
                char name[100] = "";
                GetLocaleInfoA(id, item, name, sizeof name);
                expected.emplace_back(name);
            }
            std::vector<std::string> names = texts(window);
            std::sort(names.begin(), names.end());
            std::sort(expected.begin(), expected.end());
            EXPECT_EQ(expected, names) << "what the system knows of them";
            char own[100] = "";
            GetLocaleInfoA(GetUserDefaultLCID(), item, own, sizeof own);
            EXPECT_EQ(own, TextOf(GetDlgItem(window, ZO_IDC_LANGUAGE_OF_LOCALE)));
        };
        const DialogDriver driver{[&](HWND window) {
            const bool english = doubleByte && loaded == kEnglish;
            expectNamed(window, english ? ZO_IDC_LANGUAGE_ENGLISH : ZO_IDC_LANGUAGE_LOCALIZED,
                        english ? LOCALE_SENGLANGUAGE : LOCALE_SLANGUAGE);
            Press(window, ZO_IDC_LANGUAGE_NATIVE);
            expectNamed(window, ZO_IDC_LANGUAGE_NATIVE, LOCALE_SNATIVELANGNAME);
            CheckDlgButton(window, ZO_IDC_LANGUAGE_CHECK, BST_CHECKED);
            Press(window, ZO_IDC_LANGUAGE_LOCALIZED);
            expectNamed(window, ZO_IDC_LANGUAGE_LOCALIZED, LOCALE_SLANGUAGE);
            EXPECT_EQ(loaded, dialog.GetLanguageId());
            ChooseLanguage(window, kGerman);
            ChooseLanguage(window, kEnglish); // which has no double-byte names
            expectNamed(window, doubleByte ? ZO_IDC_LANGUAGE_ENGLISH : ZO_IDC_LANGUAGE_LOCALIZED,
                        doubleByte ? LOCALE_SENGLANGUAGE : LOCALE_SLANGUAGE);

            RECT folded, unfolded, frame;
            const HWND toggle = GetDlgItem(window, ZO_IDC_LANGUAGE_TOGGLE);
            const HWND list = GetDlgItem(window, ZO_IDC_LANGUAGE_SYSTEM);
            GetWindowRect(window, &folded);
            GetWindowRect(GetDlgItem(window, ZO_IDC_LANGUAGE_FRAME), &frame);
            RECT client;
            GetClientRect(window, &client);
            MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
            EXPECT_EQ(frame.bottom, client.bottom);
            EXPECT_FALSE(IsWindowEnabled(list));
            const std::string caption = TextOf(toggle);
            Press(window, ZO_IDC_LANGUAGE_TOGGLE);
            GetWindowRect(window, &unfolded);
            RECT listPlace;
            GetWindowRect(list, &listPlace);
            EXPECT_LT(listPlace.bottom, unfolded.bottom);
            EXPECT_EQ(folded.top, unfolded.top);
            EXPECT_TRUE(IsWindowEnabled(list));
            EXPECT_EQ(caption.substr(0, caption.size() - 2) + "<<", TextOf(toggle));
            EXPECT_EQ(">>", caption.substr(caption.size() - 2));
            const auto selected = SendMessageA(list, LB_GETCURSEL, 0, 0);
            EXPECT_EQ(
                GetUserDefaultLCID() & 0xFFFF,
                reinterpret_cast<const CZoFlagLcid*>(SendMessageA(list, LB_GETITEMDATA, selected, 0))->GetLcidValue());
            Press(window, ZO_IDC_LANGUAGE_TOGGLE);
            RECT again;
            GetWindowRect(window, &again);
            EXPECT_TRUE(EqualRect(&folded, &again));
            Press(window, IDOK);
        }};
        EXPECT_EQ(IDOK, dialog.DoModal());
        EXPECT_EQ(kEnglish, dialog.GetLanguageId());
        EXPECT_TRUE(dialog.GetCheckBoxState());
        EXPECT_EQ(doubleByte ? ZO_NAMING_ENGLISH : ZO_NAMING_LOCALIZED, dialog.GetNamingMode());
        EXPECT_TRUE(ZoGblDumpLanguageDLL());
    }
}

TEST_F(LanguageDialog, OpensWithWhatMemoryThereIs)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10, "the same everywhere, and slow");
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    CZoLanguageSupport chooser;
    ASSERT_TRUE(chooser.LoadCurrentLanguage(LibraryPath()));
    AllocationFaults memory;
    FaultLoopOptions options;
    options.stride = 499; // some hundred locales, with a few allocations each
    struct Closer {
        static BOOL CALLBACK Close(HWND window, LPARAM)
        {
            if (GetDlgItem(window, ZO_IDC_LANGUAGE_INSTALLED) != nullptr && IsWindowVisible(window))
                SendMessageA(window, WM_COMMAND, IDCANCEL, 0);
            return TRUE;
        }
        static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) { EnumThreadWindows(GetCurrentThreadId(), &Close, 0); }
    };
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, &Closer::Look);
    RunFaultLoop(
        memory,
        [&](const FaultRun& run) {
            EXPECT_TRUE(chooser.SelectLanguage(nullptr));
            run.Stop();
            EXPECT_EQ(kEnglish, ZoGblGetLanguageLCID());
        },
        options);
    KillTimer(nullptr, timer);
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}
