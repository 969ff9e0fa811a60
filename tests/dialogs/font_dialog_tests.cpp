// The choice of a font, on the fonts that this system has and on made-up ones.
#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/font_dialog.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>

namespace {

constexpr int kFace = ZO_IDC_FONT_FACE, kStyle = ZO_IDC_FONT_STYLE, kSize = ZO_IDC_FONT_SIZE;
constexpr int kScript = ZO_IDC_FONT_SCRIPT;
constexpr int kField = 1001; // of the sizes' combo box

LOGFONT Tahoma(LONG height = -13, LONG weight = FW_NORMAL)
{
    LOGFONT font = {};
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfQuality = PROOF_QUALITY;
    font.lfOrientation = font.lfEscapement = 300;
    font.lfWidth = 3;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    lstrcpyA(font.lfFaceName, "Tahoma");
    return font;
}

/// Pixels on this screen. \param points tenths of a point
int HeightOf(int points) { return -MulDiv(points, CZoGlobalGDIData::Scale(96), 720); }

/// What a font dialog makes of a font: whether it is the same, else what has become of face, height, weight, slant,
/// script, effects.
std::string Describe(const LOGFONT& font, const LOGFONT& before)
{
    LOGFONT rest = font;
    CopyMemory(rest.lfFaceName, before.lfFaceName, LF_FACESIZE);
    rest.lfHeight = before.lfHeight;
    rest.lfWeight = before.lfWeight;
    rest.lfItalic = before.lfItalic;
    rest.lfCharSet = before.lfCharSet;
    rest.lfStrikeOut = before.lfStrikeOut;
    rest.lfUnderline = before.lfUnderline;
    rest.lfPitchAndFamily = before.lfPitchAndFamily;
    EXPECT_EQ(0, memcmp(&rest, &before, sizeof rest));
    CString text;
    text.Format("%s %ld %ld%s %d%s%s", font.lfFaceName, font.lfHeight, font.lfWeight, font.lfItalic != 0 ? "i" : "",
                font.lfCharSet, font.lfStrikeOut != 0 ? " struck" : "", font.lfUnderline != 0 ? " lined" : "");
    return text.GetString();
}

class FontDialog : public ProductTest {
protected:
    /// Shows the dialog, lets \p act do something and presses OK.
    std::string Choose(const LOGFONT& font, const DialogDriver::Act& act, DWORD flags = CZoFontDialog::kEffects)
    {
        CZoFontDialog dialog(flags);
        dialog.SetFont(font);
        EXPECT_TRUE(dialog.SetSizes(4, 200));
        const DialogDriver driver({[&](HWND window) {
            act(window);
            Press(window, IDOK);
        }});
        EXPECT_EQ(IDOK, dialog.DoModal());
        m_font = dialog.GetFont();
        return Describe(m_font, font);
    }
    static void TypeSize(HWND window, const std::string& text) { Type(GetDlgItem(window, kSize), kField, text); }
    static void ChooseFace(HWND window, const std::string& face)
    {
        zo_test::Choose(window, kFace, RowOf(window, kFace, face));
    }

    LOGFONT m_font = {};
};

/// Fonts that no system has.
struct MadeUp {
    LPCSTR name;
    BYTE script, pitch;
    DWORD type;
    LONG weight, height;
    bool isItalic;
};
constexpr MadeUp kMadeUp[] = {{"Up", SHIFTJIS_CHARSET, VARIABLE_PITCH, TRUETYPE_FONTTYPE, FW_NORMAL, 20, false},
                              {"@Up", SHIFTJIS_CHARSET, VARIABLE_PITCH, TRUETYPE_FONTTYPE, FW_NORMAL, 20, false},
                              {"Bits", ANSI_CHARSET, FIXED_PITCH, RASTER_FONTTYPE, FW_NORMAL, 48, false},
                              {"Bits", ANSI_CHARSET, FIXED_PITCH, RASTER_FONTTYPE, FW_NORMAL, 32, false},
                              {"Bits", ANSI_CHARSET, FIXED_PITCH, RASTER_FONTTYPE, FW_BOLD, 32, false},
                              {"Bits", ANSI_CHARSET, FIXED_PITCH, RASTER_FONTTYPE, FW_NORMAL, 600, false},
                              {"Plot", ANSI_CHARSET, VARIABLE_PITCH, 0, FW_HEAVY, 20, true},
                              {"Bits", GREEK_CHARSET, FIXED_PITCH, RASTER_FONTTYPE, FW_NORMAL, 32, false}};
size_t g_firstMadeUp = 0; // those before have gone

int WINAPI EnumerateMadeUp(HDC, LPLOGFONTA wanted, FONTENUMPROCA see, LPARAM context, DWORD)
{
    for (size_t i = g_firstMadeUp; i < std::size(kMadeUp); ++i) {
        const MadeUp& row = kMadeUp[i];
        ENUMLOGFONTEXA font = {};
        TEXTMETRICA metrics = {};
        lstrcpyA(font.elfLogFont.lfFaceName, row.name);
        lstrcpyA(reinterpret_cast<LPSTR>(font.elfStyle), "Slanted");
        font.elfLogFont.lfCharSet = row.script;
        font.elfLogFont.lfPitchAndFamily = row.pitch;
        font.elfLogFont.lfWeight = row.weight;
        font.elfLogFont.lfItalic = row.isItalic;
        metrics.tmHeight = row.height;
        if ((wanted->lfCharSet == DEFAULT_CHARSET || wanted->lfCharSet == row.script) &&
            (wanted->lfFaceName[0] == '\0' || lstrcmpA(wanted->lfFaceName, row.name) == 0))
            see(&font.elfLogFont, &metrics, row.type, context);
    }
    return 1;
}

} // namespace

TEST_F(FontDialog, GivesBackWhatWasNotTouched)
{
    LOGFONT odd = Tahoma(17, 450); // a height of lines, and a weight that no font has
    odd.lfPitchAndFamily = 0;
    LOGFONT missing = Tahoma(0, 0);
    lstrcpyA(missing.lfFaceName, "No such face");
    LOGFONT replaced = missing, alias = missing;
    lstrcpyA(alias.lfFaceName, "MS Shell Dlg");
    missing.lfCharSet = 99;
    for (const LOGFONT& font : {Tahoma(), Tahoma(-11), Tahoma(-14, FW_BOLD), odd, missing, replaced, alias}) {
        Choose(font, [&](HWND window) {
            EXPECT_EQ(font.lfCharSet == 99, ChosenRow(window, kFace) < 0) << "the one that the system takes";
        });
        EXPECT_EQ(0, memcmp(&font, &m_font, sizeof font)) << font.lfFaceName << font.lfHeight;
        Choose(font, [](HWND window) { // there and back
            const std::string face = RowText(window, kFace, ChosenRow(window, kFace));
            const std::string size = TextOf(window, kSize);
            const int style = ChosenRow(window, kStyle);
            if (RowText(window, kFace, 0).empty())
                return; // no face has the script
            zo_test::Choose(window, kFace, 0);
            zo_test::Choose(window, kStyle, 0);
            TypeSize(window, "33");
            ChooseFace(window, face);
            zo_test::Choose(window, kStyle, style);
            SetDlgItemTextA(window, kSize, size.c_str());
        });
        EXPECT_EQ(0, memcmp(&font, &m_font, sizeof font)) << font.lfFaceName << font.lfHeight;
    }
}

TEST_F(FontDialog, GivesWhatIsChosen)
{
    const struct {
        DialogDriver::Act act;
        int height;
        const char* expected;
    } kRows[] = {
        {[](HWND window) { TypeSize(window, "20"); }, HeightOf(200), "400 0"},
        {[](HWND window) { TypeSize(window, "10.5"); }, HeightOf(105), "400 0"},
        {[](HWND window) { TypeSize(window, " 7,5 "); }, HeightOf(75), "400 0"},
        {[](HWND window) {
             zo_test::Choose(window, kSize, 15);
             EXPECT_EQ("72", TextOf(window, kSize));
         },
         HeightOf(720), "400 0"},
        {[](HWND window) {
             SetFocus(GetDlgItem(window, kStyle));
             Key(window, VK_END);
         },
         -13, "700i 0"},
        {[](HWND window) { zo_test::Choose(window, kScript, RowOf(window, kScript, "Cyrillic")); }, -13, "400 204"},
        {[](HWND window) { zo_test::Choose(window, kScript, 0); }, -13, "400 1"},
        {[](HWND window) {
             AccessKey(window, 'k');
             AccessKey(window, 'u');
         },
         -13, "400 0 struck lined"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ("Tahoma " + std::to_string(row.height) + " " + row.expected, Choose(Tahoma(), row.act));
    std::string first;
    const auto chooseFirst = [&](HWND window) {
        first = RowText(window, kFace, 0);
        zo_test::Choose(window, kFace, 0);
    };
    const std::string chosen = Choose(Tahoma(), chooseFirst, CZoFontDialog::kFixedPitch);
    EXPECT_EQ(first + " -13 400 0", chosen);
    EXPECT_EQ(FIXED_PITCH, m_font.lfPitchAndFamily & 3);
    CZoFontDialog dialog;
    for (const auto& [height, points] : {std::pair(-13, MulDiv(13, 720, CZoGlobalGDIData::Scale(96))), std::pair(0, 0),
                                         std::pair(HeightOf(720), 720)}) {
        dialog.SetFont(Tahoma(height));
        EXPECT_EQ(points, dialog.GetPointSize());
    }
}

TEST_F(FontDialog, ListsWhatTheSystemEnumeratesForEachScript)
{
    const ImportPatch fonts(kZogbl, "EnumFontFamiliesExA", &EnumerateMadeUp);
    const HDC printer = CreateCompatibleDC(nullptr); // with 192 dots an inch
    const ImportPatch dots(
        kZogbl, "GetDeviceCaps", +[](HDC dc, int what) WINAPI {
            return what == LOGPIXELSY && GetObjectType(dc) == OBJ_MEMDC ? 192 : GetDeviceCaps(dc, what);
        });
    LOGFONT font = Tahoma();
    font.lfCharSet = DEFAULT_CHARSET;
    const std::pair<DWORD, const char*> kRows[] = {{CZoFontDialog::kEffects, "Bits|Plot|Up|"},
                                                   {CZoFontDialog::kFixedPitch, "Bits|"},
                                                   {CZoFontDialog::kVertical, "@Up|Bits|Plot|Up|"},
                                                   {CZoFontDialog::kScalable, "Plot|Up|"}};
    for (const auto& [flags, faces] : kRows) {
        const auto look = [&, isFixed = flags == CZoFontDialog::kFixedPitch, faces = faces](HWND window) {
            EXPECT_EQ(faces, RowsOf(window, kFace));
            EXPECT_EQ(isFixed, RowOf(window, kScript, "Japanese") < 0) << "which has none";
        };
        Choose(font, look, flags);
    }
    CZoFontDialog dialog;
    dialog.SetPrinter(printer);
    EXPECT_TRUE(dialog.SetSizes(4, 200));
    dialog.SetFont(font);
    const DialogDriver driver({[](HWND window) {
                                   ChooseFace(window, "Bits");
                                   EXPECT_EQ("12|18|", RowsOf(window, kSize)) << "225 points are too many";
                                   ChooseFace(window, "Up");
                                   EXPECT_EQ("Regular|Italic|Bold|Bold Italic|", RowsOf(window, kStyle));
                                   ChooseFace(window, "Plot");
                                   EXPECT_EQ("Bold Italic|", RowsOf(window, kStyle)) << "nothing lighter";
                                   g_firstMadeUp = 2;
                                   SendMessageA(window, WM_FONTCHANGE, 0, 0);
                                   EXPECT_EQ("Any script|Western|Greek|", RowsOf(window, kScript));
                                   g_firstMadeUp = 0;
                                   SendMessageA(window, WM_FONTCHANGE, 0, 0);
                                   EXPECT_EQ("Bits|Plot|Up|", RowsOf(window, kFace));
                                   const std::pair<const char*, const char*> kScripts[] = {
                                       {"Western", "Bits|Plot|"}, {"Greek", "Bits|"}, {"Japanese", "Up|"}};
                                   for (const auto& [script, faces] : kScripts) {
                                       zo_test::Choose(window, kScript, RowOf(window, kScript, script));
                                       EXPECT_EQ(faces, RowsOf(window, kFace)) << script;
                                   }
                                   g_firstMadeUp = 2;
                                   SendMessageA(window, WM_FONTCHANGE, 0, 0);
                                   g_firstMadeUp = 0;
                                   Press(window, IDOK);
                                   EXPECT_EQ(kFace, FocusOf(window));
                                   Press(window, IDCANCEL);
                               },
                               AnswerBox("Please choose a font.", IDOK)});
    EXPECT_EQ(IDCANCEL, dialog.DoModal());
    DeleteDC(printer);
}

TEST_F(FontDialog, RefusesWhatIsNoSizeAndFollowsTheLanguage)
{
    CZoFontDialog dialog;
    EXPECT_FALSE(dialog.SetSizes(0, 10) || dialog.SetSizes(1, 1639) || dialog.SetSizes(11, 10));
    EXPECT_TRUE(dialog.SetSizes(6, 72));
    dialog.SetFont(Tahoma());
    dialog.SetColor(RGB(255, 0, 0));
    const std::string reason = "Please enter a size from 6 to 72 points.";
    std::vector<DialogDriver::Act> acts = {[&](HWND window) {
        EXPECT_EQ((std::vector<int>{kFace, kStyle, kField, ZO_IDC_FONT_STRIKEOUT, ZO_IDC_FONT_UNDERLINE,
                                    ZO_IDC_FONT_COLOR, kScript, IDOK, IDCANCEL}),
                  ExpectTabRounds(window));
        ExpectTidy(window);
        for (const LPCSTR size : {"", "x", "5.9", "72.1", "-8", "8 9", "1e1", "0x8", "9.9.9"}) {
            TypeSize(window, size);
            Press(window, IDOK);
            EXPECT_TRUE(IsChild(GetDlgItem(window, kSize), GetFocus()) || FocusOf(window) == kSize) << size;
        }
        TypeSize(window, "72");
        auto& color = dynamic_cast<CZoColorButton&>(*CWnd::FromHandlePermanent(GetDlgItem(window, ZO_IDC_FONT_COLOR)));
        EXPECT_EQ(RGB(255, 0, 0), color.GetColor());
        color.SetColor(RGB(0, 128, 0));
        ChangeLanguage(kGerman);
        EXPECT_EQ(0, RowOf(window, kStyle, "Standard"));
        ExpectTidy(window);
        EXPECT_EQ("Eine TrueType-Schrift. Sie sieht auf dem Bildschirm und im Druck gleich aus.",
                  TextOf(window, ZO_IDC_FONT_KIND));
        EXPECT_EQ("Westlich", RowText(window, kScript, ChosenRow(window, kScript)));
        Key(window, VK_RETURN);
    }};
    acts.insert(acts.end(), 9, AnswerBox(reason, IDOK));
    const DialogDriver driver(acts);
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(HeightOf(720), dialog.GetFont().lfHeight);
    EXPECT_EQ(RGB(0, 128, 0), dialog.GetColor());
}

TEST_F(FontDialog, IsGivenUpAndSurvivesFaults)
{
    CZoFontDialog dialog;
    dialog.SetFont(Tahoma());
    for (const auto& way : WaysToGiveUp()) {
        const DialogDriver driver({[&](HWND window) {
            zo_test::Choose(window, kFace, 0);
            way(window);
        }});
        EXPECT_EQ(IDCANCEL, dialog.DoModal());
        EXPECT_STREQ("Tahoma", dialog.GetFont().lfFaceName);
    }
    const auto use = [](const FaultRun& run) {
        CZoFontDialog shown;
        shown.SetFont(Tahoma());
        const INT_PTR result = shown.DoModal();
        run.Stop();
        EXPECT_TRUE(result == IDOK || run.Fired()) << result;
    };
    RunDialogFaults(
        [](HWND window) {
            SendDlgItemMessageA(window, kFace, LB_SETCURSEL, 0, 0);
            Command(window, kFace, LBN_SELCHANGE);
            Command(window, kScript, CBN_SELCHANGE);
            Command(window, IDOK);
        },
        use, {.memory = 17});
}
