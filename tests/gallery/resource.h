#pragma once

#define IDD_GALLERY 101
#define IDD_SECTIONS 102
#define IDD_COLLAPSIBLE 103

// The gallery: the places of the two pages, and the record of what they report.
#define IDC_SECTIONS_PLACE 1001
#define IDC_COLLAPSIBLE_PLACE 1002
#define IDC_EVENTS 1003

// Foldable sections.
#define IDC_OPERATIONS_BOX 1010
#define IDC_TOOLS_BOX 1011
#define IDC_NOTES_BOX 1012
#define IDC_SHOW_TOOLS 1020
#define IDC_ENABLE_TOOLS 1021
#define IDC_FOLD_TOOLS 1022
#define IDC_TALLER 1023
#define IDC_SHORTER 1024
#define IDC_TOOLS 1025
#define IDC_NOTES 1026

// Collapsible boxes.
#define IDC_TITLE_BOX 1030
#define IDC_COLOURS_BOX 1031
#define IDC_FEEDS_BOX 1032
#define IDC_TITLE_LEFT 1040
#define IDC_TITLE_CENTRED 1041
#define IDC_TITLE_RIGHT 1042
#define IDC_BOLD 1043
#define IDC_ITALIC 1044
#define IDC_UNDERLINE 1045
#define IDC_LARGER 1046
#define IDC_SMALLER 1047
#define IDC_COPPER 1050
#define IDC_FOREST 1051
#define IDC_SYSTEM 1052
#define IDC_SPINDLE 1060
#define IDC_FEED 1061
#define IDC_FOLD_ALL 1070
#define IDC_UNFOLD_ALL 1071
