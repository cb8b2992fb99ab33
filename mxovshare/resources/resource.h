#pragma once

// Resource numbers of the host's resource module. Every language carries the same texts under the same
// numbers.

#define IDS_COLUMN_NAME 137
#define IDS_COLUMN_SIZE 138
#define IDS_COLUMN_DATE 139
#define IDS_HISTORY_OPERATION 140
#define IDS_HISTORY_BY 141
#define IDS_DOCUMENT_PROPERTIES 144
#define IDS_LABEL_NAME 145
#define IDS_LABEL_PATH 146
#define IDS_LABEL_DESCRIPTION 147
#define IDS_OPERATION_UPDATED 148
#define IDS_ASK_SAVE 149
#define IDS_NO_PREVIEW 150
#define IDS_LINK_FILE 151
#define IDS_LINK_NOT_FOUND 152

#define IDB_NO_PREVIEW 145
#define IDB_HELP 149

#define IDI_SECTION_UNFOLDED 146
#define IDI_SECTION_FOLDED 147
