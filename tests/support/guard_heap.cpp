#include "support/guard_heap.h"

#include "support/import_patch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <vector>

namespace zo_test {

namespace {

constexpr size_t kPage = 4096;
constexpr size_t kArenaPages = sizeof(void*) == 4 ? 0x10000 : 0x100000; // 256 MB of addresses, or 4 GB; not of memory
constexpr size_t kAlignment = 2 * sizeof(void*);
constexpr unsigned char kFresh = 0xCD; // content of a new block
constexpr unsigned char kSlack = 0xFD; // between the end of a block and its page's end

/// What is known of the block that begins in a page.
struct PageRecord {
    size_t size = 0;
    unsigned pages = 0; // with the inaccessible one; 0 when no block begins here
    bool alive = false;
};

std::mutex g_mutex;
char* g_arena = nullptr;
size_t g_nextPage = 0; // blocks are taken in one direction round the arena, so that a freed one stays free for long
std::vector<PageRecord>& Records()
{
    static auto& records = *new std::vector<PageRecord>(kArenaPages); // for ever: the framework frees to the last
    return records;
}

void (*g_free)(void*) = nullptr; // of the C library, for blocks from before

bool IsInArena(const void* p) { return g_arena != nullptr && p >= g_arena && p < g_arena + kArenaPages * kPage; }
size_t PageOf(const void* p) { return static_cast<size_t>(static_cast<const char*>(p) - g_arena) / kPage; }
size_t Rounded(size_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

/// The beginning of the block that \p record describes: its rounded size ends with the page.
char* BlockAt(size_t page, const PageRecord& record)
{
    return g_arena + (page + record.pages - 1) * kPage - Rounded(record.size);
}

bool MakeArena()
{
    if (g_arena == nullptr)
        g_arena = static_cast<char*>(VirtualAlloc(nullptr, kArenaPages * kPage, MEM_RESERVE, PAGE_NOACCESS));
    return g_arena != nullptr;
}

/// The first page of \p pages free ones at or behind \p from; kArenaPages when there are none before the arena's end.
size_t FindFree(size_t from, size_t pages)
{
    const std::vector<PageRecord>& records = Records();
    size_t run = 0;
    for (size_t page = from; page < kArenaPages;) {
        if (records[page].alive) {
            page += records[page].pages;
            run = 0;
        } else if (++page, ++run == pages) {
            return page - run;
        }
    }
    return kArenaPages;
}

[[noreturn]] void Stop(const char* what, const void* p)
{
    std::fprintf(stderr, "guard heap: %s: %p %s\n", what, p, DescribeGuardedAddress(p).c_str());
    std::fflush(stderr);
    RaiseException(0xE0005A48, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

void* __cdecl Malloc(size_t size) { return GuardedAllocate(size); }

void __cdecl Free(void* p)
{
    if (IsInArena(p))
        GuardedFree(p);
    else
        g_free(p);
}

bool g_installed = false;

} // namespace

void* GuardedAllocate(size_t size)
{
    const std::lock_guard lock(g_mutex);
    size = (std::max)(size, size_t{1});
    if (!MakeArena() || size > kArenaPages * kPage / 2)
        return nullptr;
    const size_t pages = Rounded(size) / kPage + (Rounded(size) % kPage != 0) + 1;
    size_t page = FindFree(g_nextPage, pages);
    if (page == kArenaPages)
        page = FindFree(0, pages);
    if (page == kArenaPages ||
        VirtualAlloc(g_arena + page * kPage, (pages - 1) * kPage, MEM_COMMIT, PAGE_READWRITE) == nullptr)
        return nullptr;
    for (size_t i = page; i < page + pages; ++i) // of blocks that lay here before
        Records()[i] = {};
    PageRecord& record = Records()[page];
    record = {size, static_cast<unsigned>(pages), true};
    g_nextPage = page + pages;
    char* block = BlockAt(page, record);
    std::memset(block, kFresh, size);
    std::memset(block + size, kSlack, Rounded(size) - size);
    return block;
}

void GuardedFree(void* p)
{
    const std::lock_guard lock(g_mutex);
    const size_t page = PageOf(p);
    PageRecord& record = Records()[page];
    if (record.pages == 0 || p != BlockAt(page, record))
        Stop("freed what is no block", p);
    if (!record.alive)
        Stop("freed twice", p);
    const auto* slack = static_cast<const unsigned char*>(p) + record.size;
    for (size_t i = 0; i < Rounded(record.size) - record.size; ++i) {
        if (slack[i] != kSlack)
            Stop("written behind its end", p);
    }
    record.alive = false;
    VirtualFree(g_arena + page * kPage, (record.pages - 1) * kPage, MEM_DECOMMIT);
}

std::string DescribeGuardedAddress(const void* address)
{
    if (!IsInArena(address))
        return {};
    size_t page = PageOf(address);
    while (page > 0 && Records()[page].pages == 0)
        --page;
    const PageRecord& record = Records()[page];
    if (record.pages == 0)
        return "(in the guard heap, of no block)";
    char text[128];
    std::snprintf(text, sizeof text, "(byte %ld of a %s block of %lu bytes)",
                  static_cast<long>(static_cast<const char*>(address) - BlockAt(page, record)),
                  record.alive ? "living" : "freed", static_cast<unsigned long>(record.size));
    return text;
}

bool InstallGuardHeap()
{
    if (g_installed)
        return true;
    if (!MakeArena())
        return false;
    Records(); // made before the first block that needs them
    static const ImportPatch& freePatch = *new ImportPatch("ZOAFX.DLL", "free", &Free); // for ever, hence no owner
    if (!freePatch.IsActive())
        return false;
    g_free = freePatch.Original<void(void*)>();
    static const ImportPatch& mallocPatch = *new ImportPatch("ZOAFX.DLL", "malloc", &Malloc);
    if (!mallocPatch.IsActive())
        return false;
    g_installed = true;
    return true;
}

bool IsGuardHeapInstalled() { return g_installed; }

} // namespace zo_test
