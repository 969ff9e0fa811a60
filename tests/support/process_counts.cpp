#include "support/process_counts.h"

#include "support/environment.h"

#include <afxwin.h>

#include <winternl.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace zo_test {

namespace {

// The system's own counters answer 0 under Wine, so there the system-wide tables are counted instead.

template <class FUNCTION> FUNCTION* NtFunction(const char* name)
{
    return reinterpret_cast<FUNCTION*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), name)));
}

long CountHandlesInTable()
{
    constexpr auto kTooSmall = static_cast<NTSTATUS>(0xC0000004);
    static const auto query = NtFunction<decltype(NtQuerySystemInformation)>("NtQuerySystemInformation");
    static std::vector<char> buffer(64 * 1024);
    NTSTATUS status;
    while ((status = query(SystemHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr)) ==
           kTooSmall)
        buffer.resize(buffer.size() * 2);
    if (status != 0)
        return -1;
    const auto* table = reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(buffer.data());
    return static_cast<long>(std::count_if(table->Handle, table->Handle + table->Count, [](const auto& handle) {
        return LOWORD(handle.OwnerPid) == LOWORD(GetCurrentProcessId());
    }));
}

long CountGdiObjectsInTable()
{
    struct Object {
        BYTE handleAndOwner[14], type, flagsAndPointer[9];
    };
    constexpr int kObjects = 0x4000;
    constexpr size_t kTableOfProcess = sizeof(void*) == 4 ? 0x94 : 0xF8;
    static const auto processBlock = NtFunction<const char * WINAPI()>("RtlGetCurrentPeb");
    const auto* objects = *reinterpret_cast<Object* const*>(processBlock() + kTableOfProcess);
    if (objects == nullptr)
        return 0;
    return static_cast<long>(
        std::count_if(objects, objects + kObjects, [](const Object& object) { return object.type != 0; }));
}

/// Makes what Wine makes when it is first needed and keeps: contexts of windows, 64 of them, and a sound's device.
void MakeWhatIsKept()
{
    HDC contexts[64];
    for (HDC& dc : contexts)
        dc = GetDC(nullptr);
    for (const HDC dc : contexts)
        ReleaseDC(nullptr, dc);
    MessageBeep(MB_OK);
}

} // namespace

ProcessCounts ProcessCounts::Take()
{
    if (static bool isMade = false; IsWine() && !std::exchange(isMade, true))
        MakeWhatIsKept();
    if (CWinThread* thread = AfxGetThread())
        thread->CWinThread::OnIdle(0);
    CMemoryState memory;
    memory.Checkpoint();
    ProcessCounts counts;
    counts.blocks = memory.m_lBlockCount;
    if (IsWine()) {
        counts.handles = CountHandlesInTable();
        counts.gdi = CountGdiObjectsInTable();
    } else {
        DWORD handles = 0;
        GetProcessHandleCount(GetCurrentProcess(), &handles);
        counts.handles = static_cast<long>(handles);
        counts.gdi = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    }
    return counts;
}

} // namespace zo_test
