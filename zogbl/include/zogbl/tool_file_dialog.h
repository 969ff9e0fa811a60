/// \file
/// The choice of a tools file.
#pragma once

#include <zogbl/file_open.h>
#include <zogbl/tool_file.h>

/// Asks for the name of a tools file, and accepts only one that can be used.
///   to open  the file must exist and be a tools file. If it is none, but a copy of a save that was killed is beside it
///            (see EditToolItemFile), the user is asked whether to put that back; else a message refuses the file.
///   to save  the dialog asks before it overwrites, and refuses a file that cannot be written
class ZOGBL_API CTLMFileDialog : public CZoFileOpen {
public:
    /// \param path shown first, or null
    /// \param templateId as CZoFileOpen's
    /// Throws CMemoryException*.
    CTLMFileDialog(BOOL open, LPCSTR path, CWnd* parent, UINT templateId);
    ~CTLMFileDialog() override;

protected:
    BOOL OnFileNameOK() override;

private:
    CString m_csTitle;
    CString m_csExtension;
    CString m_csFilter;
};

/// Lets the user choose a tools file.
/// \param path shown first; receives the chosen full path: 260 bytes
/// \param open FALSE: to save
/// \param templateId of the dialog; 0: the suite's usual one
/// \return IDOK; IDCANCEL, also if \p path is null or there is no dialog. Nothing is thrown.
ZOGBL_API int ZoTlmSelectFile(char* path, int open, CWnd* parent, UINT templateId);
