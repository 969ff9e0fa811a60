/// \file
/// Comparisons that the system calls.
#pragma once

#include <afxwin.h>

#include <commctrl.h>

#include <exception>

/// Stands between the system's sort and a comparison, whose exceptions must not pass the system's frames.
class GuardedCompare {
public:
    GuardedCompare(PFNLVCOMPARE compare, LPARAM data) : m_compare(compare), m_data(data) {}

    /// What the system calls, its data being the address of the object. After an exception all are equal.
    static int CALLBACK Procedure(LPARAM first, LPARAM second, LPARAM object)
    {
        auto* self = reinterpret_cast<GuardedCompare*>(object);
        if (self->m_failure != nullptr)
            return 0;
        try {
            return self->m_compare(first, second, self->m_data);
        } catch (...) {
            self->m_failure = std::current_exception();
            return 0;
        }
    }
    /// When the system has returned: throws what the comparison has thrown. \return \p result
    BOOL ThrowOn(BOOL result) const
    {
        if (m_failure != nullptr)
            std::rethrow_exception(m_failure);
        return result;
    }

private:
    PFNLVCOMPARE m_compare;
    LPARAM m_data;
    std::exception_ptr m_failure;
};
