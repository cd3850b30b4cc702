#ifndef VTRUTILS_UI_DIALOGIDS_H
#define VTRUTILS_UI_DIALOGIDS_H

/* The library's dialog templates and their controls; IDOK and its like are those of Windows.
   Private to the library; read by the resource compiler too. */

#define IDD_MESSAGE_BOX 199
#define IDC_MESSAGE_ICON 1193
#define IDC_MESSAGE 1194
#define IDC_DO_NOT_ASK 1197

#define IDD_PROGRESS_METER 248
#define IDC_METER_BAR 1108

#define IDD_LONG_OPERATION 258
#define IDC_OPERATION_BAR 1395
#define IDC_OPERATION_TEXT 1824
#define IDC_OPERATION_PERCENT 1825

#endif
