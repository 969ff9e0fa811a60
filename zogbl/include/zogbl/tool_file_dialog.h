/// \file
/// The choice of a tools file.
#pragma once

#include <zogbl/file_open.h>
#include <zogbl/tool_file.h>

/// Asks for the name of a tools file. Opening takes an existing file that is one; another is refused with a message.
/// Saving asks before it overwrites, and refuses a file that cannot be written.
class ZOGBL_API CTLMFileDialog : public CZoFileOpen {
public:
    /// \param path what to begin with, or null \param templateId as CZoFileOpen's. Throws CMemoryException*.
    CTLMFileDialog(BOOL open, LPCSTR path, CWnd* parent, UINT templateId);
    ~CTLMFileDialog() override;

protected:
    BOOL OnFileNameOK() override;

private:
    CString m_csTitle;
    CString m_csExtension;
    CString m_csFilter;
};

/// Lets the user choose a tools file. \param path what to begin with; takes the full path that was chosen: 260 bytes
/// \param open FALSE: to save to \param templateId of the dialog, 0 for the suite's usual one
/// \return IDOK; IDCANCEL also for a null \p path and when there is no dialog. Nothing is thrown.
ZOGBL_API int ZoTlmSelectFile(char* path, int open, CWnd* parent, UINT templateId);
