/// \file
/// Replaces a function that a loaded module imports, so that a test can make any system call fail, or lie.
///
///     HANDLE WINAPI NoFile(LPCSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) { ... }
///     zo_test::ImportPatch patch("ZOAFX.DLL", "CreateFileA", &NoFile);
///
/// The patch holds for calls from that one module, until the object's end. Patches of the same import are undone in
/// reverse order. To make calls fail one after the other, use FaultyCall (fault_loop.h).
#pragma once

#include <afx.h>

#include <vector>

namespace zo_test {

inline constexpr char kZogbl[] = "ZOGBLBRX.DLL"; ///< the class library

class ImportPatch {
public:
    /// Fails the current test if the module is not loaded or imports no such function.
    template <class FUNCTION> ImportPatch(const char* module, const char* function, FUNCTION* replacement)
    {
        Apply(module, function, reinterpret_cast<void*>(replacement));
    }
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    /// The function that was imported before, of the type \p FUNCTION names.
    template <class FUNCTION> FUNCTION* Original() const { return reinterpret_cast<FUNCTION*>(m_original); }

private:
    void Apply(const char* module, const char* function, void* replacement);

    std::vector<void**> m_slots; // one for each import table that has the function
    void* m_original = nullptr;
    void* m_replacement = nullptr;
};

} // namespace zo_test
