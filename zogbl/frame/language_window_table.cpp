#include "language_window_table.h"

#include <algorithm>

namespace {

__attribute__((section(".zoshare"), shared)) ZoLanguageWindowTable g_table = {};

LONG RowCount() { return std::clamp(g_table.rowCount, 0L, kLanguageWindowRows); }
LONG WindowCount(const ZoLanguageWindowRow& row) { return std::clamp(row.windowCount, 0L, kLanguageWindowsPerRow); }

ZoLanguageWindowRow* FindOwnRow()
{
    ZoLanguageWindowRow* end = g_table.rows + RowCount();
    ZoLanguageWindowRow* row = std::find_if(
        g_table.rows, end, [id = GetCurrentProcessId()](const auto& candidate) { return candidate.processId == id; });
    return row != end ? row : nullptr;
}

} // namespace

ZoLanguageWindowTable& ZoGetLanguageWindowTable() { return g_table; }

void ZoRegisterLanguageWindow(HWND window)
{
    ZoLanguageWindowRow* row = FindOwnRow();
    if (row == nullptr) {
        const LONG count = RowCount();
        if (count == kLanguageWindowRows)
            return;
        row = &g_table.rows[count];
        row->processId = GetCurrentProcessId();
        row->windowCount = 0;
        g_table.rowCount = count + 1;
    }
    const LONG count = WindowCount(*row);
    if (count == kLanguageWindowsPerRow)
        return;
    row->windows[count] = HandleToULong(window);
    row->windowCount = count + 1;
}

void ZoUnregisterLanguageWindow(HWND window)
{
    ZoLanguageWindowRow* row = FindOwnRow();
    if (row == nullptr)
        return;
    DWORD* end = row->windows + WindowCount(*row);
    DWORD* place = std::find(row->windows, end, HandleToULong(window));
    if (place == end)
        return;
    if (end - row->windows > 1) {
        std::copy(place + 1, end, place);
        row->windowCount = static_cast<LONG>(end - row->windows) - 1;
    } else {
        ZoLanguageWindowRow* rowsEnd = g_table.rows + RowCount();
        std::copy(row + 1, rowsEnd, row);
        g_table.rowCount = static_cast<LONG>(rowsEnd - g_table.rows) - 1;
    }
}

void ZoBroadcastLanguageChange(UINT message, DWORD languageId)
{
    // Counts are read anew at each step: windows come and go while the messages are handled.
    for (LONG i = 0; i < RowCount(); ++i) {
        const ZoLanguageWindowRow& row = g_table.rows[i];
        for (LONG k = 0; k < WindowCount(row); ++k) {
            const auto window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(static_cast<LONG>(row.windows[k])));
            const LPARAM last = k == WindowCount(row) - 1;
            DWORD owner = 0;
            if (GetWindowThreadProcessId(window, &owner) != 0 && owner == row.processId)
                SendMessageA(window, message, languageId, last);
        }
    }
}
