// The pickers for countries and locales, in real windows.
#include "support/product_test.h"

#include <zogbl/country_box.h>
#include <zogbl/flag_lcid_box.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include <array>
#include <type_traits>

namespace {

constexpr DWORD kDropDown = WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST;
constexpr UINT kBoxId = 7;

/// Notes what its boxes tell and ask.
class Parent : public CWnd {
public:
    std::vector<WPARAM> m_commands;
    int m_drawn = 0; // items

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_COMMAND)
            m_commands.push_back(wParam);
        m_drawn += message == WM_DRAWITEM;
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

template <class BOX> constexpr bool kIsCombo = std::is_base_of_v<CComboBox, BOX>;

void Type(CWnd& box, const char* text)
{
    for (; *text != '\0'; ++text)
        box.SendMessage(WM_CHAR, static_cast<unsigned char>(*text), 1);
}
void Press(CWnd& box, WPARAM key)
{
    box.SendMessage(WM_KEYDOWN, key, 1);
    box.SendMessage(WM_KEYUP, key, 1);
}
/// What screen readers read.
template <class BOX> std::string TextAt(BOX& box, int item)
{
    char text[64] = "";
    box.SendMessage(kIsCombo<BOX> ? CB_GETLBTEXT : LB_GETTEXT, static_cast<WPARAM>(item),
                    reinterpret_cast<LPARAM>(text));
    return text;
}

class Pickers : public ProductTest {
protected:
    Pickers()
    {
        EXPECT_TRUE(
            m_parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr));
    }
    ~Pickers() override { m_parent.DestroyWindow(); }

    const CRect m_place{0, 0, 250, 200};
    Parent m_parent;
};

struct Scheme {
    COLORREF window, text, highlight, highlightText, gray;
};
Scheme g_scheme;

DWORD WINAPI SchemeColor(int index)
{
    const std::map<int, COLORREF> colors = {{COLOR_WINDOW, g_scheme.window},
                                            {COLOR_WINDOWTEXT, g_scheme.text},
                                            {COLOR_HIGHLIGHT, g_scheme.highlight},
                                            {COLOR_HIGHLIGHTTEXT, g_scheme.highlightText},
                                            {COLOR_GRAYTEXT, g_scheme.gray}};
    return colors.contains(index) ? colors.at(index) : GetSysColor(index);
}

/// An item drawn into memory.
class Drawing : public Canvas {
public:
    Drawing() : Canvas(kWidth, kHeight) {}
    template <class BOX> void Draw(BOX& box, int index, UINT state)
    {
        PatBlt(*this, 0, 0, kWidth, kHeight, WHITENESS);
        DRAWITEMSTRUCT item = {};
        item.itemID = static_cast<UINT>(index);
        item.itemState = state;
        item.hwndItem = box.m_hWnd;
        item.hDC = *this;
        item.rcItem = {0, 0, kWidth, kHeight};
        item.itemData = index >= 0 ? reinterpret_cast<ULONG_PTR>(box.GetItemDataPtr(index)) : 0;
        box.DrawItem(&item);
    }
    /// Pixels in columns \p from to \p to that have that colour.
    int Of(int from, int to, COLORREF color) const { return Count(color, {from, 1, to, kHeight - 1}); }
    int Marked(int from, int to, COLORREF background) const
    {
        return (to - from) * (kHeight - 2) - Of(from, to, background);
    }
    /// Whether what has that colour, behind column \p from, stands in the middle between top and bottom.
    bool IsCentred(int from, COLORREF color) const
    {
        std::vector<int> rows;
        for (int y = 0; y < kHeight; ++y)
            rows.insert(rows.end(), Count(color, {from, y, kWidth, y + 1}) > 0, y);
        return !rows.empty() && std::abs(rows.front() + rows.back() - kHeight) <= 6;
    }

    static constexpr int kWidth = 250;
    static constexpr int kHeight = 32;
};

/// The bitmap of all flags, as the language library has it.
class FlagCells : public Canvas {
public:
    FlagCells()
        : Canvas(LoadBitmapA(ZoGblFindResourceModule(MAKEINTRESOURCEA(ZO_IDB_FLAGS), RT_BITMAP),
                             MAKEINTRESOURCEA(ZO_IDB_FLAGS)))
    {
    }
    int Top() const { return (Drawing::kHeight - Size().cy / 27) / 2; } ///< of a flag in a drawing
    /// Whether the drawing has that flag at that place, pixel by pixel, and \p background where it is transparent.
    bool IsAt(const Drawing& drawing, int left, int top, UINT cell, COLORREF background) const
    {
        const int width = Size().cx / 8;
        const int height = Size().cy / 27;
        int painted = 0;
        for (int i = 0; i < width * height; ++i) {
            const int x = i % width, y = i / width;
            const COLORREF color = At(static_cast<int>(cell % 8) * width + x, static_cast<int>(cell / 8) * height + y);
            const bool transparent = color == RGB(255, 0, 255);
            painted += !transparent;
            if (drawing.At(left + x, top + y) != (transparent ? background : color))
                return false;
        }
        return painted > 50 || cell >= 210; // the last cells are empty
    }
};

template <class BOX> class CountryPickers : public Pickers {
};
using CountryBoxes = testing::Types<CCountryCodeComboBox, CCountryCodeListBox>;
TYPED_TEST_SUITE(CountryPickers, CountryBoxes);

} // namespace

TYPED_TEST(CountryPickers, SelectCountriesByAllThatIsKnownOfThem)
{
    auto& m_parent = this->m_parent;
    const auto& m_place = this->m_place;
    // With and without texts: made by Create, and taken over from a template that asks for data only.
    for (const bool texts : {true, false}) {
        SCOPED_TRACE(texts);
        TypeParam box;
        EXPECT_EQ(0u, box.GetCountryIndex()) << "without a window";
        if (texts) {
            ASSERT_TRUE(box.Create(kDropDown, m_place, &m_parent, kBoxId));
        } else {
            ASSERT_TRUE(box.SubclassWindow(CreateWindowA(kIsCombo<TypeParam> ? "COMBOBOX" : "LISTBOX", "",
                                                         kDropDown | CBS_OWNERDRAWFIXED | CBS_SORT, 0, 0, 250, 200,
                                                         m_parent.m_hWnd, nullptr, nullptr, nullptr)));
        }
        EXPECT_EQ(0, box.SelectCountryIndex(276)) << "an empty box";
        EXPECT_EQ(0u, box.GetCountryCode());
        const int count = GetGlobalCountryList()->GetCount();
        for (const auto& [asked, selected] : {std::pair(-1, -1), {3, 3}, {100000, count - 1}, {0, 0}}) {
            box.ResetInformation(asked);
            ASSERT_EQ(count, box.GetCount());
            EXPECT_EQ(selected, box.GetCurSel());
        }
        for (int i = 1; i < count; ++i) {
            ASSERT_LE(CZoFlagBox::CompareNames(static_cast<CZoCountryCode*>(box.GetItemDataPtr(i - 1))->GetName(),
                                               static_cast<CZoCountryCode*>(box.GetItemDataPtr(i))->GetName()),
                      0);
        }
        EXPECT_EQ(box.GetCurSel(), box.SelectCountryIndex(box.GetCountryIndex()));
        EXPECT_LT(box.SelectCountryIndex(44), count);
        EXPECT_EQ(242u, box.GetCountryCode());
        EXPECT_EQ(1u, box.GetDialingPrefix());
        EXPECT_LT(box.SelectCountryCode(49), count);
        EXPECT_EQ(276u, box.GetCountryIndex());
        if (texts) {
            EXPECT_EQ("Germany", TextAt(box, box.GetCurSel()));
        }
        for (const auto missed : {box.SelectCountryIndex(60000), box.SelectCountryCode(60000),
                                  box.SelectCountryName("Germanyy"), box.SelectCountryName("qqq")})
            EXPECT_EQ(count, missed);
        EXPECT_EQ(276u, box.GetCountryIndex()) << "stays";
        EXPECT_LT(box.SelectCountryName("uNITED s"), count);
        EXPECT_EQ(840u, box.GetCountryIndex());
        EXPECT_EQ(0, box.SelectCountryName(""));
        EXPECT_EQ(0, box.GetCurSel());

        // Typing.
        m_parent.m_commands.clear();
        const struct {
            const char* typed;
            UINT index;
            size_t notified;
        } steps[] = {
            {"g", 266, 1},    // Gabon
            {"er", 276, 3},   // Georgia for "ge", Germany
            {"x", 276, 3},    // none: stays
            {"\b", 276, 3},   // forgotten
            {"Kos", 983, 5},  // Kazakhstan, Kosovo
            {"\x1b", 983, 5}, // no text
        };
        for (const auto& step : steps) {
            Type(box, step.typed);
            EXPECT_EQ(step.index, box.GetCountryIndex()) << step.typed;
            EXPECT_EQ(std::vector<WPARAM>(step.notified, MAKEWPARAM(texts ? kBoxId : 0, CBN_SELCHANGE)),
                      m_parent.m_commands)
                << step.typed;
        }
        Type(box, "\b");
        for (int i = 0; i < 65; ++i)
            Type(box, "q");
        Type(box, "b"); // the text is full, and begun anew
        EXPECT_EQ('B', static_cast<CZoCountryCode*>(box.GetItemDataPtr(box.GetCurSel()))->GetName()[0]);
        // What was typed is forgotten with a step from there, with a click (0) and when the focus goes (1).
        box.ResetInformation(0);
        for (const WPARAM key : {0, 1, VK_PRIOR, VK_NEXT, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) {
            box.SetFocus();
            Type(box, "\bco"); // Colombia
            const int typed = box.GetCurSel();
            m_parent.m_commands.clear();
            if (key == 0)
                box.SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(2, 2)), box.SendMessage(WM_LBUTTONUP);
            else if (key == 1)
                box.SendMessage(WM_KILLFOCUS);
            else
                Press(box, key);
            EXPECT_TRUE(key <= 1 || (box.GetCurSel() != typed && !m_parent.m_commands.empty())) << key;
            Type(box, "g"); // not "cog"
            EXPECT_EQ(266u, box.GetCountryIndex()) << key;
        }
        box.DestroyWindow();
    }
}

TYPED_TEST(CountryPickers, FollowAChangeOfLanguage)
{
    TypeParam box;
    ASSERT_TRUE(box.Create(kDropDown, this->m_place, &this->m_parent, kBoxId));
    const auto change = [&](DWORD language) {
        this->ChangeLanguage(language);
        box.SendMessage(CZoLanguageSupport::GetUpdateMessage());
    };
    box.ResetInformation(-1);
    change(0x0407);
    EXPECT_EQ(-1, box.GetCurSel()) << "none stays none";
    change(0x0409);
    box.SelectCountryIndex(276);
    box.SetFocus();
    box.SendMessage(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(kIsCombo<TypeParam>, box.SendMessage(CB_GETDROPPEDSTATE) == TRUE);
    EXPECT_EQ("Germany", TextAt(box, box.GetCurSel()));
    change(0x0407);
    EXPECT_EQ("Deutschland", TextAt(box, box.GetCurSel()));
    EXPECT_EQ(276u, box.GetCountryIndex());
    for (int i = 1; i < box.GetCount(); ++i)
        ASSERT_LE(lstrcmpiA(TextAt(box, i - 1).c_str(), TextAt(box, i).c_str()), 0);
    EXPECT_EQ(kIsCombo<TypeParam>, box.SendMessage(CB_GETDROPPEDSTATE) == TRUE) << "stays open";
    change(0x0409);
}

TEST_F(Pickers, DrawFlagNameAndCodeInTheSystemsColours)
{
    const ImportPatch patch("ZOGBLBRX.DLL", "GetSysColor", &SchemeColor);
    CCountryCodeComboBox box;
    ASSERT_TRUE(box.Create(kDropDown, m_place, &m_parent, kBoxId));
    box.ResetInformation(0);
    const int text = box.GetPictureWidth();
    const int right = Drawing::kWidth;
    const FlagCells flags;
    const auto flagOf = [&](int item) {
        return static_cast<CZoCountryCode*>(box.GetItemDataPtr(item))->GetFlagIndex();
    };
    Drawing drawing;
    const Scheme schemes[] = {
        {RGB(255, 255, 255), RGB(0, 0, 0), RGB(0, 0, 128), RGB(255, 255, 255), RGB(128, 128, 128)},
        {RGB(0, 0, 0), RGB(255, 255, 0), RGB(128, 0, 128), RGB(0, 255, 255), RGB(0, 255, 0)}, // high contrast
        {RGB(0, 0, 64), RGB(255, 255, 255), RGB(0, 128, 0), RGB(0, 0, 0), RGB(0, 0, 64)},     // a grey not to be seen
        {RGB(255, 255, 255), RGB(0, 0, 128), RGB(0, 128, 0), RGB(0, 0, 0), RGB(0, 0, 0)},     // no grey
    };
    for (const Scheme& scheme : schemes) {
        SCOPED_TRACE(&scheme - schemes);
        // A scheme takes effect at once, and the system's word of it has the box drawn anew.
        g_scheme = scheme;
        ValidateRect(box.m_hWnd, nullptr);
        EXPECT_FALSE(GetUpdateRect(box.m_hWnd, nullptr, FALSE));
        box.SendMessage(WM_SYSCOLORCHANGE);
        EXPECT_TRUE(GetUpdateRect(box.m_hWnd, nullptr, FALSE));
        const bool hasGray = scheme.gray != RGB(0, 0, 0) && scheme.gray != scheme.window;
        const COLORREF disabled = hasGray ? scheme.gray : scheme.text;
        const struct {
            UINT state;
            bool enabled;
            COLORREF text, background;
        } cases[] = {
            {0, true, scheme.text, scheme.window},
            {ODS_SELECTED, true, scheme.highlightText, scheme.highlight},
            {ODS_DISABLED, true, disabled, scheme.window},
            {ODS_SELECTED | ODS_DISABLED, true, scheme.window, disabled},
            {ODS_SELECTED, false, scheme.window, disabled},
        };
        for (const auto& c : cases) {
            SCOPED_TRACE(&c - cases);
            box.EnableWindow(c.enabled);
            box.DisableCodesText(FALSE);
            drawing.Draw(box, 0, c.state);
            EXPECT_EQ(0, drawing.Marked(0, 4, c.background));
            EXPECT_TRUE(flags.IsAt(drawing, 4, flags.Top(), flagOf(0), c.background));
            EXPECT_EQ(0, drawing.Marked(text - 4, text, c.background));
            EXPECT_TRUE(drawing.IsCentred(text, c.text));
            EXPECT_GT(drawing.Of(text, text + 60, c.text), 10) << "name";
            EXPECT_GT(drawing.Of(right - 24, right - 4, c.text), 3) << "code";
            EXPECT_EQ(0, drawing.Marked(right - 4, right, c.background));
            ValidateRect(box.m_hWnd, nullptr);
            box.DisableCodesText();
            EXPECT_TRUE(GetUpdateRect(box.m_hWnd, nullptr, FALSE));
            drawing.Draw(box, 0, c.state);
            EXPECT_EQ(0, drawing.Marked(right - 24, right, c.background));
        }
        box.EnableWindow(TRUE);
    }
    const COLORREF window = g_scheme.window;
    for (int i = 0; i < box.GetCount(); ++i) {
        drawing.Draw(box, i, 0);
        EXPECT_TRUE(flags.IsAt(drawing, 4, flags.Top(), flagOf(i), window)) << i;
        const CString& name = static_cast<CZoCountryCode*>(box.GetItemDataPtr(i))->GetName();
        SIZE size = {};
        GetTextExtentPoint32A(drawing, name, name.GetLength(), &size);
        if (text + size.cx < right) {
            EXPECT_GT(drawing.Marked(text + size.cx - 6, text + size.cx, window), 0) << "each character: " << name;
        }
    }
    CZoFlagBitmap bitmap;
    ASSERT_TRUE(bitmap.Load());
    for (UINT cell = 0; cell < 218; ++cell) { // the last two stand for no cell
        drawing.Draw(box, -1, 0);
        bitmap.Draw(drawing, 9, 7, cell);
        EXPECT_TRUE(flags.IsAt(drawing, 9, 7, cell < 216 ? cell : 0, window)) << cell;
    }
    drawing.Draw(box, 0, 0);
    drawing.Draw(box, 0, ODS_FOCUS);
    EXPECT_LT(drawing.Count(window, {0, 0, right, 1}), right * 3 / 4) << "dots along the upper edge";
    drawing.Draw(box, -1, 0);
    EXPECT_EQ(0, drawing.Marked(0, right, window)) << "nothing selected";

    const auto height = [&] { return box.SendMessage(CB_GETITEMHEIGHT, 0); };
    const LRESULT least = height();
    box.SetDesiredHeight(1);
    EXPECT_EQ(least, height());
    box.SetDesiredHeight(40);
    EXPECT_EQ(44, height());
    EXPECT_GE(box.SendMessage(CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)), 44) << "the field";
}

TEST_F(Pickers, ShareOnePictureOfAModulesFlags)
{
    FaultSource loads("flags");
    const ZO_FAULTY_CALL(LoadBitmapA) load(loads, "ZOGBLBRX.DLL", nullptr);
    for (int round = 1; round <= 2; ++round) { // what is taken last lets it go
        loads.Arm(1000, false);
        CCountryCodeComboBox countries;
        const auto locales = std::make_unique<CFlagLcidListBox>();
        CZoFlagBitmap first, second, third;
        EXPECT_TRUE(first.Load() && second.Load());
        EXPECT_EQ(1, loads.Calls()) << round;
        const HINSTANCE german = LoadLibraryA("ZOGBLDEU.DLL");
        {
            const CDynLinkLibrary host(german, german);
            EXPECT_TRUE(third.Load());
            EXPECT_EQ(2, loads.Calls()) << "another module's";
        }
        FreeLibrary(german);
        loads.Disarm();
    }
}

template <class BOX> class LocalePickers : public Pickers {
};
using Boxes = testing::Types<CFlagLcidComboBox, CFlagLcidListBox>;
TYPED_TEST_SUITE(LocalePickers, Boxes);

TYPED_TEST(LocalePickers, ShowTheAttachedList)
{
    CZoFlagLcidList list(1);
    TypeParam box;
    EXPECT_EQ(ZoErrBadData, box.AddLcidCode(0x0407, 2)) << "no list";
    box.SetList(&list);
    ValidateRect(this->m_parent.m_hWnd, nullptr);
    box.ResetInformation();
    EXPECT_FALSE(GetUpdateRect(this->m_parent.m_hWnd, nullptr, FALSE)) << "without a window, others' are left alone";
    // LBS_NOTIFY is in the style of the combo box too.
    ASSERT_TRUE(box.Create(kDropDown, this->m_place, &this->m_parent, kBoxId));
    for (const UINT lcid : {0x0409, 0x0407, 0x040C, 0x0410})
        EXPECT_EQ(0u, box.AddLcidCode(lcid, 2));
    EXPECT_EQ(0, box.GetCount()) << "shown by the next reset";
    box.UpdateWindow();
    this->m_parent.m_drawn = 0;
    box.ResetInformation();
    EXPECT_EQ(0, this->m_parent.m_drawn) << "not item by item";
    box.UpdateWindow();
    EXPECT_GT(this->m_parent.m_drawn, 0);
    ASSERT_EQ(4, box.GetCount());
    EXPECT_EQ(0x0409u, box.GetLcidCode()) << "English, French, German, Italian";
    EXPECT_EQ(2, box.SelectLcid(0x0407));
    EXPECT_EQ(4, box.SelectLcid(0x0411));
    EXPECT_EQ(0x0407u, box.GetLcidCode());
    Type(box, "fr");
    EXPECT_EQ(0x040Cu, box.GetLcidCode());
    EXPECT_EQ((std::vector<WPARAM>{MAKEWPARAM(kBoxId, LBN_SELCHANGE)}), this->m_parent.m_commands);
    SetWindowLong(box.m_hWnd, GWL_STYLE, GetWindowLong(box.m_hWnd, GWL_STYLE) & ~LBS_NOTIFY);
    Type(box, "\bg");
    EXPECT_EQ(0x0407u, box.GetLcidCode());
    EXPECT_EQ(1u, this->m_parent.m_commands.size()) << "it does not tell";
    box.SelectLcid(0x040C);
    box.SetTextMode(5);
    EXPECT_EQ(0x040Cu, box.GetLcidCode());
    EXPECT_EQ(1, box.SelectName("French - F"));
    Drawing drawing;
    const FlagCells cells;
    const auto expectFlag = [&](int item) {
        drawing.Draw(box, item, 0);
        const UINT flag = static_cast<CZoFlagLcid*>(box.GetItemDataPtr(item))->GetFlagIndex();
        EXPECT_NE(0u, flag);
        EXPECT_TRUE(cells.IsAt(drawing, 4, cells.Top(), flag, GetSysColor(COLOR_WINDOW)));
    };
    expectFlag(1);
    // Native names in Unicode, whatever the system's code page.
    list.FreeData();
    box.ResetInformation();
    for (const UINT lcid : {0x0411, 0x0408, 0x0419, 0x0407})
        EXPECT_EQ(0u, box.AddLcidCode(lcid, 0));
    box.SetTextMode(ZoLcidNativeLanguageCountry);
    for (int i = 0; i < 4; ++i) {
        expectFlag(i);
        Drawing expected;
        expected.Draw(box, -1, 0);
        const UINT lcid = static_cast<CZoFlagLcid*>(box.GetItemDataPtr(i))->GetLcidValue();
        WCHAR language[100], country[100];
        GetLocaleInfoW(lcid, LOCALE_SNATIVELANGNAME, language, 100);
        GetLocaleInfoW(lcid, LOCALE_SNATIVECTRYNAME, country, 100);
        RECT place = {box.GetPictureWidth(), 0, Drawing::kWidth - 4, Drawing::kHeight};
        SetBkMode(expected, TRANSPARENT);
        SetTextColor(expected, GetSysColor(COLOR_WINDOWTEXT));
        DrawTextW(expected, (std::wstring(language) + L" - " + country).c_str(), -1, &place,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        EXPECT_GT(expected.Marked(place.left, place.right, GetSysColor(COLOR_WINDOW)), 50);
        const int width = Drawing::kWidth - place.left;
        BitBlt(expected, place.left, 0, width, Drawing::kHeight, drawing, place.left, 0, SRCINVERT);
        EXPECT_EQ(width * Drawing::kHeight, expected.Count(0, {place.left, 0, Drawing::kWidth, Drawing::kHeight}))
            << std::hex << lcid;
    }
    box.SetList(nullptr);
    box.ResetInformation();
    EXPECT_EQ(0, box.GetCount());
    EXPECT_EQ(0u, box.GetLcidCode());
}

TEST_F(Pickers, WhateverFailsShowTheNames)
{
    const auto body = [&](const FaultRun& run) {
        CCountryCodeComboBox box;
        ASSERT_TRUE(box.Create(kDropDown & ~WS_VISIBLE, m_place, &m_parent, kBoxId));
        box.ResetInformation(0);
        Drawing drawing;
        const auto settings = [&] {
            return std::array{GetTextColor(drawing), GetBkColor(drawing), static_cast<COLORREF>(GetBkMode(drawing))};
        };
        SetBkColor(drawing, RGB(1, 2, 3));
        const auto before = settings();
        const int text = box.GetPictureWidth();
        EXPECT_GE(text, 24) << "as if there were flags";
        const auto named = [&] { return drawing.Marked(text, text + 60, GetSysColor(COLOR_WINDOW)) > 20; };
        drawing.Draw(box, 0, 0);
        EXPECT_EQ(before, settings());
        EXPECT_EQ(0, drawing.Of(4, text - 4, RGB(255, 0, 255))) << "no flag rather than half a one";
        // Of texts, the one that fails is not seen: the measure of the code, the code, the name.
        EXPECT_TRUE(named() || (run.source.Name() == "text" && (run.persistent || run.number == 3)));
        run.Stop();
        box.ResetInformation(0); // tries again
        drawing.Draw(box, 0, 0);
        EXPECT_TRUE(named());
        EXPECT_GT(drawing.Marked(4, box.GetPictureWidth() - 4, GetSysColor(COLOR_WINDOW)), 50) << "flag";
    };
    {
        FaultSource flags("flags");
        ZO_FAULTY_CALL(LoadBitmapA) load(flags, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
        ZO_FAULTY_CALL(GetObjectA) object(flags, "ZOGBLBRX.DLL", 0, ERROR_INVALID_HANDLE);
        ZO_FAULTY_CALL(CreateBitmap) create(flags, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
        ZO_FAULTY_CALL(CreateCompatibleDC) compatible(flags, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
        ZO_FAULTY_CALL(SelectObject) select(flags, "ZOGBLBRX.DLL", nullptr, ERROR_INVALID_HANDLE);
        ZO_FAULTY_CALL(BitBlt) copy(flags, "ZOGBLBRX.DLL", FALSE, ERROR_INVALID_HANDLE);
        RunFaultLoop(flags, body);
    }
    FaultSource texts("text");
    ZO_FAULTY_CALL(DrawTextA) draw(texts, "ZOGBLBRX.DLL", 0, ERROR_NOT_ENOUGH_MEMORY);
    RunFaultLoop(texts, body);
}
