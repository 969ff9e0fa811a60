/// \file
/// Windows for tests, and handlers that write down with which arguments they are called.
#pragma once

#include "support/test.h"

#include <sstream>

namespace zo_test {

inline std::string g_log; ///< what has been called, each with a '|' behind it
inline std::string TakeLog() { return std::exchange(g_log, {}); }
inline HDC g_context = nullptr; ///< the device context that is sent to a handler

/// A call by its name and arguments: numbers, windows by their control identifiers, notifications and items by their
/// own numbers; not the place of an answer.
template <class... ARGUMENTS> std::string Written(const char* name, ARGUMENTS... arguments)
{
    std::ostringstream text;
    text << name;
    [[maybe_unused]] const auto write = [&text](auto value) {
        if constexpr (std::is_same_v<decltype(value), LRESULT*>)
            return;
        else if constexpr (std::is_convertible_v<decltype(value), const CWnd*>)
            text << " window" << (value != nullptr ? value->GetDlgCtrlID() : -1);
        else if constexpr (std::is_same_v<decltype(value), CPoint>)
            text << ' ' << value.x << ',' << value.y;
        else if constexpr (std::is_same_v<decltype(value), CDC*>)
            text << (value->m_hDC == g_context ? " context" : " another");
        else if constexpr (requires { value->code; })
            text << ' ' << value->code;
        else if constexpr (requires { value->itemID; })
            text << ' ' << value->itemID;
        else if constexpr (std::is_pointer_v<decltype(value)>)
            text << ' ' << reinterpret_cast<UINT_PTR>(value);
        else
            text << ' ' << value;
    };
    (write(arguments), ...);
    return text.str() + '|';
}

/// A handler of any signature, for a window class to have as a member. Its result also answers notifications.
struct Noted {
    const char* name;
    LRESULT result = 7;

    template <class... ARGUMENTS> LRESULT operator()(ARGUMENTS... arguments) const
    {
        g_log += Written(name, arguments...);
        [[maybe_unused]] const auto answer = [this](auto argument) {
            if constexpr (std::is_same_v<decltype(argument), LRESULT*>)
                *argument = result;
        };
        (answer(arguments), ...);
        return result;
    }
};

/// Things to do one after the other, and the state that each must lead to.
using Steps = std::vector<std::pair<std::function<void()>, std::string>>;
/// Takes the steps. \param state says, in one line, what is to be compared
inline void Walk(const Steps& steps, const std::function<std::string()>& state)
{
    for (size_t i = 0; i < steps.size(); ++i) {
        steps[i].first();
        EXPECT_EQ(steps[i].second, state()) << "after step " << i;
    }
}

/// A top-level window.
class TopWindow : public CWnd {
public:
    explicit TopWindow(DWORD style = WS_POPUP | WS_VISIBLE, HWND owner = nullptr)
    {
        EXPECT_TRUE(CreateEx(0, nullptr, "", style, 0, 0, 300, 200, owner, nullptr));
    }
    bool IsEnabled() const { return IsWindowEnabled() != FALSE; }
};

} // namespace zo_test
