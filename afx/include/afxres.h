/// \file
/// Application framework: standard command and control identifiers. Plain defines, shared with resource scripts.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define AFX_IDW_PANE_FIRST 0xE900 /* the child window that fills a frame's client area */
#define AFX_IDM_FIRST_MDICHILD 0xFF00 /* the system's commands that activate the windows of an MDI client */

#define ID_APP_ABOUT 0xE140
#define ID_APP_EXIT 0xE141
