// Resource numbers of the library and of its language libraries. C++, the resource compiler and the language generator
// all read this file, so it holds plain decimal or hexadecimal #defines and nothing else. A number occurs once a kind:
// ZO_IDS_ strings, ZO_IDD_ dialogs, ZO_IDR_ menus and raw data, ZO_IDB_ bitmaps, ZO_ID_ commands; ZO_IDC_ controls are
// told apart within their dialog.

#ifndef ZOGBL_RESOURCE_IDS_H
#define ZOGBL_RESOURCE_IDS_H

// 129 to 170: names of registry values. Strings of the library itself, alike in every language.


// 16045 to 16303: country names, in the order of the country table.
#define ZO_IDS_COUNTRY_FIRST 16045
#define ZO_IDS_COUNTRY_LAST 16303

// 24530 and 25598 to 25599: flags and country tables. Flags are cells of one bitmap, 8 across and 27 down on magenta;
// the tables refer to them by cell number.
#define ZO_IDB_FLAGS 24530
#define ZO_FLAG_COLUMNS 8
#define ZO_FLAG_ROWS 27
#define ZO_FLAG_COUNT 212
#define ZO_IDR_FLAG_TABLE 25598
#define ZO_IDR_COUNTRY_TABLE 25599

// 25463: the dialog whose font is the controls' font on double-byte systems. It is never shown.
#define ZO_IDD_SHARED_FONT 25463

// 30000 to 30999: the Workbench. 30000 menus and dialogs, 30010 commands, 30050 controls, 30100 strings.
#define ZO_IDR_WORKBENCH_MENU 30000
#define ZO_IDD_WORKBENCH_ABOUT 30001

#define ZO_ID_VIEW_COUNTRIES 30010
#define ZO_ID_VIEW_LANGUAGE 30011

#define ZO_IDC_ABOUT_ICON 30050
#define ZO_IDC_ABOUT_VERSION 30051

#define ZO_IDS_WORKBENCH_TITLE 30100
#define ZO_IDS_PAGE_COUNTRIES 30101
#define ZO_IDS_PAGE_LANGUAGE 30102
#define ZO_IDS_COLUMN_COUNTRY 30110
#define ZO_IDS_COLUMN_CODE 30111
#define ZO_IDS_COLUMN_PREFIX 30112
#define ZO_IDS_LABEL_LANGUAGE_LIBRARY 30120
#define ZO_IDS_LABEL_LANGUAGE 30121
#define ZO_IDS_LABEL_LIBRARY_PATH 30122
#define ZO_IDS_LABEL_COUNTRIES 30123
#define ZO_IDS_LABEL_NOVICE_MODE 30124
#define ZO_IDS_LABEL_PRODUCT_KEY 30125
#define ZO_IDS_LABEL_MODULE_KEY 30126
#define ZO_IDS_STATE_ON 30130
#define ZO_IDS_STATE_OFF 30131
#define ZO_IDS_STATE_NOT_LOADED 30132
#define ZO_IDS_STATUS_COUNTRIES 30140
#define ZO_IDS_VERSION_FORMAT 30141

// 57664 (0xE140) and up: commands whose numbers the application framework fixes.
#define ZO_ID_APP_ABOUT 0xE140
#define ZO_ID_APP_EXIT 0xE141

#endif
