/// \file
/// Functions of system libraries that are loaded when they are first wanted, and stay.
#pragma once

#include <afxwin.h>

/// \return null if the library or the function is missing; the last error says which
template <class FUNCTION> FUNCTION* FindSystemFunction(LPCSTR library, LPCSTR name)
{
    HMODULE module = ::GetModuleHandle(library);
    if (module == nullptr)
        module = ::LoadLibrary(library);
    const FARPROC function = module != nullptr ? ::GetProcAddress(module, name) : nullptr;
    return reinterpret_cast<FUNCTION*>(reinterpret_cast<void*>(function));
}
