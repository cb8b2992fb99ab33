#include "RecordLists.h"

namespace docview {

RecordList* RecordsOf(DocumentCategory category) {
    switch (category) {
    case DocumentCategory::PartAssembly:
        return &partAssemblyRecords;
    case DocumentCategory::GCode:
        return &gCodeRecords;
    case DocumentCategory::SetupSheets:
        return &setupSheetRecords;
    case DocumentCategory::AdditionalDocument:
        return &additionalRecords;
    }
    return nullptr;
}

} // namespace docview
