#include <zogbl/ini_file.h>

#include <common/without_throwing.h>

#include "ground/bounded_text.h"
#include "profile_lines.h"
#include "profile_text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

// Bytes that hold the longest text of the types that are made of numbers.
constexpr size_t kNumbersTextSize = 128;

/// Stores \p text in a member, unless it is too long for it.
template <size_t SIZE> bool Store(char (&member)[SIZE], LPCSTR text)
{
    const size_t length = strnlen(text, SIZE);
    if (length == SIZE)
        return false;
    std::memmove(member, text, length);
    member[length] = '\0';
    return true;
}

/// Copies a member to a caller's buffer, which must be as large as the member.
template <size_t SIZE> DWORD CopyTo(LPSTR buffer, DWORD size, const char (&member)[SIZE])
{
    if (buffer == nullptr)
        return ZO_INI_NULL_BUFFER;
    if (size < SIZE)
        return ZO_INI_TRUNCATED;
    std::memcpy(buffer, member, std::strlen(member) + 1);
    return ZO_INI_SUCCESS;
}

/// Adds the names of a list that ends at \p end. What a line that begins with "=" adds to it, an empty name, is no
/// name.
void AddNames(CStringArray& names, LPCSTR list, LPCSTR end)
{
    const auto forEachName = [=](auto add) {
        for (LPCSTR name = list; name < end; name += std::strlen(name) + 1) {
            if (*name != '\0')
                add(name);
        }
    };
    INT_PTR count = 0;
    forEachName([&](LPCSTR) { ++count; });
    names.SetSize(count); // at once instead of growing on the way
    INT_PTR i = 0;
    forEachName([&](LPCSTR name) { names.SetAt(i++, name); });
}

/// Adds the keys of a section's lines, as much of them as a list of names has room for.
void AddKeysOfLines(CStringArray& keys, LPCSTR section, LPCSTR fileName)
{
    ProfileLines lines;
    lines.Read(section, fileName);
    char key[ZO_INI_VALUE_SIZE - 1];
    size_t room = sizeof key;
    for (const ProfileLine& line : lines.Get()) {
        if (!line.hasValue || line.name.empty())
            continue;
        CopyBounded(key, room, line.name.data());
        keys.Add(key);
        room -= (std::min)(room, std::strlen(key) + 1);
        if (room <= 1)
            break;
    }
}

/// Puts tokens in place of what the array holds. \p text and \p delimiters may be in it.
void ReplaceByTokens(CStringArray& tokens, LPCSTR text, LPCSTR delimiters)
{
    const INT_PTR before = tokens.GetSize();
    for (;;) {
        const std::string_view token = NextToken(text, delimiters);
        if (token.empty())
            break;
        tokens.Add(CString(token.data(), static_cast<int>(token.size())));
    }
    tokens.RemoveAt(0, before);
}

/// Fills an array. \return FALSE when memory has run out; it is empty then
template <class ADD> bool Fill(CStringArray& array, ADD add)
{
    const BOOL filled = WithoutThrowing(add);
    if (!filled)
        array.RemoveAll();
    return filled;
}

} // namespace

/// How a type of value stands in the file.
template <class VALUE> struct CZoIniFile::Format {
    DWORD type;
    VALUE Value::*member; ///< where the value is kept
    DWORD readSize;       ///< of the buffer that the text is read to
    void (*write)(char (&text)[kNumbersTextSize], const VALUE& value);
    void (*read)(LPCSTR text, VALUE& value); ///< \p value holds the default
};

CZoIniFile::CZoIniFile()
    : m_szFileName{}, m_szSection{}, m_szKey{}, m_dwValueType(0), m_dwLastResult(0), m_uInput{}, m_uOutput{}
{
}

CZoIniFile::~CZoIniFile() { CZoIniFile::FlushCache(); }

// What the operations share -------------------------------------------------------------------------------------------

/// Begins an operation on an entry. \param argumentStatus what is wrong with the other arguments, 0 for nothing.
DWORD CZoIniFile::Begin(const char* key, DWORD type, DWORD argumentStatus)
{
    m_dwValueType = type;
    if (key == nullptr)
        return ZO_INI_NULL_KEY;
    if (!Store(m_szKey, key))
        return ZO_INI_KEY_TOO_LONG;
    if (argumentStatus != ZO_INI_SUCCESS)
        return argumentStatus;
    return m_szFileName[0] != '\0' ? ZO_INI_SUCCESS : ZO_INI_NO_FILE;
}

/// Has the system write to the output value, \p size bytes at most. \return the length that it tells, if there is room
DWORD CZoIniFile::ReadProfile(const char* section, const char* key, DWORD size)
{
    char* text = m_uOutput.szText;
    text[0] = '\0';
    text[size - 2] = '\0'; // stays as it was where a character of two bytes no longer fits
    const DWORD length = GetPrivateProfileStringA(section, key, "", text, size, m_szFileName);
    text[size - 1] = '\0';
    return (std::min)(length, size - 1);
}

/// Reads the entry's text to the output value.
DWORD CZoIniFile::ReadEntry(DWORD size)
{
    const bool isRead = ReadProfile(m_szSection, m_szKey, size) != 0 && m_uOutput.szText[0] != '\0';
    return isRead ? ZO_INI_SUCCESS : ZO_INI_NOT_FOUND;
}

DWORD CZoIniFile::WriteEntry(const char* text)
{
    const BOOL written = WritePrivateProfileStringA(m_szSection, m_szKey, text, m_szFileName);
    return written ? ZO_INI_SUCCESS : ZO_INI_NOT_WRITTEN;
}

template <class VALUE>
DWORD CZoIniFile::DoValue(const char* key, int read, const VALUE* input, VALUE* output, const Format<VALUE>& format)
{
    const bool lacksArgument = input == nullptr || (read != 0 && output == nullptr);
    m_dwLastResult = Begin(key, format.type, lacksArgument ? ZO_INI_NULL_ARGUMENT : ZO_INI_SUCCESS);
    if (m_dwLastResult != ZO_INI_SUCCESS) {
        if (read != 0 && !lacksArgument)
            *output = *input;
        return m_dwLastResult;
    }
    VALUE value = *input;
    m_uInput.*format.member = value;
    if (read == 0) {
        char text[kNumbersTextSize];
        format.write(text, value);
        return m_dwLastResult = WriteEntry(text);
    }
    m_dwLastResult = ReadEntry(format.readSize);
    if (m_dwLastResult == ZO_INI_SUCCESS)
        format.read(m_uOutput.szText, value);
    m_uOutput.*format.member = value;
    *output = value;
    return m_dwLastResult;
}

// Texts ---------------------------------------------------------------------------------------------------------------

/// Writes a text or reads one. \param text set to what the caller's output is to hold, null for nothing.
DWORD CZoIniFile::DoText(const char* key, int read, const char* input, bool hasOutput, const char*& text)
{
    text = read != 0 && hasOutput ? input : nullptr;
    const bool lacksArgument = input == nullptr || (read != 0 && !hasOutput);
    DWORD status = lacksArgument ? ZO_INI_NULL_ARGUMENT : ZO_INI_SUCCESS;
    if (input != nullptr && !Store(m_uInput.szText, input))
        status = ZO_INI_TOO_LONG;
    status = Begin(key, ZO_INI_TYPE_STRING, status);
    if (status != ZO_INI_SUCCESS)
        return status;
    if (read == 0)
        return WriteEntry(m_uInput.szText);
    status = ReadEntry(sizeof m_uOutput.szText);
    if (status == ZO_INI_NOT_FOUND)
        Store(m_uOutput.szText, m_uInput.szText);
    text = m_uOutput.szText;
    return status;
}

DWORD CZoIniFile::DoString(const char* key, int read, const char* input, char* output, DWORD size)
{
    LPCSTR text = nullptr;
    m_dwLastResult = DoText(key, read, input, output != nullptr, text);
    if (text == nullptr)
        return m_dwLastResult;
    if (text != input && size < std::strlen(text)) // not <=: see the header
        m_dwLastResult = ZO_INI_TRUNCATED;
    if (size > 0)
        CopyBounded(output, size, text);
    return m_dwLastResult;
}

DWORD CZoIniFile::DoTokenString(const char* key, int read, const char* input, CStringArray* output,
                                const char* delimiters)
{
    LPCSTR text = nullptr;
    m_dwLastResult = DoText(key, read, input, output != nullptr && delimiters != nullptr, text);
    if (text != nullptr && !Fill(*output, [&] { ReplaceByTokens(*output, text, delimiters); }))
        m_dwLastResult = ZO_INI_OUT_OF_MEMORY;
    return m_dwLastResult;
}

// Single numbers ------------------------------------------------------------------------------------------------------

DWORD CZoIniFile::DoInteger(const char* key, int read, int input, int* output)
{
    static constexpr Format<int> kFormat = {
        ZO_INI_TYPE_INTEGER, &Value::nNumber, 40,
        [](char(&text)[kNumbersTextSize], const int& value) { std::snprintf(text, sizeof text, "%d", value); },
        [](LPCSTR text, int& value) { value = static_cast<int>(ReadNumber(text)); }};
    return DoValue(key, read, &input, output, kFormat);
}

DWORD CZoIniFile::DoLongWord(const char* key, int read, DWORD input, DWORD* output)
{
    static constexpr Format<DWORD> kFormat = {
        ZO_INI_TYPE_LONG_WORD, &Value::dwNumber, 40,
        [](char(&text)[kNumbersTextSize], const DWORD& value) { std::snprintf(text, sizeof text, "%lu", value); },
        [](LPCSTR text, DWORD& value) { value = ReadNumber(text); }};
    return DoValue(key, read, &input, output, kFormat);
}

DWORD CZoIniFile::DoBoolean(const char* key, int read, BOOL input, BOOL* output)
{
    static constexpr Format<BOOL> kFormat = {
        ZO_INI_TYPE_BOOLEAN, &Value::nNumber, 8,
        [](char(&text)[kNumbersTextSize], const BOOL& value) { CopyBounded(text, sizeof text, value ? "1" : "0"); },
        [](LPCSTR text, BOOL& value) { value = ReadBoolean(text) ? TRUE : FALSE; }};
    return DoValue(key, read, &input, output, kFormat);
}

DWORD CZoIniFile::DoHexadecimal(const char* key, int read, DWORD input, DWORD* output)
{
    static constexpr Format<DWORD> kFormat = {
        ZO_INI_TYPE_HEXADECIMAL, &Value::dwNumber, ZO_INI_VALUE_SIZE,
        [](char(&text)[kNumbersTextSize], const DWORD& value) { std::snprintf(text, sizeof text, "0x%08lX", value); },
        [](LPCSTR text, DWORD& value) { value = ReadHexadecimal(text); }};
    return DoValue(key, read, &input, output, kFormat);
}

// Several numbers -----------------------------------------------------------------------------------------------------

DWORD CZoIniFile::ZoIniFileTime(const char* key, int read, const SYSTEMTIME* input, SYSTEMTIME* output)
{
    static constexpr Format<SYSTEMTIME> kFormat = {
        ZO_INI_TYPE_TIME, &Value::time, 128,
        [](char(&text)[kNumbersTextSize], const SYSTEMTIME& value) {
            std::snprintf(text, sizeof text, "%d, %d, %d, %d, %d, %d, %d, %d", value.wYear, value.wMonth,
                          value.wDayOfWeek, value.wDay, value.wHour, value.wMinute, value.wSecond, value.wMilliseconds);
        },
        [](LPCSTR text, SYSTEMTIME& value) {
            WORD* const fields[] = {&value.wYear, &value.wMonth,  &value.wDayOfWeek, &value.wDay,
                                    &value.wHour, &value.wMinute, &value.wSecond,    &value.wMilliseconds};
            LONG numbers[std::size(fields)];
            std::transform(std::begin(fields), std::end(fields), numbers, [](const WORD* field) { return *field; });
            ReadNumbers(text, numbers);
            for (size_t i = 0; i < std::size(fields); ++i)
                *fields[i] = static_cast<WORD>(numbers[i]);
        }};
    if (read == 0 || input == nullptr || output == nullptr)
        return DoValue(key, read, input, output, kFormat);
    const SYSTEMTIME defaultTime = *input; // input and output may be one
    const DWORD status = DoValue(key, read, input, output, kFormat);
    if (status == ZO_INI_SUCCESS) {
        // What was read stays in here. The caller gets the default back; see the header.
        m_uInput.time = *output;
        m_uOutput.time = *output = defaultTime;
    }
    return status;
}

DWORD CZoIniFile::ZoIniFileRectangle(const char* key, int read, const RECT* input, RECT* output)
{
    static constexpr Format<RECT> kFormat = {ZO_INI_TYPE_RECTANGLE, &Value::rectangle, 40,
                                             [](char(&text)[kNumbersTextSize], const RECT& value) {
                                                 std::snprintf(text, sizeof text, "%ld, %ld, %ld, %ld", value.left,
                                                               value.top, value.right, value.bottom);
                                             },
                                             [](LPCSTR text, RECT& value) {
                                                 LONG numbers[] = {value.left, value.top, value.right, value.bottom};
                                                 ReadNumbers(text, numbers);
                                                 value = {numbers[0], numbers[1], numbers[2], numbers[3]};
                                             }};
    return DoValue(key, read, input, output, kFormat);
}

DWORD CZoIniFile::ZoIniFileColor(const char* key, int read, const COLORREF* input, COLORREF* output)
{
    static constexpr Format<COLORREF> kFormat = {
        ZO_INI_TYPE_COLOR, &Value::dwNumber, 16,
        [](char(&text)[kNumbersTextSize], const COLORREF& value) {
            std::snprintf(text, sizeof text, "%d %d %d", GetRValue(value), GetGValue(value), GetBValue(value));
        },
        [](LPCSTR text, COLORREF& value) {
            LONG numbers[] = {GetRValue(value), GetGValue(value), GetBValue(value)};
            ReadNumbers(text, numbers);
            value = RGB(numbers[0], numbers[1], numbers[2]); // keeps the low byte of each
        }};
    return DoValue(key, read, input, output, kFormat);
}

DWORD CZoIniFile::ZoIniFileAccelerator(const char* key, int read, const ACCEL* input, ACCEL* output)
{
    static constexpr Format<ACCEL> kFormat = {ZO_INI_TYPE_ACCELERATOR, &Value::accelerator, 40,
                                              [](char(&text)[kNumbersTextSize], const ACCEL& value) {
                                                  std::snprintf(text, sizeof text, "%d, %d, %d", value.fVirt, value.key,
                                                                value.cmd);
                                              },
                                              [](LPCSTR text, ACCEL& value) {
                                                  LONG numbers[] = {value.fVirt, value.key, value.cmd};
                                                  ReadNumbers(text, numbers);
                                                  value.fVirt = static_cast<BYTE>(numbers[0]);
                                                  value.key = static_cast<WORD>(numbers[1]);
                                                  value.cmd = static_cast<WORD>(numbers[2]);
                                              }};
    return DoValue(key, read, input, output, kFormat);
}

DWORD CZoIniFile::ZoIniFileWindowPlacement(const char* key, int read, const WINDOWPLACEMENT* input,
                                           WINDOWPLACEMENT* output)
{
    static constexpr Format<WINDOWPLACEMENT> kFormat = {
        ZO_INI_TYPE_WINDOW_PLACEMENT, &Value::placement, 128,
        [](char(&text)[kNumbersTextSize], const WINDOWPLACEMENT& value) {
            const RECT& normal = value.rcNormalPosition;
            // Top before left, unlike when it is read: existing files depend on it.
            std::snprintf(text, sizeof text, "%u, %u, %ld, %ld, %ld, %ld, %ld, %ld, %ld, %ld", value.flags,
                          value.showCmd, value.ptMinPosition.x, value.ptMinPosition.y, value.ptMaxPosition.x,
                          value.ptMaxPosition.y, normal.top, normal.left, normal.right, normal.bottom);
        },
        [](LPCSTR text, WINDOWPLACEMENT& value) {
            const RECT& normal = value.rcNormalPosition;
            LONG numbers[] = {static_cast<LONG>(value.flags),
                              static_cast<LONG>(value.showCmd),
                              value.ptMinPosition.x,
                              value.ptMinPosition.y,
                              value.ptMaxPosition.x,
                              value.ptMaxPosition.y,
                              normal.left,
                              normal.top,
                              normal.right,
                              normal.bottom};
            ReadNumbers(text, numbers);
            value.flags = static_cast<UINT>(numbers[0]);
            value.showCmd = static_cast<UINT>(numbers[1]);
            value.ptMinPosition = {numbers[2], numbers[3]};
            value.ptMaxPosition = {numbers[4], numbers[5]};
            value.rcNormalPosition = {numbers[6], numbers[7], numbers[8], numbers[9]};
        }};
    return DoValue(key, read, input, output, kFormat);
}

// Names ---------------------------------------------------------------------------------------------------------------

/// \param section null for the names of the sections
DWORD CZoIniFile::Enumerate(const char* section, CStringArray* names)
{
    m_dwValueType = ZO_INI_TYPE_STRING;
    if (names == nullptr)
        return ZO_INI_NULL_ARGUMENT;
    names->RemoveAll();
    if (m_szFileName[0] == '\0')
        return ZO_INI_NO_FILE;
    m_uOutput = {}; // nothing of it counts as a name if the system tells of more than it writes
    const DWORD length = ReadProfile(section, nullptr, sizeof m_uOutput.szText);
    const LPCSTR list = m_uOutput.szText;
    const auto add = [&] {
        AddNames(*names, list, list + length);
        // Some systems give no list of keys for a section whose first line has none, though there are keys behind it.
        if (names->IsEmpty() && section != nullptr)
            AddKeysOfLines(*names, section, m_szFileName);
    };
    if (!Fill(*names, add))
        return ZO_INI_OUT_OF_MEMORY;
    if (names->IsEmpty())
        return ZO_INI_NOT_FOUND;
    constexpr int kCutNameLength = 4094;
    return names->GetAt(0).GetLength() == kCutNameLength ? ZO_INI_TRUNCATED : ZO_INI_SUCCESS;
}

DWORD CZoIniFile::EnumerateSections(CStringArray* sections) { return m_dwLastResult = Enumerate(nullptr, sections); }

DWORD CZoIniFile::EnumerateKeys(CStringArray* keys) { return m_dwLastResult = Enumerate(m_szSection, keys); }

// Entries and sections ------------------------------------------------------------------------------------------------

BOOL CZoIniFile::DoesEntryExist(const char* key)
{
    if (Begin(key, ZO_INI_TYPE_STRING, ZO_INI_SUCCESS) != ZO_INI_SUCCESS)
        return FALSE;
    constexpr DWORD kEnoughToTell = 8;
    m_dwLastResult = ReadEntry(kEnoughToTell);
    return m_dwLastResult == ZO_INI_SUCCESS;
}

BOOL CZoIniFile::DeleteEntry(const char* key)
{
    if (key != nullptr && *key != '\0' && m_szSection[0] != '\0' && m_szFileName[0] != '\0')
        WritePrivateProfileStringA(m_szSection, key, nullptr, m_szFileName);
    return TRUE;
}

BOOL CZoIniFile::DeleteSection(const char* section)
{
    if (section != nullptr && *section != '\0' && m_szFileName[0] != '\0')
        WritePrivateProfileStringA(section, nullptr, nullptr, m_szFileName);
    return TRUE;
}

void CZoIniFile::FlushCache()
{
    if (m_szFileName[0] != '\0')
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, m_szFileName);
}

// File and section ----------------------------------------------------------------------------------------------------

DWORD CZoIniFile::GetFileName(char* buffer, DWORD size) { return CopyTo(buffer, size, m_szFileName); }
DWORD CZoIniFile::SetFileName(const char* name)
{
    if (name == nullptr)
        return ZO_INI_NULL_FILE_NAME;
    return Store(m_szFileName, name) ? ZO_INI_SUCCESS : ZO_INI_TOO_LONG;
}

DWORD CZoIniFile::GetSection(char* buffer, DWORD size) { return CopyTo(buffer, size, m_szSection); }
DWORD CZoIniFile::SetSection(const char* name)
{
    if (name == nullptr)
        return ZO_INI_NULL_SECTION;
    return Store(m_szSection, name) ? ZO_INI_SUCCESS : ZO_INI_TOO_LONG;
}
