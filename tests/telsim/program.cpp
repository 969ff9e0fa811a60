#include "program.h"

#include <algorithm>
#include <cstdio>

std::string HandleText(DWORD handle)
{
    char text[16];
    std::snprintf(text, sizeof text, "%#lx", handle);
    return text;
}

Program::Program()
{
    s_self = this;
    EXPECT_TRUE(telsim.IsLoaded()) << "there is no simulated TAPI32.DLL";
}

void CALLBACK Program::Callback(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                                DWORD_PTR param3)
{
    const Event event = {device, message, instance, param1, param2, param3};
    s_self->events.push_back(event);
    if (s_self->onEvent)
        s_self->onEvent(event);
}

LONG Program::Initialize()
{
    DWORD devices = 0;
    return lineInitialize(&app, GetModuleHandleA(nullptr), &Program::Callback, "Tests", &devices);
}

LONG Program::Open(DWORD device, DWORD privileges, DWORD mediaModes)
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

LONG Program::MakeCall(const char* number, DWORD bearerMode)
{
    Buffer<LINECALLPARAMS> params(telsim::kCallParamsSize + 1);
    std::fill_n(reinterpret_cast<char*>(params.Get()) + sizeof(DWORD), telsim::kCallParamsSize + 1 - sizeof(DWORD),
                '\0');
    params->dwBearerMode = bearerMode;
    params->dwMediaMode = LINEMEDIAMODE_DATAMODEM;
    params->dwCallParamFlags = LINECALLPARAMFLAGS_IDLE;
    params->dwAddressMode = LINEADDRESSMODE_ADDRESSID;
    params->dwDisplayableAddressSize = 1;
    params->dwDisplayableAddressOffset = telsim::kCallParamsSize;
    return lineMakeCall(line, &call, number, 0, params.Get());
}

bool Program::Connect(DWORD device)
{
    if (Open(device) != 0 || Reply(MakeCall()) != 0)
        return false;
    return Pump([&] { return !States().empty() && States().back() == LINECALLSTATE_CONNECTED; });
}

HANDLE Program::PortHandle()
{
    Buffer<VARSTRING> id(200);
    if (lineGetID(0, 0, call, LINECALLSELECT_CALL, id.Get(), "comm/datamodem") != 0 ||
        id->dwStringSize < sizeof(HANDLE))
        return INVALID_HANDLE_VALUE;
    return *reinterpret_cast<HANDLE*>(reinterpret_cast<char*>(id.Get()) + id->dwStringOffset);
}

bool Program::Pump(const std::function<bool()>& done, DWORD milliseconds)
{
    const DWORD start = GetTickCount();
    for (MSG message; !done() && GetTickCount() - start < milliseconds;) {
        if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        else
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return done();
}

void Program::PumpAll()
{
    EXPECT_TRUE(Pump([&] { return telsim.GetCount(TELSIM_EVENTS) == 0; })) << "events do not come to an end";
}

LONG Program::Reply(LONG request)
{
    if (request <= 0)
        return request;
    const auto find = [&] {
        return std::find_if(events.begin(), events.end(), [&](const Event& event) {
            return event[kMessage] == LINE_REPLY && event[kFirst] == static_cast<DWORD_PTR>(request);
        });
    };
    if (!Pump([&] { return find() != events.end(); })) {
        ADD_FAILURE() << "no reply to request " << request;
        return -1;
    }
    EXPECT_EQ(kInstance, (*find())[kOfInstance]);
    return static_cast<LONG>((*find())[kSecond]);
}

std::vector<DWORD> Program::States() const
{
    std::vector<DWORD> states;
    for (const Event& event : events) {
        if (event[kMessage] == LINE_CALLSTATE)
            states.push_back(static_cast<DWORD>(event[kFirst]));
    }
    return states;
}
