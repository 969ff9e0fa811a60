/// \file
/// The edge at which exceptions end.
#pragma once

#include <afx.h>

/// Runs what may throw for want of memory. \return FALSE then.
template <class OPERATION> BOOL WithoutThrowing(OPERATION operation)
{
    try {
        return operation();
    } catch (CException* e) {
        e->Delete();
        return FALSE;
    }
}
