/// \file
/// The tour's pictures of dialogs, sheets and wizards.
#pragma once

#include "main_frame.h"

/// Opens each dialog, sheet and wizard as a person would, in the language of the moment, and takes pictures of it.
/// Documents are open.
/// \param path of a picture; the dialog's name goes before its extension
/// \return the name of the first scene that failed; empty: none did
CString PictureDialogs(MainFrame& frame, const CString& path);

/// Prints the document that is shown, through the dialogs, to a file. \param file a full path
/// \return how many pages came out; 0: it could not be printed
int PrintDocument(HWND shell, const CString& file);
