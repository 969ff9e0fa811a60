#include <zogbl/translate.h>

#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "ground/bounded_text.h"
#include "translate_status.h"

#include <cstring>

namespace {

constexpr DWORD kMagic = 0x05241963;
constexpr DWORD kVersion = 0x00010000;

// Bits of the flags.
constexpr DWORD kGetEnabled = 1;
constexpr DWORD kPutEnabled = 2;
constexpr DWORD kGetDBCS = 4;
constexpr DWORD kPutDBCS = 8;

/// What stands behind the two tables in a file.
struct Header {
    DWORD size;
    DWORD magic;
    DWORD version;
    DWORD flags;
    DWORD lastInput;
    DWORD lastOutput;
    DWORD lastModeI;
    DWORD lastModeO;
    char description[ZO_TRANSLATE_DESCRIPTION_LENGTH + 1];
};
static_assert(sizeof(Header) == 96);

constexpr ULONGLONG kHeaderOffset = 512;
static_assert(kTableFileSize == kHeaderOffset + sizeof(Header));
constexpr UINT kReading = CFile::modeRead | CFile::shareDenyNone;
constexpr UINT kWriting = CFile::modeCreate | CFile::modeWrite | CFile::shareDenyNone;

/// Throws CFileException*, also where the file ends before.
void ReadAll(CFile& file, void* buffer, UINT size)
{
    if (file.Read(buffer, size) != size)
        AfxThrowFileException(CFileException::endOfFile);
}

/// A table is read as a whole or not at all.
template <size_t SIZE> void ReadTable(CFile& file, BYTE (&table)[SIZE])
{
    BYTE read[SIZE];
    ReadAll(file, read, SIZE);
    std::memcpy(table, read, SIZE);
}

template <size_t SIZE> void MakeIdentity(BYTE (&table)[SIZE])
{
    for (size_t i = 0; i < SIZE; ++i)
        table[i] = static_cast<BYTE>(i);
}

/// An assignment that leaves the text as it was where memory lacks.
void Assign(CString& text, const char* value)
{
    if (value != nullptr)
        WithoutThrowing([&] { text = value; });
}

DWORD Judge(const Header& header)
{
    if (header.size < sizeof header)
        return ZO_TRANSLATE_SHORT_HEADER;
    if (header.magic != kMagic)
        return ZO_TRANSLATE_WRONG_MAGIC;
    return header.version > kVersion ? ZO_TRANSLATE_NEWER_VERSION : ZO_TRANSLATE_SUCCESS;
}

} // namespace

CGblTranslate::CGblTranslate()
    : m_bGetEnabled(FALSE), m_bPutEnabled(FALSE), m_bGetDBCS(FALSE), m_bPutDBCS(FALSE), m_dwLastInput(0),
      m_dwLastOutput(0), m_dwLastModeI(ZO_TRANSLATE_HEXADECIMAL), m_dwLastModeO(ZO_TRANSLATE_HEXADECIMAL)
{
    ZoGblLoadString(ZO_IDS_TRANSLATE_NEW, m_csDescription);
    ResetGetTable();
    ResetPutTable();
}

CGblTranslate::~CGblTranslate() = default;

void CGblTranslate::CopyData(CGblTranslate* source)
{
    if (source == nullptr || source == this)
        return;
    m_bGetEnabled = source->m_bGetEnabled;
    m_bPutEnabled = source->m_bPutEnabled;
    m_bGetDBCS = source->m_bGetDBCS;
    m_bPutDBCS = source->m_bPutDBCS;
    m_dwLastInput = source->m_dwLastInput;
    m_dwLastOutput = source->m_dwLastOutput;
    m_dwLastModeI = source->m_dwLastModeI;
    m_dwLastModeO = source->m_dwLastModeO;
    m_csFilePath = source->m_csFilePath;
    m_csDescription = source->m_csDescription;
    std::memcpy(m_byGetTable, source->m_byGetTable, sizeof m_byGetTable);
    std::memcpy(m_byPutTable, source->m_byPutTable, sizeof m_byPutTable);
    PutInForce();
}

/// To be called after every change of a table or its switch.
void CGblTranslate::PutInForce()
{
    for (int code = 0; code < kTableSize; ++code) {
        m_byGetInForce[code] = m_bGetEnabled ? m_byGetTable[code] : static_cast<BYTE>(code);
        m_byPutInForce[code] = m_bPutEnabled ? m_byPutTable[code] : static_cast<BYTE>(code);
    }
}

// Entries and settings ------------------------------------------------------------------------------------------------

unsigned char CGblTranslate::GetInputValue(unsigned char index) const { return m_byGetTable[index]; }
unsigned char CGblTranslate::GetOutputValue(unsigned char index) const { return m_byPutTable[index]; }

void CGblTranslate::SetInputValue(unsigned char index, unsigned char value)
{
    m_byGetTable[index] = value;
    PutInForce();
}

void CGblTranslate::SetOutputValue(unsigned char index, unsigned char value)
{
    m_byPutTable[index] = value;
    PutInForce();
}

void CGblTranslate::ResetGetTable()
{
    MakeIdentity(m_byGetTable);
    PutInForce();
}

void CGblTranslate::ResetPutTable()
{
    MakeIdentity(m_byPutTable);
    PutInForce();
}

void CGblTranslate::EnableGet(int enable)
{
    m_bGetEnabled = enable != 0;
    PutInForce();
}

void CGblTranslate::EnablePut(int enable)
{
    m_bPutEnabled = enable != 0;
    PutInForce();
}

int CGblTranslate::IsGetEnabled() const { return m_bGetEnabled; }
int CGblTranslate::IsPutEnabled() const { return m_bPutEnabled; }
void CGblTranslate::EnableGetDBCS(int enable) { m_bGetDBCS = enable != 0; }
int CGblTranslate::IsGetDBCSEnabled() const { return m_bGetDBCS; }
void CGblTranslate::EnablePutDBCS(int enable) { m_bPutDBCS = enable != 0; }
int CGblTranslate::IsPutDBCSEnabled() const { return m_bPutDBCS; }

void CGblTranslate::SetDescription(const char* description) { Assign(m_csDescription, description); }
void CGblTranslate::GetDescription(CString& description) const { description = m_csDescription; }
void CGblTranslate::SetFilePath(const char* path) { Assign(m_csFilePath, path); }
void CGblTranslate::GetFilePath(CString& path) const { path = m_csFilePath; }

void CGblTranslate::SetLastInput(unsigned long value) { m_dwLastInput = value; }
void CGblTranslate::SetLastOutput(unsigned long value) { m_dwLastOutput = value; }
void CGblTranslate::SetLastModeI(unsigned long value) { m_dwLastModeI = value; }
void CGblTranslate::SetLastModeO(unsigned long value) { m_dwLastModeO = value; }
unsigned long CGblTranslate::GetLastInput() const { return m_dwLastInput; }
unsigned long CGblTranslate::GetLastOutput() const { return m_dwLastOutput; }
unsigned long CGblTranslate::GetLastModeI() const { return m_dwLastModeI; }
unsigned long CGblTranslate::GetLastModeO() const { return m_dwLastModeO; }

// Files ---------------------------------------------------------------------------------------------------------------

unsigned long CGblTranslate::IsValidFile(const char* path)
{
    if (path == nullptr || *path == '\0')
        return ZO_TRANSLATE_NO_NAME;
    return OrNoMemory([&] {
        DWORD status = ZO_TRANSLATE_SUCCESS;
        CFile file;
        if (!file.Open(path, kReading))
            return ZO_TRANSLATE_NOT_OPENED;
        try {
            if (file.GetLength() != kTableFileSize)
                return ZO_TRANSLATE_WRONG_LENGTH;
            Header header = {};
            file.Seek(kHeaderOffset, CFile::begin);
            file.Read(&header, sizeof header);
            status = Judge(header);
        } catch (CFileException* e) {
            e->Delete();
        }
        return status;
    });
}

unsigned long CGblTranslate::Load(const char* path)
{
    return OrNoMemory([&] {
        const CString used = path != nullptr ? CString(path) : m_csFilePath;
        if (used.IsEmpty())
            return ZO_TRANSLATE_NO_NAME;
        if (const DWORD status = IsValidFile(used))
            return status;
        CString description; // before anything changes, since it takes memory
        const LPSTR text = description.GetBuffer(ZO_TRANSLATE_DESCRIPTION_LENGTH);
        CFile file;
        if (!file.Open(used, kReading))
            return ZO_TRANSLATE_NOT_OPENED;
        Header header;
        try {
            ReadTable(file, m_byGetTable);
            ReadTable(file, m_byPutTable);
            ReadAll(file, &header, sizeof header);
        } catch (CFileException* e) {
            e->Delete();
            PutInForce(); // the tables that were read
            return ZO_TRANSLATE_NOT_OPENED;
        }
        header.description[ZO_TRANSLATE_DESCRIPTION_LENGTH] = '\0'; // whatever the file has there
        CopyBounded(text, sizeof header.description, header.description);
        description.ReleaseBuffer();
        if (description.IsEmpty())
            ZoGblLoadString(ZO_IDS_TRANSLATE_NEW, description);
        EnableGet(header.flags & kGetEnabled);
        EnablePut(header.flags & kPutEnabled); // puts the tables in force
        EnableGetDBCS(header.flags & kGetDBCS);
        EnablePutDBCS(header.flags & kPutDBCS);
        m_dwLastInput = header.lastInput;
        m_dwLastOutput = header.lastOutput;
        m_dwLastModeI = header.lastModeI;
        m_dwLastModeO = header.lastModeO;
        m_csDescription = description;
        m_csFilePath = used;
        return ZO_TRANSLATE_SUCCESS;
    });
}

unsigned long CGblTranslate::Save(const char* path)
{
    return OrNoMemory([&] {
        const CString used = path != nullptr ? CString(path) : m_csFilePath;
        if (used.IsEmpty())
            return ZO_TRANSLATE_NO_NAME;
        CFile file;
        if (!file.Open(used, kWriting))
            return ZO_TRANSLATE_NOT_OPENED;
        // From here on memory may lack: what was in the file is gone, so that what can be written must be.
        if (m_csDescription.IsEmpty())
            ZoGblLoadString(ZO_IDS_TRANSLATE_NEW, m_csDescription);
        Header header = {};
        header.size = sizeof header;
        header.magic = kMagic;
        header.version = kVersion;
        header.flags = (m_bGetEnabled ? kGetEnabled : 0) | (m_bPutEnabled ? kPutEnabled : 0) |
                       (m_bGetDBCS ? kGetDBCS : 0) | (m_bPutDBCS ? kPutDBCS : 0);
        header.lastInput = m_dwLastInput;
        header.lastOutput = m_dwLastOutput;
        header.lastModeI = m_dwLastModeI;
        header.lastModeO = m_dwLastModeO;
        CopyBounded(header.description, sizeof header.description, m_csDescription);
        DWORD status = ZO_TRANSLATE_NOT_WRITTEN;
        try {
            file.Write(m_byGetTable, sizeof m_byGetTable);
            file.Write(m_byPutTable, sizeof m_byPutTable);
            file.Write(&header, sizeof header);
            const bool isComplete = file.GetLength() == kTableFileSize;
            file.Close();
            if (isComplete)
                status = ZO_TRANSLATE_SUCCESS;
        } catch (CException* e) {
            e->Delete();
        }
        m_csFilePath = used;
        return status;
    });
}
