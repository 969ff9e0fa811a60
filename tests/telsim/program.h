/// \file
/// A program that telephones, for the tests of the service that it uses.
#pragma once

#include "support/test.h"
#include "tapi_header.h"

#include <telsim/client.h>

#include <array>
#include <sstream>

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

/// A record of variable size with room behind its fixed part.
template <class RECORD> class Buffer {
public:
    explicit Buffer(DWORD size, char filler = '\xCC') : m_bytes(size, filler) { Get()->dwTotalSize = size; }
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

/// The simulated service, newly reset, and what a program does with it.
class Program {
public:
    Program()
    {
        s_self = this;
        EXPECT_TRUE(telsim.IsLoaded()) << "there is no simulated TAPI32.DLL";
    }
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
                                  DWORD_PTR param3)
    {
        const Event event = {device, message, instance, param1, param2, param3};
        s_self->events.push_back(event);
        if (s_self->onEvent)
            s_self->onEvent(event);
    }

    LONG Initialize()
    {
        DWORD devices = 0;
        return lineInitialize(&app, GetModuleHandleA(nullptr), &Callback, "Tests", &devices);
    }
    /// Initializes unless that is done, negotiates a version and opens a device into \a line.
    LONG Open(DWORD device, DWORD privileges = LINECALLPRIVILEGE_NONE, DWORD mediaModes = LINEMEDIAMODE_DATAMODEM)
    {
        DWORD version = 0;
        LINEEXTENSIONID extension;
        LONG result = app == 0 ? Initialize() : 0;
        if (result == 0)
            result = lineNegotiateAPIVersion(app, device, 0x00010000, 0x10000000, &version, &extension);
        if (result != 0)
            return result;
        return lineOpen(app, device, &line, version, 0, kInstance, privileges, mediaModes, nullptr);
    }
    /// Asks for a call into \a call. Without parameters it is one that hands out the modem.
    LONG MakeCall(const char* number = nullptr, DWORD bearerMode = LINEBEARERMODE_PASSTHROUGH)
    {
        Buffer<LINECALLPARAMS> params(telsim::kCallParamsSize + 1, '\0');
        params->dwBearerMode = bearerMode;
        params->dwMediaMode = LINEMEDIAMODE_DATAMODEM;
        params->dwCallParamFlags = LINECALLPARAMFLAGS_IDLE;
        params->dwAddressMode = LINEADDRESSMODE_ADDRESSID;
        params->dwDisplayableAddressSize = 1;
        params->dwDisplayableAddressOffset = telsim::kCallParamsSize;
        return lineMakeCall(line, &call, number, 0, params.Get());
    }
    /// Initializes, opens, calls, and takes messages until the call has a state; \return whether it came to it.
    bool Connect(DWORD device)
    {
        return Open(device) == 0 && Reply(MakeCall()) == 0 &&
               Pump([&] { return !States().empty() && States().back() == LINECALLSTATE_CONNECTED; });
    }
    /// The handle of the call's port; INVALID_HANDLE_VALUE for none.
    HANDLE PortHandle()
    {
        Buffer<VARSTRING> id(200);
        if (lineGetID(0, 0, call, LINECALLSELECT_CALL, id.Get(), "comm/datamodem") != 0 ||
            id->dwStringSize < sizeof(HANDLE))
            return INVALID_HANDLE_VALUE;
        return *reinterpret_cast<HANDLE*>(reinterpret_cast<char*>(id.Get()) + id->dwStringOffset);
    }

    /// Takes messages until \p done, or time is up. \return whether it is done.
    static bool Pump(const std::function<bool()>& done)
    {
        const DWORD start = GetTickCount();
        for (MSG message; !done() && GetTickCount() - start < 5000;) {
            if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageA(&message);
            else
                MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        return done();
    }
    /// Takes messages until no event is on its way.
    void PumpAll()
    {
        EXPECT_TRUE(Pump([&] { return telsim.GetCount(TELSIM_EVENTS) == 0; })) << "events do not come to an end";
    }
    /// Takes messages until the reply to a request is there; \return its result.
    LONG Reply(LONG request)
    {
        if (request <= 0)
            return request;
        const Event* reply = nullptr;
        Pump([&] {
            for (const Event& event : events) {
                if (event[kMessage] == LINE_REPLY && event[kFirst] == static_cast<DWORD_PTR>(request))
                    reply = &event;
            }
            return reply != nullptr;
        });
        if (reply == nullptr) {
            ADD_FAILURE() << "no reply to request " << request;
            return -1;
        }
        EXPECT_EQ(kInstance, (*reply)[kOfInstance]);
        return static_cast<LONG>((*reply)[kSecond]);
    }
    /// The call states that came, in order.
    std::vector<DWORD> States() const
    {
        std::vector<DWORD> states;
        for (const Event& event : events) {
            if (event[kMessage] == LINE_CALLSTATE)
                states.push_back(static_cast<DWORD>(event[kFirst]));
        }
        return states;
    }

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
inline std::string HandleText(DWORD handle)
{
    return (std::ostringstream() << std::showbase << std::hex << handle).str();
}
