/// \file
/// Application framework: the raw entry of an extension library. Included by exactly one source file of the library.
///
/// The classes of a library register themselves from its static objects, before its DllMain runs. The object below is
/// the first of them: it moves the class list of the module state aside, so that AfxInitExtensionModule finds the
/// library's own classes alone and can put the host's back.
#pragma once

#include <afxext.h>

static struct AFX_RAW_ENTRY {
    AFX_RAW_ENTRY() { AfxBeginExtensionModule(); }
} afxRawEntry __attribute__((init_priority(101)));
