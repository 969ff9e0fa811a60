#include "language_window_table.h"

#include <algorithm>

// All processes share the section. The assembler is told so, since only one of the compilers has an attribute for it;
// then back to the section that the compiler begins with.
__asm__(".section .zoshare,\"dws\"\n\t.text");

// Not static: the compiler must not believe that it sees every change.
__attribute__((section(".zoshare"))) ZoLanguageWindowTable g_table = {};

namespace {

constexpr UINT kAnswerTime = 2000; // milliseconds; a program that runs answers within a few

LONG RowCount() { return std::clamp(g_table.rowCount, 0L, kLanguageWindowRows); }
LONG WindowCount(const ZoLanguageWindowRow& row) { return std::clamp(row.windowCount, 0L, kLanguageWindowsPerRow); }

HWND WindowOf(DWORD handle) { return reinterpret_cast<HWND>(static_cast<LONG_PTR>(static_cast<LONG>(handle))); }

/// Whether a handle is a window of the process. It may be nobody's by now, or somebody else's.
bool IsWindowOf(DWORD processId, DWORD handle)
{
    DWORD owner = 0;
    return GetWindowThreadProcessId(WindowOf(handle), &owner) != 0 && owner == processId;
}

// Rows ----------------------------------------------------------------------------------------------------------------

ZoLanguageWindowRow* FindOwnRow()
{
    ZoLanguageWindowRow* end = g_table.rows + RowCount();
    ZoLanguageWindowRow* row = std::find_if(
        g_table.rows, end, [id = GetCurrentProcessId()](const auto& candidate) { return candidate.processId == id; });
    return row != end ? row : nullptr;
}

/// Whether the windows of a process can be seen from this one. Systems that lack the call have no sessions.
bool IsInOwnSession(DWORD processId)
{
    using GetSession = BOOL(WINAPI*)(DWORD, DWORD*);
    const auto getSession = reinterpret_cast<GetSession>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "ProcessIdToSessionId")));
    DWORD own = 0;
    DWORD other = 0;
    return getSession == nullptr ||
           (getSession(GetCurrentProcessId(), &own) && getSession(processId, &other) && own == other);
}

/// Whether the process that made the row is gone for sure.
bool IsAbandoned(const ZoLanguageWindowRow& row)
{
    const DWORD* end = row.windows + WindowCount(row);
    if (std::any_of(row.windows, end, [&](DWORD handle) { return IsWindowOf(row.processId, handle); }))
        return false;
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, row.processId);
    if (process == nullptr && GetLastError() == ERROR_INVALID_PARAMETER) // the id is nobody's
        return true;
    const bool ended = process != nullptr && WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
    if (process != nullptr)
        CloseHandle(process);
    // The id may have passed to another program, which has none of the windows.
    return ended || (end != row.windows && IsInOwnSession(row.processId));
}

/// Makes the calling process's row: a new one, or in a full table that of a process that is gone.
void AddRow(HWND window)
{
    ZoLanguageWindowRow* end = g_table.rows + RowCount();
    const bool full = RowCount() == kLanguageWindowRows;
    ZoLanguageWindowRow* row = full ? std::find_if(g_table.rows, end, &IsAbandoned) : end;
    if (full && row == end)
        return;
    row->windows[0] = HandleToULong(window);
    row->windowCount = 1;
    row->processId = GetCurrentProcessId();
    if (!full)
        g_table.rowCount = static_cast<LONG>(end - g_table.rows) + 1;
}

// Broadcast -----------------------------------------------------------------------------------------------------------

class Broadcast {
public:
    Broadcast(UINT message, DWORD languageId) : m_message(message), m_languageId(languageId) {}

    /// Tells every window. \return false as soon as the table has changed under the walk: when rows or windows go,
    /// later ones move up, and some could be missed. A window that is told twice ignores the second time.
    bool Walk()
    {
        for (LONG i = 0; i < RowCount(); ++i) {
            const ZoLanguageWindowRow& row = g_table.rows[i];
            for (LONG k = 0; k < WindowCount(row); ++k) {
                const DWORD processId = row.processId;
                const DWORD handle = row.windows[k];
                if (!IsWindowOf(processId, handle))
                    continue;
                Tell(processId, WindowOf(handle), k == WindowCount(row) - 1);
                if (row.windows[k] != handle)
                    return false;
            }
        }
        return true;
    }

private:
    /// Waits for the window's answer, unless its process owed one before. A process that does not answer changes when
    /// it looks at its messages again.
    void Tell(DWORD processId, HWND window, LPARAM last)
    {
        DWORD* end = m_silent + m_silentCount;
        DWORD_PTR answer;
        if (std::find(m_silent, end, processId) == end) {
            if (SendMessageTimeoutA(window, m_message, m_languageId, last, SMTO_ABORTIFHUNG, kAnswerTime, &answer) != 0)
                return;
            if (m_silentCount < kLanguageWindowRows)
                m_silent[m_silentCount++] = processId;
        }
        SendNotifyMessageA(window, m_message, m_languageId, last);
    }

    UINT m_message;
    DWORD m_languageId;
    DWORD m_silent[kLanguageWindowRows] = {}; // processes that did not answer
    LONG m_silentCount = 0;
};

} // namespace

void ZoRegisterLanguageWindow(HWND window)
{
    ZoLanguageWindowRow* row = FindOwnRow();
    if (row == nullptr) {
        AddRow(window);
        return;
    }
    // An earlier process of the same id may have left windows.
    DWORD* end = std::remove_if(row->windows, row->windows + WindowCount(*row),
                                [](DWORD handle) { return !IsWindowOf(GetCurrentProcessId(), handle); });
    const auto count = static_cast<LONG>(end - row->windows);
    if (count == kLanguageWindowsPerRow)
        return;
    *end = HandleToULong(window);
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
    Broadcast broadcast(message, languageId);
    // Each new walk follows the end of a process or window; the bound is for a table that never rests.
    for (LONG walk = 0; walk < kLanguageWindowRows && !broadcast.Walk(); ++walk)
        continue;
}
