#include "document_settings.h"

#include "user_texts.h"

#include <cstdio>

namespace {

constexpr LPCSTR kFont = "DocumentFont";
constexpr LPCSTR kHeading = "DocumentHeading";
constexpr LONG kMostHeight = 10000; // pixels
constexpr COLORREF kMostColor = RGB(255, 255, 255);

bool IsByte(int number) { return number >= 0 && number <= 0xFF; }

/// \return false: the text is no record of a font
bool ReadFont(const CString& text, DocumentSettings& settings)
{
    int height = 0, weight = 0, italic = 0, underline = 0, strikeOut = 0, charSet = 0, pitch = 0, face = 0;
    unsigned long color = 0;
    if (std::sscanf(text, "%d %d %d %d %d %d %d %lu %n", &height, &weight, &italic, &underline, &strikeOut, &charSet,
                    &pitch, &color, &face) != 8 ||
        height < -kMostHeight || height > kMostHeight || weight < 0 || weight > 1000 || !IsByte(charSet) ||
        !IsByte(pitch) || (color > kMostColor && color != CLR_DEFAULT) || face == 0 ||
        text.GetLength() - face >= LF_FACESIZE)
        return false;
    LOGFONT& font = settings.font;
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfItalic = italic != 0;
    font.lfUnderline = underline != 0;
    font.lfStrikeOut = strikeOut != 0;
    font.lfCharSet = static_cast<BYTE>(charSet);
    font.lfPitchAndFamily = static_cast<BYTE>(pitch);
    ::lstrcpyn(font.lfFaceName, text.Mid(face), LF_FACESIZE);
    settings.color = color;
    return true;
}

} // namespace

DocumentSettings LoadDocumentSettings()
{
    DocumentSettings settings;
    CString text;
    if (ReadUserText(kFont, text))
        ReadFont(text, settings);
    if (ReadUserText(kHeading, text))
        settings.heading = text != "0";
    return settings;
}

DWORD SaveDocumentSettings(const DocumentSettings& settings)
{
    const LOGFONT& font = settings.font;
    CString text;
    text.Format("%ld %ld %d %d %d %d %d %lu %s", font.lfHeight, font.lfWeight, font.lfItalic, font.lfUnderline,
                font.lfStrikeOut, font.lfCharSet, font.lfPitchAndFamily, settings.color, font.lfFaceName);
    const DWORD status = KeepUserText(kFont, text);
    return status != ERROR_SUCCESS ? status : KeepUserText(kHeading, settings.heading ? "1" : "0");
}
