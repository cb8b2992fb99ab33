#include "package/PackFolder.h"

#include "ini/AtomicFile.h"
#include "package/DiskFile.h"
#include "package/FolderScan.h"
#include "package/PackageContent.h"
#include "package/PackageWork.h"
#include "package/ZipWriter.h"

namespace mxovshare {

namespace {

std::uint64_t TotalSize(const std::vector<FolderItem>& items) {
    std::uint64_t total = 0;
    for (const FolderItem& item : items)
        total += item.size;
    return total;
}

void RefuseTooMuch(const std::wstring& folder, const std::vector<FolderItem>& items) {
    const ZipLimits limits;
    if (items.size() > limits.entries)
        throw FileFailure{L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.entries) + L" files"};
    if (TotalSize(items) > limits.total)
        throw FileFailure{L"cannot pack \"" + folder + L"\": it holds more than " +
                          std::to_wstring(limits.total >> 30) + L" GB"};
}

void WriteItems(ByteSink& sink, const std::vector<FolderItem>& items, ProgressMeter& meter) {
    ZipWriter writer(sink);
    for (const FolderItem& item : items) {
        meter.Begin(item.path);
        if (item.isFolder)
            writer.AddFolder(item.item);
        else
            writer.AddFile(item.item, DiskSource(item.path),
                           [&meter](std::uint64_t bytes) { meter.Advance(bytes); });
    }
    writer.Finish();
}

} // namespace

void PackFolder(const std::wstring& folder, const std::wstring& file, PackageProgress* progress) {
    const std::vector<FolderItem> items = ScanFolder(folder, file);
    RefuseTooMuch(folder, items);
    // Everything is read twice: to pack it, and to check what was packed.
    ProgressMeter meter(progress, 2 * TotalSize(items));
    AtomicFile target(file);
    if (target.Error() != ERROR_SUCCESS)
        ThrowFileFailure(L"cannot write", file, target.Error());
    OpenFile packed(target.Handle(), file);
    WriteItems(packed, items, meter);
    CheckEntries(packed, ReadZipDirectory(packed), meter);
    if (!target.Commit())
        ThrowFileFailure(L"cannot replace", file, target.Error());
}

} // namespace mxovshare
