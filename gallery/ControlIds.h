#ifndef VTRUTILS_GALLERY_CONTROLIDS_H
#define VTRUTILS_GALLERY_CONTROLIDS_H

/* Ids of commands and controls, for the resource compiler, the windows and the tests that drive
   them. A button has the id of the command it gives. */

#define GALLERY_WINDOW_CLASS L"VtrGallery"
#define GALLERY_PAGE_CLASS L"VtrGalleryPage"

#define ID_ACCELERATORS 100

/* Commands: the main window takes the last two, the page on show the others. */
#define ID_OPEN 101
#define ID_SAVE 102
#define ID_SAVE_AS 103
#define ID_FIND 104
#define ID_FIND_NEXT 105
#define ID_EDIT 106
#define ID_NEXT_PAGE 107
#define ID_PREVIOUS_PAGE 108

/* Controls of the main window. */
#define ID_PAGE_LABEL 200
#define ID_PAGE_LIST 201

/* Controls of the page "INI document". */
#define ID_INI_FILE_LABEL 300
#define ID_INI_SORT 301
#define ID_INI_FIND_LABEL 302
#define ID_INI_FIND_TEXT 303
#define ID_INI_SECTIONS 304
#define ID_INI_PAIRS 305
#define ID_INI_VALUE_LABEL 306
#define ID_INI_VALUE_TEXT 307
#define ID_INI_SET 308
#define ID_INI_MESSAGE 309
#define ID_INI_COUNTS 310

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
#define ID_OBSERVERS_MESSAGE 409
#define ID_OBSERVERS_COUNTS 410
#define ID_OBSERVERS_SEND 420

/* Controls of the page "Regions". */
#define ID_REGIONS_HELP 500
#define ID_REGIONS_CONSOLIDATE 501
#define ID_REGIONS_CLEAR 502
#define ID_REGIONS_CANVAS 503
#define ID_REGIONS_MESSAGE 504
#define ID_REGIONS_COUNTS 505

/* Controls of the page "Language". */
#define ID_LANGUAGE_LABEL 600
#define ID_LANGUAGE_LIST 601
#define ID_LANGUAGE_USE 602
#define ID_LANGUAGE_KEY_LABEL 603
#define ID_LANGUAGE_KEY 604
#define ID_LANGUAGE_LOOK_UP 605
#define ID_LANGUAGE_TEXTS 606
#define ID_LANGUAGE_NOTE 607
#define ID_LANGUAGE_MESSAGE 608

/* Controls of the page "Table". */
#define ID_TABLE_FILE_LABEL 700
#define ID_TABLE_COLUMN_LABEL 701
#define ID_TABLE_COLUMN 702
#define ID_TABLE_KEEP_SORTED 703
#define ID_TABLE_FIND_LABEL 704
#define ID_TABLE_FIND_TEXT 705
#define ID_TABLE_LIST 706
#define ID_TABLE_FIELD_LABEL 707
#define ID_TABLE_FIELD_TEXT 708
#define ID_TABLE_SET 709
#define ID_TABLE_ADD 710
#define ID_TABLE_DELETE 711
#define ID_TABLE_REPLACE_LABEL 712
#define ID_TABLE_REPLACE_TEXT 713
#define ID_TABLE_BY_LABEL 714
#define ID_TABLE_BY_TEXT 715
#define ID_TABLE_REPLACE 716
#define ID_TABLE_MESSAGE 717
#define ID_TABLE_COUNTS 718

/* Controls of the page "Recent files". */
#define ID_RECENT_FILES_LABEL 800
#define ID_RECENT_FILES 801
#define ID_RECENT_REMOVE 802
#define ID_RECENT_CLEAR 803
#define ID_RECENT_FOLDERS_LABEL 804
#define ID_RECENT_FOLDERS 805
#define ID_RECENT_MESSAGE 806
#define ID_RECENT_COUNTS 807

/* Controls of the page "Files". */
#define ID_FILES_NAME_LABEL 900
#define ID_FILES_NAME 901
#define ID_FILES_FOLDER_LABEL 902
#define ID_FILES_FOLDER 903
#define ID_FILES_NAMES 904
#define ID_FILES_PLACES_LABEL 905
#define ID_FILES_PLACES 906
#define ID_FILES_SHOW 907
#define ID_FILES_MESSAGE 908

/* Controls of the page "Undo". */
#define ID_UNDO_LIST_LABEL 1000
#define ID_UNDO_LIST 1001
#define ID_UNDO_ITEM_LABEL 1002
#define ID_UNDO_ITEM 1003
#define ID_UNDO_ADD 1004
#define ID_UNDO_CHANGE 1005
#define ID_UNDO_REMOVE 1006
#define ID_UNDO_GROUP 1007
#define ID_UNDO_UNDO 1008
#define ID_UNDO_REDO 1009
#define ID_UNDO_UNDO_ALL 1010
#define ID_UNDO_REDO_ALL 1011
#define ID_UNDO_MESSAGE 1012
#define ID_UNDO_COUNTS 1013

/* Controls of the page "XML document". */
#define ID_XML_FILE_LABEL 1100
#define ID_XML_FIND_LABEL 1101
#define ID_XML_FIND_TEXT 1102
#define ID_XML_TREE_LABEL 1103
#define ID_XML_TREE 1104
#define ID_XML_DETAILS_LABEL 1105
#define ID_XML_DETAILS 1106
#define ID_XML_DECODE 1107
#define ID_XML_MESSAGE 1108
#define ID_XML_COUNTS 1109

/* Controls of the page "Text". */
#define ID_TEXT_LABEL 1200
#define ID_TEXT 1201
#define ID_TEXT_LENGTH_LABEL 1202
#define ID_TEXT_LENGTH 1203
#define ID_TEXT_SIZE_LABEL 1204
#define ID_TEXT_SIZE 1205
#define ID_TEXT_RESULTS 1206
#define ID_TEXT_RESULT_LABEL 1207
#define ID_TEXT_RESULT 1208
#define ID_TEXT_MESSAGE 1209

#endif
