#include "History.h"

#include "Commands.h"
#include "output/JsonText.h"
#include "output/Output.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <care/Information.h>
#include <package/PackageInformation.h>

using namespace docview;

namespace {

std::vector<care::Section> HistoryOf(const care::PackageContent& view) {
    std::vector<care::Section> history;
    for (const care::Section& section : view.sections) {
        if (care::HasPrefix(section.name, inikey::kHistoryPrefix)) {
            history.push_back(section);
        }
    }
    return history;
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
    const std::vector<care::Section> history = HistoryOf(*view);
    if (arguments.Has(L"--json")) {
        PrintJson(
            JsonObject({{"file", JsonString(arguments[0])}, {"history", JsonArray(history, HistoryJson)}}));
        return kDone;
    }
    for (const care::Section& entry : history) {
        const std::wstring remarks = care::ValueOf(entry, inikey::kRemarks);
        PrintLine(OneLine(Padded(care::ValueOf(entry, inikey::kTime), 19) + L"  " +
                          Padded(care::ValueOf(entry, inikey::kBy), 12) + L"  " +
                          care::ValueOf(entry, inikey::kOperation) +
                          (remarks.empty() ? L"" : L" (" + remarks + L")")));
    }
    PrintLine(history.size() == 1 ? L"1 entry" : std::to_wstring(history.size()) + L" entries");
    return kDone;
}
