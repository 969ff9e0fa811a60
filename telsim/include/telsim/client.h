/// \file
/// The control functions (control.h) of the TAPI32.DLL that the process loads, for tests in C++.
///
///     telsim::Client telsim;
///     ASSERT_TRUE(telsim.IsLoaded());
///     telsim.SetRule("lineOpen", 1, FALSE, TELSIM_FAIL, LINEERR_ALLOCATED);
///     ...
///     EXPECT_EQ("", telsim.Misuses());
#pragma once

#include <telsim/control.h>

#include <string>

namespace telsim {

/// Loads the library in the constructor and frees it in the destructor. Both reset everything.
class Client {
public:
    Client() : m_module(LoadLibraryA("TAPI32.DLL"))
    {
        if (m_module == nullptr)
            return;
        m_complete = true;
        Bind(Reset, "TelsimReset");
        Bind(SetRule, "TelsimSetRule");
        Bind(ClearRules, "TelsimClearRules");
        Bind(ReleaseReplies, "TelsimReleaseReplies");
        Bind(SetObserver, "TelsimSetObserver");
        Bind(ConfigureLine, "TelsimConfigureLine");
        Bind(SetLineCount, "TelsimSetLineCount");
        Bind(AddLine, "TelsimAddLine");
        Bind(PostEvent, "TelsimPostEvent");
        Bind(ChangeCallState, "TelsimChangeCallState");
        Bind(CloseLine, "TelsimCloseLine");
        Bind(ChangeLineState, "TelsimChangeLineState");
        Bind(OfferCall, "TelsimOfferCall");
        Bind(HangUp, "TelsimHangUp");
        Bind(GetText, "TelsimGetText");
        Bind(ClearTexts, "TelsimClearTexts");
        Bind(GetCount, "TelsimGetCount");
        Bind(GetHandle, "TelsimGetHandle");
        if (m_complete)
            Reset();
    }
    ~Client()
    {
        if (m_complete)
            Reset();
        if (m_module != nullptr)
            FreeLibrary(m_module);
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// FALSE if there is no TAPI32.DLL, or if it is not the simulated one.
    bool IsLoaded() const { return m_complete; }
    HMODULE Module() const { return m_module; }

    /// A line function by its name; \p FUNCTION is its type. Null if the library has none of that name.
    template <class FUNCTION> FUNCTION* Function(const char* name) const
    {
        return reinterpret_cast<FUNCTION*>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

    std::string Calls() const { return Text(TELSIM_CALLS); }     ///< one line for each
    std::string Misuses() const { return Text(TELSIM_MISUSES); } ///< one line for each

    // Named as in control.h, without the prefix. Valid if IsLoaded.
    decltype(&TelsimReset) Reset = nullptr;
    decltype(&TelsimSetRule) SetRule = nullptr;
    decltype(&TelsimClearRules) ClearRules = nullptr;
    decltype(&TelsimReleaseReplies) ReleaseReplies = nullptr;
    decltype(&TelsimSetObserver) SetObserver = nullptr;
    decltype(&TelsimConfigureLine) ConfigureLine = nullptr;
    decltype(&TelsimSetLineCount) SetLineCount = nullptr;
    decltype(&TelsimAddLine) AddLine = nullptr;
    decltype(&TelsimPostEvent) PostEvent = nullptr;
    decltype(&TelsimChangeCallState) ChangeCallState = nullptr;
    decltype(&TelsimCloseLine) CloseLine = nullptr;
    decltype(&TelsimChangeLineState) ChangeLineState = nullptr;
    decltype(&TelsimOfferCall) OfferCall = nullptr;
    decltype(&TelsimHangUp) HangUp = nullptr;
    decltype(&TelsimGetText) GetText = nullptr;
    decltype(&TelsimClearTexts) ClearTexts = nullptr;
    decltype(&TelsimGetCount) GetCount = nullptr;
    decltype(&TelsimGetHandle) GetHandle = nullptr;

private:
    template <class FUNCTION> void Bind(FUNCTION*& function, const char* name)
    {
        function = Function<FUNCTION>(name);
        m_complete = m_complete && function != nullptr;
    }

    std::string Text(DWORD which) const
    {
        std::string text(GetText(which, nullptr, 0), '\0');
        GetText(which, text.data(), static_cast<DWORD>(text.size()));
        text.pop_back(); // the terminator
        return text;
    }

    HMODULE m_module;
    bool m_complete = false;
};

} // namespace telsim
