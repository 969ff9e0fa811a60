/// \file
/// The source of texts and dialogs for the framework extensions. They lie below the class library. It alone knows the
/// language library, the suite's dialog for files and its message box, and gives them to the extensions here.
#pragma once

#include <zomfx/export.h>

#include <afxwin.h>

struct ZoResourceSource {
    BOOL (*loadString)(UINT id, CString& text);
    const void* (*lockResource)(LPCSTR name, LPCSTR type, DWORD* size);
    /// Lets the user choose a file that exists. \p path is the name to begin with, unchanged on FALSE; \p filter as for
    /// CZoFileOpen.
    BOOL (*askForFile)(CString& path, LPCSTR filter, CWnd* parent);
    int (*showMessage)(HWND owner, LPCSTR text, LPCSTR title, UINT type); ///< as MessageBox
};

/// \param source must live until another one takes its place. Null: only the framework's resource chain and the
/// system's message box are used, and no file can be chosen
ZOMFX_API void ZoMfxSetResourceSource(const ZoResourceSource* source);
