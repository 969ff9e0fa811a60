/// \file
/// The Workbench by itself: a host's life, step by step.
#pragma once

class MainFrame;

#include <afx.h>

/// Goes through every step, writes a line for each to the standard output and FOLDER\tour.txt, and leaves pictures of
/// the windows in FOLDER. Stops at the first step that fails. \return 0 when all steps succeeded, else 1.
int RunTour(LPCSTR folder);
