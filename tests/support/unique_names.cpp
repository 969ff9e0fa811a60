#include "support/unique_names.h"

#include <gtest/gtest.h>

#include <vector>

namespace zo_test {

namespace {

constexpr REGSAM kView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : 0; // no flag on systems that do not know of views
constexpr char kNothing[] = "(none)";

std::string ProgramName()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    const std::string name(path);
    const size_t begin = name.find_last_of('\\') + 1;
    return name.substr(begin, name.find_last_of('.') - begin);
}

std::string TestName()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    if (test == nullptr)
        return "none";
    std::string name = std::string(test->test_suite_name()) + "." + test->name();
    for (char& c : name) {
        if (c == '/' || c == '\\')
            c = '-';
    }
    return name;
}

/// Deletes the keys below, deepest first: on Windows NT no key goes before those below it.
bool DeleteSubkeys(HKEY key)
{
    char name[256];
    while (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) {
        HKEY subkey;
        if (RegOpenKeyExA(key, name, 0, KEY_ALL_ACCESS, &subkey) != ERROR_SUCCESS)
            return false;
        const bool empty = DeleteSubkeys(subkey);
        RegCloseKey(subkey);
        if (!empty || RegDeleteKeyA(key, name) != ERROR_SUCCESS)
            return false;
    }
    return true;
}

bool HasSubkeys(HKEY key)
{
    char name[256];
    return RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS;
}

void DeleteFolder(const std::string& path)
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((path + "\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = found.cFileName;
            const std::string full = path + "\\" + name;
            if (name == "." || name == "..")
                continue;
            SetFileAttributesA(full.c_str(), FILE_ATTRIBUTE_NORMAL);
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
                DeleteFolder(full);
            else
                EXPECT_TRUE(DeleteFileA(full.c_str())) << full << " is still open, error " << GetLastError();
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    EXPECT_TRUE(RemoveDirectoryA(path.c_str())) << path << " cannot be removed, error " << GetLastError();
}

} // namespace

std::string UniqueName(const std::string& what)
{
    static LONG count = 0;
    return "ZoTests." + ProgramName() + "." + std::to_string(GetCurrentProcessId()) + "." +
           std::to_string(InterlockedIncrement(&count)) + (what.empty() ? "" : "." + what);
}

bool DeleteRegistryTree(HKEY root, const std::string& path)
{
    const size_t cut = path.find_last_of('\\');
    const std::string parentPath = cut == std::string::npos ? "" : path.substr(0, cut);
    const std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
    HKEY parent;
    LSTATUS status = RegOpenKeyExA(root, parentPath.c_str(), 0, KEY_ALL_ACCESS | kView, &parent);
    if (status != ERROR_SUCCESS)
        return status == ERROR_FILE_NOT_FOUND;
    HKEY key;
    bool deleted = true;
    status = RegOpenKeyExA(parent, name.c_str(), 0, KEY_ALL_ACCESS, &key);
    if (status == ERROR_SUCCESS) {
        deleted = DeleteSubkeys(key);
        RegCloseKey(key);
        deleted = deleted && RegDeleteKeyA(parent, name.c_str()) == ERROR_SUCCESS;
    }
    RegCloseKey(parent);
    return deleted && (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND);
}

TestRegistryKey::TestRegistryKey(HKEY root)
    : m_root(root), m_path((root == HKEY_CLASSES_ROOT ? "ZoTests\\" : "Software\\ZoTests\\") + ProgramName() + "\\" +
                           TestName() + "." + std::to_string(GetCurrentProcessId()))
{
    EXPECT_TRUE(DeleteRegistryTree(m_root, m_path)) << m_path; // of a process of the same number that was killed
    m_key = Open("", true);
    EXPECT_NE(nullptr, m_key) << m_path;
}

TestRegistryKey::~TestRegistryKey()
{
    RegCloseKey(m_key);
    EXPECT_TRUE(DeleteRegistryTree(m_root, m_path)) << m_path << " is still there";
    // The folder keys above, as far as no other test is in them.
    for (size_t cut = m_path.find_last_of('\\'); cut != std::string::npos; cut = m_path.find_last_of('\\', cut - 1)) {
        const std::string path = m_path.substr(0, cut);
        HKEY key;
        if (path == "Software" || RegOpenKeyExA(m_root, path.c_str(), 0, KEY_READ | kView, &key) != ERROR_SUCCESS)
            return;
        const bool used = HasSubkeys(key);
        RegCloseKey(key);
        if (used)
            return;
        DeleteRegistryTree(m_root, path);
    }
}

HKEY TestRegistryKey::Open(const std::string& subkey, bool create) const
{
    const std::string path = subkey.empty() ? m_path : m_path + "\\" + subkey;
    HKEY key = nullptr;
    const LSTATUS status =
        create ? RegCreateKeyExA(m_root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | kView, nullptr, &key, nullptr)
               : RegOpenKeyExA(m_root, path.c_str(), 0, KEY_ALL_ACCESS | kView, &key);
    return status == ERROR_SUCCESS ? key : nullptr;
}

void TestRegistryKey::Set(const std::string& subkey, const std::string& value, DWORD type,
                          const std::string& data) const
{
    const HKEY key = Open(subkey, true);
    ASSERT_NE(nullptr, key) << subkey;
    EXPECT_EQ(ERROR_SUCCESS, RegSetValueExA(key, value.c_str(), 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                            static_cast<DWORD>(data.size())));
    RegCloseKey(key);
}

std::string TestRegistryKey::Get(const std::string& subkey, const std::string& value, DWORD* type) const
{
    const HKEY key = Open(subkey);
    if (key == nullptr)
        return kNothing;
    std::vector<char> data(16 * 1024);
    auto size = static_cast<DWORD>(data.size());
    const LSTATUS status =
        RegQueryValueExA(key, value.c_str(), nullptr, type, reinterpret_cast<BYTE*>(data.data()), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? std::string(data.data(), size) : kNothing;
}

TestFolder::TestFolder()
{
    char temporary[MAX_PATH] = {};
    GetTempPathA(sizeof temporary, temporary);
    m_path = temporary + UniqueName();
    if (GetFileAttributesA(m_path.c_str()) != INVALID_FILE_ATTRIBUTES)
        DeleteFolder(m_path); // of a process of the same number that was killed
    EXPECT_TRUE(CreateDirectoryA(m_path.c_str(), nullptr)) << m_path << ", error " << GetLastError();
}

TestFolder::~TestFolder() { DeleteFolder(m_path); }

void TestFolder::Write(const std::string& name, const std::string& bytes) const
{
    const HANDLE file = CreateFileA(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, file) << Path(name);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    EXPECT_EQ(bytes.size(), written);
    CloseHandle(file);
}

std::string TestFolder::Read(const std::string& name) const
{
    const HANDLE file = CreateFileA(Path(name).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return kNothing;
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
    EXPECT_EQ(bytes.size(), read);
    CloseHandle(file);
    return bytes;
}

bool TestFolder::Exists(const std::string& name) const
{
    return GetFileAttributesA(Path(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace zo_test
