#include "care/check/Cures.h"

#include "care/Documents.h"
#include "care/Thumbnail.h"
#include "common/Paths.h"

#include <package/PackageInformation.h>

#include <algorithm>
#include <string_view>

using namespace docview;

namespace care {

namespace {

bool IsFinding(const Finding& finding, std::wstring_view code) {
    return finding.code == code;
}

bool IsPart(const Finding& finding) {
    return finding.key == inikey::kCadPath;
}

bool IsPreview(const Finding& finding) {
    return finding.key == inikey::kThumbnail;
}

// Of the path that it holds; lists of files are none.
bool HasDocument(const Finding& finding) {
    return finding.key == inikey::kFilePath || IsPart(finding) || IsPreview(finding);
}

} // namespace

std::vector<Cure> CuresOf(const Finding& finding) {
    if (IsFinding(finding, finding::kNotShown)) {
        return {Cure::Attach, Cure::Remove};
    }
    if (!HasDocument(finding)) {
        return {};
    }
    if (IsFinding(finding, finding::kLinkNewer)) {
        return IsPart(finding) ? std::vector{Cure::SetDate, Cure::Find}
                               : std::vector{Cure::SetDate, Cure::MakeCopy, Cure::Find};
    }
    if (IsFinding(finding, finding::kShared)) {
        return {Cure::Remove, Cure::MakeCopy};
    }
    if (IsFinding(finding, finding::kPersonalFolder) && !IsPart(finding)) {
        return {Cure::MakeCopy, Cure::Find, Cure::Remove};
    }
    return {Cure::Find, Cure::Remove};
}

bool IsCurrent(const Finding& finding, const PackageContent& content) {
    if (finding.section.empty()) {
        return std::ranges::any_of(content.entries, [&finding](const mxovshare::PackageEntry& entry) {
            return common::IsSamePath(entry.name, finding.document);
        });
    }
    return content.sections.Value(finding.section, finding.key) == finding.document;
}

FindingCure::FindingCure(const PackageContent& content, std::wstring folder)
    : m_editor(content.sections, content.entries), m_names(content.sections, content.entries),
      m_folder(std::move(folder)) {}

void FindingCure::Apply(Cure cure, const Finding& finding, const std::wstring& path) {
    switch (cure) {
    case Cure::Find:
        return Find(finding, path);
    case Cure::MakeCopy:
        return MakeCopy(finding);
    case Cure::Remove:
        return Remove(finding);
    case Cure::Attach:
        return Attach(finding);
    case Cure::SetDate:
        return SetDate(finding);
    }
}

void FindingCure::Find(const Finding& finding, const std::wstring& path) {
    if (IsPreview(finding)) {
        SetThumbnail(m_editor, path);
    } else if (IsInPackage(finding)) {
        ReplaceCopy(finding, path);
    } else {
        m_editor.SetKey(finding.section, finding.key, path);
    }
}

void FindingCure::MakeCopy(const Finding& finding) {
    const std::wstring path = PathOf(finding);
    const std::wstring date = DateOfFile(path);
    const std::wstring name = m_names.Take(LastName(path));
    m_editor.AddFile(name, path);
    m_editor.SetKey(finding.section, inikey::kIsReferenced, L"NO");
    m_editor.SetKey(finding.section, inikey::kTimestamp, date);
    m_editor.SetKey(finding.section, inikey::kFilePath, name);
}

void FindingCure::Remove(const Finding& finding) {
    if (finding.section.empty()) {
        m_editor.RemoveFile(finding.document);
    } else if (IsPreview(finding)) {
        m_editor.SetKey(finding.section, finding.key, {});
    } else if (IsPart(finding)) {
        RemovePart(m_editor);
    } else {
        RemoveDocument(m_editor, finding.section);
    }
}

void FindingCure::Attach(const Finding& finding) {
    const Document document = {.section = NextSection(m_editor.Information(), inikey::kAdditionalPrefix),
                               .isCopy = true,
                               .description = kNoDescription,
                               .timestamp = DateOfFile(m_folder + finding.document),
                               .path = finding.document};
    for (const mxovshare::InformationChange& change : KeysOf(document)) {
        m_editor.SetKey(change.section, change.key, change.value);
    }
}

void FindingCure::SetDate(const Finding& finding) {
    m_editor.SetKey(finding.section, IsPart(finding) ? inikey::kCadTime : inikey::kTimestamp,
                    DateOfFile(finding.document));
}

bool FindingCure::IsInPackage(const Finding& finding) const {
    const std::optional<Section> section = m_editor.Information().Find(finding.section);
    return !IsPart(finding) && section && IsCopy(*section);
}

// A missing copy comes back under its own name if the file has that name.
void FindingCure::ReplaceCopy(const Finding& finding, const std::wstring& path) {
    const std::wstring date = DateOfFile(path);
    const std::wstring own = kCopiesFolder + LastName(path);
    const std::wstring name = common::IsSamePath(own, finding.document) ? own : m_names.Take(LastName(path));
    m_editor.AddFile(name, path);
    m_editor.SetKey(finding.section, inikey::kTimestamp, date);
    m_editor.SetKey(finding.section, inikey::kFilePath, name);
}

std::wstring FindingCure::PathOf(const Finding& finding) const {
    return IsInPackage(finding) ? m_folder + finding.document : finding.document;
}

} // namespace care
