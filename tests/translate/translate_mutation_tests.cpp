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
    for (unsigned changes = 1 + random() % 4; changes > 0; --changes) {
        switch (random() % 8) {
        case 0: // somewhere in the tables
        case 1:
            bytes[random() % kHeader] = static_cast<char>(random());
            break;
        case 2: // a bit of the header
            bytes[kHeader + random() % 96] ^= static_cast<char>(1 << random() % 8);
            break;
        case 3: // a number of the header
        case 4:
            bytes.replace(kHeader + random() % 8 * 4, 4, LittleEndian(numbers[random() % std::size(numbers)]));
            break;
        case 5: // the description, up to its last byte and with lead bytes
            for (size_t at = kDescription + random() % 64; at < kTranslationFileSize; ++at)
                bytes[at] = static_cast<char>(random() | 0x80);
            break;
        case 6: // the length
            bytes.resize(random() % 3 == 0 ? random() % 1300 : kTranslationFileSize - 1 + random() % 3);
            bytes.resize((std::max)(bytes.size(), size_t{1}));
            break;
        default: // as it is
            break;
        }
        if (bytes.size() != kTranslationFileSize)
            break;
    }
    return bytes;
}

DWORD NumberAt(const std::string& bytes, size_t offset)
{
    DWORD number = 0;
    for (size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<BYTE>(bytes[offset + i]);
    return number;
}

DWORD Judge(const std::string& bytes)
{
    if (bytes.size() != kTranslationFileSize)
        return ZO_TRANSLATE_WRONG_LENGTH;
    if (NumberAt(bytes, kHeader) < 96)
        return ZO_TRANSLATE_SHORT_HEADER;
    if (NumberAt(bytes, kHeader + 4) != 0x05241963)
        return ZO_TRANSLATE_WRONG_MAGIC;
    return NumberAt(bytes, kHeader + 8) > 0x00010000 ? ZO_TRANSLATE_NEWER_VERSION : ZO_TRANSLATE_SUCCESS;
}

/// What a file is once it was loaded and saved.
std::string Normalized(const std::string& bytes)
{
    TranslationFile file;
    file.get = bytes.substr(0, 256);
    file.put = bytes.substr(256, 256);
    file.flags = NumberAt(bytes, kHeader + 12) & 15;
    for (size_t i = 0; i < std::size(file.last); ++i)
        file.last[i] = NumberAt(bytes, kHeader + 16 + 4 * i);
    file.description = bytes.substr(kDescription, 63).c_str();
    if (file.description.empty())
        file.description = kNewDescription;
    return file.Bytes();
}

} // namespace

class TranslateMutation : public TranslateTest {};

TEST_F(TranslateMutation, ReadsAWholeTableOrNothing)
{
    const std::string saved = m_folder.Path("saved.iot");
    unsigned accepted = 0;
    ForEachMutation([&](unsigned, Random& random) {
        const std::string bytes = MakeFile(random);
        m_folder.Write("table.iot", bytes);
        const DWORD status = Judge(bytes);
        CGblTranslate translation;
        translation.EnablePut(TRUE);
        const std::string before = ImageOf(translation);
        EXPECT_EQ(status, translation.Load(m_file.c_str()));
        if (status != ZO_TRANSLATE_SUCCESS) {
            EXPECT_EQ(before, ImageOf(translation));
        } else {
            EXPECT_EQ(Normalized(bytes) + m_file, ImageOf(translation));
            if (++accepted % kCasesPerSave == 0) {
                EXPECT_EQ(ZO_TRANSLATE_SUCCESS, translation.Save(saved.c_str()));
                EXPECT_EQ(Normalized(bytes), m_folder.Read("saved.iot"));
            }
        }
        return status == ZO_TRANSLATE_SUCCESS;
    });
}
