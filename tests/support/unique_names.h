/// \file
/// Names, registry keys and folders that belong to one test alone and are gone after it.
#pragma once

#include <afx.h>

#include <string>

namespace zo_test {

/// A name that no other test and no other process uses, for mutexes, mappings, window classes, trace files.
std::string UniqueName(const std::string& what = {});

/// A file's bytes, which others may be writing; "(none)" when there is no such file.
std::string ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);

/// A registry key below Software of a root, made for the current test; on Win32s one below its only root. Both
/// architectures look at the 32-bit view, as the library does.
class TestRegistryKey {
public:
    explicit TestRegistryKey(HKEY root = HKEY_CURRENT_USER);
    ~TestRegistryKey() { Erase(); }
    TestRegistryKey(const TestRegistryKey&) = delete;
    TestRegistryKey& operator=(const TestRegistryKey&) = delete;

    const std::string& Path() const { return m_path; } ///< below the root, without a backslash at either end

    /// Opens or makes a key below. The caller closes it; null on failure.
    HKEY Open(const std::string& subkey, bool create = false) const;
    /// Stores raw data, as good or as bad as the test wants it. \p subkey is made if need be.
    void Set(const std::string& subkey, const std::string& value, DWORD type, const std::string& data) const;
    void SetText(const std::string& subkey, const std::string& value, const std::string& text) const
    {
        Set(subkey, value, REG_SZ, text + '\0');
    }
    /// The raw data of a value; "(none)" when there is no such value.
    std::string Get(const std::string& subkey, const std::string& value) const;

private:
    void Erase() const;

    HKEY m_root;
    std::string m_path;
};

/// A folder for the current test's files, deleted with all that is in it.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    /// The folder, or a name in it.
    std::string Path(const std::string& name = {}) const { return name.empty() ? m_path : m_path + "\\" + name; }
    void Write(const std::string& name, const std::string& bytes) const { WriteBytes(Path(name), bytes); }
    /// "(none)" when there is no such file.
    std::string Read(const std::string& name) const { return ReadBytes(Path(name)); }
    bool Exists(const std::string& name) const;

private:
    std::string m_path;
};

/// The process's current folder while this lives.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::string& path)
    {
        GetCurrentDirectoryA(sizeof m_before, m_before);
        SetCurrentDirectoryA(path.c_str());
    }
    ~CurrentFolder() { SetCurrentDirectoryA(m_before); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    char m_before[MAX_PATH] = "";
};

} // namespace zo_test
