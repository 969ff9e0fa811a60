/// \file
/// The font that a dialog template asks for.
#pragma once

#include <windows.h>

struct DialogFont {
    DialogFont(LPCSTR faceName, int pointSize);

    /// Takes the font of a dialog template, plain or extended, of \p size bytes. \return FALSE, changing nothing, when
    /// the template names none or ends too soon.
    bool ReadFromTemplate(const void* dialogTemplate, DWORD size);

    char face[LF_FACESIZE];
    int points;
};
