/// \file
/// Application framework: files. Included by afx.h.
#pragma once

#include <afxexc_.h>

/// An unbuffered disk file. Open reports through its result; everything else throws CFileException*.
class AFX_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)
public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeBinary = 0x8000
    };
    enum SeekPosition { begin = FILE_BEGIN, current = FILE_CURRENT, end = FILE_END };

    CFile() = default;
    CFile(LPCSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;

    /// \return FALSE on failure, \p pError (may be null) filled with the reason.
    virtual BOOL Open(LPCSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    virtual UINT Read(void* lpBuf, UINT nCount); ///< bytes read, fewer than asked at the end of the file
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual void Flush();
    virtual void Close();
    virtual void Abort(); ///< closes without reporting errors
    CString GetFilePath() const { return m_strFileName; }

    static void AFXAPI Remove(LPCSTR lpszFileName);
    static void AFXAPI Rename(LPCSTR lpszOldName, LPCSTR lpszNewName);

    HANDLE m_hFile = INVALID_HANDLE_VALUE;

private:
    CString m_strFileName;
};
