/// \file
/// Operations on files.
#pragma once

#include <zogbl/export.h>

/// Operations on files, each complete in itself: nothing stays open behind it. Paths are ANSI texts with backslashes,
/// relative ones below the current folder.
///
/// Operations return 0 on success, otherwise the system's error code right after the call that failed; only
/// ZoGetTempFileName answers 0 or 1. Where several calls fail the first error counts, unless closing the file fails
/// too: that error comes last and stands, for only then is it certain whether the data arrived. Nothing is thrown.
class ZOGBL_API CZoGlobalFileFunctions {
public:
    /// Creates an empty file, in place of one that is there. A file that is read-only or in use gives the system's
    /// error and stays as it is; a null path 87.
    static unsigned long Create(const char* path);
    /// Deletes a file; a read-only one stays and gives 5.
    static unsigned long Delete(const char* path);

    /// Sets \p exists to 1 if \p path is a file, else to 0. A missing file gives 2 (3 if its folder is missing too), a
    /// folder 0.
    /// A file whose only attributes are others than read-only, hidden, system, archive, normal and temporary - one that
    /// is compressed and nothing else, say - does not count as one.
    static unsigned long Exists(const char* path, unsigned long& exists);

    /// Both the same: gives a file or folder another path. A target that exists is not replaced. The system takes a
    /// file to another volume too, as a copy whose original it deletes; a folder it refuses to.
    static unsigned long Move(const char* from, const char* to);
    static unsigned long Rename(const char* from, const char* to);

    /// The low 32 bits of a file's size in bytes; 0 on failure, for a folder (which gives 0 as its status too), and if
    /// the system cannot tell.
    static unsigned long GetSize(const char* path, unsigned long& size);
    /// Cuts a file to \p size bytes, or extends it. For a folder nothing is done, with status 0.
    static unsigned long SetSize(const char* path, unsigned long size);

    /// A file's attributes as the system counts them; 0 on failure and for a folder (which gives 0 as its status too).
    static unsigned long GetAttributes(const char* path, unsigned long& attrs);
    /// Adds attributes to those that the file has: none is ever taken away. For a folder nothing is done, with status
    /// 0.
    static unsigned long SetAttributes(const char* path, unsigned long attrs);
    /// Takes no attribute away, \p attrs or other: the file keeps all it has, read-only included. The result tells
    /// whether its attributes could be read and written.
    static unsigned long ClearAttributes(const char* path, unsigned long attrs);

    /// Makes an empty file of a new name, beginning with TMP, in the temporary folder.
    /// \param buffer takes its full path: at least 260 bytes; null gives 87. A temporary folder with a path of more than
    /// 246 characters gives 111.
    static unsigned long GetTempFile(char* buffer);

    /// Makes up a file name: folder, prefix, four hexadecimal digits or more, extension.
    /// \param dir with or without a backslash at its end; null: the current folder.
    /// \param prefix, ext may be null; \p ext with or without its dot. No character has a special meaning.
    /// \param unique the number to use: nothing is created then, nor looked for. 0: the system's milliseconds, until a
    /// name is found that no file has, and an empty file of that name is created. A second is as a rule more than
    /// enough; the search ends after a minute, when each of the 65536 names had its turn.
    /// \param buffer at least 260 bytes, written on success only.
    /// \return 0; 1 when the file could not be created, the name would not fit in 260 bytes or \p buffer is null.
    static unsigned long ZoGetTempFileName(const char* dir, const char* prefix, const char* ext, unsigned int unique,
                                           char* buffer);
};
