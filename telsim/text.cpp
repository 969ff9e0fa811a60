#include "text.h"

#include <cstdarg>
#include <cstdio>

namespace telsim {

std::string Format(const char* format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

std::string Quoted(const char* text)
{
    constexpr UINT kLongest = 200;
    if (text == nullptr)
        return "null";
    if (IsBadStringPtrA(text, kLongest))
        return "unreadable";
    return '"' + std::string(text, strnlen(text, kLongest)) + '"';
}

} // namespace telsim
