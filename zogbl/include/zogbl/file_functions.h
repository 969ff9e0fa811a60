/// \file
/// Operations on files.
#pragma once

#include <zogbl/export.h>

/// Operations on files that return the system's error code. Nothing stays open after a call, and nothing is thrown.
/// Paths are ANSI texts with backslashes; a relative path lies below the current folder.
///
/// Operations return 0 on success, otherwise the system's error code right after the call that failed.
/// ZoGetTempFileName alone returns 0 or 1. If several calls fail, the first error is the result. An error of closing
/// the file replaces it, because only closing tells whether the data arrived.
class ZOGBL_API CZoGlobalFileFunctions {
public:
    /// Creates an empty file. A file that is there is replaced; if it is read-only or in use, it stays as it is and the
    /// result is the system's error. A null path gives 87.
    static unsigned long Create(const char* path);
    /// Deletes a file. A read-only file stays and gives 5.
    static unsigned long Delete(const char* path);

    /// Looks for a file:
    ///
    ///     a file    result 0, exists 1
    ///     a folder  result 0, exists 0
    ///     nothing   result 2, or 3 if the folder is missing too; exists 0
    ///
    /// A file counts only if it is read-only, hidden, system, archive, normal or temporary. For example, a file that is
    /// compressed and nothing else gives result 0 and exists 0. This is prescribed.
    static unsigned long Exists(const char* path, unsigned long& exists);

    /// Both do the same: give a file or folder another path. A target that exists is not replaced. If the target is on
    /// another volume, the system copies a file and deletes the original; a folder it refuses to move.
    static unsigned long Move(const char* from, const char* to);
    static unsigned long Rename(const char* from, const char* to);

    /// The low 32 bits of a file's size in bytes. 0 on failure. A folder, and a file whose size the system cannot tell,
    /// give the size 0 and the result 0.
    static unsigned long GetSize(const char* path, unsigned long& size);
    /// Cuts a file to \p size bytes, or extends it. A folder stays as it is and gives 0.
    static unsigned long SetSize(const char* path, unsigned long size);

    /// A file's attributes as the system's bits. 0 on failure. A folder gives the attributes 0 and the result 0.
    static unsigned long GetAttributes(const char* path, unsigned long& attrs);
    /// Adds attributes to those that the file has; none is taken away. A folder stays as it is and gives 0.
    static unsigned long SetAttributes(const char* path, unsigned long attrs);
    /// Clears nothing: the file keeps all its attributes, those of \p attrs included. This is prescribed. The result
    /// tells whether the attributes could be read and written.
    static unsigned long ClearAttributes(const char* path, unsigned long attrs);

    /// Creates an empty file with a new name, which begins with TMP, in the temporary folder. If that folder's path has
    /// more than 246 characters, the result is 111.
    /// \param buffer gets the full path: at least 260 bytes; null gives 87
    static unsigned long GetTempFile(char* buffer);

    /// Makes up a file name: folder, prefix, at least four hexadecimal digits, extension.
    /// \param dir with or without a backslash at its end; null: the current folder; empty: the current drive's root
    /// \param prefix may be null
    /// \param ext with or without its dot; may be null. No character of these texts has a special meaning
    /// \param unique
    ///   not 0  the number to use; no file is created or looked for
    ///   0      the low 16 bits of the system's milliseconds, until no file has the name; then an empty file of that
    ///          name is created. The search ends after 65536 tries or milliseconds; a second is usually enough
    /// \param buffer at least 260 bytes; written on success only
    /// \return 0; 1 if the file could not be created, the search found no name, the name with its terminator needs more
    /// than 260 bytes, or \p buffer is null
    static unsigned long ZoGetTempFileName(const char* dir, const char* prefix, const char* ext, unsigned int unique,
                                           char* buffer);
};
