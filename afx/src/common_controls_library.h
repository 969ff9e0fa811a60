/// \file
/// The windows of the system's library of common controls; its functions are in common_controls.h.
#pragma once

#include <afxcmn.h>

/// Loads the library when it is first called and makes its window classes known; both stay. A call after one that
/// failed tries again.
void LoadCommonControls();

/// Creates a common control, as CWnd::Create does. Without the library that fails, for the class is unknown.
BOOL CreateCommonControl(CWnd& control, LPCSTR className, DWORD style, const RECT& rect, CWnd* parent, UINT id);

/// A handle of an image list; null for a null pointer.
inline HIMAGELIST SafeHandle(const CImageList* list) { return list != nullptr ? list->GetSafeHandle() : nullptr; }
