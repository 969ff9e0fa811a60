#include "support/process_counts.h"

#include "support/environment.h"

#include <afxwin.h>

#include <vector>

namespace zo_test {

namespace {

// The system's own counters answer 0 under Wine, so there the system-wide tables are counted instead.

template <class FUNCTION> FUNCTION NtFunction(const char* name)
{
    return reinterpret_cast<FUNCTION>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), name)));
}

long CountHandlesInTable()
{
    struct Handle {
        USHORT processId;
        USHORT traceIndex;
        BYTE type;
        BYTE attributes;
        USHORT value;
        void* object;
        ULONG access;
    };
    struct Table {
        ULONG count;
        Handle handles[1];
    };
    using Query = LONG(WINAPI*)(int, void*, ULONG, ULONG*);
    constexpr int kSystemHandleInformation = 16;
    constexpr LONG kTooSmall = static_cast<LONG>(0xC0000004);
    static const auto query = NtFunction<Query>("NtQuerySystemInformation");
    static std::vector<char> buffer(64 * 1024);
    LONG status;
    while ((status = query(kSystemHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr)) ==
           kTooSmall)
        buffer.resize(buffer.size() * 2);
    if (status != 0)
        return -1;
    const auto* table = reinterpret_cast<const Table*>(buffer.data());
    const auto self = static_cast<USHORT>(GetCurrentProcessId());
    long count = 0;
    for (ULONG i = 0; i < table->count; ++i)
        count += table->handles[i].processId == self;
    return count;
}

long CountGdiObjectsInTable()
{
    struct Object {
        ULONGLONG object;
        USHORT owner[2];
        USHORT unique;
        BYTE type;
        BYTE flags;
        ULONGLONG userPointer;
    };
    constexpr int kObjects = 0x4000;
    constexpr size_t kTableOfProcess = sizeof(void*) == 4 ? 0x94 : 0xF8;
    using GetProcessBlock = const char*(WINAPI*)();
    static const auto getProcessBlock = NtFunction<GetProcessBlock>("RtlGetCurrentPeb");
    const auto* objects = *reinterpret_cast<Object* const*>(getProcessBlock() + kTableOfProcess);
    if (objects == nullptr)
        return 0;
    long count = 0;
    for (int i = 0; i < kObjects; ++i)
        count += objects[i].type != 0;
    return count;
}

} // namespace

ProcessCounts ProcessCounts::Take()
{
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
