/// \file
/// Functions of the system's library of common controls, comctl32, which is loaded when the first of them is called.
#pragma once

#include "system_function.h"

#include <commctrl.h>

#include <type_traits>

/// Can be called as \p FUNCTION. If the system has no such function it answers 0, FALSE or null, or what it was told
/// to.
template <class FUNCTION> class CommonControlsFunction;
template <class RESULT, class... ARGUMENTS> class CommonControlsFunction<RESULT WINAPI(ARGUMENTS...)> {
    using Failure = std::conditional_t<std::is_void_v<RESULT>, int, RESULT>;

public:
    explicit CommonControlsFunction(LPCSTR name, Failure failure = Failure())
        : m_function(FindSystemFunction<RESULT WINAPI(ARGUMENTS...)>("comctl32.dll", name)), m_failure(failure)
    {
    }
    RESULT operator()(ARGUMENTS... arguments) const
    {
        return m_function != nullptr ? m_function(arguments...) : static_cast<RESULT>(m_failure);
    }

private:
    RESULT(WINAPI* m_function)(ARGUMENTS...);
    Failure m_failure;
};

/// A function of the library by its name, and if wanted what it answers where there is none.
#define COMMON_CONTROLS(function, ...)                                                                                 \
    CommonControlsFunction<decltype(::function)>(#function __VA_OPT__(, ) __VA_ARGS__)
