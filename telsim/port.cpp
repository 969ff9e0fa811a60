#include "port.h"

namespace telsim {

namespace {

size_t g_open = 0;

} // namespace

bool Port::Open(const std::string& name)
{
    Close();
    if (name.empty()) {
        HANDLE other = nullptr;
        if (!CreatePipe(&m_handle, &other, nullptr, 0))
            m_handle = INVALID_HANDLE_VALUE;
        else
            CloseHandle(other);
    } else {
        const std::string path = name.find('\\') == std::string::npos ? "\\\\.\\" + name : name;
        m_handle = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                               FILE_FLAG_OVERLAPPED, nullptr);
    }
    if (IsOpen())
        ++g_open;
    return IsOpen();
}

void Port::Close()
{
    if (!IsOpen())
        return;
    CloseHandle(m_handle);
    m_handle = INVALID_HANDLE_VALUE;
    --g_open;
}

bool Port::Duplicate(HANDLE& handle) const
{
    return IsOpen() && DuplicateHandle(GetCurrentProcess(), m_handle, GetCurrentProcess(), &handle, 0, FALSE,
                                       DUPLICATE_SAME_ACCESS);
}

size_t Port::OpenCount() { return g_open; }

} // namespace telsim
