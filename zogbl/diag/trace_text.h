/// \file
/// The texts of a trace.
#pragma once

#include <afx.h>

constexpr size_t kMostStampLength = 24;
constexpr size_t kMostFormatted = 1024; ///< the bound that wvsprintf keeps by itself

/// "Zo" and the letters and digits before the first ".". They are ASCII's, whatever locale the host has set: programs
/// of different locales must come to the same name. Throws CMemoryException*.
CString TraceBaseName(const CString& name);

/// Writes a time stamp that ends just before \p end. \return its beginning, at most kMostStampLength before.
char* PutStampBefore(char* end, DWORD milliseconds);

/// A format up to the first conversion that wvsprintf does not take: that would leave its argument to the next one,
/// which may be one of a text. \param cut where such a format is put
const char* SafeFormat(const char* format, char (&cut)[kMostFormatted + 1]);

/// Length of the text that stays of \p length bytes: all of it, or what fits without cutting a character in two.
int CutLength(const char* text, int length);
