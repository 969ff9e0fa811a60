/// \file
/// Where the framework extensions find texts and dialogs. They lie below the class library, which alone knows the
/// library of the user's language, and tells them so here.
#pragma once

#include <zomfx/export.h>

#include <afx.h>

struct ZoResourceSource {
    BOOL (*loadString)(UINT id, CString& text);
    const void* (*lockResource)(LPCSTR name, LPCSTR type, DWORD* size);
};

/// \param source must live until another one takes its place; with null only the framework's resource chain is left.
ZOMFX_API void ZoMfxSetResourceSource(const ZoResourceSource* source);
