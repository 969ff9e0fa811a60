/// \file
/// What operations answer, in one line.
#pragma once

#include "support/test.h"

#include <sstream>

namespace zo_test {

/// The values, in the order in which they are asked for: numbers, texts, sizes and rectangles.
struct Answers : std::string {
    template <class... VALUES> explicit Answers(VALUES... values) { (Add(values), ...); }

    friend void PrintTo(const Answers& answers, std::ostream* stream) { *stream << answers.c_str(); }

private:
    template <class VALUE> void Add(const VALUE& value)
    {
        std::ostringstream text;
        if constexpr (std::is_convertible_v<VALUE, LPCRECT>)
            text << value.left << ',' << value.top << ',' << value.right << ',' << value.bottom;
        else if constexpr (std::is_convertible_v<VALUE, LPCSTR>)
            text << '"' << static_cast<LPCSTR>(value) << '"';
        else
            text << value;
        append(empty() ? "" : " ").append(text.str());
    }
};

} // namespace zo_test
