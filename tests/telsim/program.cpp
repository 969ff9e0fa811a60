#include "program.h"

#include <algorithm>
#include <cstdio>

namespace {

Program* g_program = nullptr; // a callback is told no more than an instance, and that only with lines

} // namespace

std::string HandleText(DWORD handle)
{
    char text[16];
    std::snprintf(text, sizeof text, "%#lx", handle);
    return text;
}

Program::Program()
{
    g_program = this;
    if (!telsim.IsLoaded()) {
        ADD_FAILURE() << "there is no simulated TAPI32.DLL";
        return;
    }
#define LINE_FUNCTION(name)                                                                                            \
    name = telsim.Function<std::remove_pointer_t<decltype(name)>>(#name);                                              \
    EXPECT_NE(nullptr, name) << #name;
    FOR_EACH_LINE_FUNCTION(LINE_FUNCTION)
#undef LINE_FUNCTION
}

Program::~Program() { g_program = nullptr; }

void CALLBACK Program::Callback(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2,
                                DWORD_PTR param3)
{
    const Event event = {device, message, instance, {param1, param2, param3}};
    g_program->events.push_back(event);
    if (g_program->onEvent)
        g_program->onEvent(event);
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

std::vector<Program::GoodCall> Program::GoodCalls(DWORD device)
{
    static DWORD number;
    static LINEEXTENSIONID extension;
    static char settings[] = "Settings of device 1";
#define GOOD_CALL(name, size, ...)                                                                                     \
    {                                                                                                                  \
#name, size, [=, this]([[maybe_unused]] AnyRecord record) { return name(__VA_ARGS__); }                        \
    }
    return {
        GOOD_CALL(lineInitialize, 0, &number, nullptr, &Callback, "", &number),
        GOOD_CALL(lineNegotiateAPIVersion, 0, app, device, 0x00010000, 0x10000000, &number, &extension),
        GOOD_CALL(lineGetDevCaps, telsim::DevCapsSize(kVersion), app, device, kVersion, 0, record),
        GOOD_CALL(lineGetAddressCaps, telsim::AddressCapsSize(kVersion), app, device, 0, kVersion, 0, record),
        GOOD_CALL(lineGetDevConfig, telsim::kVarStringSize, device, record, "comm"),
        GOOD_CALL(lineConfigDialogEdit, telsim::kVarStringSize, device, nullptr, "comm", settings, 20, record),
        GOOD_CALL(lineOpen, 0, app, device, &number, kVersion, 0, 0, LINECALLPRIVILEGE_NONE, 0, nullptr),
        GOOD_CALL(lineSetStatusMessages, 0, line, 0x00BFFBFF, 0x1FF),
        GOOD_CALL(lineGetAddressStatus, telsim::kAddressStatusSize, line, 0, record),
        GOOD_CALL(lineGetID, telsim::kVarStringSize, 0, 0, call, LINECALLSELECT_CALL, record, "tapi/line"),
        GOOD_CALL(lineGetCallStatus, telsim::kCallStatusSize, call, record),
        GOOD_CALL(lineGetCallInfo, telsim::kCallInfoSize, call, record),
        GOOD_CALL(lineTranslateAddress, telsim::kTranslateOutputSize, app, 0, 0x00010000, "1", 0, 2, record),
        GOOD_CALL(lineTranslateDialog, 0, app, 0, 0x00010000, nullptr, nullptr),
        GOOD_CALL(lineMakeCall, 0, line, &call, nullptr, 0, nullptr),
        GOOD_CALL(lineDrop, 0, call, nullptr, 0),
        GOOD_CALL(lineDeallocateCall, 0, call),
        GOOD_CALL(lineClose, 0, line),
        GOOD_CALL(lineShutdown, 0, app),
    };
#undef GOOD_CALL
}

bool Program::Pump(const std::function<bool()>& done, DWORD milliseconds)
{
    const DWORD start = GetTickCount();
    while (!done()) {
        MSG message;
        if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageA(&message);
            continue;
        }
        const DWORD passed = GetTickCount() - start;
        if (passed >= milliseconds)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - passed, QS_ALLINPUT);
    }
    return true;
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
            return event.message == LINE_REPLY && event.params[0] == static_cast<DWORD_PTR>(request);
        });
    };
    if (!Pump([&] { return find() != events.end(); })) {
        ADD_FAILURE() << "no reply to request " << request;
        return -1;
    }
    EXPECT_EQ(kInstance, find()->instance);
    return static_cast<LONG>(find()->params[1]);
}

std::vector<DWORD> Program::States() const
{
    std::vector<DWORD> states;
    for (const Event& event : events) {
        if (event.message == LINE_CALLSTATE)
            states.push_back(static_cast<DWORD>(event.params[0]));
    }
    return states;
}
