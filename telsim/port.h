/// \file
/// The serial port behind a call.
#pragma once

#include <windows.h>

#include <string>

namespace telsim {

/// Open from the beginning of a call to its end.
class Port {
public:
    Port() = default;
    ~Port() { Close(); }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    /// \param name such as "COM9"; empty opens something that is no port. The port is opened for overlapped use, as the
    /// telephone services of modems do.
    bool Open(const std::string& name);
    void Close();
    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    /// Another handle, for the application, which closes it.
    bool Duplicate(HANDLE& handle) const;

    static size_t OpenCount();

private:
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

} // namespace telsim
