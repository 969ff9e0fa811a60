/// \file
/// Answers that the user wants to be given for good: see ZoAskOnce.
#pragma once

#include <afx.h>

#include <vector>

struct KeptAnswer {
    CString name;
    int answer; ///< number of the button
    CString question;
};

/// Whether an answer may be kept: not one that gives up, nor one that tries again, which would be given for ever.
bool CanBeKept(int answer);

/// \return 0 if none is kept, or what is kept is damaged
int FindKeptAnswer(LPCSTR name);
/// \param question kept with it, for ListKeptAnswers, as far as there is room
/// \return the registry's status, or ERROR_NOT_ENOUGH_MEMORY
DWORD KeepAnswer(LPCSTR name, int answer, LPCSTR question);
/// Those that are whole. Throws CMemoryException*. \return the registry's status
DWORD ListKeptAnswers(std::vector<KeptAnswer>& answers);
