/// \file
/// The edge at which exceptions end, with a result in their place.
#pragma once

#include <afx.h>

#include <type_traits>

/// Runs what may throw. \return its result; \p failure if an exception ended it.
/// \tparam EXCEPTION what ends here. CMemoryException, if others come from a derived class's overrides: they pass.
template <class EXCEPTION = CException, class OPERATION>
std::invoke_result_t<OPERATION> ResultOr(std::invoke_result_t<OPERATION> failure, OPERATION operation)
{
    try {
        return operation();
    } catch (EXCEPTION* e) {
        e->Delete();
        return failure;
    }
}

/// Runs what may throw. \return its answer, TRUE if it has none; FALSE if an exception ended it.
template <class EXCEPTION = CException, class OPERATION> BOOL WithoutThrowing(OPERATION operation)
{
    return ResultOr<EXCEPTION>(FALSE, [&]() -> BOOL {
        if constexpr (std::is_void_v<std::invoke_result_t<OPERATION>>) {
            operation();
            return TRUE;
        } else {
            return operation();
        }
    });
}
