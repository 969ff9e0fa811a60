/// \file
/// The source of texts for the framework extensions. They lie below the class library. It alone knows the language
/// library, and gives its texts to the extensions here.
#pragma once

#include <zomfx/export.h>

#include <afxwin.h>

struct ZoResourceSource {
    BOOL (*loadString)(UINT id, CString& text);
};

/// \param source must live until another one takes its place. Null: only the framework's resource chain is used
ZOMFX_API void ZoMfxSetResourceSource(const ZoResourceSource* source);
