/// \file
/// Programs that lie beside the Workbench and run at its side.
#pragma once

#include <afx.h>

class Program {
public:
    Program() = default;
    ~Program(); ///< ends a program that is still running
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts a program once. \param fileName without a folder. \return FALSE when it cannot be started.
    BOOL Start(LPCSTR fileName, LPCSTR arguments);
    DWORD GetId() const { return m_id; }
    /// Its main window, or a dialog of its; null as long as there is none.
    HWND FindMainWindow() const;
    HWND FindDialog() const;
    /// Asks its windows to close, as a person would.
    void AskToClose() const;
    /// Waits for its end, at most half a minute, and answers messages meanwhile. \return its exit code; -1 if it is
    /// still running, or never was.
    int WaitForEnd() const;

private:
    HANDLE m_process = nullptr;
    DWORD m_id = 0;
};
