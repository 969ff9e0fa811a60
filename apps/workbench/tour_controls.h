/// \file
/// The tour's pictures of the page of controls.
#pragma once

#include "main_frame.h"

/// Takes pictures of the page of controls, in the language of the moment: in two colours of high contrast, in a large
/// font, disabled, and from right to left. The frame is shown, with another page afterwards.
/// \param path of a picture; what it shows goes before its extension
/// \return the path of the first that could not be saved; empty: all were
CString PictureControls(MainFrame& frame, const CString& path);
