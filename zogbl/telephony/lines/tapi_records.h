/// \file
/// Records of variable size that the telephony service fills: a fixed part, and behind it the parts that its sizes and
/// offsets name. They are local blocks.
#pragma once

#include <zogbl/tapi_interface.h>

#include <cstddef>
#include <cstring>
#include <memory>

struct LocalDeleter {
    void operator()(void* block) const { LocalFree(block); }
};
/// Owns a local block.
template <class TYPE> using LocalPointer = std::unique_ptr<TYPE, LocalDeleter>;

/// A part of a record, within what a service has used of it and behind the fixed part.
struct RecordPart {
    const char* bytes; ///< null: there is no such part
    DWORD size;

    /// The length of a text; its terminator is optional.
    size_t TextLength() const { return bytes != nullptr ? strnlen(bytes, size) : 0; }
};

/// \param fixedSize where parts may begin. A part that lies elsewhere, whole or in part, counts as missing.
template <class RECORD> RecordPart GetRecordPart(const RECORD& record, size_t fixedSize, DWORD size, DWORD offset)
{
    const DWORD used = record.dwUsedSize;
    if (size == 0 || offset < fixedSize || offset > used || size > used - offset)
        return {nullptr, 0};
    return {reinterpret_cast<const char*>(&record) + offset, size};
}

inline RecordPart GetString(const VARSTRING& string)
{
    return GetRecordPart(string, sizeof string, string.dwStringSize, string.dwStringOffset);
}
