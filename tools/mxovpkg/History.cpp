#include "History.h"

#include "Commands.h"
#include "output/JsonText.h"
#include "output/LineText.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/Information.h>
#include <package/PackageInformation.h>

using namespace docview;

namespace {

template <typename Visit>
void ForEachEntry(const care::Sections& sections, Visit visit) {
    for (const care::Section& section : sections) {
        if (care::HasPrefix(section.name, inikey::kHistoryPrefix)) {
            visit(section);
        }
    }
}

void PrintOperation(const care::Section& entry) {
    const std::wstring remarks = care::ValueOf(entry, inikey::kRemarks);
    PrintLine(OneLine(Padded(care::ValueOf(entry, inikey::kTime), 19) + L"  " +
                      Padded(care::ValueOf(entry, inikey::kBy), 12) + L"  " +
                      care::ValueOf(entry, inikey::kOperation) +
                      (remarks.empty() ? L"" : L" (" + remarks + L")")));
}

} // namespace

std::string HistoryJson(const care::Section& entry) {
    return JsonObject({{"section", JsonString(entry.name)},
                       {"operation", JsonString(care::ValueOf(entry, inikey::kOperation))},
                       {"time", JsonString(care::ValueOf(entry, inikey::kTime))},
                       {"by", JsonString(care::ValueOf(entry, inikey::kBy))},
                       {"remarks", JsonString(care::ValueOf(entry, inikey::kRemarks))}});
}

std::vector<Option> HistoryOptions() {
    return {{.name = L"--remarks", .takesValue = true}, {.name = L"--no-history"}};
}

void SetHistory(const Arguments& arguments, const std::wstring& operation,
                mxovshare::PackageChanges& changes) {
    if (arguments.Has(L"--no-history")) {
        return;
    }
    changes.operation = operation;
    changes.remarks = arguments.Value(L"--remarks");
}

int ShowHistory(const Arguments& arguments) {
    const std::optional<care::PackageContent> view = ReadPackage(arguments[0]);
    if (!view) {
        return kFailed;
    }
    if (arguments.Has(L"--json")) {
        JsonListing history({{"file", JsonString(arguments[0])}}, "history");
        ForEachEntry(view->sections,
                     [&history](const care::Section& entry) { history.Print(HistoryJson(entry)); });
        history.End();
        return kDone;
    }
    std::size_t count = 0;
    ForEachEntry(view->sections, [&count](const care::Section& entry) {
        PrintOperation(entry);
        ++count;
    });
    PrintLine(count == 1 ? L"1 entry" : std::to_wstring(count) + L" entries");
    return kDone;
}
