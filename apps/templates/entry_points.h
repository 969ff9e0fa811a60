/// \file
/// What a sample template library is; entry_points.cpp makes the exported functions of it.
#pragma once

#include <afxwin.h>

struct TemplateLibrary {
    int id;          ///< place among the other libraries' types
    WORD resourceId; ///< string (in the language library) and icon of the type
    CRuntimeClass* document;
    CRuntimeClass* frame;
    CRuntimeClass* view;
    WORD maximum; ///< documents open at once
    /// A command of the novice bar for one of the library's documents; null when there are none.
    void (*noviceCommand)(UINT command, CDocument* document);
};

/// Defined by each library.
const TemplateLibrary& GetTemplateLibrary();
