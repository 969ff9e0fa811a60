// The bitmap window: what it reads, where it shows it, and how it is moved.
#include "controls/control_kit.h"

#include <zogbl/bitmap_window.h>
#include <zogbl/resource_ids.h>
#include <zogbl/status.h>

namespace {

using Placing = CZoBitmapWnd::Placing;

constexpr COLORREF kBack = RGB(9, 90, 9);
const std::map<char, COLORREF> kColorOf = {
    {'K', RGB(0, 0, 0)},   {'W', RGB(255, 255, 255)}, {'R', RGB(255, 0, 0)},   {'G', RGB(0, 255, 0)},
    {'B', RGB(0, 0, 255)}, {'Y', RGB(255, 255, 0)},   {'M', RGB(255, 0, 255)}, {'.', kBack}};

std::string FromHex(const char* digits)
{
    std::string bytes;
    for (; *digits != '\0'; digits += *digits == ' ' ? 1 : 2) {
        if (*digits != ' ')
            bytes += static_cast<char>(std::stoi(std::string(digits, 2), nullptr, 16));
    }
    return bytes;
}

/// A bitmap file of 3 by 2 pixels, unless told otherwise.
struct File {
    WORD bits;
    const char* pixels; // as hexadecimal digits, from the bottom
    const char* colors = "";
    DWORD compression = BI_RGB;
    const char* masks = "";
    LONG width = 3, height = 2;
    DWORD headerSize = 40, used = 0;
    int pixelsAt = 0; // beside where they are

    std::string Bytes() const
    {
        std::string header = BytesOf(headerSize);
        if (headerSize == 12)
            header += BytesOf(static_cast<WORD>(width)) + BytesOf(static_cast<WORD>(height));
        else
            header += BytesOf(width) + BytesOf(height);
        header += BytesOf(WORD{1}) + BytesOf(bits);
        if (headerSize > 16)
            header += BytesOf(compression) + std::string(12, '\0') + BytesOf(used) + std::string(4, '\0');
        header += FromHex(masks);
        header.resize((std::max)(header.size(), size_t{headerSize}));
        for (const char* color = colors; *color != '\0'; ++color) {
            const COLORREF rgb = kColorOf.at(*color);
            header += BytesOf(RGB(GetBValue(rgb), GetGValue(rgb), GetRValue(rgb))).substr(0, headerSize == 12 ? 3 : 4);
        }
        const std::string data = FromHex(pixels);
        const auto at = static_cast<DWORD>(14 + static_cast<int>(header.size()) + pixelsAt);
        return "BM" + BytesOf(DWORD{4711}) + BytesOf(DWORD{0}) + BytesOf(at) + header + data;
    }
};

constexpr File kFiles[] = {{8, "02 03 04 00 01 00 02 00", "KWRGBY"}, // GBR and so on, whatever the form
                           {4, "23 40 00 00 10 20 00 00", "KWRGBY"},
                           {24, "0000FF 00FF00 FF0000 000000 FFFFFF 000000 0000FF 000000"},
                           {16, "007C E003 1F00 0000 FF7F 0000 007C 0000"},
                           {32, "0000FF55 00FF0055 FF000055 FFFFFF55 00000055 0000FF55"},
                           {8, "0102 0003 020304 00 0000 0301 02 0201 0001", "KWRGBY", BI_RLE8},
                           {4, "0523 0000 0003 1020 0001", "KWRGBY", BI_RLE4}};

class BitmapWindow : public testing::Test {
protected:
    void Make(int width, int height, DWORD style = 0)
    {
        ASSERT_TRUE(m_window.Create(style | WS_VISIBLE | WS_TABSTOP, CRect(0, 0, width, height), &m_parent, 5));
        m_window.SetBackColor(kBack);
        m_parent.m_describe = [](NMHDR& header, LRESULT&) {
            return header.code == ZON_BITMAP_ZOOMED ? "Z" : header.code == ZON_BITMAP_SCROLLED ? "S" : "";
        };
    }
    DWORD Load(const std::string& bytes)
    {
        const std::unique_ptr<char[]> exact(new char[bytes.size()]); // the guard heap sees what is read behind it
        bytes.copy(exact.get(), bytes.size());
        return m_window.LoadMemory(exact.get(), bytes.size());
    }
    /// A picture of that size whose pixels all differ.
    void LoadLarge(int width, int height)
    {
        Canvas canvas(width, height);
        for (int x = 0; x < width; ++x) {
            for (int y = 0; y < height; ++y)
                SetPixel(canvas, x, y, RGB(x, y, 200));
        }
        const auto bitmap = static_cast<HBITMAP>(GetCurrentObject(canvas, OBJ_BITMAP));
        const HBITMAP copy = static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0));
        ASSERT_EQ(0u, m_window.SetBitmap(copy));
        DeleteObject(copy);
    }
    /// What is seen, as rows of letters; '?' is any other colour.
    std::string Seen()
    {
        const auto picture = ScreenOf(m_window);
        std::string seen;
        for (int y = 0; y < picture->Size().cy; ++y) {
            seen += y > 0 ? " " : "";
            for (int x = 0; x < picture->Size().cx; ++x) {
                const auto found = std::find_if(kColorOf.begin(), kColorOf.end(),
                                                [&](auto& entry) { return entry.second == picture->At(x, y); });
                seen += found != kColorOf.end() ? found->first : '?';
            }
        }
        return seen;
    }
    /// Position, zoom and what the parent was told since the last time.
    std::string Position()
    {
        const CPoint at = m_window.GetScrollPosition();
        return std::to_string(at.x) + "," + std::to_string(at.y) + " " + std::to_string(m_window.GetZoom()) + " " +
               m_parent.Told();
    }

    const HMODULE m_texts = LoadLibraryA("ZOGBLENU.DLL"); // stays loaded
    CDynLinkLibrary m_chain{m_texts, m_texts};
    ControlParent m_parent;
    CZoBitmapWnd m_window;
};

} // namespace

TEST_F(BitmapWindow, ReadsWhatCanBeReadAndRefusesTheRest)
{
    constexpr const char *k8 = "02030400 01000200", *kC = "KWRGBY",
                         *k24 = "0000FF 00FF00 FF0000 000000 FFFFFF 000000 0000FF 000000";
    const std::string kMany(300, 'W');
    const struct {
        const char* name;
        File file;
        const char* seen;
        DWORD status = 0;
    } kRows[] = {
        {"1 bit", {1, "A0000000 40000000", "KW"}, "KWK WKW"},
        {"2 bits", {2, "18000000 E4000000", "KWRG"}, "GRW KWR"},
        {"565", {16, "00F8 E007 1F00 0000 FFFF 0000 00F8 0000", "", 3, "00F80000 E0070000 1F000000"}, "WKR RGB"},
        {"masks in the header",
         {16, "0F00 F000 000F 0000 FF0F 0000 0F00 0000", "", 3, "0F000000 F0000000 000F0000 00000000", 3, 2, 56},
         "WKR RGB"},
        {"10 bits and no blue",
         {32, "FC030000 00FC0F00 0000F03F 00000000 FFFFFFFF 00000000", "", 3, "FF030000 00FC0F00 00000000"},
         "KYK RGK"},
        {"four masks",
         {32, "FF000000 00FF0000 0000FF00 FFFFFF00 00000000 FF000000", "", 6, "FF000000 00FF0000 0000FF00 000000FF"},
         "WKR RGB"},
        {"from the top", {8, k8, kC, 0, "", 3, -2}, "RGB WKR"},
        {"core header", {8, k8, kC, 0, "", 3, 2, 12}, "WKR RGB"},
        {"short header", {4, "23400000 10200000", "KWRGBYKKKKKKKKKK", 0, "", 3, 2, 16}, "WKR RGB"},
        {"OS/2 header", {24, k24, "", 0, "", 3, 2, 64}, "WKR RGB"},
        {"longest header", {24, k24, "", 0, "", 3, 2, 124}, "WKR RGB"},
        {"colours of 24 bits", {24, k24, "KWRG", 0, "", 3, 2, 40, 4}, "WKR RGB"},
        {"too few colours", {8, k8, "KWR", 0, "", 3, 2, 40, 3}, "WKR RKK"},
        {"too many colours", {8, k8, kC, 0, "", 3, 2, 40, 70000}, "WKR RGB"},
        {"257 colours with room", {8, k8, kMany.c_str(), 0, "", 3, 2, 40, 300}, "WWW WWW"},
        {"gap before the pixels", {8, "0000 02030400 01000200", kC, 0, "", 3, 2, 40, 6, 2}, "WKR RGB"},
        {"pixels in the colours", {8, k8, "KWRG", 0, "", 3, 2, 40, 4, -4}, "RKK KKK"},
        {"last padding missing", {8, "02030400 010002", kC}, "WKR RGB"},
        {"RLE 8", {8, "0102 0103 0104 0000 0003 010002 00 0001", kC, 1}, "WKR RGB"},
        {"RLE 8, a jump and skipped pixels", {8, "0202 0002 0001 0103 0001", kC, 1}, "KKG RRK"},
        {"RLE 8, runs that are too long", {8, "FF02 FF03 0000 0004 01020304 0001", kC, 1}, "WRG RRR"},
        {"RLE 8, no end mark", {8, "0302 0000 0303", kC, 1}, "GGG RRR"},
        {"RLE 8, rows without pixels", {8, "0302 0000 0302 0000 0000 0001", kC, 1}, "RRR RRR"},
        {"RLE 8, ends early", {8, "0302 0000 0203", kC, 1}, "", ZoErrBadData},
        {"RLE 8, pixels cut", {8, "0302 0000 0003 0102", kC, 1}, "", ZoErrBadData},
        {"RLE 8, a row too many", {8, "0302 0000 0302 0000 0102 0001", kC, 1}, "", ZoErrBadData},
        {"RLE 8, a jump to the right", {8, "0002 0400 0001", kC, 1}, "", ZoErrBadData},
        {"RLE 8, a jump above", {8, "0002 0002 0001", kC, 1}, "", ZoErrBadData},
        {"RLE 8, a jump cut", {8, "0302 0002 00", kC, 1}, "", ZoErrBadData},
        {"RLE 8 from the top", {8, "0302 0001", kC, 1, "", 3, -2}, "", ZoErrBadData},
        {"RLE 8 of 4 bits", {4, "0302 0001", kC, 1}, "", ZoErrBadData},
        {"RLE 4", {4, "0323 0000 0003 1020 0001", kC, 2}, "WKR RGR"},
        {"RLE 4, odd pieces", {4, "0123 0234 0000 0001", kC, 2}, "KKK RGB"},
        {"RLE 4, odd single pixels", {4, "0003 2340 0000 0005 1020 3000 0001", kC, 2}, "WKR RGB"},
        {"masks that overlap", {32, k24, "", 3, "FF000000 80FF0000 0000FF00"}, "", ZoErrBadData},
        {"mask with a gap", {32, k24, "", 3, "F5000000 00FF0000 0000FF00"}, "", ZoErrBadData},
        {"masks beyond 16 bits", {16, k24, "", 3, "0000FF00 00FF0000 FF000000"}, "", ZoErrBadData},
        {"no masks", {32, k24, "", 3, "00000000 00000000 00000000"}, "", ZoErrBadData},
        {"RLE 24", {24, k24, "", 4, "", 3, 2, 64}, "", ERROR_NOT_SUPPORTED},
        {"40,000 pixels across", {8, "0001", kC, 1, "", 40000}, "", ERROR_NOT_SUPPORTED},
        {"400 megabytes", {8, "0001", kC, 1, "", 20000, 20000}, "", ERROR_NOT_SUPPORTED},
    };
    constexpr DWORD kBad = ZoErrBadData, kNot = ERROR_NOT_SUPPORTED;
    const struct {
        const char* name;
        size_t at;
        const char* bytes; // in the file of 24 bits
        DWORD status;
    } kChanges[] = {{"no mark", 0, "4D42", kBad},         {"several", 0, "4241", kNot},
                    {"header of 41", 14, "29", kBad},     {"endless header", 14, "FFFFFFFF", kBad},
                    {"no width", 18, "00", kBad},         {"below 0", 18, "FDFFFFFF", kBad},
                    {"no height", 22, "00", kBad},        {"least height", 22, "00000080", kBad},
                    {"overflows", 18, "01000040", kBad},  {"too wide", 18, "06", kBad},
                    {"three planes", 26, "03", kBad},     {"5 bits", 28, "05", kBad},
                    {"64 bits", 28, "40", kNot},          {"pixels in the header", 10, "35", kBad},
                    {"pixels nowhere", 10, "00FF", kBad}, {"a row missing", 22, "03", kBad},
                    {"JPEG", 28, "00000400", kNot},       {"compression 99", 30, "63", kBad}};
    Make(3, 2);
    for (const auto& row : kChanges) {
        const std::string change = FromHex(row.bytes);
        EXPECT_EQ(row.status, Load(kFiles[2].Bytes().replace(row.at, change.size(), change))) << row.name;
    }
    for (const File& file : kFiles) {
        EXPECT_EQ(0u, Load(file.Bytes()));
        if (file.compression == BI_RGB) {
            EXPECT_EQ("WKR RGB", Seen()) << file.bits;
        }
    }
    for (const auto& row : kRows) {
        ASSERT_EQ(0u, Load(kFiles[2].Bytes()));
        EXPECT_EQ(row.status, Load(row.file.Bytes())) << row.name;
        EXPECT_EQ(row.status == 0 ? row.seen : "WKR RGB", Seen()) << row.name;
    }
    const std::string whole = kFiles[2].Bytes();
    for (size_t length = 0; length < whole.size() - 3; ++length)
        EXPECT_EQ(ZoErrBadData, Load(whole.substr(0, length))) << length;
}

TEST_F(BitmapWindow, SurvivesMutations)
{
    Make(20, 20, CZoBitmapWnd::kScroll);
    ForEachMutation(
        [&](unsigned number, Random& random) {
            std::string file = Choose(random, kFiles).Bytes();
            static constexpr DWORD numbers[] = {0, 1, 2, 3, 4, 8, 16, 0x7FFF, 0x8000, 0xFFFF, 0x7FFFFFFF, 0x80000000};
            const auto byte = [&] { file[random() % file.size()] = static_cast<char>(random()); };
            Damage(random, 0, 4,
                   {byte, byte, [&] { PutNumber(file, 10 + random() % 11 * 4, Choose(random, numbers)); },
                    [&] { PutNumber(file, 10 + random() % 44, static_cast<WORD>(random() % 70)); },
                    [&] { file[54 + random() % (file.size() - 54)] = static_cast<char>(random() % 5); }});
            if (random() % 8 == 0)
                file.resize(random() % file.size());
            const CSize before = m_window.GetPictureSize();
            const DWORD status = Load(file);
            if (status == 0) {
                const bool isCore = NumberAt<DWORD>(file, 14) == 12;
                const LONG width = isCore ? NumberAt<WORD>(file, 18) : NumberAt<LONG>(file, 18);
                const LONG height = isCore ? NumberAt<WORD>(file, 20) : std::abs(NumberAt<LONG>(file, 22));
                EXPECT_EQ(CSize(width, height), m_window.GetPictureSize());
                m_window.SetPlacing(static_cast<Placing>(number % 5));
                PictureOf(m_window);
            } else {
                EXPECT_TRUE(status == ZoErrBadData || status == ERROR_NOT_SUPPORTED || status == ZoErrOutOfMemory);
                EXPECT_EQ(before, m_window.GetPictureSize());
            }
            return status == 0;
        },
        {20000, 400, 20, 90});
}

TEST_F(BitmapWindow, TakesFilesResourcesAndHandles)
{
    Make(3, 2);
    const TestFolder folder;
    const std::string name = folder.Path("a.bmp");
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), m_window.LoadFile(name.c_str()));
    folder.Write("a.bmp", kFiles[2].Bytes());
    EXPECT_EQ(0u, m_window.LoadFile(name.c_str()));
    EXPECT_EQ("WKR RGB", Seen());
    EXPECT_EQ(87u, m_window.LoadFile(nullptr));
    EXPECT_EQ(87u, m_window.LoadMemory(nullptr, 9));
    EXPECT_EQ(6u, m_window.SetBitmap(nullptr));
    EXPECT_EQ(6u, m_window.SetBitmap(static_cast<HBITMAP>(GetStockObject(WHITE_BRUSH))));
    EXPECT_EQ(ZoErrResourceNotFound, m_window.LoadResource(64999));
    EXPECT_EQ("WKR RGB", Seen());

    EXPECT_EQ(0u, m_window.LoadResource(ZO_IDB_FLAGS));
    EXPECT_EQ(0, m_window.GetPictureSize().cx % ZO_FLAG_COLUMNS);
    EXPECT_EQ('M', Seen()[0]);
    const BYTE two[] = {0xA0, 0, 0x40, 0};
    const DWORD opaque[] = {0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF000000};
    m_window.SetTransparentColor(kColorOf.at('K'));
    for (const HBITMAP bitmap : {CreateBitmap(3, 2, 1, 1, two), CreateBitmap(3, 2, 1, 32, opaque)}) {
        EXPECT_EQ(0u, m_window.SetBitmap(bitmap));
        DeleteObject(bitmap);
        EXPECT_EQ("W.W .W.", Seen());
    }
    m_window.Clear();
    EXPECT_EQ("... ...", Seen());
}

TEST_F(BitmapWindow, PlacesThePicture)
{
    const struct {
        Placing placing;
        int width, height;
        const char* seen;
    } kRows[] = {{Placing::kTopLeft, 4, 3, "WKR. RGB. ...."},
                 {Placing::kTopLeft, 2, 1, "WK"},
                 {Placing::kCentered, 5, 4, "..... .WKR. .RGB. ....."},
                 {Placing::kCentered, 1, 1, "W"},
                 {Placing::kStretched, 6, 2, "WWKKRR RRGGBB"},
                 {Placing::kStretched, 3, 4, "WKR WKR RGB RGB"},
                 {Placing::kProportional, 6, 6, "...... WWKKRR WWKKRR RRGGBB RRGGBB ......"},
                 {Placing::kProportional, 5, 2, ".WKR. .RGB."},
                 {Placing::kTiled, 7, 3, "WKRWKRW RGBRGBR WKRWKRW"}};
    for (const File& file : {kFiles[0], kFiles[2]}) {
        Make(9, 9);
        ASSERT_EQ(0u, Load(file.Bytes()));
        for (const auto& row : kRows) {
            m_window.MoveWindow(0, 0, row.width, row.height);
            m_window.SetPlacing(row.placing);
            EXPECT_EQ(row.seen, Seen()) << row.seen;
        }
        m_window.DestroyWindow();
    }
}

TEST_F(BitmapWindow, IsNotMirrored)
{
    m_parent.ModifyStyleEx(0, WS_EX_LAYOUTRTL);
    const auto seen = [&] { // as the eye sees it
        const auto screen = ScreenOf(m_window);
        std::string row;
        for (int x = 0; x < screen->Size().cx; ++x) {
            const int at = screen->Size().cx - 1 - x; // its context is mirrored, the canvas is not
            row += kColorOf.at('R') == screen->At(at, 1) ? 'R' : kColorOf.at('G') == screen->At(at, 1) ? 'G' : '-';
        }
        return row;
    };
    Make(8, 4);
    ASSERT_EQ(0u, Load(kFiles[2].Bytes()));
    EXPECT_EQ("-----RG-", seen());
    m_window.SetZoom(200);
    EXPECT_EQ("------RR", seen());
    m_window.MoveWindow(0, 0, 5, 2);
    m_window.SetScrollPosition(CPoint(0, 2));
    EXPECT_EQ("RGG--", seen()) << "the part at its right end";
    m_window.MoveWindow(0, 0, 8, 4);
    m_window.SetPlacing(Placing::kTiled);
    EXPECT_EQ("RG-RG-RG", seen());
}

TEST_F(BitmapWindow, ShowsTheBackgroundThroughAColour)
{
    const Scheme scheme({{COLOR_3DFACE, kBack}});
    Make(3, 2);
    m_window.SetBackColor(CLR_DEFAULT);
    for (const File& file : {kFiles[0], kFiles[2]}) {
        m_window.SetTransparentColor(kColorOf.at('R'));
        ASSERT_EQ(0u, Load(file.Bytes()));
        EXPECT_EQ("WK. .GB", Seen());
        {
            const Scheme other({{COLOR_3DFACE, kColorOf.at('G')}});
            EXPECT_EQ("WKG GGB", Seen());
            m_window.SetTransparentColor(kColorOf.at('G'));
            EXPECT_EQ("WKR RGB", Seen());
        }
        EXPECT_EQ("WKR R.B", Seen());
        m_window.SetTransparentColor(CLR_DEFAULT);
        EXPECT_EQ(".KR RGB", Seen());
        m_window.SetPlacing(Placing::kStretched);
        m_window.MoveWindow(0, 0, 5, 3);
        const auto before = PictureOf(m_window);
        m_window.SetTransparentColor(CLR_NONE);
        EXPECT_FALSE(AreEqual(*before, *PictureOf(m_window))) << "no older copy";
        m_window.SetPlacing(Placing::kTopLeft);
        m_window.MoveWindow(0, 0, 3, 2);
        EXPECT_EQ("WKR RGB", Seen());
    }
}

TEST_F(BitmapWindow, IsScrolledAndZoomedByTheUser)
{
    const int bar = GetSystemMetrics(SM_CXVSCROLL);
    Make(100 + bar, 80 + bar, CZoBitmapWnd::kScroll);
    LoadLarge(250, 180);
    EXPECT_EQ(CRect(0, 0, 100, 80), CRect(CPoint(), PictureOf(m_window)->Size())) << "the scroll bars";
    const auto key = [this](UINT code, int modifiers = 0) {
        return [=, this] { PressKey(m_window, code, modifiers); };
    };
    constexpr int kShift = ZoKey::kShift, kCtrl = ZoKey::kControl;
    const auto wheel = [&](int delta, WPARAM keys = 0) {
        return [=, this] { m_window.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), MAKELPARAM(50, 50)); };
    };
    const auto scroll = [&](UINT message, WORD code) { return [=, this] { m_window.SendMessage(message, code); }; };
    const auto drag = [&](CPoint to, bool isUndone) {
        return [=, this] {
            SendMouse(m_window, WM_LBUTTONDOWN, {60, 60}, MK_LBUTTON);
            SendMouse(m_window, WM_MOUSEMOVE, {10, 10}, MK_LBUTTON);
            EXPECT_EQ("50,50 100 ", Position());
            SendMouse(m_window, WM_MOUSEMOVE, to, MK_LBUTTON);
            if (isUndone)
                PressKey(m_window, VK_ESCAPE);
            SendMouse(m_window, WM_LBUTTONUP, to);
        };
    };
    const struct {
        std::function<void()> act;
        const char* position; // S: scrolled, Z: zoomed; // 100 by 80 of 250 by 180 are seen
    } kRows[] = {{key(VK_RIGHT), "16,0 100 S"},
                 {key(VK_DOWN), "16,16 100 S"},
                 {key(VK_LEFT), "0,16 100 S"},
                 {key(VK_LEFT), "0,16 100 "},
                 {key(VK_UP), "0,0 100 S"},
                 {key(VK_NEXT), "0,64 100 S"},
                 {key(VK_PRIOR), "0,0 100 S"},
                 {key(VK_END), "150,100 100 S"},
                 {key(VK_HOME), "0,0 100 S"},
                 {key(VK_HOME, kCtrl), "0,0 100 "},
                 {wheel(-120), "0,48 100 S"},
                 {wheel(60), "0,48 100 "},
                 {wheel(60), "0,0 100 S"},
                 {scroll(WM_HSCROLL, SB_LINEDOWN), "16,0 100 S"},
                 {scroll(WM_HSCROLL, SB_PAGEDOWN), "116,0 100 S"},
                 {scroll(WM_VSCROLL, SB_BOTTOM), "116,100 100 S"},
                 {scroll(WM_VSCROLL, SB_ENDSCROLL), "116,100 100 "},
                 {key(VK_HOME), "0,0 100 S"},
                 {drag({40, 50}, false), "20,10 100 S"},
                 {key(VK_HOME), "0,0 100 S"},
                 {drag({40, 50}, true), "0,0 100 "},
                 {drag({60, 60}, false), "0,0 100 "},
                 {key(VK_ADD), "50,40 200 Z"},
                 {key(VK_OEM_PLUS, kShift), "100,80 300 Z"},
                 {key('0', kCtrl), "0,0 100 Z"},
                 {key('0', kCtrl), "0,0 100 "},
                 {key(VK_OEM_MINUS), "0,0 75 Z"},
                 {wheel(120, MK_CONTROL), "0,0 100 Z"}};
    m_window.SetFocus();
    for (const auto& row : kRows) {
        row.act();
        EXPECT_EQ(row.position, Position()) << &row - kRows;
        EXPECT_EQ(m_window.GetScrollPosition().x, m_window.GetScrollPos(SB_HORZ)) << &row - kRows;
    }
    const auto at = [this](auto act) { // begun by a drag, which that ends without effect
        m_window.SetScrollPosition(CPoint(20, 10));
        SendMouse(m_window, WM_LBUTTONDOWN, {60, 60}, MK_LBUTTON);
        SendMouse(m_window, WM_MOUSEMOVE, {10, 10}, MK_LBUTTON);
        act();
        EXPECT_EQ(nullptr, GetCapture());
        return Position();
    };
    EXPECT_EQ("20,10 100 ", at([this] { m_window.SetZoom(100); }));
    EXPECT_EQ("5,6 100 ", at([this] { m_window.SetScrollPosition(CPoint(5, 6)); }));
    EXPECT_EQ("0,0 100 ", at([this] { m_window.SetPlacing(Placing::kTopLeft); }));
    EXPECT_EQ("0,0 100 ", at([this] { LoadLarge(250, 180); }));
    m_window.SetScrollPosition(CPoint(9999, -5));
    EXPECT_EQ("150,0 100 ", Position());
    m_window.MoveWindow(0, 0, 200 + bar, 80 + bar);
    EXPECT_EQ("50,0 100 ", Position());
    m_window.MoveWindow(0, 0, 100 + bar, 80 + bar);
    for (const int percent : {0, -1, 101, 150, 3300, INT_MAX})
        EXPECT_FALSE(m_window.SetZoom(percent)) << percent;
    EXPECT_TRUE(m_window.SetZoom(20));
    EXPECT_EQ("0,0 20 ", Position());
    EXPECT_EQ(CSize(100 + bar, 80 + bar), PictureOf(m_window)->Size()) << "the scroll bars have gone";
    for (int i = 0; i < 30; ++i)
        PressKey(m_window, VK_SUBTRACT);
    EXPECT_EQ("0,0 10 Z", Position());
    m_window.SetPlacing(Placing::kStretched);
    PressKey(m_window, VK_ADD);
    EXPECT_EQ("0,0 10 ", Position());
}

TEST_F(BitmapWindow, DrawsPartsAsTheWhole)
{
    Make(90, 70, CZoBitmapWnd::kScroll);
    LoadLarge(130, 110);
    Random random(5);
    for (int look = 0; look < 7; ++look) {
        ASSERT_TRUE(m_window.SetZoom(look == 5 ? 33 : look == 6 ? 700 : 100));
        m_window.SetPlacing(static_cast<Placing>(look % 5));
        m_window.SetScrollPosition(CPoint(31, 17));
        const auto whole = PictureOf(m_window);
        for (int i = 0; i < 40; ++i) {
            const int left = static_cast<int>(random() % 80), top = static_cast<int>(random() % 60);
            m_window.InvalidateRect(CRect(left, top, left + 1 + i % 9, top + 1 + i % 7));
            ASSERT_TRUE(AreEqual(*whole, *ScreenOf(m_window))) << look;
        }
    }
}

namespace {

int g_realized = 0;
int WINAPI HasPalette(HDC, int what) { return what == RASTERCAPS ? RC_PALETTE : what == BITSPIXEL ? 32 : 1; }
UINT WINAPI Realize(HDC) { return static_cast<UINT>(++g_realized); }

} // namespace

TEST_F(BitmapWindow, HasItsColoursOnDisplaysOf256)
{
    const ImportPatch caps(kZogbl, "GetDeviceCaps", &HasPalette);
    const ImportPatch realize(kZogbl, "RealizePalette", &Realize);
    Make(3, 2);
    const auto realizedBy = [&](UINT message, HWND window) {
        const int before = g_realized;
        m_window.SendMessage(message, reinterpret_cast<WPARAM>(window));
        return g_realized - before;
    };
    EXPECT_EQ(0, realizedBy(WM_QUERYNEWPALETTE, nullptr));
    for (const File& file : {kFiles[0], kFiles[2]}) {
        ASSERT_EQ(0u, Load(file.Bytes()));
        EXPECT_EQ(1, realizedBy(WM_QUERYNEWPALETTE, nullptr));
        EXPECT_EQ(TRUE, m_window.SendMessage(WM_QUERYNEWPALETTE));
        EXPECT_EQ(1, realizedBy(WM_PALETTECHANGED, m_parent));
        EXPECT_EQ(0, realizedBy(WM_PALETTECHANGED, m_window)) << "its own, without end";
        EXPECT_EQ("WKR RGB", Seen());
    }
}

TEST_F(BitmapWindow, IsToldToScreenReaders)
{
    Make(30, 20, CZoBitmapWnd::kScroll);
    m_window.SetWindowText("first page");
    const Events events(m_window);
    LoadLarge(60, 50);
    const std::vector<std::pair<DWORD, LONG>> kLoaded = {{EVENT_OBJECT_DESCRIPTIONCHANGE, 0},
                                                         {EVENT_OBJECT_VALUECHANGE, 0}};
    EXPECT_EQ(kLoaded, Events::Heard());
    m_window.SetZoom(50);
    m_window.SetZoom(50);
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_VALUECHANGE));
    const Reader reader(m_window);
    EXPECT_EQ("first page|50%|60 by 50 pixels", reader.Name() + "|" + reader.Value() + "|" + reader.Description());
    EXPECT_EQ(ROLE_SYSTEM_GRAPHIC, reader.Role());
    m_window.SetPlacing(Placing::kTiled);
    EXPECT_EQ("", reader.Value());
    m_window.SetPlacing(Placing::kStretched);
    EXPECT_EQ(1, Events::Count(EVENT_OBJECT_VALUECHANGE));
    m_window.Clear();
    EXPECT_EQ("", reader.Description());
}

TEST_F(BitmapWindow, SurvivesFaults)
{
    Make(60, 40, CZoBitmapWnd::kScroll);
    LoadLarge(90, 70);
    m_window.SetTransparentColor(RGB(20, 20, 200));
    const std::string file = kFiles[0].Bytes();
    for (const Placing placing : {Placing::kTopLeft, Placing::kStretched, Placing::kTiled}) {
        m_window.SetPlacing(placing);
        m_window.Invalidate();
        const auto whole = ScreenOf(m_window);
        DrawingFaults faults;
        RunFaultLoop(faults, [&](const FaultRun& run) {
            m_window.Invalidate();
            ScreenOf(m_window);
            run.Stop();
            m_window.Invalidate();
            EXPECT_TRUE(AreEqual(*whole, *ScreenOf(m_window))) << "the next drawing is right";
        });
    }
    FaultSource loading("loading");
    ZO_FAULTY_CALL(CreateDIBSection) section(loading, kZogbl, nullptr);
    AllocationFaults memory;
    for (FaultSource* source : {&loading, static_cast<FaultSource*>(&memory)}) {
        RunFaultLoop(*source, [&](const FaultRun& run) {
            const DWORD status = m_window.LoadMemory(file.data(), file.size());
            run.Stop();
            EXPECT_EQ(run.Fired() ? ZoErrOutOfMemory : 0u, status);
        });
    }
}
