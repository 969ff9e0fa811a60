/// \file
/// How documents are shown and printed: the user's settings, which the Workbench edits and the template libraries obey.
#pragma once

#include <afxwin.h>

struct DocumentSettings {
    LOGFONT font = {};            ///< its height in pixels of the screen; 0: that of the dialogs
    COLORREF color = CLR_DEFAULT; ///< of the text; CLR_DEFAULT: the system's
    BOOL heading = TRUE;          ///< printed pages have title and number

    BOOL IsFontUsual() const { return font.lfHeight == 0; }
};

/// Hint to the views of documents, that the settings are others.
constexpr LPARAM kDocumentSettingsChanged = 1;

/// What is kept. What is missing or damaged is as at the beginning.
DocumentSettings LoadDocumentSettings();
/// \return 0 or the registry's status
DWORD SaveDocumentSettings(const DocumentSettings& settings);
