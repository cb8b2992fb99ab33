#pragma once

// Resource numbers of the module. They are part of what hosts and dialogs know: none is ever changed or used
// again.

#define IDD_DOCUMENT_PROPERTIES 216

#define IDB_DOCUMENTS_SMALL 222
#define IDB_DOCUMENTS_LARGE 221

#define IDC_PART_BOX 1000
#define IDC_GCODE_BOX 1001
#define IDC_SETUP_BOX 1002
#define IDC_ADDITIONAL_BOX 1003
#define IDC_PART_LIST 1004
#define IDC_GCODE_LIST 1005
#define IDC_SETUP_LIST 1006
#define IDC_ADDITIONAL_LIST 1007

#define IDR_ACTIONS_MENU 1008
#define IDB_DOCUMENT 1009
#define IDB_FOLDER 1010
#define IDS_USER_TYPE 1011
#define IDB_TOOLBOX 1012 // registered with the control; the module carries no such bitmap
#define IDS_PAGE_TYPE 1014
#define IDS_PAGE_CAPTION 1015
#define IDD_PROPERTY_PAGE 1016
#define IDD_MAIN 1017

#define ID_VIEW_SMALL_ICONS 1018
#define ID_VIEW_LARGE_ICONS 1019
#define ID_ACTION_OPEN 1020
#define ID_ACTION_DELETE 1021
#define IDB_ADD 1022
#define IDB_DELETE 1023
#define IDB_PART 1024
#define ID_VIEW_LIST 1025
#define ID_VIEW_DETAILS 1026
#define IDR_VIEW_MENU 1027 // the first number that no menu, dialog, text or bitmap of the module uses

#define IDC_HIGHLIGHT_FIRST 1028 // known to the properties dialog, which has no such controls
#define IDC_HIGHLIGHT_SECOND 1029
#define IDC_PROPERTIES_BOX 1030
#define IDC_PREVIEW 1031
#define IDC_HISTORY 1032
#define IDC_DOCUMENT_NAME 1033
#define IDC_DOCUMENT_PATH 1034
#define IDC_DOCUMENT_SIZE 1035
#define IDC_BROWSE 1036
#define IDC_DESCRIPTION 1037

#define IDC_SAVE 1039
#define IDC_ADD 1040
#define IDC_DELETE 1041
#define IDC_UPDATE 1042

// In the properties dialog
#define IDC_NAME_LABEL 1042
#define IDC_PATH_LABEL 1043
#define IDC_SIZE_LABEL 1044
#define IDC_DESCRIPTION_LABEL 1045
#define IDC_PREVIEW_STATUS 1046
#define IDC_HISTORY_BOX 1047
#define IDC_PREVIEW_BOX 1048
#define IDC_HELP_ICON 1049

#define IDS_VERB_PROPERTIES 1050 // the verb that containers offer in their menus
