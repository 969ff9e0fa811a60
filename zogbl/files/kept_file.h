/// \file
/// What a file holds is kept while the file is saved anew, so that a save that fails or is killed loses nothing.
///
/// A save in place empties the file first. Before that, its bytes are read into memory and written to a copy beside it:
/// "<path>.zo~", on Win32s "<path>" with '~' as the last character of the extension. The copy begins with a header that
/// names its file and tells length and sum of the bytes, so that a copy that was cut and somebody else's file of that
/// name are told from a whole one. It is open, and shared with nobody, until the save has ended.
///
/// | the copy's name is                      | then                                                             |
/// | --------------------------------------- | ---------------------------------------------------------------- |
/// | free, or a copy that was cut            | the copy is made                                                 |
/// | a whole copy, of a save that was killed | it stays; the bytes in memory serve this save                    |
/// | somebody else's file                    | it stays; the bytes in memory serve this save                    |
/// | in a folder that takes no file          | the bytes in memory serve this save                              |
/// | open: another program is saving         | the file is not touched                                          |
/// | on a disk that is full                  | the file is not touched                                          |
#pragma once

#include <common/without_throwing.h>

#include "ground/system_handle.h"

#include <afx.h>

#include <memory>

/// How a save ended.
enum class SaveResult {
    kSaved,
    kUnchanged, ///< not saved; the file is as it was before
    kCopyLeft,  ///< not saved, the file is damaged; what it held is in the copy
    kLost,      ///< not saved, the file is damaged; what it held could not be put back, and there is no copy of it
};

class KeptFile {
public:
    /// \param path of the file; empty: there is nothing to keep. Throws CMemoryException*.
    explicit KeptFile(LPCSTR path);

    /// Before a save: keeps what the file holds. \return FALSE if it cannot be kept; the save must not begin then
    BOOL Keep();
    /// After a save that succeeded: removes the copy, an older one as well.
    void Drop();
    /// After a save that failed: puts the bytes back, or removes the file if there was none.
    SaveResult PutBack();

    /// Looks for the copy of a save that was killed. One that is like the file is removed.
    /// \return TRUE: it is there; PutBack and Drop work on it
    BOOL Find();

    /// The name of the file that \p copy says to be a copy of, without its folder; empty if it is no copy.
    /// \param length receives the number of bytes that it says to keep. Throws CMemoryException*.
    static CString OwnerOf(LPCSTR copy, DWORD& length);

    /// Where the copy is, or would be.
    const CString& GetCopyPath() const { return m_csCopyPath; }

private:
    /// Bytes of a file; no data: there was no file.
    struct Bytes {
        std::unique_ptr<BYTE[]> data;
        DWORD length = 0;
        bool operator==(const Bytes& other) const;
    };
    enum class Copy { kNone, kOwn, kOlder };

    static bool ReadFileAt(LPCSTR path, Bytes& bytes);
    static bool ReadBytes(HANDLE file, DWORD length, Bytes& bytes);
    bool ReadCopy(Bytes& bytes, bool& isFree) const;
    bool WriteCopy() const;
    bool WriteBack() const;
    void RemoveCopy();

    CString m_csPath;
    CString m_csCopyPath;
    Bytes m_bytes;
    SystemHandle m_copy;
    Copy m_state = Copy::kNone;
};

/// Runs \p save, which returns whether it succeeded and throws nothing, while what the file holds is kept.
template <class SAVE> SaveResult SaveKeeping(LPCSTR path, SAVE save)
{
    return ResultOr(SaveResult::kUnchanged, [&] { // what is thrown is thrown before the save
        KeptFile kept(path);
        if (!kept.Keep())
            return SaveResult::kUnchanged;
        if (!save())
            return kept.PutBack();
        kept.Drop();
        return SaveResult::kSaved;
    });
}
