#include "kept_file.h"

#include <zogbl/operating_system.h>

#include "ground/open_security.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr DWORD kLongest = 16 * 1024 * 1024; // bytes: no file that an editor edits comes near it
constexpr char kMagic[8] = {'Z', 'O', 'K', 'E', 'P', 'T', '0', '1'};

/// The beginning of a copy; the bytes stand behind it.
struct CopyHeader {
    char magic[sizeof kMagic];
    DWORD length;
    DWORD sum;
    char name[MAX_PATH]; // of the file, without its folder
};

DWORD SumOf(const BYTE* data, DWORD length)
{
    DWORD sum = 2166136261u;
    for (DWORD i = 0; i < length; ++i)
        sum = (sum ^ data[i]) * 16777619u;
    return sum;
}

CString NameOf(const CString& path) { return path.Mid((std::max)(path.ReverseFind('\\'), path.ReverseFind(':')) + 1); }

CString CopyPathOf(const CString& path)
{
    if (CZoGlobalOperatingSystem::GetType() != ZO_OS_WIN32S)
        return path + ".zo~";
    const int dot = path.ReverseFind('.'); // names of eight and three characters
    return dot > path.ReverseFind('\\') ? path.Left((std::min)(dot + 3, path.GetLength())) + '~' : path + ".~";
}

CopyHeader HeaderOf(const CString& path, const BYTE* data, DWORD length)
{
    CopyHeader header = {};
    std::memcpy(header.magic, kMagic, sizeof kMagic);
    header.length = length;
    header.sum = SumOf(data, length);
    lstrcpynA(header.name, NameOf(path), sizeof header.name);
    return header;
}

bool WriteAll(HANDLE file, const void* data, DWORD length)
{
    DWORD written = 0;
    return WriteFile(file, data, length, &written, nullptr) && written == length;
}

/// \return whether the whole length could be read.
bool ReadAll(HANDLE file, void* data, DWORD length)
{
    DWORD read = 0;
    return ReadFile(file, data, length, &read, nullptr) && read == length;
}

bool ReadHeader(HANDLE copy, CopyHeader& header)
{
    if (!ReadAll(copy, &header, sizeof header) || std::memcmp(header.magic, kMagic, sizeof kMagic) != 0)
        return false;
    header.name[sizeof header.name - 1] = '\0';
    return true;
}

} // namespace

KeptFile::KeptFile(LPCSTR path) : m_csPath(path), m_csCopyPath(m_csPath.IsEmpty() ? CString() : CopyPathOf(m_csPath)) {}

bool KeptFile::Bytes::operator==(const Bytes& other) const
{
    return (data != nullptr) == (other.data != nullptr) && length == other.length &&
           (length == 0 || std::memcmp(data.get(), other.data.get(), length) == 0);
}

bool KeptFile::ReadBytes(HANDLE file, DWORD length, Bytes& bytes)
{
    if (length > kLongest)
        return false;
    bytes.data.reset(new (std::nothrow) BYTE[length + 1]); // also for an empty file
    if (!bytes.data)
        return false;
    bytes.length = length;
    return ReadAll(file, bytes.data.get(), length);
}

/// \return FALSE if the file is there but cannot be read.
bool KeptFile::ReadFileAt(LPCSTR path, Bytes& bytes)
{
    const SystemHandle file(
        CreateFileA(path, GENERIC_READ, kSharedByAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.IsOpen())
        return ReadBytes(file, GetFileSize(file, nullptr), bytes);
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

/// The bytes of a whole copy of this file. \param isFree whether nothing is lost if the copy is written over: it is
/// empty, or was cut before the file was touched.
bool KeptFile::ReadCopy(Bytes& bytes, bool& isFree) const
{
    const DWORD size = GetFileSize(m_copy, nullptr);
    CopyHeader header;
    isFree = size == 0;
    SetFilePointer(m_copy, 0, nullptr, FILE_BEGIN);
    if (!ReadHeader(m_copy, header) || NameOf(m_csPath).CompareNoCase(header.name) != 0)
        return false;
    isFree = true;
    return size == sizeof header + header.length && ReadBytes(m_copy, header.length, bytes) &&
           SumOf(bytes.data.get(), header.length) == header.sum;
}

bool KeptFile::WriteCopy() const
{
    const CopyHeader header = HeaderOf(m_csPath, m_bytes.data.get(), m_bytes.length);
    SetFilePointer(m_copy, 0, nullptr, FILE_BEGIN);
    return SetEndOfFile(m_copy) && WriteAll(m_copy, &header, sizeof header) &&
           WriteAll(m_copy, m_bytes.data.get(), m_bytes.length) && FlushFileBuffers(m_copy);
}

BOOL KeptFile::Keep()
{
    if (m_csPath.IsEmpty())
        return TRUE;
    if (!ReadFileAt(m_csPath, m_bytes))
        return FALSE;
    m_copy.Close();
    const HANDLE copy = CreateFileA(m_csCopyPath, GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    m_bytes.data ? OPEN_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (copy == INVALID_HANDLE_VALUE)
        return GetLastError() != ERROR_SHARING_VIOLATION;
    *m_copy.Receive() = copy;
    Bytes older;
    bool isFree = false;
    if (ReadCopy(older, isFree)) {
        m_state = Copy::kOlder;
        return TRUE;
    }
    if (!isFree) {
        m_copy.Close();
        return TRUE;
    }
    m_state = Copy::kOwn;
    if (m_bytes.data && WriteCopy())
        return TRUE;
    RemoveCopy();
    return !m_bytes.data;
}

void KeptFile::Drop()
{
    if (m_state != Copy::kNone)
        RemoveCopy();
}

/// Also if it cannot be deleted, it is no copy any more.
void KeptFile::RemoveCopy()
{
    SetFilePointer(m_copy, 0, nullptr, FILE_BEGIN);
    SetEndOfFile(m_copy);
    m_copy.Close();
    DeleteFileA(m_csCopyPath);
    m_state = Copy::kNone;
}

bool KeptFile::WriteBack() const
{
    if (!m_bytes.data)
        return DeleteFileA(m_csPath) != FALSE;
    SystemHandle file(
        CreateFileA(m_csPath, GENERIC_WRITE, kSharedByAll, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.IsOpen() && WriteAll(file, m_bytes.data.get(), m_bytes.length) && SetEndOfFile(file) &&
           FlushFileBuffers(file) && file.Close() == 0;
}

SaveResult KeptFile::PutBack()
{
    Bytes now;
    const bool isUnchanged = ReadFileAt(m_csPath, now) && now == m_bytes;
    if (!isUnchanged && !WriteBack()) {
        const bool isInCopy = m_state == Copy::kOwn;
        m_copy.Close();
        return isInCopy ? SaveResult::kCopyLeft : SaveResult::kLost;
    }
    if (m_state == Copy::kOwn)
        RemoveCopy();
    m_copy.Close();
    return SaveResult::kUnchanged;
}

BOOL KeptFile::Find()
{
    if (m_csPath.IsEmpty())
        return FALSE;
    const HANDLE copy = CreateFileA(m_csCopyPath, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (copy == INVALID_HANDLE_VALUE)
        return FALSE;
    *m_copy.Receive() = copy;
    bool isFree = false;
    if (!ReadCopy(m_bytes, isFree)) {
        m_copy.Close();
        return FALSE;
    }
    m_state = Copy::kOwn;
    Bytes now;
    if (ReadFileAt(m_csPath, now) && now == m_bytes) {
        RemoveCopy();
        return FALSE;
    }
    return TRUE;
}

CString KeptFile::OwnerOf(LPCSTR copy, DWORD& length)
{
    const SystemHandle file(
        CreateFileA(copy, GENERIC_READ, kSharedByAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    CopyHeader header;
    if (!file.IsOpen() || !ReadHeader(file, header))
        return CString();
    length = header.length;
    return header.name;
}
