// Numbers of the tests' own texts; the resource compiler reads them too.
#ifndef HOST_IDS_H
#define HOST_IDS_H

#define ZO_IDR_HOST_MENU 30000
#define ZO_IDS_HOST_TEXT 30002

#endif
