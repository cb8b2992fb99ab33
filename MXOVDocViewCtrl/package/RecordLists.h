// The documents that are shown, by category. The lists live as long as the module and are shared by its
// dialogs.
#pragma once

#include "DocumentRecord.h"

namespace docview {

extern RecordList partAssemblyRecords;
extern RecordList gCodeRecords;
extern RecordList setupSheetRecords;
extern RecordList additionalRecords;

/// The list of a category; null for a number that is no category.
RecordList* RecordsOf(DocumentCategory category);

} // namespace docview
