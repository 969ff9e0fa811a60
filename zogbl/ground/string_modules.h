/// \file
/// Many strings of one range, without a search for the module of each.
#pragma once

#include <afxwin.h>

/// The modules that hold strings of a range, in the order in which ZoGblFindStringModule searches. They must stay
/// loaded while the object lives.
class StringModules {
public:
    StringModules(UINT first, UINT last);

    /// Loads a string of the range as ZoGblLoadString does, but throws CMemoryException*. \return FALSE: there is none
    BOOL Load(UINT id, CString& text) const;

private:
    static constexpr int kMostModules = 8;

    void AddIfHolding(HINSTANCE module, UINT firstBlock, UINT lastBlock);

    HINSTANCE m_modules[kMostModules];
    int m_count = 0; ///< above kMostModules: there are too many to be kept
};
