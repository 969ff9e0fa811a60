/// \file
/// A program that telephones, for the tests of the service that it uses.
#pragma once

#include "support/test.h"
#include "tapi_header.h"

#include <telsim/client.h>

#include <array>

/// An event that the callback was given, as it was given: device, message, instance, three parameters.
using Event = std::array<DWORD_PTR, 6>;
enum EventPart { kDevice, kMessage, kOfInstance, kFirst, kSecond };

constexpr DWORD_PTR kInstance = 0x1234;
constexpr DWORD kVersion = 0x00010004;
constexpr DWORD kModem = 0;  // the device on the port
constexpr DWORD kNoPort = 1; // the device without one

/// Memory that passes for a record of any kind.
struct AnyRecord {
    void* memory;
    template <class RECORD> operator RECORD*() const { return static_cast<RECORD*>(memory); }
};

/// The simulated service, newly reset, and what a program does with it.
class Program {
public:
    Program();
    ~Program() { s_self = nullptr; }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    telsim::Client telsim;
    /// All events so far, from all applications.
    std::vector<Event> events;
    /// Called in the callback, after the event was noted.
    std::function<void(const Event&)> onEvent;

    HLINEAPP app = 0;
    HLINE line = 0;
    HCALL call = 0;

    /// Notes events; for lineInitialize.
    static void CALLBACK Callback(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                                  DWORD_PTR param3);

    /// lineInitialize; \return its result.
    LONG Initialize();
    /// Initializes unless that is done, negotiates a version and opens a device into \a line.
    LONG Open(DWORD device, DWORD privileges = LINECALLPRIVILEGE_NONE, DWORD mediaModes = LINEMEDIAMODE_DATAMODEM);
    /// Asks for a call into \a call. Without parameters it is one that hands out the modem.
    LONG MakeCall(const char* number = nullptr, DWORD bearerMode = LINEBEARERMODE_PASSTHROUGH);
    /// Initializes, opens, calls, and takes messages until the call has a state; \return whether it came to it.
    bool Connect(DWORD device);
    /// The handle of the call's port; INVALID_HANDLE_VALUE for none.
    HANDLE PortHandle();

    /// Takes messages until \p done, or time is up. \return whether it is done.
    static bool Pump(const std::function<bool()>& done, DWORD milliseconds = 5000);
    /// Takes messages until no event is on its way.
    void PumpAll();
    /// Takes messages until the reply to a request is there; \return its result.
    LONG Reply(LONG request);
    /// The call states that came, in order.
    std::vector<DWORD> States() const;

private:
    static inline Program* s_self = nullptr; // a callback is told no more than an instance, and that only with lines
};

/// The service's file, for each program and reset while this lives.
class IniFile {
public:
    explicit IniFile(const std::string& content)
    {
        m_folder.Write("telsim.ini", content);
        SetEnvironmentVariableA("TELSIM_INI", m_folder.Path("telsim.ini").c_str());
    }
    ~IniFile() { SetEnvironmentVariableA("TELSIM_INI", nullptr); }

private:
    const TestFolder m_folder;
};

/// A result as LINEERR_ constants are written.
constexpr LONG Error(DWORD code) { return static_cast<LONG>(code); }

/// A handle as the service writes it in its texts.
std::string HandleText(DWORD handle);

/// A record of variable size with room behind its fixed part.
template <class RECORD> class Buffer {
public:
    explicit Buffer(DWORD size) : m_bytes(size, '\xCC') { Get()->dwTotalSize = size; }
    RECORD* Get() { return reinterpret_cast<RECORD*>(m_bytes.data()); }
    RECORD* operator->() { return Get(); }
    /// A part, without the terminator that ends texts.
    std::string Text(DWORD size, DWORD offset) const
    {
        if (offset > m_bytes.size() || size > m_bytes.size() - offset)
            return "(outside)";
        return std::string(m_bytes.data() + offset, size == 0 ? 0 : size - 1);
    }

private:
    std::vector<char> m_bytes;
};
