/// \file
/// Printing a text.
#pragma once

#include "../document_settings.h"

/// Asks where, what and how often, and prints it; the user sees how far it is and can end it, and is told if it fails.
/// The printer and its settings are those of last time until the program ends.
/// \param owner disabled meanwhile \param title of the document: the job's name, and the heading of its pages
/// \param selected what is selected of the text; empty: nothing
void PrintText(CWnd& owner, const CString& title, const CString& text, const CString& selected,
               const DocumentSettings& settings);
