// A line's bytes through a translation table, beside a loop over a bare table.
#include "families.h"
#include "harness.h"

#include <zogbl/translate.h>

#include <vector>

namespace {

constexpr size_t kBytes = 64 << 20;
constexpr unsigned kRoundsPerPass = 5; // a pass takes long
constexpr Limits kLimits = {0, 1.1};

/// Swaps the halves of a byte, so that every pass changes all of them and two restore them.
BYTE Swapped(size_t code) { return static_cast<BYTE>(code << 4 | code >> 4); }

/// \return nanoseconds for all bytes.
template <class OPERATION> double Pass(std::vector<BYTE>& bytes, OPERATION operation)
{
    const long long start = Ticks();
    for (BYTE& byte : bytes)
        byte = operation(byte);
    const double time = Nanoseconds(Ticks() - start);
    Keep(bytes.front());
    return time;
}

} // namespace

void MeasureTranslation(Harness& harness)
{
    CGblTranslate translation;
    translation.EnableGet(TRUE);
    translation.EnablePut(TRUE);
    std::vector<BYTE> table(256);
    for (size_t code = 0; code < table.size(); ++code) {
        table[code] = Swapped(code);
        translation.SetInputValue(static_cast<BYTE>(code), Swapped(code));
        translation.SetOutputValue(static_cast<BYTE>(code), Swapped(code));
    }
    std::vector<BYTE> bytes(kBytes);
    for (size_t i = 0; i < kBytes; ++i)
        bytes[i] = static_cast<BYTE>(i * 167 >> 3);
    const std::vector<BYTE> before = bytes;

    for (const bool isGet : {true, false}) {
        const std::string name = isGet ? "translation: received" : "translation: sent";
        if (!harness.Wants(name))
            continue;
        Samples library = {isGet ? "CGblTranslate::DoGet" : "CGblTranslate::DoPut", {}};
        Samples floor = {"bare table", {}};
        const auto passLibrary = [&] {
            return isGet ? Pass(bytes, [&](BYTE byte) { return translation.DoGet(byte); })
                         : Pass(bytes, [&](BYTE byte) { return translation.DoPut(byte); });
        };
        const BYTE* const entries = table.data();
        const auto passFloor = [&] { return Pass(bytes, [=](BYTE byte) { return entries[byte]; }); };
        for (unsigned round = 0; round < harness.GetRounds() / kRoundsPerPass; ++round) {
            const double first = round % 2 == 0 ? passLibrary() : passFloor();
            const double second = round % 2 == 0 ? passFloor() : passLibrary();
            library.nanoseconds.push_back((round % 2 == 0 ? first : second) / kBytes);
            floor.nanoseconds.push_back((round % 2 == 0 ? second : first) / kBytes);
        }
        Require(bytes == before, "two passes do not restore the bytes");
        harness.Add(name, {library, floor}, Unit::nanoseconds, kLimits);
    }
}
