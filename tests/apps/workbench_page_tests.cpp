// The Workbench's pages as real windows; those of records when the registry has what cannot be read.
#include "country_page.h"
#include "location_page.h"
#include "mailbox_page.h"

#include "support/product_test.h"

#include <zogbl/location_item.h>

namespace {

constexpr int kNew = 110; // the first button

class RecordPages : public ProductTest {
protected:
    RecordPages()
    {
        EXPECT_TRUE(m_frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 500, 400, nullptr, nullptr));
    }
    void Open(Page& page)
    {
        ASSERT_TRUE(page.CreatePage(&m_frame, 1));
        page.Reload();
    }
    /// Whether "New" can be pressed, once the page has read the registry anew.
    static bool CanAdd(Page& page)
    {
        page.Refresh();
        return ::IsWindowEnabled(::GetDlgItem(page.m_hWnd, kNew)) != FALSE;
    }
    /// Presses the button of that number.
    static void Press(Page& page, int button) { page.SendMessage(WM_COMMAND, MAKEWPARAM(kNew + button, BN_CLICKED)); }

    /// The list of countries, as their codes: "1 1+242 7 ...".
    static std::string CodesOf(const CZoColumnList& list)
    {
        std::string codes;
        for (int i = 0; i < list.GetRowCount(); ++i)
            codes += (i > 0 ? " " : "") + std::string(CodeText(*static_cast<const CZoCountryCode*>(list.GetRow(i))));
        return codes;
    }

    const HINSTANCE m_texts = LoadLibraryA("ZOWORENU.DLL"); // stays loaded
    const CDynLinkLibrary m_chain{m_texts, m_texts};
    CWnd m_frame;
};

} // namespace

TEST_F(RecordPages, OfLocationsAddNothingWhileARecordCannotBeRead)
{
    LocationPage page;
    Open(page);
    for (int i = 0; i < 3; ++i)
        Press(page, 0);
    CZoLocationItemList stored;
    EXPECT_EQ(0u, stored.LoadAllItems());
    EXPECT_EQ(3, stored.GetCount());
    EXPECT_TRUE(CanAdd(page));
    const CString cut = m_product.UserKey() + "\\Location\\00000001";
    EXPECT_EQ(0u, m_product.Config().DeleteEntry(ZO_MODE_LOCAL_MACHINE, cut, "City"));
    EXPECT_FALSE(CanAdd(page));
    EXPECT_EQ(2, ::SendDlgItemMessage(page.m_hWnd, 100, LB_GETCOUNT, 0, 0)) << "those that can be read";
    EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, cut, "City", ""));
    EXPECT_TRUE(CanAdd(page));
}

TEST_F(RecordPages, OfMailBoxesLoseNothingThatOthersWrote)
{
    const auto numbers = [] {
        CString all;
        CZoRegMailBoxes stored;
        EXPECT_TRUE(stored.Load());
        for (int i = 0; i < stored.GetCount(); ++i)
            all += std::to_string(stored.GetAt(i)->m_dwNumber).c_str();
        return all;
    };
    const auto writeElsewhere = [](DWORD number) {
        CZoRegMailBoxes other;
        EXPECT_TRUE(other.Load());
        other.Add(number, "other");
        EXPECT_TRUE(other.Write());
        CZoRegMailBoxes::SetUserDefault(2);
    };
    MailBoxPage page;
    Open(page);
    Press(page, 0);
    writeElsewhere(2);
    Press(page, 0);
    EXPECT_STREQ("123", numbers());
    writeElsewhere(4);
    Press(page, 1);
    EXPECT_STREQ("124", numbers()) << "without the third, which was chosen";
    EXPECT_EQ(2u, CZoRegMailBoxes().GetUserDefault());
    FaultSource faults("list");
    const ZO_FAULTY_CALL(RegEnumKeyExA) enumerate(faults, "ZOGBLBRX.DLL", ERROR_ACCESS_DENIED);
    faults.Arm(2, true); // behind the product's
    EXPECT_FALSE(CanAdd(page));
    faults.Disarm();
    EXPECT_TRUE(CanAdd(page));
    // Writing would put "BadBox" and one number in the place of what is there.
    const CString key = m_product.RootKey() + "\\MailBoxes\\";
    const std::string tooLong(256, 'n');
    for (const auto& [subkey, name] : {std::pair{"00000002", tooLong.c_str()}, {"4", "again"}, {"Fax", "no number"}}) {
        const CString record = key + subkey;
        EXPECT_EQ(0u, m_product.Config().SetValue(ZO_MODE_LOCAL_MACHINE, record, "Name", name));
        EXPECT_FALSE(CanAdd(page)) << subkey;
        EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(page.m_hWnd, kNew + 1))) << subkey;
        m_product.Config().DeleteSection(ZO_MODE_LOCAL_MACHINE, record, nullptr);
    }
    EXPECT_TRUE(CanAdd(page));
}

TEST_F(RecordPages, OfCountriesSortsByEachColumn)
{
    CountryPage page;
    Open(page);
    auto& list = static_cast<CZoColumnList&>(*CWnd::FromHandlePermanent(::GetDlgItem(page.m_hWnd, 100)));
    ASSERT_EQ(GetGlobalCountryList()->GetCount(), list.GetRowCount());
    const auto nameOf = [&](int row) { return static_cast<const CZoCountryCode*>(list.GetRow(row))->GetName(); };
    for (int i = 1; i < list.GetRowCount(); ++i)
        ASSERT_LE(CZoFlagBox::CompareNames(nameOf(i - 1), nameOf(i)), 0) << "by name at first";
    list.SetCurSel(9);
    const void* const selected = list.GetRow(9);
    list.GetHeader().DoPartAction(2);
    std::string codes = CodesOf(list);
    EXPECT_EQ(0u, codes.find("1 ")) << codes;
    EXPECT_LT(codes.find(" 1+242 "), codes.find(" 1+246 "));
    EXPECT_LT(codes.find(" 1+876 "), codes.find(" 7 "));
    EXPECT_LT(codes.find(" 98 "), codes.find(" 212 "));
    EXPECT_EQ(selected, list.GetRow(list.GetCurSel()));
    list.GetHeader().DoPartAction(2);
    EXPECT_EQ(codes.size() - 2, CodesOf(list).rfind(" 1"));

    // The columns fill the list until the user gives them a width.
    CRect client;
    page.MoveWindow(0, 0, 500, 400);
    list.GetClientRect(&client);
    EXPECT_EQ(client.Width(), list.GetHeader().GetTotalWidth());
    NMHDR sized = {list.m_hWnd, 100, ZON_HEADER_SIZED};
    page.SendMessage(WM_NOTIFY, 100, reinterpret_cast<LPARAM>(&sized));
    page.MoveWindow(0, 0, 600, 400);
    EXPECT_EQ(client.Width(), list.GetHeader().GetTotalWidth());
}
