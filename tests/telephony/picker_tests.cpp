// The pickers for countries and locales, in real windows.
#include <zogbl/country_combo_box.h>
#include <zogbl/flag_lcid_box.h>
#include <zogbl/module.h>

#include "product/registered_product.h"
#include "support/fault_loop.h"

#include <string>
#include <vector>

namespace {

constexpr DWORD kDropDown = WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST;
constexpr UINT kBoxId = 7;

/// Notes the notifications that arrive.
class Parent : public CWnd {
public:
    std::vector<WPARAM> m_commands;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (HIWORD(wParam) == CBN_SELCHANGE)
            m_commands.push_back(wParam);
        return CWnd::OnCommand(wParam, lParam);
    }
};

class Pickers : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(ZoGblLoadLanguageDLL());
        ASSERT_TRUE(
            m_parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr));
    }
    void TearDown() override
    {
        m_parent.DestroyWindow();
        ZoGblDumpLanguageDLL();
    }
    static void Type(CWnd& box, const char* text)
    {
        for (; *text != '\0'; ++text)
            box.SendMessage(WM_CHAR, static_cast<unsigned char>(*text), 1);
    }

    const CRect m_place{0, 0, 250, 200};
    zo_test::RegisteredProduct m_product;
    Parent m_parent;
};

/// An item drawn into memory.
class Drawing {
public:
    Drawing() : m_dc(CreateCompatibleDC(nullptr)), m_bitmap(CreateBitmap(kWidth, kHeight, 1, 32, nullptr))
    {
        m_old = SelectObject(m_dc, m_bitmap);
    }
    ~Drawing()
    {
        SelectObject(m_dc, m_old);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    template <class BOX> void Draw(BOX& box, int index, UINT state)
    {
        PatBlt(m_dc, 0, 0, kWidth, kHeight, WHITENESS);
        DRAWITEMSTRUCT item = {};
        item.itemID = static_cast<UINT>(index);
        item.itemState = state;
        item.hwndItem = box.m_hWnd;
        item.hDC = m_dc;
        item.rcItem = {0, 0, kWidth, kHeight};
        item.itemData = index >= 0 ? reinterpret_cast<ULONG_PTR>(box.GetItemDataPtr(index)) : 0;
        box.DrawItem(&item);
    }
    COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
    /// Pixels in columns \p from to \p to that differ from \p background.
    int Marked(int from, int to, COLORREF background) const
    {
        int marked = 0;
        for (int x = from; x < to; ++x) {
            for (int y = 1; y < kHeight - 1; ++y)
                marked += At(x, y) != background;
        }
        return marked;
    }

    static constexpr int kWidth = 250;
    static constexpr int kHeight = 24;

private:
    HDC m_dc;
    HBITMAP m_bitmap;
    HGDIOBJ m_old;
};

} // namespace

TEST_F(Pickers, SelectCountriesByAllThatIsKnownOfThem)
{
    // With and without texts: made by Create, and taken over from a template that asks for data only.
    for (const bool texts : {true, false}) {
        SCOPED_TRACE(texts);
        CCountryCodeComboBox box;
        EXPECT_EQ(0u, box.GetCountryIndex()) << "without a window";
        if (texts) {
            ASSERT_TRUE(box.Create(kDropDown, m_place, &m_parent, kBoxId));
        } else {
            ASSERT_TRUE(box.SubclassWindow(CreateWindowA("COMBOBOX", "", kDropDown | CBS_OWNERDRAWFIXED | CBS_SORT, 0,
                                                         0, 250, 200, m_parent.m_hWnd, nullptr, nullptr, nullptr)));
        }
        EXPECT_EQ(0, box.SelectCountryIndex(276)) << "an empty box";
        EXPECT_EQ(0u, box.GetCountryCode());
        const int count = GetGlobalCountryList()->GetCount();
        const struct {
            int asked, selected;
        } resets[] = {{-1, -1}, {3, 3}, {100000, count - 1}, {0, 0}};
        for (const auto& reset : resets) {
            box.ResetInformation(reset.asked);
            ASSERT_EQ(count, box.GetCount());
            EXPECT_EQ(reset.selected, box.GetCurSel());
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
            char text[64] = "";
            box.SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(box.GetCurSel()), reinterpret_cast<LPARAM>(text));
            EXPECT_STREQ("Germany", text) << "for screen readers";
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
            EXPECT_EQ(step.notified, m_parent.m_commands.size()) << step.typed;
        }
        Type(box, "\b");
        for (int i = 0; i < 65; ++i)
            Type(box, "q");
        Type(box, "b"); // the text is full, and begun anew
        EXPECT_EQ('B', static_cast<CZoCountryCode*>(box.GetItemDataPtr(box.GetCurSel()))->GetName()[0]);
        box.DestroyWindow();
    }
}

TEST_F(Pickers, DrawFlagNameAndCodeInTheSystemsColours)
{
    CCountryCodeComboBox box;
    ASSERT_TRUE(box.Create(kDropDown, m_place, &m_parent, kBoxId));
    box.ResetInformation(0);
    const int text = box.GetPictureWidth();
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
    const int right = Drawing::kWidth;
    Drawing drawing;
    for (const UINT state : {0, ODS_SELECTED, ODS_DISABLED, ODS_SELECTED | ODS_DISABLED}) {
        SCOPED_TRACE(state);
        const COLORREF background = state == ODS_SELECTED ? highlight : window;
        box.DisableCodesText(FALSE);
        drawing.Draw(box, 0, state);
        EXPECT_EQ(0, drawing.Marked(0, 4, background));
        EXPECT_GT(drawing.Marked(4, text - 4, background), 50) << "flag";
        EXPECT_EQ(0, drawing.Marked(text - 4, text, background));
        EXPECT_GT(drawing.Marked(text, text + 60, background), 20) << "name";
        EXPECT_GT(drawing.Marked(right - 24, right - 4, background), 5) << "code";
        EXPECT_EQ(0, drawing.Marked(right - 4, right, background));
        for (int x = 4; x < text - 4; ++x) {
            for (int y = 0; y < Drawing::kHeight; ++y)
                ASSERT_NE(RGB(255, 0, 255), drawing.At(x, y)) << "transparent";
        }
        box.DisableCodesText();
        drawing.Draw(box, 0, state);
        EXPECT_EQ(0, drawing.Marked(right - 24, right, background));
    }
    drawing.Draw(box, 0, 0);
    drawing.Draw(box, 0, ODS_FOCUS);
    int dots = 0; // along the upper edge
    for (int x = 0; x < right; ++x)
        dots += drawing.At(x, 0) != window;
    EXPECT_GT(dots, right / 4);
    drawing.Draw(box, -1, 0);
    EXPECT_EQ(0, drawing.Marked(0, right, window)) << "nothing selected";

    const auto height = [&] { return box.SendMessage(CB_GETITEMHEIGHT, 0); };
    const LRESULT least = height();
    box.SetDesiredHeight(1);
    EXPECT_EQ(least, height());
    box.SetDesiredHeight(40);
    EXPECT_EQ(44, height());
}

template <class BOX> class LocalePickers : public Pickers {
};
using Boxes = ::testing::Types<CFlagLcidComboBox, CFlagLcidListBox>;
TYPED_TEST_SUITE(LocalePickers, Boxes);

TYPED_TEST(LocalePickers, ShowTheAttachedList)
{
    CZoFlagLcidList list(1);
    TypeParam box;
    EXPECT_EQ(ZoErrBadData, box.AddLcidCode(0x0407, 2)) << "no list";
    box.SetList(&list);
    // LBS_NOTIFY is in the style of the combo box too.
    ASSERT_TRUE(box.Create(kDropDown, this->m_place, &this->m_parent, kBoxId));
    for (const UINT lcid : {0x0409, 0x0407, 0x040C, 0x0410})
        EXPECT_EQ(0u, box.AddLcidCode(lcid, 2));
    EXPECT_EQ(0, box.GetCount()) << "shown by the next reset";
    box.ResetInformation();
    ASSERT_EQ(4, box.GetCount());
    EXPECT_EQ(0x0409u, box.GetLcidCode()) << "English, French, German, Italian";
    EXPECT_EQ(2, box.SelectLcid(0x0407));
    EXPECT_EQ(4, box.SelectLcid(0x0411));
    EXPECT_EQ(0x0407u, box.GetLcidCode());
    this->Type(box, "fr");
    EXPECT_EQ(0x040Cu, box.GetLcidCode());
    EXPECT_EQ((std::vector<WPARAM>{MAKEWPARAM(kBoxId, LBN_SELCHANGE)}), this->m_parent.m_commands);
    box.SetTextMode(5);
    EXPECT_EQ(0x040Cu, box.GetLcidCode());
    EXPECT_EQ(1, box.SelectName("French - F"));
    Drawing drawing;
    drawing.Draw(box, 1, 0);
    EXPECT_GT(drawing.Marked(4, box.GetPictureWidth() - 4, GetSysColor(COLOR_WINDOW)), 50);
    box.SetList(nullptr);
    box.ResetInformation();
    EXPECT_EQ(0, box.GetCount());
    EXPECT_EQ(0u, box.GetLcidCode());
}

TEST_F(Pickers, WithoutBitmapsShowTheNamesAlone)
{
    zo_test::FaultSource faults("drawing");
    ZO_FAULTY_CALL(LoadBitmapA) load(faults, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
    ZO_FAULTY_CALL(CreateBitmap) create(faults, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
    ZO_FAULTY_CALL(CreateCompatibleDC) compatible(faults, "ZOGBLBRX.DLL", nullptr, ERROR_NOT_ENOUGH_MEMORY);
    zo_test::RunFaultLoop(faults, [](const zo_test::FaultRun& run) {
        CZoFlagBitmap flags;
        const BOOL loaded = flags.Load();
        EXPECT_TRUE(loaded || run.Fired());
        EXPECT_GT(flags.GetCellSize().cy, 0);
        const HDC screen = GetDC(nullptr);
        flags.Draw(screen, 0, 0, 211);
        ReleaseDC(nullptr, screen);
        run.Stop();
        EXPECT_TRUE(flags.Load()) << "tried again";
    });
}
