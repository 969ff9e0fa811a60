/// \file
/// The system's library of common controls, property sheets and image lists.
#pragma once

#include <afxcmn.h>

/// Loads the library when it is first called and makes its window classes known. The library stays, for its classes do.
/// \return null if it cannot be loaded, which a later call tries again
HMODULE CommonControlsLibrary();

/// A function of the library by its name; null if the library or the function is missing.
template <class FUNCTION> FUNCTION* CommonControlsFunction(LPCSTR name)
{
    const HMODULE library = CommonControlsLibrary();
    return library != nullptr ? reinterpret_cast<FUNCTION*>(reinterpret_cast<void*>(::GetProcAddress(library, name)))
                              : nullptr;
}

/// Creates a common control, as CWnd::Create does. Without the library that fails, for the class is unknown.
BOOL CreateCommonControl(CWnd& control, LPCSTR className, DWORD style, const RECT& rect, CWnd* parent, UINT id);

/// A handle of an image list; null for a null pointer.
inline HIMAGELIST SafeHandle(const CImageList* list) { return list != nullptr ? list->GetSafeHandle() : nullptr; }
