/// \file
/// Paths as text.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

class CDC;

/// Takes paths apart and puts them together, as text only: no file is looked for. Unlike functions that work on bytes,
/// these keep characters of two bytes whole: a second byte that looks like a backslash is none.
///
/// A null path counts as an empty one. An out argument may be the input itself. If memory runs out, it stays unchanged.
///
///     path               ExtractNameFromPath   ExtractPathFromPath
///     C:\folder\file     file                  C:\folder
///     C:\file            file                  C:\               (a drive is its root)
///     \file              file                  (empty)
///     C:file             file                  C                 (without the colon)
///     file               file                  file              (unchanged)
class ZOGBL_API CZoGlobalFileNameFunctions {
public:
    /// The text behind the last backslash. If there is none, behind the last colon; if neither, the whole path.
    static void ExtractNameFromPath(const char* path, CString& name);
    /// The text before the last backslash; a drive alone gets its backslash back. If there is none, the text before the
    /// last colon; if neither, the whole path.
    static void ExtractPathFromPath(const char* path, CString& dir);

    /// \p dir and \p name with a backslash between them, unless \p dir is empty or its last byte is a backslash or a
    /// colon. The last byte counts, not the last character; this is prescribed. So a folder gets no backslash if it
    /// ends in a character of two bytes whose second is that of a backslash: give such a folder with its backslash.
    static void MakePath(const char* dir, const char* name, CString& path);

    /// Shortens a path to the width of \p maxWidth pixels in the font of \p dc. The result is the first of these that
    /// fits:
    ///
    ///   - the whole path
    ///   - the root (the drive, or two backslashes and the server), "\..." and as many of the last folders as fit
    ///   - the file name alone, however wide
    ///
    /// \param out at least 260 bytes; a file name of 260 bytes or more is cut. Null: nothing is done
    /// \param dc null: every text has the width 0
    static void AbbreviateFilePath(const char* path, char* out, CDC* dc, int maxWidth);

    /// Cuts \p path before its last dot and adds a dot and \p ext, which has no dot of its own. Null adds nothing. If
    /// the file's name has no dot, the last one may be in a folder's name: the path is cut there. This is prescribed.
    static void ReplaceExtension(const char* path, CString& out, const char* ext);
    static void ReplaceExtension(CString& path, const char* ext);
};
