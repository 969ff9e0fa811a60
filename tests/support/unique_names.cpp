#include "support/unique_names.h"

#include "support/environment.h"

#include <gtest/gtest.h>

#include <shellapi.h>
#include <shlwapi.h>

#include <fstream>
#include <iterator>
#include <vector>

namespace zo_test {

namespace {

constexpr REGSAM kView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : 0; // no flag on systems that do not know of views
constexpr char kNothing[] = "(none)";

void DeleteFolder(const std::string& path)
{
    const std::string list = path + '\0';
    SHFILEOPSTRUCTA deletion = {};
    deletion.wFunc = FO_DELETE;
    deletion.pFrom = list.c_str();
    deletion.fFlags = FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT;
    EXPECT_EQ(0, SHFileOperationA(&deletion)) << path << " cannot be removed: is a file of it still open?";
}

} // namespace

std::string UniqueName(const std::string& what)
{
    static LONG count = 0;
    char program[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, program, sizeof program - 1);
    return std::string("ZoTests.") + PathFindFileNameA(program) + "." + std::to_string(GetCurrentProcessId()) + "." +
           std::to_string(InterlockedIncrement(&count)) + (what.empty() ? "" : "." + what);
}

std::string ReadBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return file.is_open() ? std::string{std::istreambuf_iterator<char>(file), {}} : kNothing;
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream file(path, std::ios::binary);
    EXPECT_TRUE(file << bytes << std::flush) << path;
}

TestRegistryKey::TestRegistryKey(HKEY root)
    : m_root(Family() == WindowsFamily::kWin32s ? HKEY_CLASSES_ROOT : root),
      m_path((m_root == HKEY_CLASSES_ROOT ? "" : "Software\\") + UniqueName())
{
    Erase(); // that of a process of the same number that was killed
    RegCloseKey(Open("", true));
}

void TestRegistryKey::Erase() const
{
    const HKEY key = Open("", true);
    EXPECT_EQ(ERROR_SUCCESS, SHDeleteKeyA(key, "")) << m_path;
    RegCloseKey(key);
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

std::string TestRegistryKey::Get(const std::string& subkey, const std::string& value) const
{
    const HKEY key = Open(subkey);
    if (key == nullptr)
        return kNothing;
    std::vector<char> data(16 * 1024);
    auto size = static_cast<DWORD>(data.size());
    const LSTATUS status =
        RegQueryValueExA(key, value.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(data.data()), &size);
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

bool TestFolder::Exists(const std::string& name) const
{
    return GetFileAttributesA(Path(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace zo_test
