#include <zogbl/number_text.h>

#include <common/without_throwing.h>

#include <cstdlib>

unsigned long StringToDWord(const char* text) { return text != nullptr ? std::strtoul(text, nullptr, 10) : 0; }

CString DWordToString(unsigned long value) { return DWordToBaseString(value, 10); }

CString DWordToBaseString(unsigned long value, int base)
{
    char text[64] = {};
    if (base < 2 || base > 36)
        return {};
    _ultoa(value, text, base);
    return ResultOr({}, [&] { return CString(text); });
}
