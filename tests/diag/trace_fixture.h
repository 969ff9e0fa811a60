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
    explicit TestTrace(const std::string& name = PlainName()) : m_name(name) { DeleteFileA(Path().c_str()); }
    ~TestTrace() { DeleteFileA(Path().c_str()); }
    TestTrace(const TestTrace&) = delete;
    TestTrace& operator=(const TestTrace&) = delete;

    /// A name of the test's own, in letters and digits. The file lies beside the program, which test programs of
    /// several systems share, with process identifiers of their own each.
    static std::string PlainName()
    {
        std::string name = "T" + std::to_string(GetACP()) + UniqueName();
        std::erase_if(name, [](unsigned char c) { return !std::isalnum(c); });
        return name;
    }

    CString Name() const { return m_name.c_str(); }
    std::string FileName() const { return "Zo" + m_name + ".TRC"; }
    std::string Path() const { return ProgramFolder() + FileName(); }
    std::string MutexName() const { return Upper("Zo" + m_name + "TRACEMUTEX"); }
    std::string MappingName() const { return Upper("Zo" + m_name + "TRACEMAPFILE"); }

    /// Whether this thread holds the lock of the trace.
    bool IsLockHeld() const
    {
        const HANDLE mutex = OpenMutexA(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, MutexName().c_str());
        const bool isHeld = ReleaseMutex(mutex) && WaitForSingleObject(mutex, 0) == WAIT_OBJECT_0;
        CloseHandle(mutex);
        return isHeld;
    }

    void Write(const std::string& bytes) const { WriteBytes(Path(), bytes); }
    std::string Read() const { return ReadBytes(Path()); }
    /// What was written after the start banner, which is two lines long as no product is registered.
    std::string ReadBody() const
    {
        const std::string text = Read();
        const size_t start = text.find(" - Started ");
        return start != std::string::npos ? text.substr(text.find('\n', start) + 1) : "(no banner)";
    }

private:
    static std::string Upper(std::string text) { return CharUpperA(text.data()), text; }

    std::string m_name;
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
