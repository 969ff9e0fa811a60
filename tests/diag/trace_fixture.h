/// \file
/// A trace of the test's own: its name, its file, and what all processes share of it.
#pragma once

#include "support/test.h"

#include <zogbl/trace.h>

#include <cctype>

namespace zo_test {

/// What a banner begins and ends with.
const std::string kStars = "****************************************\r\n";

/// The names that belong to a trace, put together by hand; the file is deleted at the end.
class TestTrace {
public:
    /// \param name letters and digits, so that it is its own base
    explicit TestTrace(const std::string& name = PlainName()) : m_name(name)
    {
        char path[MAX_PATH] = {};
        GetModuleFileNameA(nullptr, path, sizeof path);
        m_path = path;
        m_path.erase(m_path.rfind('\\') + 1);
        m_path += FileName();
        DeleteFileA(m_path.c_str());
    }
    ~TestTrace()
    {
        SetFileAttributesA(m_path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileA(m_path.c_str());
    }
    TestTrace(const TestTrace&) = delete;
    TestTrace& operator=(const TestTrace&) = delete;

    /// A name of the test's own, in letters and digits. The file lies beside the program, which test programs of
    /// several systems share, with process identifiers of their own each.
    static std::string PlainName()
    {
        std::string plain = "T" + std::to_string(GetACP());
        for (const char c : UniqueName()) {
            if (std::isalnum(static_cast<unsigned char>(c)))
                plain += c;
        }
        return plain;
    }

    CString Name() const { return m_name.c_str(); }
    std::string FileName() const { return "Zo" + m_name + ".TRC"; }
    const std::string& Path() const { return m_path; }
    std::string MutexName() const { return Upper("Zo" + m_name + "TRACEMUTEX"); }
    std::string MappingName() const { return Upper("Zo" + m_name + "TRACEMAPFILE"); }

    bool Exists() const { return GetFileAttributesA(m_path.c_str()) != INVALID_FILE_ATTRIBUTES; }
    void Write(const std::string& bytes) const { WriteBytes(m_path, bytes); }
    std::string Read() const { return ReadBytes(m_path); }
    /// What was written after the start banner, which is two lines long, or longer if a product is registered.
    std::string ReadBody() const
    {
        const std::string text = Read();
        size_t end = text.find(" - Started ");
        if (end == std::string::npos)
            return "(no banner)";
        end = text.find('\n', end) + 1;
        if (text.compare(end, 10, "\r\nVersion:") == 0)
            end = text.find(kStars, end) + kStars.size();
        return text.substr(end);
    }

private:
    static std::string Upper(std::string text)
    {
        for (char& c : text)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        return text;
    }

    std::string m_name;
    std::string m_path;
};

/// A trace of level 1 of the test's own that is open, without stamps unless the test wants them.
class OpenTrace : public TestTrace, public CZoTrace {
public:
    explicit OpenTrace(BOOL hasStamps = FALSE)
    {
        EnableTimeStamp(hasStamps);
        EXPECT_TRUE(Open(Name(), 1, FALSE));
    }
    using CZoTrace::FormatRelativeTime;

    /// What was written after the start banner, up to now.
    std::string Traced() { return Flush(), ReadBody(); }
};

/// The shared block as it lies in memory, found by its name; made if there is none.
class BlockView {
public:
    struct Block {
        DWORD openCount;
        DWORD pending;
        char buffer[8192];
    };

    explicit BlockView(const TestTrace& trace)
        : m_mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Block),
                                       trace.MappingName().c_str())),
          m_block(static_cast<Block*>(MapViewOfFile(m_mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Block))))
    {
        EXPECT_NE(nullptr, m_block);
    }
    ~BlockView()
    {
        UnmapViewOfFile(m_block);
        CloseHandle(m_mapping);
    }
    BlockView(const BlockView&) = delete;
    BlockView& operator=(const BlockView&) = delete;

    volatile Block* operator->() const { return m_block; }
    std::string Pending() const { return {m_block->buffer, m_block->pending}; }

private:
    HANDLE m_mapping;
    Block* m_block;
};

} // namespace zo_test
