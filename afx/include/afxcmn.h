/// \file
/// Application framework: the common controls, by its parts.
///
/// What is said of the system's controls in afxctl_.h holds for these. Their library is loaded when the first one is
/// created; without it Create fails. Operations whose comment names a version of it fail with an older library: 4.70
/// came with Internet Explorer 3, 4.71 with 4.
#pragma once

class CImageList;

#include <afximl_.h> // image lists
#include <afxlvw_.h> // list views
#include <afxrng_.h> // spin buttons, progress bars, sliders
#include <afxtab_.h> // headers, tabs
#include <afxtbr_.h> // tool bars, status bars
#include <afxtip_.h> // tool tips
#include <afxtvw_.h> // tree views
