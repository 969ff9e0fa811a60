/// \file
/// Translation files made by hand, and what an object holds, for comparison.
#pragma once

#include "support/product_test.h"

#include <zogbl/translate.h>

namespace zo_test {

constexpr size_t kTranslationFileSize = 608;
constexpr char kNewDescription[] = "New translation table";

/// What a translation file holds; at first one that mirrors the get table and steps through the put table.
struct TranslationFile {
    std::string get, put;
    DWORD size = 96, magic = 0x05241963, version = 0x00010000, flags = 0;
    DWORD last[4] = {}; // input, output, mode I, mode O
    std::string description = "By hand";

    TranslationFile()
    {
        for (int code = 0; code < 256; ++code) {
            get += static_cast<char>(255 - code);
            put += static_cast<char>(code + 1);
        }
    }
    /// Of a table that changes nothing.
    static std::string Identity()
    {
        std::string table;
        for (int code = 0; code < 256; ++code)
            table += static_cast<char>(code);
        return table;
    }
    std::string Bytes() const
    {
        std::string bytes = get + put;
        for (const DWORD number : {size, magic, version, flags, last[0], last[1], last[2], last[3]})
            bytes += BytesOf(number);
        bytes += description;
        bytes.resize(kTranslationFileSize, '\0');
        return bytes;
    }
};

/// All that an object holds, as the bytes of a file, with its path behind them.
inline std::string ImageOf(const CGblTranslate& translation)
{
    TranslationFile file;
    for (int code = 0; code < 256; ++code) {
        file.get[code] = static_cast<char>(translation.GetInputValue(static_cast<BYTE>(code)));
        file.put[code] = static_cast<char>(translation.GetOutputValue(static_cast<BYTE>(code)));
    }
    file.flags = static_cast<DWORD>(translation.IsGetEnabled() | translation.IsPutEnabled() << 1 |
                                    translation.IsGetDBCSEnabled() << 2 | translation.IsPutDBCSEnabled() << 3);
    file.last[0] = translation.GetLastInput();
    file.last[1] = translation.GetLastOutput();
    file.last[2] = translation.GetLastModeI();
    file.last[3] = translation.GetLastModeO();
    CString text;
    translation.GetDescription(text);
    file.description = text;
    translation.GetFilePath(text);
    return file.Bytes() + std::string(text);
}

class TranslateTest : public ProductTest {
protected:
    const std::string m_file = Path("table.iot");
};

} // namespace zo_test
