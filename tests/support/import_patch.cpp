#include "support/import_patch.h"

#include <gtest/gtest.h>

#include <cstring>

namespace zo_test {

namespace {

/// The slots of \p module through which it calls \p function.
std::vector<void**> FindSlots(HMODULE module, const char* function)
{
    auto* base = reinterpret_cast<char*>(module);
    const auto* headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    std::vector<void**> slots;
    if (directory.Size == 0)
        return slots;
    for (auto* entry = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress); entry->Name != 0;
         ++entry) {
        if (entry->OriginalFirstThunk == 0)
            continue; // no names are left to look at
        const auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + entry->OriginalFirstThunk);
        auto* slot = reinterpret_cast<void**>(base + entry->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
                continue;
            const auto* import = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) == 0)
                slots.push_back(slot);
        }
    }
    return slots;
}

void Store(void** slot, void* value)
{
    DWORD protection = 0;
    if (!VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection))
        ADD_FAILURE() << "the import table cannot be written, error " << GetLastError();
    else
        *slot = value;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
}

} // namespace

void ImportPatch::Apply(const char* module, const char* function, void* replacement)
{
    const HMODULE loaded = GetModuleHandleA(module);
    if (loaded == nullptr) {
        ADD_FAILURE() << module << " is not loaded";
        return;
    }
    m_slots = FindSlots(loaded, function);
    if (m_slots.empty()) {
        ADD_FAILURE() << module << " imports no " << function;
        return;
    }
    m_original = *m_slots.front();
    m_replacement = replacement;
    for (void** slot : m_slots)
        Store(slot, replacement);
}

ImportPatch::~ImportPatch()
{
    for (void** slot : m_slots) {
        EXPECT_EQ(m_replacement, *slot) << "somebody else changed the import meanwhile";
        Store(slot, m_original);
    }
}

} // namespace zo_test
