// The sheet and the wizard for dialing locations, driven as a person would.
#include "dialogs/dialog_faults.h"
#include "documented_dialing.h"
#include "location_fixture.h"

#include "support/product_test.h"
#include "telephony/locations/dialing_preview.h"

#include <common/without_throwing.h>
#include <zogbl/column_list.h>
#include <zogbl/country_box.h>
#include <zogbl/gdi_data.h>
#include <zogbl/location_sheet.h>
#include <zogbl/location_wizard.h>
#include <zogbl/tapi_interface.h>

#include <telsim/client.h>

namespace {

constexpr char kFull[] = "There can be 100 locations at most. Delete one that you no longer need, and try again.";

enum Page { kAddress, kPlace, kNumbers, kOutside };
constexpr int kList = ZO_IDC_LOC_LIST;

/// The fields of all pages, in the order of a location's texts and of its telephone texts.
constexpr struct {
    int page, first, count;
} kFields[] = {{kAddress, ZO_IDC_LOC_USER, 8},
               {kAddress, ZO_IDC_LOC_EMAIL, 2},
               {kPlace, ZO_IDC_LOC_CODE, 4},
               {kNumbers, ZO_IDC_LOC_AREA_HOME1, 16},
               {kOutside, ZO_IDC_LOC_LOCAL_ACCESS, 5}};

/// What the page for the outside line shows of a call.
const CallPreview& PreviewOf(HWND sheet, PreviewCall call)
{
    auto* list = CWnd::FromHandlePermanent(GetDlgItem(PageOf(sheet), ZO_IDC_LOC_PREVIEW));
    return *static_cast<const CallPreview*>(static_cast<CZoColumnList*>(list)->GetRow(static_cast<int>(call)));
}

void SetTexts(HWND page, std::initializer_list<std::pair<int, std::string>> texts)
{
    for (const auto& [control, text] : texts)
        SetDlgItemTextA(page, control, text.c_str());
}

/// As if nothing had been typed for a while.
void Rest(HWND page) { SendMessageA(page, WM_TIMER, 1, 0); }

class LocationSheet : public ProductTest {
protected:
    LocationSheet() { CZoGlobalGDIData::InitializeFontsFromResources(); } // which are made once
    void Save(DWORD index, const char* name, BOOL service = FALSE)
    {
        Item item(index);
        item.m_csLocationName = name;
        item.m_csCountryCode = "1";
        item.m_dwCountryIndex = item.m_dwAddressCountryIndex = 840;
        item.m_csAreaCityCode = "425";
        item.m_csInternationalAccess = "011";
        item.m_csLongDistancePrefix = "1";
        item.m_bTAPIDialing = service;
        ASSERT_EQ(0u, item.SaveByIndex());
    }
    static std::string Saved()
    {
        CZoLocationItemList list;
        EXPECT_EQ(0u, list.LoadAllItems());
        std::string all = std::to_string(list.GetCurrentIndex());
        for (int i = 0; i < list.GetCount(); ++i) {
            for (const auto& [name, value] : Contents(*list.GetAt(i)))
                all += " " + value;
        }
        return all;
    }
    /// Opens the sheet for a person, who closes it. \param boxes what happens to the windows that open over it
    static void Edit(INT_PTR result, const std::vector<DialogDriver::Act>& boxes, const DialogDriver::Act& person,
                     UINT page = 0)
    {
        std::vector<DialogDriver::Act> acts = {person};
        acts.insert(acts.end(), boxes.begin(), boxes.end());
        const DialogDriver driver(acts);
        EXPECT_EQ(result, CLocSheet(nullptr, page).DoModal());
    }

    telsim::Client m_telsim;
};

} // namespace

TEST_F(LocationSheet, ShowsWhatIsDialedInEveryDocumentedExample)
{
    Save(0, "Home");
    Edit(IDCANCEL, {}, [](HWND window) {
        for (const Example& example : DocumentedExamples()) {
            SetTexts(ShowPage(window, kPlace), {{ZO_IDC_LOC_CODE, example.hereCountry},
                                                {ZO_IDC_LOC_AREA, example.hereArea},
                                                {ZO_IDC_LOC_INTERNATIONAL, example.international},
                                                {ZO_IDC_LOC_LONG_PREFIX, example.longDistance}});
            const HWND page = ShowPage(window, kOutside);
            SetTexts(page, {{ZO_IDC_LOC_TRY_COUNTRY, example.country},
                            {ZO_IDC_LOC_TRY_AREA, example.area},
                            {ZO_IDC_LOC_TRY_NUMBER, example.number}});
            Choose(page, ZO_IDC_LOC_TRY_MODE, example.mode);
            EXPECT_STREQ(example.dialed.c_str(), PreviewOf(window, PreviewCall::kOwn).dialed) << example.name;
        }
        Press(window, IDCANCEL);
    });
}

TEST_F(LocationSheet, ExplainsEachPieceAndHidesSecrets)
{
    Save(0, "Home");
    const struct {
        PreviewCall call;
        const char *call_, *dialed, *how;
    } kRows[] = {
        {PreviewCall::kLocal, "Local: 555-0100", "9,*70,*67W555-0100<hidden>",
         "Local call, in the same area: 9, (outside line, pause) + *70, (call waiting off, pause) + *67W (caller ID "
         "blocked, waits for a tone) + 555-0100 (number) + <hidden> (suffix, pause, waits for you)"},
        {PreviewCall::kLongDistance, "Long distance: (206) 555-0100", "<hidden>*70,*67W1206555-0100<hidden>",
         "Long-distance call, to another area: <hidden> (outside line for long distance, pause) + *70, (call waiting "
         "off, pause) + *67W (caller ID blocked, waits for a tone) + 1 (long-distance prefix) + 206 (area code) + "
         "555-0100 (number) + <hidden> (suffix, pause, waits for you)"},
        {PreviewCall::kInternational, "International: +44 (20) 7946 0018", "<hidden>*70,*67W011442079460018<hidden>",
         "International call, to another country: <hidden> (outside line for long distance, pause) + *70, (call "
         "waiting "
         "off, pause) + *67W (caller ID blocked, waits for a tone) + 011 (international access) + 44 (country code) + "
         "20 (area code) + 79460018 (number) + <hidden> (suffix, pause, waits for you)"},
        {PreviewCall::kOwn, "Yours: (425) 555-0199", "9,*70,*67W555-0199<hidden>",
         "Local call, as chosen: 9, (outside line, pause) + *70, (call waiting off, pause) + *67W (caller ID blocked, "
         "waits for a tone) + 555-0199 (number) + <hidden> (suffix, pause, waits for you)"},
    };
    Edit(IDCANCEL, {}, [&](HWND window) {
        SetTexts(ShowPage(window, kNumbers), {{ZO_IDC_LOC_AREA_FAX, "425"}, {ZO_IDC_LOC_PHONE_FAX, "555-0199"}});
        HWND page = ShowPage(window, kOutside);
        EXPECT_EQ("425 555-0199", TextOf(page, ZO_IDC_LOC_TRY_AREA) + " " + TextOf(page, ZO_IDC_LOC_TRY_NUMBER));
        SetTexts(page, {{ZO_IDC_LOC_LOCAL_ACCESS, "9,"},
                        {ZO_IDC_LOC_LONG_ACCESS, "18005550111,"},
                        {ZO_IDC_LOC_SUFFIX, ",?1234#"},
                        {ZO_IDC_LOC_BLOCK, "*67W"},
                        {ZO_IDC_LOC_WAITING, "*70,"}});
        EXPECT_STREQ("555-0199", PreviewOf(window, PreviewCall::kOwn).dialed) << "not yet";
        EXPECT_TRUE(WaitUntil([&] { return PreviewOf(window, PreviewCall::kOwn).dialed != "555-0199"; }));
        Choose(page, ZO_IDC_LOC_TRY_MODE, ZO_DIAL_LOCAL);
        for (const auto& row : kRows) {
            const CallPreview& preview = PreviewOf(window, row.call);
            EXPECT_STREQ(row.call_, preview.call);
            EXPECT_STREQ(row.dialed, preview.dialed);
            EXPECT_STREQ(row.how, preview.how);
        }
        ::SetFocus(GetDlgItem(page, ZO_IDC_LOC_PREVIEW));
        Key(window, VK_END);
        EXPECT_EQ(kRows[3].how, TextOf(page, ZO_IDC_LOC_HOW)) << "of the row that is selected";
        ShowPage(window, kAddress);
        page = ShowPage(window, kOutside);
        const auto isHidden = [&](int field) {
            return SendDlgItemMessageA(page, field, EM_GETPASSWORDCHAR, 0, 0) != 0;
        };
        EXPECT_TRUE(isHidden(ZO_IDC_LOC_SUFFIX) && isHidden(ZO_IDC_LOC_LONG_ACCESS));
        EXPECT_FALSE(isHidden(ZO_IDC_LOC_LOCAL_ACCESS));
        Press(page, ZO_IDC_LOC_SHOW_CODES);
        EXPECT_FALSE(isHidden(ZO_IDC_LOC_SUFFIX) || isHidden(ZO_IDC_LOC_LONG_ACCESS));
        EXPECT_STREQ("18005550111,*70,*67W1206555-0100,?1234#", PreviewOf(window, PreviewCall::kLongDistance).dialed);
        SetTexts(page, {{ZO_IDC_LOC_TRY_NUMBER, " - "}});
        Rest(page);
        EXPECT_STREQ("There is no number.", PreviewOf(window, PreviewCall::kOwn).how);
        SetTexts(page, {{ZO_IDC_LOC_TRY_NUMBER, std::string(255, '5')}, {ZO_IDC_LOC_SUFFIX, std::string(255, '5')}});
        Rest(page);
        EXPECT_EQ(0, PreviewOf(window, PreviewCall::kOwn).how.Find("This cannot be dialed"));
        SetTexts(ShowPage(window, kPlace), {{ZO_IDC_LOC_AREA, "206"}});
        ShowPage(window, kOutside);
        EXPECT_EQ(std::string(255, '5'), TextOf(page, ZO_IDC_LOC_TRY_NUMBER)) << "the user's";
        EXPECT_STREQ("Long distance: (425) 555-0100", PreviewOf(window, PreviewCall::kLongDistance).call);
        SetTexts(ShowPage(window, kPlace), {{ZO_IDC_LOC_CODE, ""}});
        ShowPage(window, kOutside);
        EXPECT_EQ(0, PreviewOf(window, PreviewCall::kInternational).how.Find("The location has no country code"));
        Press(window, IDCANCEL);
    });
}

TEST_F(LocationSheet, AsksTheServiceByTheButtonAlone)
{
    Save(0, "Home", TRUE);
    Edit(IDOK, {}, [&](HWND window) {
        const HWND page = ShowPage(window, kOutside);
        EXPECT_FALSE(IsEnabled(page, ZO_IDC_LOC_LOCAL_ACCESS));
        Type(page, ZO_IDC_LOC_TRY_NUMBER, "+442079460018#");
        Rest(page);
        EXPECT_EQ("", m_telsim.Calls());
        EXPECT_EQ("The telephony service decides. It is asked by the button.", TextOf(page, ZO_IDC_LOC_HOW));
        Press(page, ZO_IDC_LOC_ASK);
        EXPECT_NE("", m_telsim.Calls());
        EXPECT_STREQ("<hidden>442079460018<hidden>", PreviewOf(window, PreviewCall::kOwn).dialed);
        EXPECT_EQ(0, PreviewOf(window, PreviewCall::kLocal).how.Find("By the rules of the telephony service: "));
        Press(page, ZO_IDC_LOC_SHOW_CODES);
        EXPECT_STREQ("", PreviewOf(window, PreviewCall::kOwn).dialed) << "an answer to another question";
        Press(page, ZO_IDC_LOC_ASK);
        EXPECT_STREQ("011442079460018#", PreviewOf(window, PreviewCall::kOwn).dialed);
        EXPECT_TRUE(m_telsim.SetRule("lineTranslateAddress", 1, TRUE, TELSIM_FAIL, LINEERR_INVALADDRESS));
        Press(page, ZO_IDC_LOC_ASK);
        EXPECT_EQ("The telephony service cannot translate this number.", TextOf(page, ZO_IDC_LOC_HOW));
        Press(page, ZO_IDC_LOC_SERVICE);
        EXPECT_TRUE(IsEnabled(page, ZO_IDC_LOC_LOCAL_ACCESS));
        EXPECT_FALSE(IsEnabled(page, ZO_IDC_LOC_ASK));
        EXPECT_STREQ("011442079460018#", PreviewOf(window, PreviewCall::kOwn).dialed);
        Press(window, IDOK);
    });
    Item item(0);
    EXPECT_TRUE(item.LoadByIndex(0) == 0 && !item.m_bTAPIDialing);
    m_telsim.Reset();
}

TEST_F(LocationSheet, EditsAHundredWithAllFieldsAtTheirLimit)
{
    ZO_ONLY_IN(Family() == WindowsFamily::kWindows10 && !IsGuardHeapInstalled(), "it takes long");
    Save(0, "Home");
    const auto text = [](int location, int field) {
        std::string digits = std::to_string(location * 100 + field);
        const char sign = field == ZO_IDC_LOC_EMAIL - ZO_IDC_LOC_USER ? '@' : '#';
        return std::string(254 - digits.size(), '5') + sign + digits;
    };
    Edit(IDOK, {AnswerBox(kFull, IDOK)}, [&](HWND window) {
        for (int i = 0; i < ZO_MOST_LOCATIONS; ++i) {
            if (i > 0)
                Press(window, ZO_IDC_LOC_NEW);
            ReportProgress();
            for (const auto& row : kFields) {
                const HWND page = ShowPage(window, row.page);
                for (int field = row.first; field < row.first + row.count; ++field)
                    SetTexts(page, {{field, text(i, field - ZO_IDC_LOC_USER)}});
            }
        }
        Press(window, ZO_IDC_LOC_NEW);
        EXPECT_EQ(ZO_MOST_LOCATIONS, SendDlgItemMessageA(window, kList, LB_GETCOUNT, 0, 0));
        Press(window, IDOK);
    });
    Edit(IDCANCEL, {}, [&](HWND window) {
        ASSERT_EQ(ZO_MOST_LOCATIONS, SendDlgItemMessageA(window, kList, LB_GETCOUNT, 0, 0));
        for (int i = 0; i < ZO_MOST_LOCATIONS; ++i) {
            Choose(window, kList, i);
            ReportProgress();
            for (const auto& row : kFields) {
                const HWND page = ShowPage(window, row.page);
                for (int field = row.first; field < row.first + row.count; ++field)
                    ASSERT_EQ(text(i, field - ZO_IDC_LOC_USER), TextOf(page, field)) << i;
            }
        }
        Press(window, IDCANCEL);
    });
}

TEST_F(LocationSheet, MakesCopiesRenamesAndDeletes)
{
    Save(3, "Home");
    Save(4, "home office");
    CZoLocationItemList().SetCurrentIndex(4);
    const auto rename = [](const char* name, int button) {
        return [=](HWND window) {
            Type(window, ZO_IDC_NAME_FIELD, name);
            Press(window, IDOK);
            if (button == IDCANCEL)
                Press(window, IDCANCEL); // the name is taken
        };
    };
    Edit(IDOK,
         {rename("home", IDCANCEL), rename("House", IDOK),
          AnswerBox("Do you want to delete the location \"Location_00000000\"?", IDNO), Pressing(IDYES),
          Pressing(IDYES)},
         [&](HWND window) {
             const auto rows = [&] { return RowsOf(window, kList); };
             EXPECT_EQ("Home|home office (current)|", rows());
             EXPECT_EQ(1, ChosenRow(window, kList)) << "the current one";
             Press(window, ZO_IDC_LOC_NEW);
             EXPECT_EQ("Home|home office (current)|Location_00000000|", rows());
             EXPECT_EQ(2, ChosenRow(window, kList));
             EXPECT_EQ(kList, FocusOf(window));
             EXPECT_EQ("", TextOf(PageOf(window), ZO_IDC_LOC_USER));
             EXPECT_EQ("1", TextOf(ShowPage(window, kPlace), ZO_IDC_LOC_CODE)) << "as the current one";
             EXPECT_EQ("", TextOf(PageOf(window), ZO_IDC_LOC_AREA));
             Choose(window, kList, 0);
             EXPECT_EQ("425", TextOf(PageOf(window), ZO_IDC_LOC_AREA));
             Type(PageOf(window), ZO_IDC_LOC_AREA, "206");
             Press(window, ZO_IDC_LOC_COPY);
             Choose(window, kList, 0);
             Press(window, ZO_IDC_LOC_COPY);
             EXPECT_EQ("206", TextOf(PageOf(window), ZO_IDC_LOC_AREA)) << "with what was typed";
             Key(window, VK_F2);
             Key(window, VK_F2);
             Press(window, ZO_IDC_LOC_MAKE_CURRENT);
             EXPECT_EQ("Home|home office|Location_00000000|Copy of Home|House (current)|", rows());
             EXPECT_EQ(4, ChosenRow(window, kList));
             Choose(window, kList, 2);
             ::SetFocus(GetDlgItem(window, kList));
             Key(window, VK_DELETE);
             Key(window, VK_DELETE);
             EXPECT_EQ("Home|home office|Copy of Home|House (current)|", rows());
             EXPECT_EQ(2, ChosenRow(window, kList));
             Choose(window, kList, 3);
             Press(window, ZO_IDC_LOC_DELETE);
             EXPECT_EQ("Home (current)|home office|Copy of Home|", rows());
             Press(window, IDOK);
         });
    EXPECT_EQ(0u, Saved().find("3 "));
    EXPECT_NE(std::string::npos, Saved().find("Copy of Home 0 1 206 011")) << Saved();
    EXPECT_EQ(std::string::npos, Saved().find("House"));
    Edit(IDCANCEL, {Pressing(IDYES), Pressing(IDYES), Pressing(IDYES)}, [](HWND window) {
        for (int i = 0; i < 3; ++i)
            Press(window, ZO_IDC_LOC_DELETE);
        EXPECT_EQ(ZO_IDC_LOC_NEW, FocusOf(window));
        EXPECT_FALSE(IsEnabled(window, ZO_IDC_LOC_COPY) || IsEnabled(PageOf(window), ZO_IDC_LOC_USER));
        EXPECT_FALSE(IsEnabled(ShowPage(window, kOutside), ZO_IDC_LOC_SERVICE));
        ExpectTabRounds(window);
        Press(window, ZO_IDC_LOC_NEW);
        EXPECT_EQ("Location_00000000 (current)|", RowsOf(window, kList));
        EXPECT_TRUE(IsEnabled(PageOf(window), ZO_IDC_LOC_SERVICE));
        Press(window, IDCANCEL);
    });
    EXPECT_EQ(0u, Saved().find("3 "));
}

TEST_F(LocationSheet, ChecksWhatIsTyped)
{
    Save(0, "Home");
    Save(1, "Office");
    const struct {
        int page, control;
        const char *text, *reason;
    } kRows[] = {
        {kAddress, ZO_IDC_LOC_EMAIL, "nobody", "This is no e-mail address."},
        {kAddress, ZO_IDC_LOC_EMAIL, "@home", "This is no e-mail address."},
        {kAddress, ZO_IDC_LOC_EMAIL, "home@", "This is no e-mail address."},
        {kPlace, ZO_IDC_LOC_CODE, "1\xE9", "The character \"\xE9\" cannot be dialed."},
        {kNumbers, ZO_IDC_LOC_PHONE_PAGER, "0800 FLOWERS", "The character \"F\" cannot be dialed."},
        {kOutside, ZO_IDC_LOC_SUFFIX, "%", "The character \"%\" cannot be dialed."},
    };
    for (const auto& row : kRows) {
        if (IsDoubleByte() && row.text[1] == '\xE9')
            continue;
        Edit(IDCANCEL, std::vector<DialogDriver::Act>(4, AnswerBox(row.reason, IDOK)), [&](HWND window) {
            const HWND page = ShowPage(window, row.page);
            SetTexts(page, {{row.control, row.text}});
            Choose(window, kList, 1);
            EXPECT_EQ(0, ChosenRow(window, kList));
            EXPECT_EQ(row.control, ::GetDlgCtrlID(::GetFocus()));
            EXPECT_EQ(nullptr, ShowPage(window, (row.page + 1) % 4));
            Press(window, IDOK);
            Press(window, ZO_IDC_LOC_NEW);
            EXPECT_EQ("Home|Office|", RowsOf(window, kList));
            EXPECT_EQ(row.text, TextOf(page, row.control));
            Press(window, IDCANCEL);
        });
    }
    Item item(0);
    EXPECT_EQ(0u, item.LoadByIndex(0));
    item.m_csAreaCityCode = "of old";
    item.m_dwCountryIndex = 12345;
    EXPECT_EQ(0u, item.SaveByIndex());
    const std::string before = Saved();
    Edit(IDOK, {}, [](HWND window) {
        ShowPage(window, kPlace);
        Press(window, IDOK);
    });
    EXPECT_EQ(before, Saved()) << "what was there stays as it is";
    Edit(IDOK, {}, [](HWND window) {
        const HWND page = ShowPage(window, kPlace);
        auto* box = CWnd::FromHandlePermanent(GetDlgItem(page, ZO_IDC_LOC_COUNTRY));
        static_cast<CCountryCodeComboBox*>(box)->SelectCountryIndex(44); // the Bahamas
        Command(page, ZO_IDC_LOC_COUNTRY, CBN_SELCHANGE);
        EXPECT_EQ("1+242", TextOf(page, ZO_IDC_LOC_CODE));
        Press(window, IDOK);
    });
    EXPECT_NE(std::string::npos, Saved().find("44 Home 0 1+242 of old"));
}

TEST_F(LocationSheet, ChangesNothingWhenGivenUp)
{
    Save(0, "Home");
    Save(1, "Office");
    const std::string before = Saved();
    for (const auto& way : WaysToGiveUp()) {
        Edit(IDCANCEL, {}, [&](HWND window) {
            Type(PageOf(window), ZO_IDC_LOC_USER, "typed");
            Press(window, ZO_IDC_LOC_COPY);
            Press(window, ZO_IDC_LOC_MAKE_CURRENT);
            ::SetFocus(GetDlgItem(PageOf(window), ZO_IDC_LOC_USER));
            way(window);
        });
        EXPECT_EQ(before, Saved());
    }
}

TEST_F(LocationSheet, IsTidyAndFollowsTheLanguage)
{
    Save(0, "Home");
    for (const UINT first : {kAddress, kPlace, kNumbers, kOutside}) {
        ChangeLanguage(kEnglish);
        Edit(
            IDCANCEL, {},
            [&](HWND window) {
                ExpectTabRounds(window);
                const HWND page = PageOf(window);
                SetTexts(page, {{ZO_IDC_LOC_TRY_NUMBER, "555-0123"}});
                if (first == kOutside)
                    Choose(page, ZO_IDC_LOC_TRY_MODE, ZO_DIAL_LOCAL);
                const HWND tab = reinterpret_cast<HWND>(SendMessageA(window, PSM_GETTABCONTROL, 0, 0));
                ShowWindow(tab, SW_HIDE); // the page lies upon it
                for (const DWORD language : {DWORD{IsDoubleByte() ? 0x0411U : 0x040CU}, DWORD{0x040A}, kGerman}) {
                    ChangeLanguage(language);
                    ExpectTidy(window);
                    ExpectTidy(page);
                }
                ShowWindow(tab, SW_SHOW);
                EXPECT_EQ(0u, TextOf(window, ZO_IDC_LOC_RENAME).find("&Umbenennen"));
                if (first == kOutside) {
                    EXPECT_EQ(0u, RowText(page, ZO_IDC_LOC_TRY_MODE, ZO_DIAL_LOCAL).find("Als Ortsgespr"));
                    EXPECT_EQ(ZO_DIAL_LOCAL, ChosenRow(page, ZO_IDC_LOC_TRY_MODE));
                    EXPECT_STREQ("Ihre: 555-0123", PreviewOf(window, PreviewCall::kOwn).call);
                    EXPECT_EQ(0u, TextOf(page, ZO_IDC_LOC_HOW).find("Ortsgespr"));
                }
                Press(window, IDCANCEL);
            },
            first);
    }
}

TEST_F(LocationSheet, LosesNothingToAnotherProgram)
{
    Save(0, "Home");
    Edit(IDOK, {}, [&](HWND window) {
        Type(PageOf(window), ZO_IDC_LOC_USER, "ours");
        Press(window, ZO_IDC_LOC_NEW);
        Item theirs(0);
        EXPECT_EQ(0u, theirs.LoadByIndex(0));
        theirs.m_csCity = "theirs";
        EXPECT_EQ(0u, theirs.SaveByIndex());
        Save(1, "their new one");
        Press(window, IDOK);
    });
    Item merged(0);
    EXPECT_EQ(0u, merged.LoadByIndex(0));
    EXPECT_EQ("ours theirs", std::string(merged.m_csUserName) + " " + merged.m_csCity.GetString());
    EXPECT_NE(std::string::npos, Saved().find("their new one"));
    EXPECT_NE(std::string::npos, Saved().find("Location_00000001"));
}

TEST_F(LocationSheet, KeepsWhatWasTypedWhenSavingFails)
{
    Save(0, "Home");
    const BoxStub box;
    int typed = 0, failures = 0;
    const auto save = [&](const FaultRun& run) {
        const std::string text = "typed " + std::to_string(++typed);
        Edit(IDOK, {}, [&](HWND window) {
            Type(PageOf(window), ZO_IDC_LOC_USER, text);
            if (typed % 2 == 0)
                Press(window, ZO_IDC_LOC_MAKE_CURRENT);
            run.Act([&] { return Press(window, IDOK), 0; });
            if (!IsWindow(window) || PageOf(window) == nullptr)
                return;
            ++failures;
            EXPECT_EQ(text, TextOf(PageOf(window), ZO_IDC_LOC_USER));
            const bool isNamed = box.Last().text.find("The location \"Home\" could not be saved (error ") == 0;
            EXPECT_TRUE(isNamed || box.Last().text.find("Not all changes could be saved") == 0) << box.Last().text;
            Press(window, IDOK);
        });
        EXPECT_NE(std::string::npos, Saved().find(text));
    };
    RegistryFaults registry;
    RunFaultActs(registry, save, {.stride = 23});
    EXPECT_GT(failures, 10);
    AllocationFaults memory;
    RunFaultActs(memory, save, {.stride = 53});
}

TEST_F(LocationSheet, OpensOrSaysThatItDoesNot)
{
    Edit(IDCANCEL, {}, Pressing(IDCANCEL)); // disabled, it draws with what is made once
    Save(0, "Home");
    Save(1, "Office");
    const auto person = [](HWND window) {
        for (int page = 0; page < 4; ++page) {
            SendMessageA(window, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
            SetTexts(window, {{ZO_IDC_LOC_USER, "typed"}, {ZO_IDC_LOC_CODE, "2"}});
        }
        for (const int button : {ZO_IDC_LOC_NEW, ZO_IDC_LOC_COPY, ZO_IDC_LOC_DELETE, ZO_IDC_LOC_MAKE_CURRENT, IDCANCEL})
            Command(window, button);
    };
    const std::string before = Saved();
    RunDialogFaults(person,
                    [&](const FaultRun& run) {
                        INT_PTR result = -1;
                        WithoutThrowing([&] { result = CLocSheet().DoModal(); });
                        run.Stop();
                        EXPECT_TRUE(result == IDCANCEL || (run.Fired() && result == -1)) << result;
                        EXPECT_EQ(before, Saved());
                    },
                    {.memory = 397, .system = 397, .controls = 1499});
}

TEST_F(LocationSheet, LeadsToTheFirstLocation)
{
    const auto state = [](HWND window) {
        return TextOf(window, ZO_IDC_WIZARD_HEADING) + "|" + TextOf(window, ZO_IDC_WIZARD_STEP) + "|" +
               TextOf(window, IDOK) + "|" + TextOf(window, ZO_IDC_WIZARD_REASON);
    };
    const auto pageWith = [](HWND window, int control) {
        return GetParent(CWnd::FromHandle(window)->GetDescendantWindow(control)->m_hWnd);
    };
    {
        const DialogDriver driver({[&](HWND window) {
            EXPECT_EQ("Address|Step 1 of 4|&Next >|", state(window));
            ExpectTabRounds(window);
            SetTexts(pageWith(window, ZO_IDC_LOC_USER), {{ZO_IDC_LOC_USER, "Ann"}});
            Press(window, IDOK);
            EXPECT_EQ("Location|Step 2 of 4|&Next >|", state(window));
            ExpectTabRounds(window);
            const HWND place = pageWith(window, ZO_IDC_LOC_CODE);
            EXPECT_EQ("Location_00000000", TextOf(place, ZO_IDC_LOC_NAME));
            Press(window, IDOK);
            EXPECT_EQ("Location|Step 2 of 4|&Next >|Please choose the country that you dial from.", state(window));
            SetTexts(place, {{ZO_IDC_LOC_CODE, "1"}, {ZO_IDC_LOC_AREA, "425"}, {ZO_IDC_LOC_NAME, " "}});
            Press(window, IDOK);
            EXPECT_EQ("Location|Step 2 of 4|&Next >|Please enter a name.", state(window));
            SetTexts(place, {{ZO_IDC_LOC_NAME, " Ann's "}});
            Press(window, IDOK);
            SetTexts(pageWith(window, ZO_IDC_LOC_PHONE_HOME1), {{ZO_IDC_LOC_PHONE_HOME1, "555-0177"}});
            Press(window, IDOK);
            EXPECT_EQ("Outside Line|Step 4 of 4|&Create|", state(window));
            const HWND outside = pageWith(window, ZO_IDC_LOC_TRY_NUMBER);
            Press(window, ZO_IDC_WIZARD_BACK);
            SetTexts(pageWith(window, ZO_IDC_LOC_PHONE_HOME1), {{ZO_IDC_LOC_PHONE_HOME1, "555-0178"}});
            Press(window, IDOK);
            EXPECT_EQ("555-0178", TextOf(outside, ZO_IDC_LOC_TRY_NUMBER)) << "from the page before";
            EXPECT_EQ(0u, TextOf(outside, ZO_IDC_LOC_HOW).find("Local call, in the same area: 555-0100 (number)"));
            ChangeLanguage(kGerman);
            ExpectTidy(window);
            EXPECT_EQ("Amtsleitung|Schritt 4 von 4|&Anlegen|", state(window));
            ChangeLanguage(kEnglish);
            RegistryFaults registry;
            registry.Arm(1, true);
            const BoxStub box;
            Press(window, IDOK);
            registry.Disarm();
            EXPECT_EQ(0u, box.Last().text.find("The location \"Ann's\" could not be saved")) << box.Last().text;
            EXPECT_EQ("", Saved().substr(10));
            Press(window, IDOK);
        }});
        EXPECT_EQ(IDOK, EditLocationItems());
    }
    EXPECT_EQ(0u, Saved().find("0 0 Ann's 0 1 425 ")) << Saved();
    EXPECT_NE(std::string::npos, Saved().find(" Ann ")) << Saved();
    {
        const DialogDriver driver({[](HWND window) {
            EXPECT_EQ("Ann's (current)|", RowsOf(window, kList));
            Press(window, IDCANCEL);
        }});
        EXPECT_EQ(IDCANCEL, EditLocationItems()) << "now in the sheet";
    }
    const std::string before = Saved();
    for (const auto& way : WaysToGiveUp()) {
        const DialogDriver driver({[&](HWND window) { way(window); }});
        EXPECT_EQ(IDCANCEL, CLocWizard().DoModal());
    }
    RunDialogFaults([](HWND window) { Command(window, IDOK), Command(window, IDOK); },
                    [](const FaultRun& run) {
                        INT_PTR result = -1;
                        WithoutThrowing([&] { result = CLocWizard().DoModal(); });
                        run.Stop();
                        EXPECT_TRUE(result == IDCANCEL || (run.Fired() && result == -1)) << result;
                    },
                    {.memory = 197, .system = 397});
    EXPECT_EQ(before, Saved());
    for (DWORD index = 1; index < ZO_MOST_LOCATIONS; ++index)
        Save(index, ("Location " + std::to_string(index)).c_str());
    const DialogDriver driver({AnswerBox(kFull, IDOK)});
    EXPECT_EQ(IDCANCEL, CLocWizard().DoModal());
}

TEST_F(LocationSheet, TellsOfLocationsThatCannotBeRead)
{
    Save(0, "Home");
    Save(1, "Office");
    EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, m_product.UserKey() + "\\Location\\00000001",
                                              "City", CString('x', 300)));
    const auto person = [](HWND window) {
        EXPECT_EQ("Home|", RowsOf(window, kList));
        Press(window, ZO_IDC_LOC_NEW);
        Press(window, IDOK);
    };
    Edit(IDOK, {person},
         AnswerBox("Not all locations could be read (error 234). Those that are missing here "
                   "stay as they are.",
                   IDOK));
    EXPECT_TRUE(CZoLocationRegistry().DoesIndexExist(1) && CZoLocationRegistry().DoesIndexExist(2));
}
