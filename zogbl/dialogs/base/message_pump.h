/// \file
/// The windows of a thread that live while it works.
#pragma once

#include <afxwin.h>

/// Handles the messages that are waiting, for a tenth of a second at most: messages that come without end must not stop
/// the work. Keys and clicks come first, for the system hands them out behind all that windows post. It does so too
/// with drawing and timers; so \p dialog is drawn, and the timers of \p bar run, whatever else is waiting. What
/// handling them throws ends here.
/// \param dialog gets keys in a host without an application object; it may end meanwhile
/// \param bar a window of the dialog's \param isEnough looked at before each message
/// \return FALSE: the thread is to quit; the loop that waits for it learns of it
BOOL PumpMessages(CDialog& dialog, const CWnd& bar, const BOOL& isEnough);
