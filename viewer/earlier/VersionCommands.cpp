#include "earlier/VersionCommands.h"

#include "care/FolderChanges.h"
#include "common/Paths.h"
#include "common/SystemError.h"
#include "compare/ShowComparison.h"
#include "earlier/ShownVersion.h"
#include "package/Paths.h"
#include "package/Sentence.h"
#include "package/ValueText.h"
#include "prompts/TaskPrompt.h"
#include "prompts/WorkPrompt.h"
#include "session/PackageSession.h"
#include "texts/Texts.h"
#include "versions/StoreResult.h"
#include "versions/VersionKeeper.h"

#include <algorithm>

namespace viewer {

namespace {

using mxovshare::PackageResult;

void ShowFailure(HWND owner, const std::wstring& text) {
    ShowTaskPrompt(owner, text, {}, {Text(IDS_CLOSE)}, TD_WARNING_ICON);
}

// Where files of a version are unpacked in a folder for work.
std::wstring FilesIn(const WorkFolder& work) {
    return work.Path() + L"\\files";
}

// Runs work that fails with a message while the user waits, and shows that. False unless it has succeeded.
bool RunWork(HWND owner, const std::wstring& title, std::function<PackageResult(WorkProgress&)> work) {
    const auto result = std::make_shared<PackageResult>();
    const auto run = [result, work = std::move(work)](WorkProgress& progress) { *result = work(progress); };
    if (!WaitForWork(owner, title, run) || result->cancelled) {
        return false;
    }
    if (!result->ok) {
        ShowFailure(owner, Text(IDS_VERSION_UNUSABLE, {Sentence(result->message)}));
    }
    return result->ok;
}

} // namespace

bool VersionCommands::Read(HWND owner) {
    constexpr DWORD kPatience = 1000; // milliseconds that a version which is being kept may take
    m_keeper.Wait(kPatience);
    const auto list = std::make_shared<VersionList>();
    const auto read = [list, store = m_keeper.Store(), package = m_session.PackageFile()](WorkProgress&) {
        *list = store.Read(package);
        return Succeeded();
    };
    if (!RunWork(owner, Text(IDS_READING_VERSIONS, {Name()}), read) || !ReadOpen(owner)) {
        return false;
    }
    m_shown.list = std::move(*list);
    m_shown.package = Name();
    m_shown.areKept = m_keeper.Settings().AreKept();
    m_shown.isDecided = VersionSettings::AreDecided();
    return true;
}

// Its checksums too, so that files are compared by their content.
bool VersionCommands::ReadOpen(HWND owner) {
    const auto open = std::make_shared<care::PackageContent>();
    const auto read = [open, folder = m_session.Folder()](WorkProgress& progress) {
        return mxovshare::ReadContent(folder, open->entries, open->sections, &progress);
    };
    if (!RunWork(owner, Text(IDS_READING_VERSIONS, {Name()}), read)) {
        return false;
    }
    m_shown.open = std::move(*open);
    return true;
}

void VersionCommands::LookAt(HWND owner, const Version& version) {
    const std::shared_ptr<WorkFolder> work = NewWork(owner);
    if (!work) {
        return;
    }
    const std::wstring file = work->Path() + L"\\" + ShownName(version);
    const auto write = [work, file, version, store = m_keeper.Store()](WorkProgress& progress) {
        return WriteShownVersion(store, version, FilesIn(*work), file, progress);
    };
    if (!RunWork(owner, Text(IDS_RESTORING, {Name()}), write)) {
        return;
    }
    if (const DWORD error = StartViewer(file)) {
        ShowFailure(owner, Text(IDS_OPEN_FAILED, {FileName(file), common::SystemErrorText(error)}));
    } else {
        m_shownFolders.push_back(work);
    }
}

void VersionCommands::CompareWith(HWND owner, const Version& version) {
    const std::shared_ptr<WorkFolder> work = Restore(owner, version.files);
    if (!work) {
        return;
    }
    const std::wstring name = Text(IDS_VERSION_OF, {Name(), ShortLocalTimeText(version.saved)});
    const std::wstring error = ShowComparison(owner, name,
                                              {.before = FilesIn(*work),
                                               .after = m_session.Folder(),
                                               .beforeTitle = name,
                                               .afterTitle = Text(IDS_OPEN_NOW),
                                               .summary = Text(IDS_DIFFERS_FROM, {name})});
    if (!error.empty()) {
        ShowFailure(owner, error);
    }
}

bool VersionCommands::TakeBack(HWND owner, const Version& version, const care::FileChange& document) {
    const std::wstring name =
        document.kind == care::FileChangeKind::Renamed ? document.oldName : document.name;
    const std::wstring information = InformationNameOf(version);
    std::vector<KeptFile> files;
    std::ranges::copy_if(version.files, std::back_inserter(files),
                         [&](const KeptFile& file) { return file.name == name || file.name == information; });
    const bool isTaken = (!IsChanged(name) || IsReplacing(owner)) &&
                         Take(owner, version, files, [&](const RestoredVersion& restored) {
                             return TakeFileBack(restored, name, m_shown.open);
                         });
    if (isTaken) {
        m_session.Accept(name);
    }
    return isTaken && ReadOpen(owner);
}

bool VersionCommands::TakeAllBack(HWND owner, const Version& version) {
    const bool isUnsaved = m_isUnsaved || !m_session.Changes().empty();
    const bool isTaken = (!isUnsaved || IsReplacing(owner)) &&
                         Take(owner, version, version.files, [&](const RestoredVersion& restored) {
                             return viewer::TakeAllBack(restored, m_shown.open);
                         });
    if (isTaken) {
        m_session.AcceptAll();
    }
    return isTaken;
}

void VersionCommands::KeepVersions(bool kept) {
    m_keeper.Settings().Keep(kept);
}

std::wstring VersionCommands::Name() const {
    return FileName(m_session.PackageFile());
}

// A folder for work; null when it cannot be created, which is shown.
std::shared_ptr<WorkFolder> VersionCommands::NewWork(HWND owner) const {
    const std::wstring& store = m_keeper.Store().Folder();
    auto work = std::make_shared<WorkFolder>(store);
    if (work->Path().empty()) {
        ShowFailure(owner, Text(IDS_STORE_UNUSABLE, {store, common::SystemErrorText(GetLastError())}));
        return nullptr;
    }
    return work;
}

// Unpacks files into a folder for work; null when that fails or is cancelled.
std::shared_ptr<WorkFolder> VersionCommands::Restore(HWND owner, const std::vector<KeptFile>& files) const {
    std::shared_ptr<WorkFolder> work = NewWork(owner);
    const auto restore = [work, files, package = m_session.PackageFile(),
                          store = m_keeper.Store()](WorkProgress& progress) {
        return store.Restore(package, files, FilesIn(*work), &progress);
    };
    return work && RunWork(owner, Text(IDS_RESTORING, {Name()}), restore) ? work : nullptr;
}

// Makes the changes that bring files of a version back.
bool VersionCommands::Take(
    HWND owner, const Version& version, const std::vector<KeptFile>& files,
    const std::function<mxovshare::PackageChanges(const RestoredVersion&)>& changesOf) {
    const std::shared_ptr<WorkFolder> work = Restore(owner, files);
    if (!work) {
        return false;
    }
    care::Sections sections;
    std::wstring failure;
    if (const PackageResult read = mxovshare::ReadInformation(FilesIn(*work), sections); !read.ok) {
        failure = Text(IDS_VERSION_UNUSABLE, {Sentence(read.message)});
    } else {
        m_hasChanged = true; // also when only some files can be copied
        failure =
            ApplyToFolder(m_session.FolderWithSeparator(), changesOf({version, FilesIn(*work), sections}));
    }
    if (!failure.empty()) {
        ShowFailure(owner, failure);
    }
    return failure.empty();
}

// Whether a file of the folder is not in the package as it is now.
bool VersionCommands::IsChanged(const std::wstring& name) const {
    return std::ranges::any_of(m_session.Changes(), [&name](const FileChange& change) {
        return common::IsSamePath(change.name, name);
    });
}

// Whether the user agrees that unsaved changes are replaced.
bool VersionCommands::IsReplacing(HWND owner) const {
    return ShowTaskPrompt(owner, Text(IDS_TAKE_BACK_UNSAVED, {Name()}), Text(IDS_TAKE_BACK_HOW),
                          {Text(IDS_TAKE_BACK), Text(IDS_CANCEL)}, TD_WARNING_ICON) == 0;
}

} // namespace viewer
