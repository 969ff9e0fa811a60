// Operator new and delete of a module of the suite. Every library is built with this file, for on Windows a replaced
// operator serves only the module that it is linked into.
#include <afx.h>

void* operator new(size_t nSize) { return AfxAllocMemory(nSize); }
void* operator new[](size_t nSize) { return AfxAllocMemory(nSize); }
void operator delete(void* p) noexcept { AfxFreeMemory(p); }
void operator delete[](void* p) noexcept { AfxFreeMemory(p); }
void operator delete(void* p, size_t) noexcept { AfxFreeMemory(p); }
void operator delete[](void* p, size_t) noexcept { AfxFreeMemory(p); }

// The forms that answer null: what a status code is made of.
void* operator new(size_t nSize, const std::nothrow_t&) noexcept
{
    try {
        return AfxAllocMemory(nSize);
    } catch (CMemoryException* e) {
        e->Delete();
        return nullptr;
    }
}
void* operator new[](size_t nSize, const std::nothrow_t& tag) noexcept { return operator new(nSize, tag); }
void operator delete(void* p, const std::nothrow_t&) noexcept { AfxFreeMemory(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { AfxFreeMemory(p); }
