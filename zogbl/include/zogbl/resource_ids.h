// Resource numbers of the library and of its language libraries. C++, the resource compiler and the language generator
// all read this file, so it holds plain decimal or hexadecimal #defines and nothing else. A number occurs once a kind:
// ZO_IDS_ strings, ZO_IDD_ dialogs, ZO_IDR_ menus and raw data, ZO_IDB_ bitmaps, ZO_ID_ commands; ZO_IDC_ controls are
// told apart within their dialog.

#ifndef ZOGBL_RESOURCE_IDS_H
#define ZOGBL_RESOURCE_IDS_H

// 128: the library's one icon.
#define ZO_IDI_LIBRARY 128

// 129 to 170: names of registry values, the first of them the suite's section. Strings of the library itself, alike in
// every language.
#define ZO_IDS_REG_SECTION 129
#define ZO_IDS_REG_LOCATION 130
#define ZO_IDS_REG_CURRENT_INDEX 131
#define ZO_IDS_REG_AREA_CITY_CODE 132
#define ZO_IDS_REG_INTERNATIONAL_ACCESS 133
#define ZO_IDS_REG_LOCAL_PREFIX 134
#define ZO_IDS_REG_LONG_DISTANCE_PREFIX 135
#define ZO_IDS_REG_COUNTRY_INDEX 136
#define ZO_IDS_REG_LOCATION_NAME 137
#define ZO_IDS_REG_COUNTRY_CODE 138
#define ZO_IDS_REG_LONG_DISTANCE_ACCESS 139
#define ZO_IDS_REG_USER_NAME 140
#define ZO_IDS_REG_ADDRESS1 141
#define ZO_IDS_REG_ADDRESS2 142
#define ZO_IDS_REG_CITY 143
#define ZO_IDS_REG_STATE 144
#define ZO_IDS_REG_ZIP_CODE 145
#define ZO_IDS_REG_ADDRESS_COUNTRY_INDEX 146
#define ZO_IDS_REG_EMAIL 147
#define ZO_IDS_REG_COMPUSERVE 148
#define ZO_IDS_REG_PHONE_HOME1 149
#define ZO_IDS_REG_PHONE_HOME2 150
#define ZO_IDS_REG_PHONE_WORK1 151
#define ZO_IDS_REG_PHONE_WORK2 152
#define ZO_IDS_REG_PHONE_DATA 153
#define ZO_IDS_REG_PHONE_FAX 154
#define ZO_IDS_REG_PHONE_MOBILE 155
#define ZO_IDS_REG_PHONE_PAGER 156
#define ZO_IDS_REG_AREA_HOME1 157
#define ZO_IDS_REG_AREA_HOME2 158
#define ZO_IDS_REG_AREA_WORK1 159
#define ZO_IDS_REG_AREA_WORK2 160
#define ZO_IDS_REG_AREA_DATA 161
#define ZO_IDS_REG_AREA_FAX 162
#define ZO_IDS_REG_AREA_MOBILE 163
#define ZO_IDS_REG_AREA_PAGER 164
#define ZO_IDS_REG_COMPANY 165
#define ZO_IDS_REG_DIAL_SUFFIX 166
#define ZO_IDS_REG_CALLER_ID 167
#define ZO_IDS_REG_CALL_WAITING 168
#define ZO_IDS_REG_DEPT 169
#define ZO_IDS_REG_TAPI_DIALING_ENABLED 170

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
#define ZO_ID_VIEW_TRACE 30012

#define ZO_IDC_ABOUT_ICON 30050
#define ZO_IDC_ABOUT_VERSION 30051

#define ZO_IDS_WORKBENCH_TITLE 30100
#define ZO_IDS_PAGE_COUNTRIES 30101
#define ZO_IDS_PAGE_LANGUAGE 30102
#define ZO_IDS_PAGE_TRACE 30103
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
#define ZO_IDS_TRACE_LEVEL 30150
#define ZO_IDS_TRACE_LEVEL_OFF 30151
#define ZO_IDS_TRACE_LEVEL_ON 30152
#define ZO_IDS_TRACE_LEVEL_IMMEDIATE 30153
#define ZO_IDS_TRACE_PAUSE 30154
#define ZO_IDS_TRACE_STAMPS 30155
#define ZO_IDS_TRACE_WRITE_LINE 30156
#define ZO_IDS_TRACE_WRITE_BLOCK 30157
#define ZO_IDS_TRACE_FLUSH 30158
#define ZO_IDS_TRACE_STATE_OFF 30159
#define ZO_IDS_TRACE_STATE_OPEN 30160
#define ZO_IDS_TRACE_STATE_FAILED 30161

// 57664 (0xE140) and up: commands whose numbers the application framework fixes.
#define ZO_ID_APP_ABOUT 0xE140
#define ZO_ID_APP_EXIT 0xE141

#endif
