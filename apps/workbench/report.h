/// \file
/// The report of a tour: a line a step, in UTF-8, on the standard output and in a file.
#pragma once

#include <afx.h>

class Report {
public:
    /// \param path file for the report; it is made anew. Throws CFileException*.
    explicit Report(LPCSTR path);

    /// Writes "ok step: result" or "FAILED step: result". \return \p succeeded
    bool Step(LPCSTR step, bool succeeded, const CString& result);
    void Line(const CString& text);

private:
    CFile m_file;
};
