/// \file
/// Settings that are kept as one text of numbers: "MARK 3 1 2 ... SUM".
#pragma once

#include <afx.h>

/// Makes such a text.
class NumberRecordWriter {
public:
    explicit NumberRecordWriter(LPCSTR mark) : m_text(mark) {} ///< Throws CMemoryException*.

    void Add(int number); ///< from 0 on. Throws CMemoryException*.
    CString Finish();     ///< with the sum. Throws CMemoryException*.

private:
    CString m_text;
    DWORD m_sum = 0;
};

/// Reads it, whatever it has become meanwhile.
///
///     NumberRecordReader record(text, "ZoColumns");
///     const int version = record.Next(kVersion), count = record.Next(kMostColumns);
///     ... keeps nothing yet ...
///     if (!record.IsWhole())
///         return FALSE;
class NumberRecordReader {
public:
    NumberRecordReader(LPCSTR text, LPCSTR mark); ///< \param text lives as long as the reader

    /// \return the next number, from 0 to \p most; -1 if there is none or it is larger, as for all numbers behind it
    int Next(int most);
    /// Whether all numbers have been read, and the sum that comes now is theirs.
    BOOL IsWhole();

private:
    LPCSTR m_at; // null: damaged
    DWORD m_sum = 0;
};
