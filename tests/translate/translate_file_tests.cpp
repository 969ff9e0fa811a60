// Tables, and the files that they are kept in, byte for byte.
#include "support/test.h"
#include "translate_fixture.h"

namespace {

class Translate : public TranslateTest {};

} // namespace

TEST_F(Translate, TranslatesWhatIsEnabled)
{
    CGblTranslate translation;
    const auto expect = [&](int get, int put) {
        for (int code = 0; code < 256; ++code) {
            const auto byte = static_cast<BYTE>(code);
            EXPECT_EQ(get < 0 ? code : static_cast<BYTE>(get ^ code), translation.DoGet(byte));
            EXPECT_EQ(put < 0 ? code : static_cast<BYTE>(put ^ code), translation.DoPut(byte));
        }
    };
    translation.EnableGet(-5);
    translation.EnablePut(0x100);
    EXPECT_EQ(1, translation.IsGetEnabled());
    EXPECT_EQ(1, translation.IsPutEnabled());
    expect(0, 0); // the identity
    for (int code = 0; code < 256; ++code) {
        translation.SetInputValue(static_cast<BYTE>(code), static_cast<BYTE>(code ^ 0x5A));
        translation.SetOutputValue(static_cast<BYTE>(code), static_cast<BYTE>(code ^ 0xFF));
    }
    translation.EnableGetDBCS(2); // kept, of no effect
    translation.EnablePutDBCS(4);
    EXPECT_EQ(1, translation.IsGetDBCSEnabled());
    EXPECT_EQ(1, translation.IsPutDBCSEnabled());
    expect(0x5A, 0xFF);
    translation.EnableGet(0);
    expect(-1, 0xFF);
    translation.EnableGet(1);
    translation.EnablePut(0);
    expect(0x5A, -1);
    translation.EnablePut(1);
    translation.ResetGetTable();
    expect(0, 0xFF);
    translation.ResetPutTable();
    expect(0, 0);
}

TEST_F(Translate, CopiesEverything)
{
    TranslationFile file;
    file.flags = 0b0110;
    file.last[0] = 65;
    file.last[3] = 1;
    m_folder.Write("table.iot", file.Bytes());
    CGblTranslate source;
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, source.Load(m_file.c_str()));
    const std::string image = ImageOf(source);
    CGblTranslate copy;
    copy.CopyData(&source);
    EXPECT_EQ(image, ImageOf(copy));
    copy.CopyData(nullptr);
    copy.CopyData(&copy);
    copy.SetDescription(nullptr);
    copy.SetFilePath(nullptr);
    EXPECT_EQ(image, ImageOf(copy));
    EXPECT_EQ(file.put[7], static_cast<char>(copy.DoPut(7))) << "in force";
}

TEST_F(Translate, CutsDescriptionsAtWholeCharacters)
{
    const std::string kanji = "\x95\x5C"; // its second byte is a backslash
    const std::pair<std::string, size_t> rows[] = {
        {std::string(63, 'a'), 63},
        {std::string(64, 'a'), 63},
        {std::string(500, 'a'), 63},
        {std::string(61, 'a') + kanji, 63},
        {std::string(62, 'a') + kanji, IsDoubleByte() ? 62 : 63},
    };
    for (const auto& [description, kept] : rows) {
        CGblTranslate translation;
        translation.SetDescription(description.c_str());
        EXPECT_EQ(ZO_TRANSLATE_SUCCESS, translation.Save(m_file.c_str()));
        CString text;
        translation.GetDescription(text);
        EXPECT_EQ(description, std::string(text)) << "the object keeps all of it";
        EXPECT_EQ(description.substr(0, kept) + std::string(64 - kept, '\0'), m_folder.Read("table.iot").substr(544));
    }
}

TEST_F(Translate, NeedsAFileThatItCanOpen)
{
    m_folder.Write("table.iot", TranslationFile().Bytes());
    const std::string folder = m_folder.Path(), missing = m_folder.Path("none.iot"), nowhere = folder + "\\no\\x.iot";
    const std::pair<DWORD, const char*> rows[] = {
        {ZO_TRANSLATE_NO_NAME, nullptr},
        {ZO_TRANSLATE_NO_NAME, ""},
        {ZO_TRANSLATE_NOT_OPENED, nowhere.c_str()},
        {ZO_TRANSLATE_NOT_OPENED, folder.c_str()},
        {ZO_TRANSLATE_NOT_OPENED, m_file.c_str()}, // held
    };
    {
        const CFile held(m_file.c_str(), CFile::modeRead | CFile::shareExclusive);
        for (const auto& [status, path] : rows) {
            SCOPED_TRACE(path != nullptr ? path : "(null)");
            CGblTranslate translation;
            const std::string image = ImageOf(translation);
            EXPECT_EQ(status, translation.Save(path));
            EXPECT_EQ(status, CGblTranslate::IsValidFile(path));
            EXPECT_EQ(status, translation.Load(path));
            EXPECT_EQ(image, ImageOf(translation));
        }
    }
    EXPECT_EQ(TranslationFile().Bytes(), m_folder.Read("table.iot"));
    EXPECT_EQ(ZO_TRANSLATE_NOT_OPENED, CGblTranslate().Load(missing.c_str()));
    CGblTranslate translation;
    translation.SetFilePath(m_file.c_str());
    EXPECT_EQ(ZO_TRANSLATE_NO_NAME, translation.Load("")) << "only null stands for the object's path";
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, translation.Load(nullptr));
    EXPECT_EQ(TranslationFile().Bytes() + m_file, ImageOf(translation));

    // Others may have the file open, if they allow that.
    const HANDLE shared = CreateFileA(m_file.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, translation.Load(m_file.c_str()));
    EXPECT_EQ(ZO_TRANSLATE_SUCCESS, translation.Save(m_file.c_str()));
    CloseHandle(shared);
}

TEST_F(Translate, SurvivesMissingMemory)
{
    TranslationFile file;
    file.flags = 3;
    m_folder.Write("table.iot", file.Bytes());
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        const DWORD valid = CGblTranslate::IsValidFile(m_file.c_str());
        EXPECT_EQ(run.Fired() ? ZO_TRANSLATE_NO_MEMORY : 0, valid);
        CGblTranslate translation;
        translation.SetDescription("set");
        translation.SetFilePath("C:\\set");
        const DWORD loaded = translation.Load(m_file.c_str());
        run.Stop();
        EXPECT_TRUE(loaded == 0 || (run.Fired() && loaded == ZO_TRANSLATE_NO_MEMORY)) << loaded;
        EXPECT_EQ(loaded == 0, ImageOf(translation) == file.Bytes() + m_file);
        EXPECT_EQ(loaded == 0 ? 3 : 0, translation.IsGetEnabled() | translation.IsPutEnabled() << 1);
    });
    RunFaultLoop(faults, [&](const FaultRun& run) {
        m_folder.Write("table.iot", "before");
        CGblTranslate translation;
        const DWORD saved = translation.Save(m_file.c_str());
        run.Stop();
        EXPECT_TRUE(saved == 0 || (run.Fired() && saved == ZO_TRANSLATE_NO_MEMORY)) << saved;
        EXPECT_EQ(saved == 0 ? ImageOf(translation) : "before" + m_file, m_folder.Read("table.iot") + m_file);
    });
}

TEST_F(Translate, SurvivesFailingFiles)
{
    const TranslationFile file;
    {
        FrameworkFileFaults reading;
        // The calls of IsValidFile: open, size, seek, read. Those of Load behind it: open, and three reads.
        constexpr int kSecondOpen = 5, kGetRead = 6, kPutRead = 7;
        RunFaultLoop(reading, [&](const FaultRun& run) {
            m_folder.Write("table.iot", file.Bytes());
            CGblTranslate translation;
            const std::string before = ImageOf(translation);
            const DWORD status = translation.Load(m_file.c_str());
            const bool isMendedLater = !run.persistent && run.number > 1 && run.number < kSecondOpen;
            run.Stop();
            EXPECT_EQ(run.number == 0 || isMendedLater || !run.Fired() ? 0 : ZO_TRANSLATE_NOT_OPENED, status);
            if (status == 0) {
                EXPECT_EQ(file.Bytes() + m_file, ImageOf(translation));
                return;
            }
            // Tables that were read stay; nothing else has changed.
            std::string expected = before;
            if (run.number > kGetRead)
                expected.replace(0, 256, file.get);
            if (run.number > kPutRead)
                expected.replace(256, 256, file.put);
            EXPECT_EQ(expected, ImageOf(translation));
        });
    }
    for (const BOOL answer : {FALSE, TRUE}) { // of a full disk; it may say that all is well, and write nothing
        FaultSource writing("writing");
        ZO_FAULTY_CALL(CreateFileA) open(writing, "ZOAFX.DLL", INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
        ZO_FAULTY_CALL(WriteFile) write(writing, "ZOAFX.DLL", answer, ERROR_DISK_FULL);
        ZO_FAULTY_CALL(GetFileSize) size(writing, "ZOAFX.DLL", INVALID_FILE_SIZE, ERROR_INVALID_HANDLE);
        RunFaultLoop(writing, [&](const FaultRun& run) {
            m_folder.Write("table.iot", file.Bytes());
            CGblTranslate translation;
            const std::string image = ImageOf(translation);
            const DWORD status = translation.Save(m_file.c_str());
            run.Stop();
            EXPECT_EQ(!run.Fired() ? 0 : run.number == 1 ? ZO_TRANSLATE_NOT_OPENED : ZO_TRANSLATE_NOT_WRITTEN, status);
            EXPECT_EQ(run.number == 1 ? image : image + m_file, ImageOf(translation));
            EXPECT_EQ(run.number == 1, m_folder.Read("table.iot") == file.Bytes());
        });
    }
}
