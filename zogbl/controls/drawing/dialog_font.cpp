#include "dialog_font.h"

#include <common/dialog_template.h>

#include "ground/bounded_text.h"

#include <cwchar>

DialogFont::DialogFont(LPCSTR faceName, int pointSize) : points(pointSize) { CopyBounded(face, sizeof face, faceName); }

bool DialogFont::ReadFromTemplate(const void* dialogTemplate, DWORD size)
{
    const DialogTemplateReader reader(dialogTemplate, size);
    wchar_t name[LF_FACESIZE] = {};
    std::wcsncpy(name, reader.GetFontFace(), LF_FACESIZE - 1);
    char converted[LF_FACESIZE * 2] = {};
    if (reader.GetFontPoints() == 0 || name[0] == 0 ||
        WideCharToMultiByte(CP_ACP, 0, name, -1, converted, sizeof converted, nullptr, nullptr) == 0)
        return false;
    CopyBounded(face, sizeof face, converted);
    points = reader.GetFontPoints();
    return true;
}
