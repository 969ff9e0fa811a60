/// \file
/// Translation files made by hand, and what an object holds, for comparison.
#pragma once

#include "product/registered_product.h"
#include "support/test.h"

#include <zogbl/module.h>
#include <zogbl/translate.h>

namespace zo_test {

constexpr size_t kTranslationFileSize = 608;
constexpr char kNewDescription[] = "New translation table";

/// A number as it stands in a file.
inline std::string LittleEndian(DWORD number)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

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
    std::string Bytes() const
    {
        std::string bytes = get + put + LittleEndian(size) + LittleEndian(magic) + LittleEndian(version) +
                            LittleEndian(flags) + LittleEndian(last[0]) + LittleEndian(last[1]) +
                            LittleEndian(last[2]) + LittleEndian(last[3]) + description;
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
    const DWORD last[] = {translation.GetLastInput(), translation.GetLastOutput(), translation.GetLastModeI(),
                          translation.GetLastModeO()};
    std::copy(std::begin(last), std::end(last), file.last);
    CString text;
    translation.GetDescription(text);
    file.description = text;
    translation.GetFilePath(text);
    return file.Bytes() + std::string(text);
}

class TranslateTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(ZoGblLoadLanguageDLL()); }
    void TearDown() override { ZoGblDumpLanguageDLL(); }

    RegisteredProduct m_product;
    TestFolder m_folder;
    const std::string m_file = m_folder.Path("table.iot");
};

} // namespace zo_test
