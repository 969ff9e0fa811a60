// Numbers of the sample libraries' resources. The language generator reads this file too (zogbl/resource_ids.h says how
// it is written). Plug-ins and their hosts share one space of numbers, so the Workbench has others.

#ifndef TEMPLATE_IDS_H
#define TEMPLATE_IDS_H

// A command of the host's for the document of telephone calls: another call has come.
#define ZO_ID_NOTE_CALL 30026

// 30301 to 30303: types of documents. Each is a string, and an icon of the same number in the library of the type.
#define ZO_IDS_VIEWER_TYPE 30301
#define ZO_IDS_DATA_TYPE 30302
#define ZO_IDS_TELEPHONE_TYPE 30303

#define ZO_IDS_CALL_NOTED 30310
#define ZO_IDS_DOCUMENT_ASK_TO_SAVE 30311

// 30320 to 30329: printing. The command's number is fixed by the application framework; the host's menu has it.
#define ZO_IDS_JOB_TITLE 30320
#define ZO_IDS_JOB_PROGRESS 30321
#define ZO_IDS_JOB_PAGE 30322
#define ZO_IDS_JOB_FAILED 30323
#define ZO_IDS_JOB_FEW_PAGES 30324
#define ZO_IDS_JOB_NO_DIALOG 30325

#endif
