#include "History.h"

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
