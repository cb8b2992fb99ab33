#include "Commands.h"

#include "output/JsonText.h"
#include "output/LineText.h"
#include "output/Progress.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <common/Policies.h>
#include <common/Programs.h>
#include <package/ItemText.h>

using namespace docview;

namespace {

using mxovshare::PackageEntry;
using mxovshare::PackageResult;

// Prints the contents of the package after an operation that ended with `result`.
int Finish(const PackageResult& result, const std::wstring& done, const std::wstring& file) {
    std::vector<PackageEntry> entries;
    const PackageResult listed = result.ok ? mxovshare::ListPackage(file, entries) : result;
    if (!listed.ok) {
        PrintFailure(listed);
        return kFailed;
    }
    PrintLine(done + L": " + Summary(entries));
    return kDone;
}

std::wstring RightAligned(const std::wstring& text, std::size_t width) {
    return std::wstring(width > text.size() ? width - text.size() : 0, L' ') + text;
}

std::string EntryJson(const PackageEntry& entry) {
    return JsonObject({{"name", JsonString(entry.name)},
                       {"folder", JsonTruth(entry.isFolder)},
                       {"size", std::to_string(entry.size)},
                       {"packedSize", std::to_string(entry.packedSize)},
                       {"crc32", std::to_string(entry.crc32)},
                       {"modified", JsonTime(entry.modified)}});
}

void PrintEntry(const std::wstring& size, const std::wstring& packed, const std::wstring& time,
                const std::wstring& name) {
    PrintLine(RightAligned(size, 14) + L"  " + RightAligned(packed, 14) + L"  " + RightAligned(time, 19) +
              L"  " + name);
}

} // namespace

int Create(const Arguments& arguments) {
    const std::wstring& folder = arguments[0];
    const std::wstring& file = arguments[1];
    PackageResult result;
    {
        Progress progress(L"Packing");
        result = mxovshare::CreatePackage(folder, file, &progress);
    }
    return Finish(result, L"created " + file, file);
}

int Extract(const Arguments& arguments) {
    const std::wstring& file = arguments[0];
    const std::wstring& folder = arguments[1];
    std::vector<PackageEntry> entries;
    PackageResult result = mxovshare::ListPackage(file, entries);
    const std::wstring programs = common::ProgramNames(entries);
    if (!programs.empty() && common::IsRefusingPrograms()) {
        PrintFailure(file + common::RefusalOf(programs));
        return kFailed;
    }
    if (result.ok) {
        Progress progress(L"Unpacking");
        result = mxovshare::UnpackPackage(file, folder, &progress);
    }
    if (result.ok && !programs.empty()) {
        PrintWarning(file + L" holds programs: " + programs);
    }
    return Finish(result, L"extracted to " + folder, file);
}

int List(const Arguments& arguments) {
    std::vector<PackageEntry> entries;
    const PackageResult result = mxovshare::ListPackage(arguments[0], entries);
    if (!result.ok) {
        PrintFailure(result);
        return kFailed;
    }
    if (arguments.Has(L"--json")) {
        JsonListing listing({{"file", JsonString(arguments[0])}}, "entries");
        for (const PackageEntry& entry : entries) {
            listing.Print(EntryJson(entry));
        }
        listing.End();
        return kDone;
    }
    PrintEntry(L"Size", L"Packed", L"Modified (UTC)", L"Name");
    for (const PackageEntry& entry : entries) {
        PrintEntry(entry.isFolder ? L"" : std::to_wstring(entry.size),
                   entry.isFolder ? L"" : std::to_wstring(entry.packedSize), FormatFileTime(entry.modified),
                   entry.isFolder ? entry.name + L"\\" : entry.name);
    }
    PrintLine(Summary(entries));
    return kDone;
}
