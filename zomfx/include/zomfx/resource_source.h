/// \file
/// Where the framework extensions find texts and dialogs. They lie below the class library, which alone knows the
/// library of the user's language, the suite's dialog for files and its message box, and tells them so here.
#pragma once

#include <zomfx/export.h>

#include <afxwin.h>

struct ZoResourceSource {
    BOOL (*loadString)(UINT id, CString& text);
    const void* (*lockResource)(LPCSTR name, LPCSTR type, DWORD* size);
    /// Lets the user choose a file that exists. \p path is what to begin with, and unchanged on FALSE; \p filter as the
    /// dialog for files takes it.
    BOOL (*askForFile)(CString& path, LPCSTR filter, CWnd* parent);
    int (*showMessage)(HWND owner, LPCSTR text, LPCSTR title, UINT type); ///< as MessageBox
};

/// \param source must live until another one takes its place; with null only the framework's resource chain is left.
ZOMFX_API void ZoMfxSetResourceSource(const ZoResourceSource* source);
