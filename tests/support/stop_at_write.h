/// \file
/// A child that is killed in the middle of writing.
#pragma once

#include "support/child_process.h"
#include "support/import_patch.h"

namespace zo_test {

/// While it lives, call \p nth of WriteFile from \p module (counted from 1) tells the parent, and waits to be killed.
class StopAtWrite {
public:
    StopAtWrite(const ChildContext& child, const char* module, int nth) : m_patch(module, "WriteFile", &Write)
    {
        s_child = &child;
        s_left = nth;
    }

private:
    static BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED overlapped)
    {
        if (--s_left == 0) {
            s_child->Ready();
            s_child->WaitForGo();
        }
        return WriteFile(file, bytes, count, written, overlapped);
    }

    static inline const ChildContext* s_child = nullptr;
    static inline int s_left = 0;
    ImportPatch m_patch;
};

} // namespace zo_test
