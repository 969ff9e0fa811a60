// Effects in memory bitmaps.
#include "controls/control_kit.h"

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>

namespace {

constexpr COLORREF kGround = RGB(10, 20, 30);
const CRect kArea(3, 4, 19, 16);  // within a canvas of 24 by 20
const CRect kLarge(3, 4, 31, 28); // within one of 48 by 40; an icon is larger

/// All that an effect must leave as it was.
std::vector<ULONG_PTR> StateOf(HDC dc)
{
    POINT origin = {};
    RECT clip = {};
    ::GetBrushOrgEx(dc, &origin);
    ::GetClipBox(dc, &clip);
    std::vector<ULONG_PTR> state;
    for (const UINT object : {OBJ_BRUSH, OBJ_PEN, OBJ_FONT})
        state.push_back(reinterpret_cast<ULONG_PTR>(::GetCurrentObject(dc, object)));
    for (const LONG number : {static_cast<LONG>(::GetTextColor(dc)), static_cast<LONG>(::GetBkColor(dc)),
                              static_cast<LONG>(::GetBkMode(dc)), static_cast<LONG>(::GetLayout(dc)), origin.x,
                              origin.y, clip.left, clip.top, clip.right, clip.bottom})
        state.push_back(static_cast<ULONG_PTR>(number));
    return state;
}

struct Effect {
    const char* name;
    std::function<BOOL(HDC, const RECT&)> draw;
};

const Effect kEffects[] = {
    {"raised", [](HDC dc, const RECT& area) { return ZoDrawEdge(dc, area, ZoEdge::kRaised); }},
    {"sunken", [](HDC dc, const RECT& area) { return ZoDrawEdge(dc, area, ZoEdge::kSunken); }},
    {"etched", [](HDC dc, const RECT& area) { return ZoDrawEdge(dc, area, ZoEdge::kEtched); }},
    {"bump", [](HDC dc, const RECT& area) { return ZoDrawEdge(dc, area, ZoEdge::kBump); }},
    {"text", [](HDC dc, const RECT& area) { return ZoDrawDisabledText(dc, area, "Ab", -1, DT_LEFT); }},
    {"icon",
     [](HDC dc, const RECT& area) { return ZoDrawDisabledIcon(dc, area, ::LoadIcon(nullptr, IDI_APPLICATION)); }},
    {"ramp", [](HDC dc, const RECT& area) { return ZoDrawColorRamp(dc, area, 0, RGB(255, 255, 255), FALSE); }},
    {"hatch", [](HDC dc, const RECT& area) { return ZoDrawHatch(dc, area, RGB(255, 0, 0), RGB(0, 0, 255)); }},
    {"focus", [](HDC dc, const RECT& area) { return ZoDrawFocus(dc, area); }},
    {"shortened",
     [](HDC dc, const RECT& area) { return ZoDrawShortenedText(dc, area, "Long text", DT_LEFT, ZoShorten::kEnd); }},
};

BOOL WINAPI AnswerHighContrast(UINT, UINT, PVOID answer, UINT)
{
    static_cast<HIGHCONTRASTA*>(answer)->dwFlags = HCF_HIGHCONTRASTON;
    return TRUE;
}

} // namespace

TEST(Effects, StayInsideAndLeaveTheContextAsItWas)
{
    for (const int layout : {0, LAYOUT_RTL}) {
        const CRect seen = layout == 0 ? kLarge : CRect(48 - kLarge.right, kLarge.top, 48 - kLarge.left, kLarge.bottom);
        for (const Effect& effect : kEffects) {
            SCOPED_TRACE(effect.name);
            const Canvas canvas(48, 40, kGround);
            ::SetLayout(canvas, static_cast<DWORD>(layout));
            ::SetTextColor(canvas, RGB(200, 0, 0));
            ::SetBkColor(canvas, RGB(0, 200, 0));
            ::SetBrushOrgEx(canvas, 1, 2, nullptr);
            const auto before = StateOf(canvas);
            EXPECT_TRUE(effect.draw(canvas, {5, 5, 5, 9})) << "an empty rectangle";
            EXPECT_TRUE(effect.draw(canvas, kLarge)); // which may make what is shared
            const ProcessCounts counts = ProcessCounts::Take();
            for (int i = 0; i < 100; ++i)
                EXPECT_TRUE(effect.draw(canvas, kLarge));
            EXPECT_EQ(counts, ProcessCounts::Take());
            EXPECT_EQ(before, StateOf(canvas));
            ::SetLayout(canvas, 0);
            const int inside = canvas.Count(kGround, seen);
            EXPECT_LT(inside, kLarge.Width() * kLarge.Height());
            EXPECT_EQ(48 * 40 - kLarge.Width() * kLarge.Height(), canvas.Count(kGround, {0, 0, 48, 40}) - inside);
        }
    }
}

TEST(Effects, PixelsInTheColoursOfTheScheme)
{
    const Scheme scheme({{COLOR_3DFACE, RGB(100, 100, 100)},
                         {COLOR_3DHILIGHT, RGB(240, 240, 0)},
                         {COLOR_3DLIGHT, RGB(0, 220, 220)},
                         {COLOR_3DSHADOW, RGB(60, 0, 60)},
                         {COLOR_3DDKSHADOW, RGB(20, 20, 0)},
                         {COLOR_GRAYTEXT, RGB(90, 0, 90)}});
    constexpr COLORREF kHilight = RGB(240, 240, 0), kLight = RGB(0, 220, 220), kShadow = RGB(60, 0, 60),
                       kDark = RGB(20, 20, 0), kGray = RGB(90, 0, 90);
    const struct {
        ZoEdge edge;
        COLORREF topOuter, topInner, bottomInner, bottomOuter;
    } kEdges[] = {{ZoEdge::kRaised, kLight, kHilight, kShadow, kDark},
                  {ZoEdge::kSunken, kShadow, kDark, kLight, kHilight},
                  {ZoEdge::kEtched, kShadow, kHilight, kShadow, kHilight},
                  {ZoEdge::kBump, kLight, kDark, kLight, kDark}};
    for (const auto& row : kEdges) {
        const Canvas canvas(24, 20, kGround);
        ZoDrawEdge(canvas, kArea, row.edge);
        EXPECT_EQ((std::vector<COLORREF>{row.topOuter, row.topInner, kGround, row.bottomInner, row.bottomOuter}),
                  (std::vector<COLORREF>{canvas.At(10, 4), canvas.At(10, 5), canvas.At(10, 6), canvas.At(10, 14),
                                         canvas.At(10, 15)}))
            << static_cast<UINT>(row.edge);
    }

    const CRect whole(0, 0, 60, 20);
    const auto draw = [&](const Canvas& canvas) {
        constexpr BYTE kBlack[8 * 2] = {};
        CBitmap picture;
        EXPECT_TRUE(picture.CreateBitmap(8, 8, 1, 1, kBlack));
        EXPECT_TRUE(ZoDrawDisabledText(canvas, {0, 0, 40, 20}, "HHH", -1, DT_LEFT));
        EXPECT_TRUE(ZoDrawDisabledBitmap(canvas, {45, 0, 60, 20}, picture));
        return std::vector<bool>{canvas.Count(kShadow, whole) > 10, canvas.Count(kHilight, whole) > 10,
                                 canvas.Count(kGray, whole) > 10};
    };
    const Canvas embossed(60, 20, kGround);
    EXPECT_EQ((std::vector{true, true, false}), draw(embossed));
    EXPECT_GT(embossed.Count(kShadow, whole), embossed.Count(kHilight, whole)) << "above the light";
    EXPECT_EQ(kShadow, embossed.At(45, 0));
    EXPECT_EQ(kHilight, embossed.At(53, 8));
    const ImportPatch contrast(kZogbl, "SystemParametersInfoA", &AnswerHighContrast);
    EXPECT_EQ((std::vector{false, false, true}), draw(Canvas(60, 20, kGround)));
}

TEST(Effects, RampHatchAndFocusPixelByPixel)
{
    const Canvas canvas(24, 20, kGround);
    ASSERT_TRUE(ZoDrawColorRamp(canvas, kArea, RGB(0, 100, 250), RGB(150, 100, 100), FALSE));
    EXPECT_EQ(RGB(0, 100, 250), canvas.At(3, 10));
    EXPECT_EQ(RGB(150, 100, 100), canvas.At(18, 10));
    EXPECT_EQ(RGB(70, 100, 180), canvas.At(10, 10));
    ::SetLayout(canvas, LAYOUT_RTL);
    ASSERT_TRUE(ZoDrawColorRamp(canvas, kArea, RGB(0, 100, 250), RGB(150, 100, 100), FALSE));
    EXPECT_EQ(RGB(0, 100, 250), canvas.At(3, 10)) << "at the reader's side";
    ::SetLayout(canvas, 0);
    ASSERT_TRUE(ZoDrawColorRamp(canvas, kArea, RGB(0, 0, 0), RGB(110, 0, 0), TRUE));
    for (int y = 4; y < 16; ++y)
        EXPECT_EQ(RGB(10 * (y - 4), 0, 0), canvas.At(7, y));
    const Canvas wide(600, 2, kGround);
    ASSERT_TRUE(ZoDrawColorRamp(wide, {0, 0, 600, 2}, RGB(0, 0, 0), RGB(255, 255, 255), FALSE));
    EXPECT_EQ(0, wide.Count(kGround, {0, 0, 600, 2})) << "more pixels than bands";

    for (const CPoint corner : {CPoint(3, 4), CPoint(4, 4), CPoint(5, 7)}) {
        const Canvas hatched(24, 20, kGround);
        ASSERT_TRUE(ZoDrawHatch(hatched, CRect(corner, CSize(10, 8)), RGB(255, 0, 0), RGB(0, 0, 255)));
        for (int x = 0; x < 10; ++x) {
            for (int y = 0; y < 8; ++y)
                EXPECT_EQ((x + y) % 2 == 0 ? RGB(255, 0, 0) : RGB(0, 0, 255), hatched.At(corner.x + x, corner.y + y))
                    << corner.x << "," << corner.y << ": " << x << "," << y;
        }
    }

    const Canvas framed(24, 20, kGround);
    ::SetTextColor(framed, RGB(255, 0, 0));
    ::SetBkColor(framed, RGB(0, 0, 255));
    for (int i = 0; i < 2; ++i) { // the second time changes nothing
        ASSERT_TRUE(ZoDrawFocus(framed, kArea));
        EXPECT_EQ(RGB(255, 0, 0), framed.At(3, 4));
        EXPECT_EQ(RGB(0, 0, 255), framed.At(4, 4));
        EXPECT_EQ(RGB(0, 0, 255), framed.At(18, 4));
        EXPECT_EQ(RGB(0, 0, 255), framed.At(3, 15));
        EXPECT_EQ(RGB(255, 0, 0), framed.At(18, 15));
        EXPECT_EQ(14 * 10, framed.Count(kGround, {4, 5, 18, 15}));
    }
}

TEST(Effects, TextIsShortenedBetweenCharacters)
{
    // Each character of the system's fixed font has the same width, a double-byte one twice that.
    const Canvas canvas(24, 20);
    const HGDIOBJ before = ::SelectObject(canvas, ::GetStockObject(SYSTEM_FIXED_FONT));
    SIZE unit = {};
    ::GetTextExtentPoint32A(canvas, "x", 1, &unit);
    const struct {
        const char* text;
        int characters;
        ZoShorten how;
        const char* shown;
    } kRows[] = {
        {"abcdefgh", 8, ZoShorten::kEnd, "abcdefgh"},
        {"abcdefgh", 7, ZoShorten::kEnd, "abcd..."},
        {"abcdefgh", 4, ZoShorten::kEnd, "a..."},
        {"abcdefgh", 3, ZoShorten::kEnd, "..."},
        {"abcdefgh", 0, ZoShorten::kEnd, "..."},
        {"", 0, ZoShorten::kEnd, ""},
        {"abcdefgh", 7, ZoShorten::kMiddle, "ab...gh"},
        {"abcdefgh", 6, ZoShorten::kMiddle, "a...h"},
        {"abcdefgh", 4, ZoShorten::kMiddle, "..."},
        {"C:\\one\\two\\name.txt", 15, ZoShorten::kPath, "C:\\...\\name.txt"},
        {"C:\\one\\two\\name.txt", 12, ZoShorten::kPath, "...\\name.txt"},
        {"C:\\one\\two\\name.txt", 11, ZoShorten::kPath, "C:\\one\\t..."},
        {"no-backslash-at-all", 10, ZoShorten::kPath, "no-back..."},
    };
    for (const auto& row : kRows)
        EXPECT_STREQ(row.shown, ZoShortenText(canvas, row.text, row.characters * unit.cx, row.how)) << row.text;

    if (GetACP() == 932) {
        const char* kText = "a\x82\xA0\x82\xA2\x83\x5C"
                            "b\x83\x5C"
                            "c"; // two characters end in a backslash's byte
        for (const ZoShorten how : {ZoShorten::kEnd, ZoShorten::kMiddle, ZoShorten::kPath}) {
            for (int width = 0; width < 16 * unit.cx; width += 3) {
                const std::string shown(ZoShortenText(canvas, kText, width, how));
                const std::string head = shown.substr(0, shown.find("..."));
                EXPECT_NE(0, MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, head.c_str(), -1, nullptr, 0)) << shown;
            }
        }
        EXPECT_EQ(std::string::npos,
                  std::string(ZoShortenText(canvas, kText, 8 * unit.cx, ZoShorten::kPath)).find("...\\"));
    }

    std::string longText(65536, 'm');
    BOOL isShortened = FALSE;
    EXPECT_TRUE(ZoDrawShortenedText(canvas, kArea, longText.c_str(), DT_LEFT, ZoShorten::kMiddle, &isShortened));
    EXPECT_TRUE(isShortened);
    EXPECT_TRUE(ZoDrawShortenedText(canvas, {0, 0, 2000, 20}, "short", DT_LEFT, ZoShorten::kMiddle, &isShortened));
    EXPECT_FALSE(isShortened);
    isShortened = TRUE;
    EXPECT_TRUE(ZoDrawShortenedText(canvas, kArea, "", DT_LEFT, ZoShorten::kMiddle, &isShortened));
    EXPECT_FALSE(isShortened);
    const auto inkOf = [&](LPCSTR text) {
        const Canvas drawn(100, 20, kGround);
        EXPECT_TRUE(ZoDrawShortenedText(drawn, {0, 0, 100, 20}, text, DT_LEFT, ZoShorten::kEnd));
        EXPECT_EQ(0, drawn.Count(::GetBkColor(drawn), {0, 0, 100, 20}));
        return 100 * 20 - drawn.Count(kGround, {0, 0, 100, 20});
    };
    EXPECT_EQ(2 * inkOf("&"), inkOf("&&")) << "a character as any other, on the background as it is";
    ::SelectObject(canvas, before);
}

TEST(Effects, SurviveFaultsOfTheSystem)
{
    DrawingFaults faults;
    RunFaultLoop(faults, [](const FaultRun& run) {
        const Canvas canvas(24, 20, kGround);
        const auto before = StateOf(canvas);
        BOOL drawn = TRUE;
        for (const Effect& effect : kEffects)
            drawn = effect.draw(canvas, kArea) && drawn;
        run.Stop();
        EXPECT_EQ(!run.Fired(), drawn != FALSE);
        EXPECT_EQ(before, StateOf(canvas));
        for (const Effect& effect : kEffects)
            EXPECT_TRUE(effect.draw(canvas, kArea)) << effect.name;
    });
}

TEST(GlobalGdiData, FollowsTheScheme)
{
    const COLORREF shadow = ::GetSysColor(COLOR_3DSHADOW);
    const auto colorOf = [](HPEN pen) {
        LOGPEN described = {};
        EXPECT_NE(0, ::GetObjectA(pen, sizeof described, &described));
        return described.lopnColor;
    };
    const HPEN pen = CZoGlobalGDIData::GetPen(COLOR_3DSHADOW);
    EXPECT_EQ(shadow, colorOf(pen));
    EXPECT_EQ(pen, CZoGlobalGDIData::GetPen(COLOR_3DSHADOW));
    {
        const Scheme scheme({{COLOR_3DSHADOW, RGB(1, 2, 3)}, {COLOR_GRAYTEXT, RGB(9, 9, 9)}});
        const ProcessCounts counts = ProcessCounts::Take();
        EXPECT_EQ(RGB(1, 2, 3), colorOf(CZoGlobalGDIData::GetPen(COLOR_3DSHADOW)));
        EXPECT_EQ(counts, ProcessCounts::Take()) << "in place of the one before";
        EXPECT_EQ(RGB(9, 9, 9), CZoGlobalGDIData::GetDisabledColor(RGB(1, 1, 1), RGB(2, 2, 2)));
        EXPECT_EQ(RGB(1, 1, 1), CZoGlobalGDIData::GetDisabledColor(RGB(1, 1, 1), RGB(9, 9, 9))) << "not to be seen";
    }
    EXPECT_EQ(nullptr, CZoGlobalGDIData::GetPen(-1));
    EXPECT_EQ(nullptr, CZoGlobalGDIData::GetPen(COLOR_MENUBAR + 1));
    EXPECT_EQ(::GetSysColorBrush(COLOR_WINDOW), CZoGlobalGDIData::GetBrush(COLOR_WINDOW));
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(::MulDiv(40, ::GetDeviceCaps(screen, LOGPIXELSY), 96), CZoGlobalGDIData::Scale(40));
    ::ReleaseDC(nullptr, screen);
}
