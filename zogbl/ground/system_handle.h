/// \file
/// A handle that CloseHandle closes - of a file, of a process's token - and the status of system calls.
#pragma once

#include <zogbl/global_error.h>

#include <windows.h>

#include <utility>

/// The status of a system call that succeeded or failed just now.
inline DWORD StatusOf(BOOL succeeded) { return succeeded ? ERROR_SUCCESS : CZoGlobalError::GetError(); }

/// Closes its handle.
class SystemHandle {
public:
    /// \param handle null and INVALID_HANDLE_VALUE both mean none: each call has its own way to say so.
    explicit SystemHandle(HANDLE handle = nullptr) : m_handle(handle != INVALID_HANDLE_VALUE ? handle : nullptr) {}
    ~SystemHandle() { Close(); }
    SystemHandle(const SystemHandle&) = delete;
    SystemHandle& operator=(const SystemHandle&) = delete;

    bool IsOpen() const { return m_handle != nullptr; }
    operator HANDLE() const { return m_handle; }
    /// Where a call leaves the handle that it opens.
    HANDLE* Receive() { return &m_handle; }

    /// \return 0, also if none is open; the error of closing it
    DWORD Close() { return StatusOf(m_handle == nullptr || CloseHandle(std::exchange(m_handle, nullptr))); }
    /// Ends an operation. \return the error of closing; if there is none, \p result
    DWORD CloseOverridingFailure(DWORD result)
    {
        const DWORD closed = Close();
        return closed != ERROR_SUCCESS ? closed : result;
    }

private:
    HANDLE m_handle;
};
