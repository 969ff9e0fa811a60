/// \file
/// Paths as text.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

class CDC;

/// Takes paths apart and puts them together, as text: no file is looked for. Characters of two bytes are kept whole, so
/// a second byte that looks like a backslash is none. A null path counts as an empty one; out arguments may be the
/// input itself. When memory has run out the out text stays as it was.
///
///     path               ExtractNameFromPath   ExtractPathFromPath
///     C:\folder\file     file                  C:\folder
///     C:\file            file                  C:\               (a drive is its root)
///     \file              file                  (empty)
///     C:file             file                  C                 (without the colon)
///     file               file                  file              (unchanged)
class ZOGBL_API CZoGlobalFileNameFunctions {
public:
    /// The text behind the last backslash; without one, behind the last colon; without either, the whole path.
    static void ExtractNameFromPath(const char* path, CString& name);
    /// The text before the last backslash, with a backslash behind it again if it is a bare drive; without a backslash,
    /// the text before the last colon; without either, the whole path.
    static void ExtractPathFromPath(const char* path, CString& dir);

    /// \p dir and \p name with a backslash between them, unless \p dir is empty or its last byte is a backslash or a
    /// colon. It is the last byte that counts, not the last character: a folder whose name ends in a character of two
    /// bytes, the second that of a backslash, gets none. Hand such a folder over with its backslash.
    static void MakePath(const char* dir, const char* name, CString& path);

    /// Shortens a path to the width of \p maxWidth pixels in the font of \p dc: the whole path; else its root - the
    /// drive, or two backslashes and the server - with "\..." and as many of the last folders as there is room for;
    /// else the file name alone, however wide.
    /// \param out takes the result: at least 260 bytes. A file name of 260 bytes and more is cut.
    /// \param dc null: every text has the width 0.
    static void AbbreviateFilePath(const char* path, char* out, CDC* dc, int maxWidth);

    /// Cuts \p path before its last dot, wherever that stands - in a folder's name, if the file's has none - and adds a
    /// dot and \p ext, which is given without a dot. Null adds nothing.
    static void ReplaceExtension(const char* path, CString& out, const char* ext);
    static void ReplaceExtension(CString& path, const char* ext);
};
