/// \file
/// Application framework: standard command and control identifiers. Plain defines, shared with resource scripts.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define AFX_IDS_IDLEMESSAGE 0xE001 /* string: what the message line says while nothing else is to be said */

#define AFX_IDW_TOOLBAR 0xE800 /* bars; the commands that show and hide them have their numbers */
#define AFX_IDW_STATUS_BAR 0xE801
#define AFX_IDW_PANE_FIRST 0xE900     /* the child window that fills a frame's client area */
#define AFX_IDM_FIRST_MDICHILD 0xFF00 /* the system's commands that activate the windows of an MDI client */

/* File commands, the question whether to save (%1 stands for the document's name), what a failed print job tells. */
#define ID_FILE_NEW 0xE100
#define ID_FILE_OPEN 0xE101
#define ID_FILE_CLOSE 0xE102
#define ID_FILE_SAVE 0xE103
#define ID_FILE_SAVE_AS 0xE104
#define ID_FILE_SAVE_COPY_AS 0xE105
#define ID_FILE_PRINT 0xE107
#define ID_FILE_PRINT_DIRECT 0xE108 /* to the default printer, without a dialog */
#define AFX_IDP_ASK_TO_SAVE 0xF104
#define AFX_IDP_FAILED_TO_START_PRINT 0xF106

#define ID_SEPARATOR 0 /* in place of a command: a gap between the buttons of a bar */
#define ID_VIEW_TOOLBAR AFX_IDW_TOOLBAR
#define ID_VIEW_STATUS_BAR AFX_IDW_STATUS_BAR

#define ID_APP_ABOUT 0xE140
#define ID_APP_EXIT 0xE141

/* Strings: what the user is told when the exchange of a dialog's data fails. */
#define AFX_IDP_PARSE_INT 0xF110
#define AFX_IDP_PARSE_REAL 0xF111
#define AFX_IDP_PARSE_INT_RANGE 0xF112
#define AFX_IDP_PARSE_REAL_RANGE 0xF113
#define AFX_IDP_PARSE_STRING_SIZE 0xF114
#define AFX_IDP_PARSE_UINT 0xF117

/* The buttons of a property sheet beside OK and Cancel, as the system numbers them. */
#define ID_APPLY_NOW 0x3021
#define ID_WIZBACK 0x3023
#define ID_WIZNEXT 0x3024
#define ID_WIZFINISH 0x3025
