// Damaged translation files: what is read is what the format says, and never half of it.
#include "support/test.h"
#include "translate_fixture.h"

namespace {

constexpr unsigned kCasesPerSave = 4; // files take time
constexpr size_t kHeader = 512;
constexpr size_t kDescription = 544;

std::string MakeFile(Random& random)
{
    TranslationFile file;
    file.flags = random() % 16;
    for (DWORD& last : file.last)
        last = random() % 4 == 0 ? random() : random() % 256;
    file.description.assign(random() % 65, static_cast<char>('a' + random() % 26));
    std::string bytes = file.Bytes();
    static constexpr DWORD numbers[] = {0, 1, 95, 96, 97, 0x00010000, 0x00010001, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const auto inTables = [&] { bytes[random() % kHeader] = static_cast<char>(random()); };
    const auto number = [&] { PutNumber(bytes, kHeader + random() % 8 * 4, Choose(random, numbers)); };
    const auto untilTheEnd = [&] { // the description, up to its last byte and with lead bytes
        for (size_t at = kDescription + random() % 64; at < bytes.size(); ++at)
            bytes[at] = static_cast<char>(random() | 0x80);
    };
    Damage(random, 0, 3, {inTables, inTables, number, number, untilTheEnd, [&] {
                              bytes[kHeader + random() % 96] ^= static_cast<char>(1 << random() % 8);
                          }});
    if (random() % 4 == 0)
        bytes.resize(random() % 3 == 0 ? random() % 1300 : kTranslationFileSize - 1 + random() % 3);
    return bytes;
}

DWORD Judge(const std::string& bytes)
{
    if (bytes.size() != kTranslationFileSize)
        return ZO_TRANSLATE_WRONG_LENGTH;
    if (NumberAt<DWORD>(bytes, kHeader) < 96)
        return ZO_TRANSLATE_SHORT_HEADER;
    if (NumberAt<DWORD>(bytes, kHeader + 4) != 0x05241963)
        return ZO_TRANSLATE_WRONG_MAGIC;
    return NumberAt<DWORD>(bytes, kHeader + 8) > 0x00010000 ? ZO_TRANSLATE_NEWER_VERSION : ZO_TRANSLATE_SUCCESS;
}

/// What a file is once it was loaded and saved.
std::string Normalized(const std::string& bytes)
{
    TranslationFile file;
    file.get = bytes.substr(0, 256);
    file.put = bytes.substr(256, 256);
    file.flags = NumberAt<DWORD>(bytes, kHeader + 12) & 15;
    for (size_t i = 0; i < std::size(file.last); ++i)
        file.last[i] = NumberAt<DWORD>(bytes, kHeader + 16 + 4 * i);
    file.description = bytes.substr(kDescription, 63).c_str();
    if (file.description.empty())
        file.description = kNewDescription;
    return file.Bytes();
}

} // namespace

class TranslateMutation : public TranslateTest {};

TEST_F(TranslateMutation, ReadsAWholeTableOrNothing)
{
    unsigned accepted = 0;
    const auto check = [&](unsigned, Random& random) {
        const std::string bytes = MakeFile(random);
        m_folder.Write("table.iot", bytes);
        const DWORD status = Judge(bytes);
        CGblTranslate translation;
        translation.EnablePut(TRUE);
        const std::string before = ImageOf(translation);
        EXPECT_EQ(status, CGblTranslate::IsValidFile(m_file.c_str()));
        EXPECT_EQ(status, translation.Load(m_file.c_str()));
        if (status != ZO_TRANSLATE_SUCCESS) {
            EXPECT_EQ(before, ImageOf(translation));
        } else {
            EXPECT_EQ(Normalized(bytes) + m_file, ImageOf(translation));
            if (++accepted % kCasesPerSave == 0) {
                EXPECT_EQ(ZO_TRANSLATE_SUCCESS, translation.Save(nullptr));
                EXPECT_EQ(Normalized(bytes), m_folder.Read("table.iot"));
            }
        }
        return status == ZO_TRANSLATE_SUCCESS;
    };
    ForEachMutation(check, {.leastPercent = 25, .mostPercent = 75});
}
