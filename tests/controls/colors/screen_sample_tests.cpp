// The screen in small: areas, contrast, keys, clicks, screen readers, faults.
#include "color_kit.h"

#include <zogbl/screen_sample.h>

namespace {

constexpr COLORREF kInk = RGB(255, 255, 0), kPaper = RGB(0, 0, 128), kFrame = RGB(250, 60, 10);
constexpr DWORD kStyle = WS_VISIBLE | WS_TABSTOP;

class ScreenSample : public ProductTest {
protected:
    ScreenSample()
    {
        m_parent.m_describe = [](NMHDR& header, LRESULT&) {
            return header.code == ZON_SAMPLE_CHOSEN && header.idFrom == 5
                       ? std::to_string(reinterpret_cast<ZoSampleNotification&>(header).area)
                       : "";
        };
        Fill(m_sample);
    }
    static void Fill(CZoScreenSample& sample)
    {
        EXPECT_EQ(0, sample.AddArea("Received", "MMMM\r\nMMMM", kInk, kPaper));
        EXPECT_EQ(1, sample.AddArea("Sent", "MMMM", kWhite, kBlack));
        EXPECT_EQ(2, sample.AddArea("Status", "MMMM", RGB(118, 118, 118), kWhite));
    }
    void Make(int height = 150, DWORD style = kStyle, ControlParent* parent = nullptr)
    {
        m_sample.DestroyWindow();
        ASSERT_TRUE(m_sample.Create(style, CRect(0, 0, 200, height), parent != nullptr ? parent : &m_parent, 5));
    }
    CRect Row(int part)
    {
        CRect area = Reader(m_sample).Area(part);
        m_sample.ScreenToClient(&area);
        return area;
    }

    ControlParent m_parent;
    CZoScreenSample m_sample;
};

} // namespace

TEST_F(ScreenSample, CalculatesTheContrast)
{
    const struct {
        COLORREF ink, paper;
        int contrast;
    } kRows[] = {{kBlack, kWhite, 2100},
                 {kWhite, kBlack, 2100},
                 {kInk, kInk, 100},
                 {RGB(118, 118, 118), kWhite, 454}, // the lightest and the darkest grey on either side of 4.5
                 {RGB(119, 119, 119), kWhite, 447},
                 {RGB(255, 0, 0), kWhite, 399},
                 {RGB(0, 0, 255), kWhite, 859},
                 {RGB(0, 255, 0), kBlack, 1530},
                 {RGB(10, 10, 10), kBlack, 106}}; // the straight part of the curve
    for (const auto& row : kRows)
        EXPECT_EQ(row.contrast, CZoScreenSample::GetContrast(row.ink, row.paper)) << std::hex << row.ink;
}

TEST_F(ScreenSample, ChecksValues)
{
    const std::string longest(0xFFFF, '\n'), tooLong(0x10000, 'x');
    CZoScreenSample sample;
    EXPECT_EQ(-1, sample.GetChosenArea());
    EXPECT_FALSE(sample.ChooseArea(0) || sample.ChooseArea(-1));
    EXPECT_EQ(-1, sample.AddArea(nullptr, "", 0, 0) & sample.AddArea("", nullptr, 0, 0) &
                      sample.AddArea("", tooLong.c_str(), 0, 0) & sample.AddArea(tooLong.c_str(), "", 0, 0) &
                      sample.AddArea("", "", CLR_DEFAULT, 0) & sample.AddArea("", "", 0, CLR_INVALID));
    for (int i = 0; i < CZoScreenSample::kMostAreas; ++i)
        EXPECT_EQ(i, sample.AddArea("", i == 0 ? longest.c_str() : "", 0, 0));
    EXPECT_EQ(-1, sample.AddArea("", "", 0, 0));
    EXPECT_EQ(0, sample.GetChosenArea());
    EXPECT_FALSE(sample.SetColors(64, 0, 0) || sample.SetColors(-1, 0, 0) || sample.SetColors(0, CLR_DEFAULT, 0) ||
                 sample.SetText(0, nullptr) || sample.SetText(0, tooLong.c_str()) || sample.SetText(64, ""));
    ASSERT_TRUE(sample.Create(kStyle, CRect(0, 0, 200, 100), &m_parent, 5));
    sample.UpdateWindow();
    sample.RemoveAreas();
    EXPECT_EQ(-1, sample.GetChosenArea());
    Play(sample, "k40 c50,50");
    sample.UpdateWindow();
    COLORREF ink = 1, paper = 2;
    EXPECT_FALSE(sample.GetColors(0, ink, paper));
    EXPECT_TRUE(ink == 1 && paper == 2);
    EXPECT_TRUE(m_sample.GetColors(0, ink, paper) && ink == kInk && paper == kPaper);
}

TEST_F(ScreenSample, ChoosesByKeysAndClicks)
{
    const struct {
        const char* keys;
        int chosen, moves;
        const char* told;
    } kRows[] = {{"k40", 1, 1, "1"}, // down, right, up, end, home, left; Tab, Space and Enter are the dialog's
                 {"k39 k39 k39", 2, 2, "1 2"}, {"k38", 0, 0, ""},       {"k35 k35 k38", 1, 2, "2 1"},
                 {"k35 k36 k37", 0, 2, "2 0"}, {"k9 k32 k13", 0, 0, ""}};
    for (const auto& row : kRows) {
        Make();
        m_sample.ChooseArea(0);
        m_sample.SetFocus();
        const Events events(m_sample);
        Play(m_sample, row.keys);
        EXPECT_EQ(row.chosen, m_sample.GetChosenArea()) << row.keys;
        EXPECT_EQ(row.told, m_parent.Told());
        EXPECT_EQ(row.moves, Events::Count(EVENT_OBJECT_FOCUS)) << row.keys;
    }
    m_parent.SetFocus();
    for (const int part : {3, 3, 1})
        Click(m_sample, {part == 1 ? 5 : 100, Row(part).top + 2}); // also on the button
    EXPECT_EQ("2 0", m_parent.Told());
    EXPECT_EQ(m_sample.m_hWnd, ::GetFocus());
    m_sample.ChooseArea(1);
    Click(m_sample, {100, 0}); // the frame
    EXPECT_EQ("", m_parent.Told());
    EXPECT_EQ(DLGC_WANTARROWS, m_sample.SendMessage(WM_GETDLGCODE));

    ControlParent mirrored(WS_EX_LAYOUTRTL);
    Make(150, kStyle, &mirrored);
    PressKey(m_sample, VK_LEFT);
    EXPECT_EQ(2, m_sample.GetChosenArea()) << "by the eye";
    m_sample.DestroyWindow();
}

TEST_F(ScreenSample, DrawsTheAreasInTheirColours)
{
    PlainFont font;
    CFont large, tiny;
    large.CreatePointFont(200, "Arial");
    tiny.CreatePointFont(70, "Arial");
    for (const COLORREF face : {RGB(180, 180, 180), RGB(0, 0, 0)}) {
        const Scheme scheme{{COLOR_3DFACE, face}, {COLOR_BTNTEXT, kFrame}, {COLOR_WINDOW, RGB(1, 90, 1)}};
        Make();
        m_sample.SetFont(&font);
        auto picture = PictureOf(m_sample);
        EXPECT_EQ(kPaper, picture->At(100, Row(1).top + 1));
        EXPECT_EQ(kBlack, picture->At(100, Row(2).top + 1));
        EXPECT_EQ(kWhite, picture->At(100, Row(3).bottom - 1)) << "what is left belongs to the last";
        EXPECT_EQ(148, Row(3).bottom);
        EXPECT_EQ(Row(1).Height(), 2 * Row(2).Height());
        EXPECT_GT(picture->Count(kInk, Row(1)), 10);
        EXPECT_EQ(0, picture->Count(kInk, Row(2)));
        EXPECT_EQ(face, picture->At(17, 100)) << "the frame has the scheme's";
        const CRect left(0, 0, 20, 150), right(150, 0, 200, 150);
        const int contrast = picture->Count(kFrame, right);
        EXPECT_GT(contrast, 40);
        EXPECT_TRUE(AreEqual(*ScreenOf(m_sample), *picture));
        m_sample.SetFocus();
        EXPECT_GT(PictureOf(m_sample)->Count(kFrame, left), picture->Count(kFrame, left)) << "the dotted frame";
        m_parent.SetFocus();
        m_sample.EnableWindow(FALSE);
        EXPECT_EQ(0, PictureOf(m_sample)->Count(kFrame, right));
        for (const int part : {1, 3}) {
            const CRect button(0, Row(part).top, 17, Row(part).top + 16); // grey inside
            EXPECT_LT(PictureOf(m_sample)->Count(RGB(1, 90, 1), button), picture->Count(RGB(1, 90, 1), button));
        }
        m_sample.EnableWindow(TRUE);
        m_sample.ChooseArea(1); // only what changes is drawn again
        m_sample.SetColors(2, kInk, kPaper);
        EXPECT_TRUE(AreEqual(*ScreenOf(m_sample), *PictureOf(m_sample)));
        EXPECT_FALSE(AreEqual(*picture, *PictureOf(m_sample)));
        m_sample.SetColors(2, RGB(118, 118, 118), kWhite);
        m_sample.ChooseArea(0);

        Make(44); // half the room
        EXPECT_EQ(CRect(0, 2, 200, 22), Row(1));
        EXPECT_EQ(CRect(0, 32, 200, 42), Row(3));
        EXPECT_EQ(0, PictureOf(m_sample)->Count(kInk, Row(2))) << "cut off";
        Make();
        m_sample.SetFont(&font);
        for (CFont* sample : {&large, &tiny}) {
            m_sample.SetSampleFont(*sample);
            EXPECT_EQ(sample == &large, Row(2).Height() > 25);
            EXPECT_EQ(contrast, PictureOf(m_sample)->Count(kFrame, right)) << "the frame keeps the control's font";
        }
        m_sample.SetSampleFont(nullptr);
        m_sample.SetText(1, "M\nM\nM");
        EXPECT_EQ(3 * Row(1).Height(), 2 * Row(2).Height());
        m_sample.SetText(1, "MMMM");
        Make(150, kStyle | CZoScreenSample::kNoContrast);
        EXPECT_EQ(kPaper, PictureOf(m_sample)->At(190, 10));
        EXPECT_EQ(0, PictureOf(m_sample)->Count(kFrame, {20, 0, 200, 150}));
    }
}

TEST_F(ScreenSample, TellsScreenReaders)
{
    Make();
    Reader reader(m_sample);
    EXPECT_EQ(
        "Received|Text Yellow (255, 255, 0), background Dark blue (0, 0, 128), contrast 14.9 : 1|MMMM\r\nMMMM|Choose",
        reader.Name(1) + "|" + reader.Value(1) + "|" + reader.Description(1) + "|" + reader.Action(1));
    EXPECT_NE(std::string::npos, reader.Value(3).find("contrast 4.5 : 1"));
    EXPECT_EQ(ROLE_SYSTEM_RADIOBUTTON, reader.Role(2));
    constexpr LONG kPlain = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
    EXPECT_EQ(kPlain | STATE_SYSTEM_SELECTED | STATE_SYSTEM_CHECKED, reader.State(1));
    EXPECT_EQ(kPlain, reader.State(2));
    m_sample.SetFocus();
    EXPECT_EQ(1, reader.Focus());
    const Events events(m_sample);
    EXPECT_EQ(S_OK, reader->accDoDefaultAction(Reader::Part(2)));
    EXPECT_EQ("1", m_parent.Told());
    EXPECT_EQ("focus 2, selection 2", HeardText());
    EXPECT_TRUE(m_sample.SetColors(2, kInk, kPaper) && m_sample.SetColors(2, kInk, kPaper));
    EXPECT_TRUE(m_sample.SetText(2, "new") && m_sample.SetText(2, "new"));
    EXPECT_TRUE(m_sample.ChooseArea(1));
    EXPECT_EQ("value 3, description 3", HeardText());
    m_parent.SetFocus();
    EXPECT_TRUE(m_sample.ChooseArea(0));
    EXPECT_EQ("selection 1", HeardText());
    ChangeLanguage(kGerman);
    EXPECT_EQ(0u, reader.Value(3).find("Text Gelb (255, 255, 0), Hintergrund Dunkelblau"));
}
