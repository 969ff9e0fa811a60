/// \file
/// What the tests of dates in fields share.
#pragma once

#include "controls/control_kit.h"

#include <zogbl/date_time.h>

#include <random>

/// "2024-02-29", or "2024-02-29 12:30:00".
inline SYSTEMTIME At(const std::string& text)
{
    SYSTEMTIME time = {};
    sscanf(text.c_str(), "%hu-%hu-%hu %hu:%hu:%hu", &time.wYear, &time.wMonth, &time.wDay, &time.wHour, &time.wMinute,
           &time.wSecond);
    return time;
}
inline std::string Written(const SYSTEMTIME& time)
{
    char text[40];
    snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
             time.wMinute, time.wSecond);
    const std::string written = text;
    return written.ends_with(" 00:00:00") ? written.substr(0, 10) : written;
}
inline SYSTEMTIME AnyTime(std::mt19937& random)
{
    const auto part = [&](unsigned least, unsigned most) {
        return std::to_string(least + random() % (most - least + 1));
    };
    const bool isFar = random() % 10 == 0;
    return At(part(isFar ? 1753 : 1990, isFar ? 9999 : 2040) + "-" + part(1, 12) + "-" + part(1, 31) + " " +
              part(0, 23) + ":" + part(0, 59) + ":" + part(0, 59));
}

/// The columns of a row, which "=" separates.
inline std::vector<std::string> Columns(const std::string& row)
{
    std::vector<std::string> columns(1);
    for (const char character : row) {
        if (character == '=')
            columns.emplace_back();
        else
            columns.back() += character;
    }
    return columns;
}
