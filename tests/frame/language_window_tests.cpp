// The table of language windows that all processes share, read straight from the library's shared section.
#include <zogbl/language_support.h>
#include <zogbl/module.h>

#include "language_window_table.h"
#include "product/registered_product.h"
#include "support/child_process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace {

/// The table inside the loaded library, found by the name of its section.
ZoLanguageWindowTable& SharedTable()
{
    auto* base = reinterpret_cast<BYTE*>(ZoGblGetInstanceHandle());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(headers);
    for (WORD i = 0; i < headers->FileHeader.NumberOfSections; ++i, ++section) {
        if (std::memcmp(section->Name, ".zoshare", 8) == 0)
            return *reinterpret_cast<ZoLanguageWindowTable*>(base + section->VirtualAddress);
    }
    ADD_FAILURE() << "the library has no shared section";
    static ZoLanguageWindowTable none = {};
    return none;
}

const ZoLanguageWindowRow* RowOf(DWORD process)
{
    const ZoLanguageWindowTable& table = SharedTable();
    for (LONG i = 0; i < table.rowCount; ++i) {
        if (table.rows[i].processId == process)
            return &table.rows[i];
    }
    return nullptr;
}

/// Starts from an empty table and leaves one.
class LanguageWindows : public ::testing::Test {
protected:
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }
    static void Clear() { std::memset(&SharedTable(), 0, sizeof(ZoLanguageWindowTable)); }

    static const ZoLanguageWindowRow* OwnRow() { return RowOf(GetCurrentProcessId()); }
};

} // namespace

TEST_F(LanguageWindows, AreListedInOrderAndTakenOut)
{
    auto first = std::make_unique<CZoLanguageSupport>();
    auto second = std::make_unique<CZoLanguageSupport>();
    auto third = std::make_unique<CZoLanguageSupport>();
    EXPECT_EQ(nullptr, OwnRow());
    for (auto* support : {first.get(), second.get(), third.get()})
        ASSERT_TRUE(support->Create());
    ASSERT_NE(nullptr, OwnRow());
    EXPECT_EQ(3, OwnRow()->windowCount);
    EXPECT_EQ(HandleToULong(first->m_hWnd), OwnRow()->windows[0]);
    EXPECT_EQ(HandleToULong(third->m_hWnd), OwnRow()->windows[2]);
    char name[8] = {};
    GetWindowTextA(first->m_hWnd, name, sizeof name);
    EXPECT_STREQ("ZoLS", name);
    EXPECT_FALSE(IsWindowVisible(first->m_hWnd));

    second.reset();
    ASSERT_EQ(2, OwnRow()->windowCount);
    EXPECT_EQ(HandleToULong(third->m_hWnd), OwnRow()->windows[1]) << "moved up";
    first.reset();
    third.reset();
    EXPECT_EQ(nullptr, OwnRow());
    EXPECT_EQ(0, SharedTable().rowCount);
}

TEST_F(LanguageWindows, LastWindowOfAMiddleRowMovesTheLaterRowsUp)
{
    ZoLanguageWindowTable& table = SharedTable();
    table.rowCount = 1;
    table.rows[0] = {11, 1, {101}};
    CZoLanguageSupport support;
    ASSERT_TRUE(support.Create());
    ASSERT_EQ(2, table.rowCount);
    table.rowCount = 3;
    table.rows[2] = {33, 2, {301, 302}};
    support.DestroyWindow();
    ASSERT_EQ(2, table.rowCount);
    EXPECT_EQ(11u, table.rows[0].processId);
    EXPECT_EQ(33u, table.rows[1].processId);
    EXPECT_EQ(302u, table.rows[1].windows[1]);
}

TEST_F(LanguageWindows, FullTableAndFullRowLeaveAWindowOutSilently)
{
    ZoLanguageWindowTable& table = SharedTable();
    table.rowCount = kLanguageWindowRows;
    for (LONG i = 0; i < kLanguageWindowRows; ++i)
        table.rows[i] = {static_cast<DWORD>(1000000 + i), 1, {7}};
    const ZoLanguageWindowTable before = table;
    {
        CZoLanguageSupport support;
        EXPECT_TRUE(support.Create());
        EXPECT_EQ(0, std::memcmp(&before, &table, sizeof table));
    }
    EXPECT_EQ(0, std::memcmp(&before, &table, sizeof table));

    Clear();
    table.rowCount = 1;
    table.rows[0].processId = GetCurrentProcessId();
    table.rows[0].windowCount = kLanguageWindowsPerRow;
    table.rows[1].processId = 0xABCD; // what a 257th handle would overwrite
    {
        CZoLanguageSupport support;
        EXPECT_TRUE(support.Create());
        EXPECT_EQ(kLanguageWindowsPerRow, table.rows[0].windowCount);
        EXPECT_EQ(0xABCDu, table.rows[1].processId);
    }
    EXPECT_EQ(kLanguageWindowsPerRow, table.rows[0].windowCount);
}

TEST_F(LanguageWindows, DamagedCountsAreHarmless)
{
    ZoLanguageWindowTable& table = SharedTable();
    for (const LONG count : {-1L, LONG_MIN, kLanguageWindowRows + 1, LONG_MAX}) {
        Clear();
        table.rowCount = count;
        {
            CZoLanguageSupport support;
            EXPECT_TRUE(support.Create());
        }
        Clear();
        CZoLanguageSupport support;
        ASSERT_TRUE(support.Create());
        ASSERT_NE(nullptr, OwnRow());
        table.rows[0].windowCount = count;
        support.DestroyWindow();
        EXPECT_LE(table.rowCount, 1);
    }
}

ZO_CHILD(LoadLanguageAndWait)
{
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    child.Ready();
    child.WaitForGo();
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
}

ZO_CHILD(EndWithLanguageLoaded)
{
    EXPECT_TRUE(ZoGblLoadLanguageDLL()); // and never released
}

TEST_F(LanguageWindows, ProcessesShareTheTable)
{
    const zo_test::RegisteredProduct product;
    ASSERT_TRUE(ZoGblLoadLanguageDLL());
    zo_test::ChildProcess first("LoadLanguageAndWait");
    zo_test::ChildProcess second("LoadLanguageAndWait");
    ASSERT_TRUE(first.WaitUntilReady());
    ASSERT_TRUE(second.WaitUntilReady());
    EXPECT_EQ(3, SharedTable().rowCount);
    for (const auto* child : {&first, &second}) {
        const ZoLanguageWindowRow* row = RowOf(child->ProcessId());
        ASSERT_NE(nullptr, row);
        EXPECT_EQ(1, row->windowCount);
        EXPECT_TRUE(IsWindow(reinterpret_cast<HWND>(static_cast<UINT_PTR>(row->windows[0]))));
    }
    first.Go();
    first.Finish();
    EXPECT_EQ(nullptr, RowOf(first.ProcessId()));
    EXPECT_EQ(2, SharedTable().rowCount);

    second.Kill(); // leaves its row behind, whose window no longer answers
    EXPECT_NE(nullptr, RowOf(second.ProcessId()));
    EXPECT_TRUE(ZoGblDumpLanguageDLL());
    EXPECT_EQ(nullptr, OwnRow());
    EXPECT_EQ(1, SharedTable().rowCount);
}

TEST_F(LanguageWindows, ProcessMayEndWithItsLanguageLoaded)
{
    const zo_test::RegisteredProduct product;
    zo_test::ChildProcess child("EndWithLanguageLoaded");
    child.Finish();
}
