/// \file
/// The command line of ZoProvision.
#pragma once

#include <afxcoll.h>

struct Arguments {
    bool help = false;
    bool remove = false;
    bool allUsers = true;      ///< with remove: the whole product, not only one user
    CString user;              ///< the logged-on one unless given
    CDWordArray languages;     ///< those whose library is installed unless given
    DWORD currentLanguage = 0; ///< 0: keep the one registered, or take the first
    CStringArray executables;  ///< full paths

    /// Reads the command line. \return FALSE, having said why on the error output, when it makes no sense.
    bool Parse(int count, char** words);
};

/// What the program says about itself.
extern const char* const kHelp;
