/// \file
/// What an editor tells its user about a file that is kept while it is saved: see files/kept_file.h.
#pragma once

#include "files/kept_file.h"

#include <afxwin.h>

/// What has become of the file at \p path after a save that failed, in the user's language. Throws CMemoryException*.
CString DescribeSave(SaveResult result, LPCSTR path);

/// Asks whether to put back what a file held, if a save of it was killed; tells the user if that fails. With No all
/// stays, and the question comes again until the file has been saved.
/// \param title of the boxes \return TRUE: the file has been put back. Throws CMemoryException*.
BOOL OfferKeptFile(const CWnd* owner, LPCSTR path, LPCSTR title);
