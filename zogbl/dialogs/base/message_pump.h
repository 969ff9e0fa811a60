/// \file
/// The windows of a thread that live while it works.
#pragma once

#include <afxwin.h>

/// Handles the messages that are waiting, for 50 milliseconds at most: messages that come without end must not stop the
/// work. What handling them throws ends here.
/// \param dialog gets keys in a host without an application object \param isEnough looked at before each message
/// \return FALSE: the thread is to quit; the loop that waits for it learns of it
BOOL PumpMessages(CDialog& dialog, const BOOL& isEnough);
