#ifndef VTRUTILS_GALLERY_APP_CONTROLIDS_H
#define VTRUTILS_GALLERY_APP_CONTROLIDS_H

/* Ids of commands and controls, for the resource compiler, the windows and the tests that drive
   them. A button has the id of the command it gives. */

#define GALLERY_WINDOW_CLASS L"VtrGallery"
#define GALLERY_PAGE_CLASS L"VtrGalleryPage"
#define GALLERY_PAGE_AREA_CLASS L"VtrGalleryPageArea"

#define ID_ACCELERATORS 100

/* Commands: the main window takes those for pages, the page on show the others. */
#define ID_OPEN 101
#define ID_SAVE 102
#define ID_SAVE_AS 103
#define ID_FIND 104
#define ID_FIND_NEXT 105
#define ID_EDIT 106
#define ID_NEXT_PAGE 107
#define ID_PREVIOUS_PAGE 108
#define ID_UNDO 109
#define ID_REDO 110
#define ID_EXIT 111
#define ID_CUT 112
#define ID_COPY 113
#define ID_PASTE 114
#define ID_SELECT_ALL 115
#define ID_HELP_PAGE 116
#define ID_ABOUT 117
#define ID_PLAY 118
#define ID_RESUME 119
#define ID_TRY 120

/* A window with a text to read. */
#define ID_READER 150
#define ID_READER_TEXT 151

/* Controls of the main window. */
#define ID_PAGE_LABEL 200
#define ID_PAGE_LIST 201
#define ID_PAGE_HEADING 202
#define ID_PAGE_SENTENCE 203

/* What every page tells, at its lower edge. */
#define ID_PAGE_MESSAGE 210
#define ID_PAGE_STATE 211

/* Controls that all pages with documents have. */
#define ID_DOCUMENT_FILE 250
#define ID_DOCUMENT_FIND_LABEL 251
#define ID_DOCUMENT_FIND_TEXT 252
#define ID_DOCUMENT_VALUE_LABEL 253
#define ID_DOCUMENT_VALUE_TEXT 254
#define ID_DOCUMENT_SET 255

/* Controls of the page "INI document". */
#define ID_INI_SORT 300
#define ID_INI_SECTIONS 301
#define ID_INI_PAIRS 302

/* Controls of the page "Observers"; a button that sends has the code added. */
#define ID_OBSERVERS_LABEL 400
#define ID_OBSERVERS_LIST 401
#define ID_OBSERVERS_ADD 402
#define ID_OBSERVERS_REMOVE 403
#define ID_OBSERVERS_REMOVE_ALL 404
#define ID_OBSERVERS_SEND_LABEL 405
#define ID_OBSERVERS_LOG_LABEL 406
#define ID_OBSERVERS_LOG 407
#define ID_OBSERVERS_CLEAR 408
#define ID_OBSERVERS_SEND 420

/* Controls of the page "Regions". */
#define ID_REGIONS_HELP 500
#define ID_REGIONS_CONSOLIDATE 501
#define ID_REGIONS_CLEAR 502
#define ID_REGIONS_CANVAS 503

/* Controls of the page "Language". */
#define ID_LANGUAGE_LABEL 600
#define ID_LANGUAGE_LIST 601
#define ID_LANGUAGE_USE 602
#define ID_LANGUAGE_KEY_LABEL 603
#define ID_LANGUAGE_KEY 604
#define ID_LANGUAGE_LOOK_UP 605
#define ID_LANGUAGE_TEXTS 606
#define ID_LANGUAGE_NOTE 607

/* Controls of the page "Table". */
#define ID_TABLE_COLUMN_LABEL 700
#define ID_TABLE_COLUMN 701
#define ID_TABLE_KEEP_SORTED 702
#define ID_TABLE_LIST 703
#define ID_TABLE_ADD 704
#define ID_TABLE_DELETE 705
#define ID_TABLE_REPLACE_LABEL 706
#define ID_TABLE_REPLACE_TEXT 707
#define ID_TABLE_BY_LABEL 708
#define ID_TABLE_BY_TEXT 709
#define ID_TABLE_REPLACE 710

/* Controls of the page "Recent files". */
#define ID_RECENT_FILES_LABEL 800
#define ID_RECENT_FILES 801
#define ID_RECENT_REMOVE 802
#define ID_RECENT_CLEAR 803
#define ID_RECENT_FOLDERS_LABEL 804
#define ID_RECENT_FOLDERS 805

/* Controls of the page "Files". */
#define ID_FILES_NAME_LABEL 900
#define ID_FILES_NAME 901
#define ID_FILES_FOLDER_LABEL 902
#define ID_FILES_FOLDER 903
#define ID_FILES_NAMES 904
#define ID_FILES_PLACES_LABEL 905
#define ID_FILES_PLACES 906
#define ID_FILES_SHOW 907
#define ID_FILES_PROGRAM_LABEL 909
#define ID_FILES_PROGRAM_LINK 910
#define ID_FILES_PROGRAM 911

/* Controls of the page "Undo". */
#define ID_UNDO_LIST_LABEL 1000
#define ID_UNDO_LIST 1001
#define ID_UNDO_ITEM_LABEL 1002
#define ID_UNDO_ITEM 1003
#define ID_UNDO_ADD 1004
#define ID_UNDO_CHANGE 1005
#define ID_UNDO_REMOVE 1006
#define ID_UNDO_GROUP 1007
#define ID_UNDO_UNDO_ALL 1008
#define ID_UNDO_REDO_ALL 1009

/* Controls of the page "XML document". */
#define ID_XML_TREE_LABEL 1100
#define ID_XML_TREE 1101
#define ID_XML_DETAILS_LABEL 1102
#define ID_XML_DETAILS 1103
#define ID_XML_DECODE 1104

/* Controls of the page "Text". */
#define ID_TEXT_LABEL 1200
#define ID_TEXT 1201
#define ID_TEXT_LENGTH_LABEL 1202
#define ID_TEXT_LENGTH 1203
#define ID_TEXT_SIZE_LABEL 1204
#define ID_TEXT_SIZE 1205
#define ID_TEXT_RESULTS_LABEL 1206
#define ID_TEXT_RESULTS 1207
#define ID_TEXT_RESULT_LABEL 1208
#define ID_TEXT_RESULT 1209
#define ID_TEXT_ADDRESS_LABEL 1211
#define ID_TEXT_ADDRESS_LINK 1212
#define ID_TEXT_ADDRESS 1213

/* Controls of the page "Dialogs". */
#define ID_DIALOGS_MESSAGE_LABEL 1300
#define ID_DIALOGS_MESSAGE 1301
#define ID_DIALOGS_BUTTONS_LABEL 1302
#define ID_DIALOGS_BUTTONS 1303
#define ID_DIALOGS_ICON_LABEL 1304
#define ID_DIALOGS_ICON 1305
#define ID_DIALOGS_MAY_STOP 1306
#define ID_DIALOGS_SHOW 1307
#define ID_DIALOGS_WORK_LABEL 1308
#define ID_DIALOGS_BY_TIMER 1309
#define ID_DIALOGS_METER 1310
#define ID_DIALOGS_OPERATION 1311
#define ID_DIALOGS_OPACITY_LABEL 1312
#define ID_DIALOGS_OPACITY 1313
#define ID_DIALOGS_CENTRE 1314
#define ID_DIALOGS_FIT 1315
#define ID_DIALOGS_DROPPED_LABEL 1316
#define ID_DIALOGS_DROPPED 1317

/* Controls of the page "System". */
#define ID_SYSTEM_FACTS 1400
#define ID_SYSTEM_PROCESS_LABEL 1401
#define ID_SYSTEM_PROCESS 1402
#define ID_SYSTEM_CLEAR 1403
#define ID_SYSTEM_SWITCH_ON 1404
#define ID_SYSTEM_CHART 1405

/* Controls of the page "Folders"; the boxes of the tree's flags follow the first one. */
#define ID_FOLDERS_RELOAD 1500
#define ID_FOLDERS_TREE_LABEL 1501
#define ID_FOLDERS_TREE 1502
#define ID_FOLDERS_FILES_LABEL 1503
#define ID_FOLDERS_FILES 1504
#define ID_FOLDERS_FOLDER 1505
#define ID_FOLDERS_FLAG 1520

/* Controls of the page "Promo". */
#define ID_PROMO_SIZE_LABEL 1700
#define ID_PROMO_SIZE 1701
#define ID_PROMO_STOP 1702
#define ID_PROMO_EFFECT_LABEL 1703
#define ID_PROMO_EFFECT 1704
#define ID_PROMO_TIME_LABEL 1705
#define ID_PROMO_TIME 1706
#define ID_PROMO_STAGE 1707
#define ID_PROMO_STEPS_LABEL 1708
#define ID_PROMO_STEPS 1709
#define ID_PROMO_SCRIPT_LABEL 1710
#define ID_PROMO_SCRIPT 1711

/* Icons of the tree of folders. */
#define ID_ICON_FOLDER 1600
#define ID_ICON_OPEN_FOLDER 1601
#define ID_ICON_DRIVE 1602
#define ID_ICON_CD 1603
#define ID_ICON_REMOVABLE 1604
#define ID_ICON_NETWORK 1605
#define ID_ICON_DOCUMENTS 1606
#define ID_ICON_PICTURES 1607
#define ID_ICON_DESKTOP 1608
#define ID_ICON_FOLDER_SHORTCUT 1609
#define ID_ICON_OPEN_FOLDER_SHORTCUT 1610
#define ID_ICON_DRIVE_SHORTCUT 1611
#define ID_ICON_CD_SHORTCUT 1612
#define ID_ICON_REMOVABLE_SHORTCUT 1613
#define ID_ICON_NETWORK_SHORTCUT 1614
#define ID_ICON_DOCUMENTS_SHORTCUT 1615
#define ID_ICON_PICTURES_SHORTCUT 1616
#define ID_ICON_DESKTOP_SHORTCUT 1617

/* The pages and the languages in the menus, by their order. */
#define ID_FIRST_PAGE 20000
#define ID_FIRST_LANGUAGE 21000

#endif
