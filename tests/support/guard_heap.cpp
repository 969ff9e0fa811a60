#include "support/guard_heap.h"

#include "support/import_patch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <map>
#include <mutex>
#include <queue>

namespace zo_test {

namespace {

constexpr size_t kPage = 4096;
constexpr size_t kAlignment = 2 * sizeof(void*);
constexpr char kFresh = '\xCD';       // content of a new block
constexpr char kSlack = '\xFD';       // between the end of a block and its page's end
constexpr size_t kFreedBlocks = 3000; // that stay inaccessible before their addresses are used again

struct Block {
    size_t size;
    bool alive;
};
using BlockMap = std::map<char*, Block>; // by their first pages

struct Heap {
    std::mutex mutex;
    BlockMap blocks;
    std::queue<BlockMap::iterator> freed;
};
Heap& TheHeap()
{
    static Heap& heap = *new Heap; // for ever: the framework frees to the last
    return heap;
}

void (*g_free)(void*) = nullptr; // of the C library, for blocks from before

size_t RoundedUp(size_t size, size_t unit) { return (size + unit - 1) / unit * unit; }
/// The bytes of a block's pages. Behind them comes an inaccessible one.
size_t PagesOf(const Block& block) { return RoundedUp(block.size, kPage); }
/// A block ends with its pages, but for alignment.
char* BeginningOf(const BlockMap::value_type& entry)
{
    return entry.first + PagesOf(entry.second) - RoundedUp(entry.second.size, kAlignment);
}

/// The block in whose pages an address lies; the end if it lies in none.
BlockMap::iterator FindBlock(void* address)
{
    BlockMap& blocks = TheHeap().blocks;
    const auto next = blocks.upper_bound(static_cast<char*>(address));
    if (next == blocks.begin())
        return blocks.end();
    const auto found = std::prev(next);
    return address < found->first + PagesOf(found->second) + kPage ? found : blocks.end();
}

[[noreturn]] void Stop(const char* what, void* p)
{
    std::fprintf(stderr, "guard heap: %s: %p %s\n", what, p, DescribeGuardedAddress(p).c_str());
    std::fflush(stderr);
    RaiseException(0xE0005A48, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

} // namespace

void* GuardedAllocate(size_t size)
{
    if (size > (std::numeric_limits<size_t>::max)() / 2)
        return nullptr;
    Heap& heap = TheHeap();
    const std::lock_guard lock(heap.mutex);
    const Block block = {(std::max)(size, size_t{1}), true};
    auto* pages = static_cast<char*>(VirtualAlloc(nullptr, PagesOf(block) + kPage, MEM_RESERVE, PAGE_NOACCESS));
    if (pages == nullptr || VirtualAlloc(pages, PagesOf(block), MEM_COMMIT, PAGE_READWRITE) == nullptr)
        return nullptr;
    char* beginning = BeginningOf(*heap.blocks.insert({pages, block}).first);
    std::memset(beginning, kSlack, RoundedUp(block.size, kAlignment));
    std::memset(beginning, kFresh, block.size);
    return beginning;
}

void GuardedFree(void* p)
{
    Heap& heap = TheHeap();
    const std::lock_guard lock(heap.mutex);
    const auto found = FindBlock(p);
    if (found == heap.blocks.end())
        return g_free(p);
    auto& [pages, block] = *found;
    char* beginning = BeginningOf(*found);
    if (p != beginning)
        Stop("freed what is no block", p);
    if (!block.alive)
        Stop("freed twice", p);
    if (std::any_of(beginning + block.size, pages + PagesOf(block), [](char c) { return c != kSlack; }))
        Stop("written behind its end", p);
    block.alive = false;
    VirtualFree(pages, PagesOf(block), MEM_DECOMMIT);
    heap.freed.push(found);
    if (heap.freed.size() > kFreedBlocks) {
        VirtualFree(heap.freed.front()->first, 0, MEM_RELEASE);
        heap.blocks.erase(heap.freed.front());
        heap.freed.pop();
    }
}

std::string DescribeGuardedAddress(void* address)
{
    const auto found = FindBlock(address);
    if (found == TheHeap().blocks.end())
        return {};
    char text[128];
    std::snprintf(text, sizeof text, "(byte %ld of a %s block of %lu bytes)",
                  static_cast<long>(static_cast<char*>(address) - BeginningOf(*found)),
                  found->second.alive ? "living" : "freed", static_cast<unsigned long>(found->second.size));
    return text;
}

void InstallGuardHeap()
{
    // Both for ever: they have no owner.
    g_free = (new ImportPatch("ZOAFX.DLL", "free", &GuardedFree))->Original<void(void*)>();
    new ImportPatch("ZOAFX.DLL", "malloc", &GuardedAllocate);
}

bool IsGuardHeapInstalled() { return g_free != nullptr; }

} // namespace zo_test
