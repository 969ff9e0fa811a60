// Drawing in memory bitmaps of known pixels.
#include "support/test.h"

#include <zogbl/trans_bmp.h>

namespace {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";
constexpr int kWidth = 6, kHeight = 4; // of the image: three cells of two by two across, two down

/// Colours that every depth has, each with a letter.
const std::map<char, COLORREF> kColorOf = {{'K', RGB(0, 0, 0)},      {'M', RGB(255, 0, 255)}, {'R', RGB(255, 0, 0)},
                                           {'G', RGB(0, 255, 0)},    {'B', RGB(0, 0, 255)},   {'Y', RGB(255, 255, 0)},
                                           {'W', RGB(255, 255, 255)}};
COLORREF ColorOf(char letter) { return kColorOf.at(letter); }

/// A picture as text: rows of letters, with a blank between them.
using Picture = std::string;

/// A DIB section of these pixels; a depth of 0 means a monochrome bitmap that is none.
HBITMAP MakeBitmap(int depth, const Picture& picture)
{
    const int width = static_cast<int>(picture.find(' '));
    const int height = static_cast<int>(picture.size() + 1) / (width + 1);
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colors[256];
    } info = {};
    info.header = {sizeof info.header, width, -height, 1, static_cast<WORD>(depth), BI_RGB, 0, 0, 0, 0, 0};
    if (depth == 1) {
        info.colors[1] = {255, 255, 255, 0};
    } else if (depth == 8) {
        for (const auto& [letter, color] : kColorOf)
            info.colors[info.header.biClrUsed++] = {GetBValue(color), GetGValue(color), GetRValue(color), 0};
    }
    void* bits;
    const HBITMAP bitmap =
        depth == 0 ? CreateBitmap(width, height, 1, 1, nullptr)
                   : CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ old = SelectObject(dc, bitmap);
    for (int i = 0; i < static_cast<int>(picture.size()); ++i) {
        if (picture[i] != ' ')
            SetPixel(dc, i % (width + 1), i / (width + 1), ColorOf(picture[i]));
    }
    SelectObject(dc, old);
    DeleteDC(dc);
    return bitmap;
}

/// A target to draw on, of one colour at first.
class Target : public Canvas {
public:
    explicit Target(int depth, char letter = 'Y', int width = 8, int height = 6)
        : Canvas(MakeBitmap(depth, Plain(letter, width, height))), m_before(Plain(letter, width, height))
    {
    }
    const Picture& Before() const { return m_before; }
    Picture Now() const
    {
        Picture picture = m_before;
        const int row = Size().cx + 1;
        for (int i = 0; i < static_cast<int>(picture.size()); ++i) {
            const auto found = std::find_if(kColorOf.begin(), kColorOf.end(),
                                            [&](const auto& entry) { return entry.second == At(i % row, i / row); });
            if (picture[i] != ' ')
                picture[i] = found != kColorOf.end() ? found->first : '?';
        }
        return picture;
    }
    /// The target as it was with a part of \p image at (1, 1), save for pixels of the letter \p clear.
    Picture With(const Picture& image, char clear, RECT part = {0, 0, kWidth, kHeight}) const
    {
        Picture picture = m_before;
        for (int y = part.top; y < part.bottom; ++y) {
            for (int x = part.left; x < part.right; ++x) {
                const char pixel = image[y * (kWidth + 1) + x];
                if (pixel != clear)
                    picture[(y - part.top + 1) * (Size().cx + 1) + x - part.left + 1] = pixel;
            }
        }
        return picture;
    }

private:
    static Picture Plain(char letter, int width, int height)
    {
        Picture picture(static_cast<size_t>(width), letter);
        while (--height > 0)
            picture += " " + std::string(static_cast<size_t>(width), letter);
        return picture;
    }

    Picture m_before;
};

constexpr int kMonochrome = 0; // no DIB section
const Picture kColors = "MRGBKW RMWKGB GGMMRR WBKMMG";
const Picture kBlackWhite = "WKKWKW KWWKKW KKWWKK WWKKWK";
constexpr char kNone = '-'; // no pixel's letter

/// \p picture with every letter but \p kept replaced.
Picture Stencil(const Picture& picture, const std::string& kept, char keptAs, char other)
{
    Picture stencil;
    for (const char pixel : picture)
        stencil += pixel == ' ' ? ' ' : kept.find(pixel) != std::string::npos ? keptAs : other;
    return stencil;
}

const struct {
    const char* name;
    void (*draw)(CZoTransBmp& image, HDC dc);
} kOperations[] = {
    {"Draw", [](CZoTransBmp& image, HDC dc) { image.Draw(dc, 1, 1); }},
    {"DrawCell", [](CZoTransBmp& image, HDC dc) { image.DrawCell(dc, 1, 1, 2, 1); }},
    {"DrawTrans", [](CZoTransBmp& image, HDC dc) { image.DrawTrans(dc, 1, 1); }},
    {"DrawCellTrans", [](CZoTransBmp& image, HDC dc) { image.DrawCellTrans(dc, 1, 1, 2, 1); }},
    {"DrawStretchTrans", [](CZoTransBmp& image, HDC dc) { image.DrawStretchTrans(dc, 1, 1, 6, 4); }},
};

/// An image of three cells by two.
struct Image : CZoTransBmp {
    explicit Image(int depth, const Picture& picture = kColors, int across = 3, int down = 2)
        : CZoTransBmp(across, down)
    {
        Attach(MakeBitmap(depth, picture));
    }
};

} // namespace

TEST(TransBmp, DrawsWholeAndCellsAtEveryDepth)
{
    const struct {
        int column, row;
        RECT part;
    } cells[] = {{0, 0, {0, 0, 2, 2}},
                 {2, 1, {4, 2, 6, 4}},
                 {-1, 1, {0, 2, 2, 4}},
                 {1, -5, {2, 0, 4, 2}},
                 {INT_MAX, INT_MAX, {0, 0, 0, 0}}};
    for (const int depth : {kMonochrome, 1, 8, 16, 24, 32}) {
        const Picture& picture = depth < 8 ? kBlackWhite : kColors;
        for (const int targetDepth : {8, 16, 24, 32}) {
            SCOPED_TRACE(testing::Message() << depth << " bits on " << targetDepth);
            Image image(depth, picture);
            const auto expect = [&](char clear, RECT part, auto draw) {
                const Target target(targetDepth);
                CDC dc;
                dc.Attach(target);
                draw(&dc);
                EXPECT_EQ(target.With(picture, clear, part), target.Now()) << (clear == kNone ? "" : "transparent");
                EXPECT_EQ(RGB(0, 0, 0), GetTextColor(target));
                EXPECT_EQ(ColorOf('W'), GetBkColor(target));
                dc.Detach();
            };
            const RECT whole = {0, 0, kWidth, kHeight};
            expect(kNone, whole, [&](CDC* dc) { image.Draw(dc, 1, 1); });
            expect(picture[0], whole, [&](CDC* dc) { image.DrawTrans(dc, 1, 1); });
            for (const auto& [column, row, part] : cells) {
                SCOPED_TRACE(testing::Message() << "cell " << column << ", " << row);
                expect(kNone, part, [&, x = column, y = row](CDC* dc) { image.DrawCell(dc, 1, 1, x, y); });
                expect(picture[0], part, [&, x = column, y = row](CDC* dc) { image.DrawCellTrans(dc, 1, 1, x, y); });
            }
        }
        // A monochrome target knows white, and all that is not.
        const Target target(kMonochrome, 'W');
        Image(depth, picture).DrawTrans(target, 1, 1);
        EXPECT_EQ(target.With(Stencil(picture, {picture[0], 'W'}, 'W', 'K'), kNone), target.Now()) << depth << " bits";
    }
}

TEST(TransBmp, StretchesATwoColouredStencil)
{
    for (const int depth : {kMonochrome, 8, 16, 24, 32}) {
        const Picture& picture = depth < 8 ? kBlackWhite : kColors;
        for (const int targetDepth : {8, 16, 24, 32}) {
            SCOPED_TRACE(testing::Message() << depth << " bits on " << targetDepth);
            Image image(depth, picture);
            for (const int factor : {1, 2}) {
                const Target target(targetDepth, 'Y', 8 * factor, 6 * factor);
                SetTextColor(target, ColorOf('R'));
                SetBkColor(target, ColorOf('G'));
                image.DrawStretchTrans(target, factor, factor, kWidth * factor, kHeight * factor);
                const Target small(8);
                const Picture expected = small.With(Stencil(picture, {picture[0], 'W'}, 'G', 'R'), kNone);
                const Picture now = target.Now();
                for (int y = 0; y < 6 * factor; ++y) {
                    for (int x = 0; x < 8 * factor; ++x)
                        EXPECT_EQ(expected[y / factor * 9 + x / factor], now[y * (8 * factor + 1) + x]) << now;
                }
                EXPECT_EQ(COLORONCOLOR, GetStretchBltMode(target));
                EXPECT_EQ(ColorOf('W'), GetBkColor(target)) << "the block's colour, not the target's";
                EXPECT_EQ(ColorOf('R'), GetTextColor(target));
            }
        }
    }
}

TEST(TransBmp, TheColourOfTheFirstTransparentDrawingStays)
{
    const auto draw = [](CZoTransBmp& image) {
        const Target target(32);
        image.DrawTrans(target, 1, 1);
        for (const char letter : std::string("MRGBKW-")) {
            if (target.With(kColors, letter) == target.Now())
                return letter;
        }
        return '?';
    };
    Image image(32);
    EXPECT_EQ('M', draw(image)) << "of the top-left pixel";
    image.SetTransparentColor(ColorOf('G'));
    EXPECT_EQ('M', draw(image));

    Image chosen(32);
    chosen.SetTransparentColor(ColorOf('G'));
    EXPECT_EQ('G', draw(chosen));
    chosen.SetTransparentColor(ColorOf('B'));
    EXPECT_EQ('G', draw(chosen));

    Image absent(32);
    absent.SetTransparentColor(ColorOf('Y'));
    EXPECT_EQ(kNone, draw(absent)) << "no pixel has it";

    Picture picture = kBlackWhite;
    picture[0] = 'K';
    Image monochrome(kMonochrome, picture); // its own mask: what is white is left out, whatever the colour
    monochrome.SetTransparentColor(ColorOf('K'));
    const Target target(32);
    monochrome.DrawTrans(target, 1, 1);
    EXPECT_EQ(target.With(picture, 'W'), target.Now());
}

TEST(TransBmp, MeasuresWhenAskedAndWhenDrawn)
{
    const struct {
        int width, height, across, down, cellWidth, cellHeight;
    } rows[] = {
        {100, 20, 5, 1, 20, 20},  {100, 20, 3, 1, 33, 20}, {100, 20, 0, -2, 100, 20},
        {100, 20, 1, 1, 100, 20}, {2, 2, 3, 1, 0, 2},
    };
    for (const auto& row : rows) {
        CZoTransBmp image(row.across, row.down);
        EXPECT_EQ(0, image.GetWidth()) << "without an image";
        EXPECT_EQ(0, image.GetCellHeight());
        ASSERT_TRUE(image.CreateBitmap(row.width, row.height, 1, 1, nullptr));
        EXPECT_EQ(row.width, image.GetWidth());
        EXPECT_EQ(row.height, image.GetHeight());
        EXPECT_EQ(row.cellWidth, image.GetCellWidth());
        EXPECT_EQ(row.cellHeight, image.GetCellHeight());
    }
    Image strip(32, kColors, 4, 1); // cells of one pixel: the last two columns belong to none
    const Target target(32);
    strip.DrawCell(target, 1, 1, 3, 0);
    EXPECT_EQ(target.With(kColors, kNone, {3, 0, 4, kHeight}), target.Now());
}

TEST(TransBmp, DrawsNothingWithoutContextOrImage)
{
    const Target target(32);
    CZoTransBmp none;
    Image image(32);
    image.DrawTrans(static_cast<CDC*>(nullptr), 1, 1); // makes the mask
    for (const auto& operation : kOperations) {
        ZO_EXPECT_NO_LEAK(operation.draw(none, target));
        ZO_EXPECT_NO_LEAK(operation.draw(image, nullptr));
    }
    EXPECT_EQ(target.Before(), target.Now());
}

TEST(TransBmp, DrawsAllOrNothingWhenTheSystemFails)
{
    for (const auto& operation : kOperations) {
        const Target undisturbed(32);
        {
            Image image(32);
            operation.draw(image, undisturbed);
        }
        FaultSource faults(operation.name);
        ZO_FAULTY_CALL(GetObjectA) describe(faults, kLibrary, 0);
        ZO_FAULTY_CALL(CreateCompatibleDC) context(faults, kLibrary, nullptr);
        ZO_FAULTY_CALL(CreateBitmap) bitmap(faults, kLibrary, nullptr);
        ZO_FAULTY_CALL(SelectObject) select(faults, kLibrary, nullptr);
        ZO_FAULTY_CALL(GetPixel) pixel(faults, kLibrary, CLR_INVALID);
        ZO_FAULTY_CALL(SetBkColor) background(faults, kLibrary, CLR_INVALID);
        ZO_FAULTY_CALL(PatBlt) fill(faults, kLibrary, FALSE);
        ZO_FAULTY_CALL(BitBlt) copy(faults, kLibrary, FALSE);
        ZO_FAULTY_CALL(SetStretchBltMode) mode(faults, kLibrary, 0);
        ZO_FAULTY_CALL(StretchBlt) stretch(faults, kLibrary, FALSE);
        RunFaultLoop(faults, [&](const FaultRun& run) {
            Image image(32);
            const Target target(32);
            operation.draw(image, target);
            const bool failed = run.Fired();
            run.Stop();
            const Picture first = target.Now();
            EXPECT_TRUE(first == undisturbed.Now() || (failed && first == target.Before())) << first;
            operation.draw(image, target);
            EXPECT_EQ(undisturbed.Now(), target.Now()) << "drawn again";
        });
    }
}

TEST(TransBmp, KeepsTheMaskInItsContext)
{
    Image image(32);
    const Target target(32), other(32);
    image.DrawTrans(target, 1, 1);
    FaultSource contexts("context");
    const ZO_FAULTY_CALL(CreateCompatibleDC) context(contexts, kLibrary, nullptr);
    contexts.Arm(1000, false);
    image.DrawTrans(other, 1, 1);
    EXPECT_EQ(2, contexts.Calls()) << "the copy's and the image's";
    EXPECT_EQ(target.Now(), other.Now());
}
