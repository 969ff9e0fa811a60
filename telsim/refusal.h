/// \file
/// Why a call is refused.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace telsim {

/// Thrown by checks when the caller did something wrong: the code it gets, and what is listed as misuse.
struct Refusal {
    Refusal(DWORD errorCode, std::string what) : code(static_cast<LONG>(errorCode)), text(std::move(what)) {}

    LONG code;
    std::string text;
};

} // namespace telsim
