#include "trace_text.h"

#include <common/double_byte.h>
#include <zogbl/trace.h>

#include "ground/bounded_text.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetterOrDigit(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || IsDigit(c); }

/// The end of a conversion that wvsprintf takes on every system; null if it is none. \param at behind its "%"
const char* EndOfConversion(const char* at)
{
    for (const char flag : {'-', '#', '0'})
        at += *at == flag;
    while (IsDigit(*at))
        ++at;
    if (*at == '.') {
        do
            ++at;
        while (IsDigit(*at));
    }
    at += *at == 'h' || *at == 'l';
    return *at != '\0' && std::strchr("cCdipsSuxX", *at) != nullptr ? at + 1 : nullptr;
}

} // namespace

CString TraceBaseName(const CString& name)
{
    CString base = "Zo";
    for (LPCSTR at = name; *at != '\0' && *at != '.'; ++at) {
        if (CharacterWidth(at) == 2)
            ++at; // its second byte may look like a letter
        else if (IsLetterOrDigit(*at))
            base += *at;
    }
    return base;
}

char* PutStampBefore(char* end, DWORD milliseconds)
{
    const auto put = [&end](DWORD number, int digits) {
        for (; digits > 0 || number > 0; number /= 10, --digits)
            *--end = static_cast<char>('0' + number % 10);
    };
    *--end = ' ';
    *--end = ')';
    put(milliseconds % 1000, 3);
    *--end = '.';
    put(milliseconds / 1000 % 60, 2);
    *--end = ':';
    put(milliseconds / 60000 % 60, 2);
    *--end = ':';
    put(milliseconds / 3600000, 2);
    *--end = '(';
    return end;
}

const char* SafeFormat(const char* format, char (&cut)[kMostFormatted + 1])
{
    const char* end = format;  // of the conversions
    const char* last = format; // of those for which there is room
    while (const char* percent = std::strchr(end, '%')) {
        const char* next = percent[1] == '%' ? percent + 2 : EndOfConversion(percent + 1);
        if (next == nullptr) {
            const size_t length = static_cast<size_t>(last - format) + std::strcspn(last, "%");
            CopyBounded(cut, (std::min)(length, kMostFormatted) + 1, format);
            return cut;
        }
        end = next;
        if (static_cast<size_t>(end - format) <= kMostFormatted)
            last = end;
    }
    return format;
}

int CutLength(const char* text, int length)
{
    if (length <= CZoTrace::kMostTextLength)
        return length < 0 ? 0 : length;
    int cut = 0;
    while (cut < CZoTrace::kMostTextLength) {
        const int width = IsLeadByte(text[cut]) ? 2 : 1;
        if (cut + width > CZoTrace::kMostTextLength)
            break;
        cut += width;
    }
    return cut;
}
