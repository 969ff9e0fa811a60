/// \file
/// A test program that starts itself as a second process.
///
///     ZO_CHILD(HoldsTheTable)
///     {
///         Table table(child.Argument(0));
///         EXPECT_TRUE(table.Enter());   // a failure in the child fails the test that started it
///         child.ReadyUntilGo();
///         child.Report("left");         // for the parent to read
///     }
///
///     TEST(Table, SeesOtherProcess)
///     {
///         zo_test::ChildProcess child("HoldsTheTable", {name});
///         ASSERT_TRUE(child.WaitUntilReady());
///         ...
///         child.Finish(); // says go
///         EXPECT_EQ("left", child.Reports().at(0));
///     }
///
/// Every wait is bounded. A child that crashes, hangs or ends before its end fails the test, unless Kill ended it.
#pragma once

#include <afx.h>

#include <functional>
#include <string>
#include <vector>

namespace zo_test {

constexpr DWORD kChildTimeout = 30000; // milliseconds, for each wait

/// The child's side.
struct ChildContext {
    /// Argument \p index; a failure and empty when there is none.
    std::string Argument(size_t index) const;
    /// Tells the parent that the child is where the parent wants it.
    void Ready() const;
    /// Waits until the parent calls Go; a failure if it does not. Messages to the child's windows are answered
    /// meanwhile.
    void WaitForGo() const;
    void ReadyUntilGo() const { Ready(), WaitForGo(); }
    /// Writes a text for the parent.
    void Report(const std::string& text) const;

    const HANDLE ready, go, results; // inherited from the parent
    const std::vector<std::string> arguments;
};

/// The parent's side.
class ChildProcess {
public:
    /// Starts the child registered by ZO_CHILD(\p name). Arguments must not hold quotes or line ends.
    explicit ChildProcess(const std::string& name, const std::vector<std::string>& arguments = {});
    /// Finishes the child if nobody has.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits for the child's Ready, answering messages meanwhile. \return FALSE, with a failure, if it ended or hangs.
    bool WaitUntilReady();
    void Go();
    /// Ends the child at once, wherever it is.
    void Kill();
    /// Says go, waits for the child's end, answering messages meanwhile, and takes over its failures.
    void Finish();
    /// What the child reported so far.
    const std::vector<std::string>& Reports();

    HANDLE Process() const { return m_process; }
    DWORD ProcessId() const { return m_processId; }

private:
    void ReadResults();

    const std::string m_name;
    std::string m_resultPath;
    std::vector<std::string> m_reports;
    size_t m_read = 0; // bytes of the results that were taken over
    HANDLE m_ready = nullptr;
    HANDLE m_go = nullptr;
    HANDLE m_process = nullptr;
    DWORD m_processId = 0;
    bool m_ended = false;
};

/// Runs a program, in the folder of the test program unless \p folder names another, to its end.
/// \param meanwhile is called with the program's thread every now and then, for its windows
/// \return its exit code; a failure and 1000 if it does not start, ended with 1001 if it hangs
DWORD RunProgram(std::string command, const std::string& folder = {}, void (*meanwhile)(DWORD thread) = nullptr);

/// Waits until one of \p handles is signalled, answering messages meanwhile. \return its index, -1 when time is up.
int WaitAnsweringMessages(const std::vector<HANDLE>& handles, DWORD milliseconds = kChildTimeout);
/// Waits until \p condition holds, answering messages meanwhile. \return its last answer.
bool WaitUntil(const std::function<bool()>& condition);

/// Enters a child's function by name; ZO_CHILD makes one.
struct ChildRegistration {
    using Function = void (*)(const ChildContext& child);
    ChildRegistration(const char* name, Function function);
};

/// Whether the command line asks for child mode.
bool IsChild(int argc, char** argv);
/// Runs the child that the command line names. \return the process's exit code.
int RunAsChild(int argc, char** argv);

} // namespace zo_test

#define ZO_CHILD(name)                                                                                                 \
    static void ZoChild##name(const zo_test::ChildContext& child);                                                     \
    static const zo_test::ChildRegistration zoChildRegistration##name(#name, &ZoChild##name);                          \
    static void ZoChild##name([[maybe_unused]] const zo_test::ChildContext& child)
