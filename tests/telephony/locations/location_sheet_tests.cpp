// The sheet and the wizard for dialing locations, driven as a person would.
#include "dialogs/dialog_faults.h"
#include "documented_dialing.h"
#include "location_fixture.h"

#include "support/product_test.h"
#include "telephony/locations/dialing_preview.h"

#include <zogbl/column_list.h>
#include <zogbl/location_sheet.h>
#include <zogbl/location_wizard.h>
#include <zogbl/tapi_interface.h>

#include <telsim/client.h>

namespace {

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
    static INT_PTR Edit(const DialogDriver::Act& person, const std::vector<DialogDriver::Act>& boxes = {},
                        UINT page = 0)
    {
        std::vector<DialogDriver::Act> acts = {person};
        acts.insert(acts.end(), boxes.begin(), boxes.end());
        const DialogDriver driver(acts);
        CLocSheet sheet(nullptr, page);
        return sheet.DoModal();
    }

    telsim::Client m_telsim;
};

} // namespace

TEST_F(LocationSheet, ShowsWhatIsDialedInEveryDocumentedExample)
{
    Save(0, "Home");
    Edit([](HWND window) {
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
    Edit([&](HWND window) {
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
        SetTexts(ShowPage(window, kPlace), {{ZO_IDC_LOC_CODE, ""}});
        ShowPage(window, kOutside);
        EXPECT_EQ(0, PreviewOf(window, PreviewCall::kInternational).how.Find("The location has no country code"));
        Press(window, IDCANCEL);
    });
}

TEST_F(LocationSheet, AsksTheServiceByTheButtonAlone)
{
    Save(0, "Home", TRUE);
    Edit([&](HWND window) {
        const HWND page = ShowPage(window, kOutside);
        EXPECT_FALSE(IsEnabled(page, ZO_IDC_LOC_LOCAL_ACCESS));
        Type(page, ZO_IDC_LOC_TRY_NUMBER, "+442079460018");
        Rest(page);
        EXPECT_EQ("", m_telsim.Calls());
        EXPECT_EQ("The telephony service decides. It is asked by the button.", TextOf(page, ZO_IDC_LOC_HOW));
        Press(page, ZO_IDC_LOC_ASK);
        EXPECT_NE("", m_telsim.Calls());
        EXPECT_STREQ("<hidden>442079460018", PreviewOf(window, PreviewCall::kOwn).dialed);
        EXPECT_EQ(0, PreviewOf(window, PreviewCall::kLocal).how.Find("By the rules of the telephony service: "));
        Press(page, ZO_IDC_LOC_SHOW_CODES);
        EXPECT_STREQ("", PreviewOf(window, PreviewCall::kOwn).dialed) << "an answer to another question";
        Press(page, ZO_IDC_LOC_ASK);
        EXPECT_STREQ("011442079460018", PreviewOf(window, PreviewCall::kOwn).dialed);
        EXPECT_TRUE(m_telsim.SetRule("lineTranslateAddress", 1, TRUE, TELSIM_FAIL, LINEERR_INVALADDRESS));
        Press(page, ZO_IDC_LOC_ASK);
        EXPECT_EQ("The telephony service cannot translate this number.", TextOf(page, ZO_IDC_LOC_HOW));
        Press(page, ZO_IDC_LOC_SERVICE);
        EXPECT_TRUE(IsEnabled(page, ZO_IDC_LOC_LOCAL_ACCESS));
        EXPECT_FALSE(IsEnabled(page, ZO_IDC_LOC_ASK));
        EXPECT_STREQ("011442079460018", PreviewOf(window, PreviewCall::kOwn).dialed);
        Press(window, IDOK);
    });
    Item item(0);
    EXPECT_TRUE(item.LoadByIndex(0) == 0 && !item.m_bTAPIDialing);
    m_telsim.Reset();
}

TEST_F(LocationSheet, EditsAHundredWithAllFieldsAtTheirLimit)
{
    Save(0, "Home");
    const auto text = [](int location, int field) {
        std::string digits = std::to_string(location * 100 + field);
        const char sign = field == ZO_IDC_LOC_EMAIL - ZO_IDC_LOC_USER ? '@' : '#';
        return std::string(254 - digits.size(), '5') + sign + digits;
    };
    EXPECT_EQ(IDOK, Edit(
                        [&](HWND window) {
                            for (int i = 0; i < ZO_MOST_LOCATIONS; ++i) {
                                if (i > 0)
                                    Press(window, ZO_IDC_LOC_NEW);
                                for (const auto& row : kFields) {
                                    const HWND page = ShowPage(window, row.page);
                                    for (int field = row.first; field < row.first + row.count; ++field)
                                        SetTexts(page, {{field, text(i, field - ZO_IDC_LOC_USER)}});
                                }
                            }
                            Press(window, ZO_IDC_LOC_NEW);
                            EXPECT_EQ(ZO_MOST_LOCATIONS, SendDlgItemMessageA(window, kList, LB_GETCOUNT, 0, 0));
                            Press(window, IDOK);
                        },
                        {AnswerBox("There can be 100 locations at most. Delete one that you no longer need, and try "
                                   "again.",
                                   IDOK)}));
    Edit([&](HWND window) {
        ASSERT_EQ(ZO_MOST_LOCATIONS, SendDlgItemMessageA(window, kList, LB_GETCOUNT, 0, 0));
        for (int i = 0; i < ZO_MOST_LOCATIONS; ++i) {
            Choose(window, kList, i);
            for (const auto& row : kFields) {
                const HWND page = ShowPage(window, row.page);
                for (int field = row.first; field < row.first + row.count; ++field)
                    ASSERT_EQ(text(i, field - ZO_IDC_LOC_USER), TextOf(page, field)) << i;
            }
        }
        Press(window, IDCANCEL);
    });
}
