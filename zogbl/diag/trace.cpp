#include <zogbl/trace.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

#include "ground/open_security.h"
#include "ground/program_folder.h"
#include "trace_text.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <utility>

namespace {

constexpr DWORD kBufferSize = 8192;
constexpr DWORD kBytesPerLine = 16;

constexpr char kBannerLine[] = "****************************************\r\n";
constexpr LPCSTR kLevelValue = "FaxTrace";

/// What others must agree on to share a trace.
struct TraceNames {
    CString mutex;
    CString mapping;
    CString trace; ///< the file's name, without its folder
};

TraceNames NamesOf(const CString& name)
{
    const CString base = TraceBaseName(name);
    TraceNames names = {base + "TRACEMUTEX", base + "TRACEMAPFILE", base + ".TRC"};
    names.mutex.MakeUpper();
    names.mapping.MakeUpper();
    return names;
}

HANDLE OpenShared(LPCSTR path, DWORD disposition)
{
    return CreateFileA(path, GENERIC_READ | GENERIC_WRITE, kSharedByAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

/// Moves to the end of the file. \return its size, 0 on failure.
ULONGLONG SeekToEnd(HANDLE file)
{
    LONG high = 0;
    const DWORD low = SetFilePointer(file, 0, &high, FILE_END);
    return low == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR
               ? 0
               : ULONGLONG{static_cast<DWORD>(high)} << 32 | low;
}

std::unique_ptr<BYTE[]> NewBytesOrNull(DWORD count)
{
    return ResultOr(nullptr, [=] { return std::unique_ptr<BYTE[]>(new BYTE[count]); });
}

/// The user's key; empty without a registered product.
CString UserKey()
{
    CZoVersionResource product;
    return product.ExtractVersionInfo() ? product.GetCurrentUserKey() : CString();
}

} // namespace

/// What all processes share. It can hold anything: another process may have damaged it.
struct CZoTrace::SharedBlock {
    /// While the buffer is being written to the file, the number of pending bytes carries this mark and, above the
    /// number, the low bits of the file's size before. Whoever finds them there knows that the writer died, and by what
    /// the file has grown how far it came; without them, its lines would be written a second time.
    static constexpr DWORD kWriting = 0x80000000;
    static constexpr int kNumberBits = 14;
    static constexpr DWORD kNumberMask = (1u << kNumberBits) - 1;
    static constexpr DWORD kSizeMask = (kWriting >> kNumberBits) - 1;

    std::atomic<DWORD> openCount;
    std::atomic<DWORD> pending; // bytes of the buffer; see kWriting
    char buffer[kBufferSize];
};

class CZoTrace::Lock {
public:
    explicit Lock(const CZoTrace& trace) : m_trace(trace), m_isHeld(trace.LockMap()) {}
    ~Lock()
    {
        if (m_isHeld)
            m_trace.UnlockMap();
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    explicit operator bool() const { return m_isHeld != FALSE; }

private:
    const CZoTrace& m_trace;
    BOOL m_isHeld;
};

/// Switches time stamps off for its lifetime.
class CZoTrace::WithoutStamps {
public:
    explicit WithoutStamps(CZoTrace& trace) : m_trace(trace), m_previous(std::exchange(trace.m_bTimeStamp, FALSE)) {}
    ~WithoutStamps() { m_trace.m_bTimeStamp = m_previous; }
    WithoutStamps(const WithoutStamps&) = delete;
    WithoutStamps& operator=(const WithoutStamps&) = delete;

private:
    CZoTrace& m_trace;
    BOOL m_previous;
};

CZoTrace::CZoTrace()
    : m_bTimeStamp(TRUE), m_bPause(FALSE), m_hMutex(nullptr), m_hMapping(nullptr), m_pBlock(nullptr), m_dwStartTicks(0),
      m_hFile(INVALID_HANDLE_VALUE), m_wLevel(0)
{
    static_assert(sizeof(SharedBlock) == 8 + kBufferSize && std::atomic<DWORD>::is_always_lock_free,
                  "the layout that all versions of the library share");
}

CZoTrace::~CZoTrace() { Close(); }

// Opening and closing -------------------------------------------------------------------------------------------------

BOOL CZoTrace::Open(const CString& name, WORD level, BOOL append)
{
    if (m_pBlock != nullptr)
        return TRUE;
    TraceNames names;
    const BOOL named = WithoutThrowing([&] {
        names = NamesOf(name);
        m_csFileName = BesideExecutable(names.trace);
    });
    if (!named || m_csFileName.IsEmpty())
        return FALSE;

    // The mutex is ours from its making, so that nobody can join before the block and the file are there.
    SetLastError(ERROR_SUCCESS);
    m_hMutex = CreateMutexA(nullptr, TRUE, names.mutex);
    const BOOL isCreator = m_hMutex != nullptr && GetLastError() != ERROR_ALREADY_EXISTS;
    const BOOL isLocked = isCreator || LockMap();
    const BOOL isOpen = isLocked && MapBlock(names.mapping) && OpenTraceFile(isCreator, append);
    if (isOpen) {
        m_wLevel = level;
        m_dwStartTicks = 0;
        m_csTraceName.Empty();
        if (isCreator) {
            m_pBlock->openCount = 1;
            m_pBlock->pending = 0;
            m_csTraceName = names.trace;
            m_dwStartTicks = GetTickCount();
            const WithoutStamps withoutStamps(*this);
            WriteBanner("Started");
            DescribeSystem();
        } else if (m_pBlock->openCount != MAXDWORD) {
            ++m_pBlock->openCount;
        }
    }
    if (isLocked)
        UnlockMap();
    if (!isOpen)
        Release();
    return isOpen;
}

BOOL CZoTrace::MapBlock(LPCSTR name)
{
    m_hMapping = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(SharedBlock), name);
    if (m_hMapping == nullptr)
        return FALSE;
    // A smaller mapping that has this name already cannot be viewed whole, and is refused.
    m_pBlock = static_cast<SharedBlock*>(MapViewOfFile(m_hMapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(SharedBlock)));
    return m_pBlock != nullptr;
}

BOOL CZoTrace::OpenTraceFile(BOOL isCreator, BOOL append)
{
    if (isCreator && !append) {
        m_hFile = OpenShared(m_csFileName, CREATE_ALWAYS);
        return m_hFile != INVALID_HANDLE_VALUE;
    }
    m_hFile = OpenShared(m_csFileName, OPEN_EXISTING);
    if (m_hFile == INVALID_HANDLE_VALUE && isCreator)
        m_hFile = OpenShared(m_csFileName, OPEN_ALWAYS); // one that has come up meanwhile is kept
    else if (m_hFile != INVALID_HANDLE_VALUE && isCreator && SeekToEnd(m_hFile) >= kMostFileBytes) {
        CloseHandle(m_hFile);
        m_hFile = OpenShared(m_csFileName, CREATE_ALWAYS);
    }
    return m_hFile != INVALID_HANDLE_VALUE;
}

void CZoTrace::Close()
{
    if (m_pBlock == nullptr)
        return;
    if (const Lock lock(*this); lock) {
        const DWORD count = m_pBlock->openCount;
        if (count == 1) {
            const WithoutStamps withoutStamps(*this);
            WriteBanner("Stopped");
            Output(kBannerLine);
        }
        WritePending();
        if (count > 0)
            m_pBlock->openCount = count - 1;
    }
    Release();
    m_bPause = FALSE;
    m_wLevel = 0;
}

/// Gives back whatever is there of the system.
void CZoTrace::Release()
{
    m_csFileName.Empty();
    if (m_hFile != INVALID_HANDLE_VALUE)
        CloseHandle(std::exchange(m_hFile, INVALID_HANDLE_VALUE));
    if (m_pBlock != nullptr)
        UnmapViewOfFile(std::exchange(m_pBlock, nullptr));
    for (HANDLE* handle : {&m_hMutex, &m_hMapping}) {
        if (*handle != nullptr)
            CloseHandle(std::exchange(*handle, nullptr));
    }
}

BOOL CZoTrace::LockMap() const
{
    if (m_hMutex == nullptr)
        return FALSE;
    const DWORD result = WaitForSingleObject(m_hMutex, INFINITE);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED; // left by a process that died: ours all the same
}

void CZoTrace::UnlockMap() const
{
    if (m_hMutex != nullptr)
        ReleaseMutex(m_hMutex);
}

// Banners -------------------------------------------------------------------------------------------------------------

void CZoTrace::WriteBanner(LPCSTR verb)
{
    char date[32] = {};
    char time[32] = {};
    SYSTEMTIME now;
    GetLocalTime(&now);
    GetDateFormatA(LOCALE_USER_DEFAULT, 0, &now, "MM/dd/yy", date, sizeof date);
    GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &now, "hh:mm:ss tt", time, sizeof time);
    Output(kBannerLine);
    Output("%s - %s %s %s\r\n", (LPCSTR)m_csTraceName, verb, date, time);
}

void CZoTrace::DescribeSystem()
{
    CZoVersionResource module;
    if (!module.ExtractVersionInfo())
        return;

    DWORD ms = 0;
    DWORD ls = 0;
    module.GetFileVersionMajorMinor(ms, ls);
    Output("\r\nVersion: %d.%d.%d.%d", HIWORD(ms), LOWORD(ms), HIWORD(ls), LOWORD(ls));
    LPCSTR separator = " (";
    for (const auto& [isSet, flag] :
         {std::pair{module.IsModuleDebug(), "Debug"}, std::pair{module.IsModulePrerelease(), "PreRelease"},
          std::pair{module.IsModulePatched(), "Patched"}}) {
        if (isSet)
            Output("%s%s", std::exchange(separator, ", "), flag);
    }
    Output(*separator == ',' ? ")\r\n" : "\r\n");

    MEMORYSTATUS memory = {};
    memory.dwLength = sizeof memory;
    GlobalMemoryStatus(&memory);
    Output("Physical Memory: %ldMB\r\n", static_cast<long>((memory.dwTotalPhys >> 20) + 1));

    DWORD sectors = 0;
    DWORD bytes = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    if (GetDiskFreeSpaceA(nullptr, &sectors, &bytes, &freeClusters, &clusters)) {
        // In 32 bits, so that the figure wraps at 4 GB: readers of old traces know it so.
        const DWORD freeBytes = freeClusters * sectors * bytes;
        Output("Free Disk Space: %ldKB\r\n", static_cast<long>(freeBytes >> 10));
    }

    const DWORD version = GetVersion();
    const bool isNT = (version & 0x80000000) == 0;
    const long major = LOBYTE(LOWORD(version));
    const long minor = HIBYTE(LOWORD(version));
    const long build = HIWORD(version) & 0x7FFF;
    if (isNT)
        Output("Operating System: Windows NT v%ld.%ld Build %ld\r\n", major, minor, build);
    else if (major >= 4)
        Output("Operating System: Windows 95 v%ld.%ld\r\n", major, minor);
    else
        Output("Operating System: Windows v%ld.%ld Build %ld\r\n", major, minor, build);
    Output(kBannerLine);
}

// Writing -------------------------------------------------------------------------------------------------------------

void CZoTrace::SetLevel(WORD level)
{
    if (m_pBlock != nullptr)
        m_wLevel = level > 1 ? level : 1;
}

void CZoTrace::Output(const char* format, ...)
{
    if (m_pBlock == nullptr || m_bPause || format == nullptr)
        return;
    char line[kMostStampLength + kMostFormatted + 1];
    char* const text = line + kMostStampLength;
    char cut[kMostFormatted + 1];
    va_list arguments;
    va_start(arguments, format);
    const int length = CutLength(text, wvsprintfA(text, SafeFormat(format, cut), arguments));
    va_end(arguments);

    if (const Lock lock(*this); lock) {
        // The time is taken under the lock, so that stamps ascend in the file.
        char* const begin = m_bTimeStamp ? PutStampBefore(text, GetTickCount() - m_dwStartTicks) : text;
        Append(begin, static_cast<DWORD>(text + length - begin));
        if (m_wLevel >= kImmediateLevel)
            WritePending();
    }
}

void CZoTrace::OutputBlock(const void* data, DWORD length)
{
    if (m_pBlock == nullptr || m_bPause)
        return;
    if (data == nullptr)
        length = 0;
    Output("Block Print: %lu Bytes\r\n", length);
    // The caller's bytes are read before the lock is taken: a fault there must not hold up the other processes. Without
    // memory for all of them the dump comes in pieces, between which there may be others' text.
    BYTE few[kBytesPerLine * 64];
    std::unique_ptr<BYTE[]> all;
    if (length > sizeof few)
        all = NewBytesOrNull(length);
    BYTE* const bytes = all != nullptr ? all.get() : few;
    const DWORD room = all != nullptr ? length : sizeof few;
    for (DWORD done = 0; done < length;) {
        const DWORD count = (std::min)(room, length - done);
        std::memcpy(bytes, static_cast<const BYTE*>(data) + done, count);
        if (const Lock lock(*this); lock)
            AppendDump(bytes, count);
        done += count;
    }
    Output("End Block Print\r\n");
}

/// Whole lines, the last one aside.
void CZoTrace::AppendDump(const BYTE* bytes, DWORD count)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    for (DWORD i = 0; i < count; ++i) {
        const BYTE byte = bytes[i];
        const bool isShown = byte >= 0x20 && byte <= 0x7F;
        const char item[3] = {isShown ? static_cast<char>(byte) : digits[byte >> 4], isShown ? ' ' : digits[byte & 15],
                              ' '};
        Append(item, sizeof item);
        if ((i + 1) % kBytesPerLine == 0)
            Append("\r\n", 2);
    }
    if (count % kBytesPerLine != 0)
        Append("\r\n", 2);
}

void CZoTrace::Flush()
{
    if (m_pBlock == nullptr || m_bPause)
        return;
    if (const Lock lock(*this); lock)
        WritePending();
}

CString CZoTrace::FormatRelativeTime() const
{
    char stamp[kMostStampLength + 1] = {};
    return ResultOr(
        {}, [&]() -> CString { return PutStampBefore(stamp + kMostStampLength, GetTickCount() - m_dwStartTicks); });
}

// The shared block, under the lock ------------------------------------------------------------------------------------

/// Bytes in the buffer, which is settled first if its last writer died.
DWORD CZoTrace::PendingBytes()
{
    const DWORD pending = m_pBlock->pending;
    if (pending <= kBufferSize)
        return pending;
    WritePending();
    return 0;
}

/// \p length at most kBufferSize. The text counts only when all of it is there.
void CZoTrace::Append(const char* text, DWORD length)
{
    DWORD pending = PendingBytes();
    if (pending + length > kBufferSize) {
        WritePending();
        pending = 0;
    }
    std::memcpy(m_pBlock->buffer + pending, text, length);
    m_pBlock->pending = pending + length;
}

/// Writes the buffer behind whatever the file holds by now; a buffer of a senseless length is given up.
void CZoTrace::WritePending()
{
    const DWORD state = m_pBlock->pending;
    const bool isUnfinished = (state & SharedBlock::kWriting) != 0; // by a writer that died
    const DWORD pending = isUnfinished ? state & SharedBlock::kNumberMask : state;
    if (pending > 0 && pending <= kBufferSize) {
        const DWORD size = static_cast<DWORD>(SeekToEnd(m_hFile)) & SharedBlock::kSizeMask;
        DWORD sizeBefore = isUnfinished ? state >> SharedBlock::kNumberBits & SharedBlock::kSizeMask : size;
        DWORD written = (size - sizeBefore) & SharedBlock::kSizeMask;
        if (written > pending) { // somebody has cut the file
            sizeBefore = size;
            written = 0;
        }
        m_pBlock->pending = SharedBlock::kWriting | sizeBefore << SharedBlock::kNumberBits | pending;
        DWORD count = 0;
        if (written < pending)
            WriteFile(m_hFile, m_pBlock->buffer + written, pending - written, &count, nullptr);
    }
    m_pBlock->pending = 0;
}

// Questions -----------------------------------------------------------------------------------------------------------

CString CZoTrace::GetFileName() const { return m_csFileName; }

DWORD CZoTrace::GetOpenCount() const
{
    if (m_pBlock == nullptr)
        return 0;
    const Lock lock(*this);
    return lock ? m_pBlock->openCount.load() : 0;
}

WORD CZoTrace::GetRegTraceLevel()
{
    const CString key = UserKey();
    DWORD level = 0;
    const bool isRead = !key.IsEmpty() && CZoGlobalConfig().GetValue(ZO_MODE_LOCAL_MACHINE, key, kLevelValue, level,
                                                                     MAXDWORD) == ERROR_SUCCESS;
    return isRead ? LOWORD(level) : 0;
}

void CZoTrace::SetRegTraceLevel(WORD level)
{
    const CString key = UserKey();
    if (key.IsEmpty())
        return;
    CZoGlobalConfig config;
    DWORD previous = 0;
    if (config.GetValue(ZO_MODE_LOCAL_MACHINE, key, kLevelValue, previous, MAXDWORD) != ERROR_SUCCESS)
        previous = 0;
    if (config.SetValue(ZO_MODE_LOCAL_MACHINE, key, kLevelValue, level) == ERROR_SUCCESS && previous != level)
        PostMessageA(HWND_BROADCAST, GetNotifyMessage(), previous, level);
}

UINT CZoTrace::GetNotifyMessage()
{
    static const UINT message = RegisterWindowMessageA("CZoTRACE_NOTIFY"); // the same number for all who ask
    return message;
}
