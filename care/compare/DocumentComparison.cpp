#include "care/compare/DocumentComparison.h"

#include "common/Paths.h"

#include <package/PackageInformation.h>

#include <map>
#include <tuple>

using namespace docview;

namespace care {

namespace {

std::vector<Document> DocumentsOf(const Sections& sections) {
    std::vector<Document> documents;
    for (const Section& section : sections) {
        if (IsAdditional(section)) {
            documents.push_back({.section = section.name,
                                 .isCopy = IsCopy(section),
                                 .description = ValueOf(section, inikey::kDescription),
                                 .timestamp = ValueOf(section, inikey::kTimestamp),
                                 .path = ValueOf(section, inikey::kFilePath)});
        }
    }
    return documents;
}

// Of the same section.
bool IsSuccessor(const Document& left, const Document& right) {
    return (!left.isCopy && !right.isCopy) || common::IsSamePath(LastName(left.path), LastName(right.path));
}

// The section is no property of a document.
bool Differs(const Document& left, const Document& right) {
    const auto content = [](const Document& document) {
        return std::tie(document.isCopy, document.description, document.timestamp, document.path);
    };
    return content(left) != content(right);
}

using Former = std::multimap<std::wstring, Document, NameLess>;
using Key = std::wstring Document::*;

Former KeyedBy(Key key, Former documents) {
    Former keyed;
    for (auto& [old, document] : documents) {
        std::wstring name = document.*key;
        keyed.emplace(std::move(name), std::move(document));
    }
    return keyed;
}

// Gives each document without one the former state of the same key, and takes that from the former ones.
void MatchFormer(Former& former, std::vector<DocumentChange>& changes, Key key,
                 bool (*isMatch)(const Document&, const Document&)) {
    for (DocumentChange& change : changes) {
        const auto found = former.find((*change.after).*key);
        if (!change.before && found != former.end() && isMatch(found->second, *change.after)) {
            change.before = std::move(found->second);
            former.erase(found);
        }
    }
}

} // namespace

std::vector<DocumentChange> CompareDocuments(const Sections& left, const Sections& right) {
    Former former;
    for (Document& document : DocumentsOf(left)) {
        former.emplace(std::wstring(document.path), std::move(document));
    }
    std::vector<DocumentChange> changes;
    for (Document& document : DocumentsOf(right)) {
        changes.push_back({.before = {}, .after = std::move(document)});
    }
    MatchFormer(former, changes, &Document::path, [](const Document&, const Document&) { return true; });
    former = KeyedBy(&Document::section, std::move(former));
    MatchFormer(former, changes, &Document::section, IsSuccessor);
    std::erase_if(changes, [](const DocumentChange& change) {
        return change.before && !Differs(*change.before, *change.after);
    });
    for (auto& [section, document] : former) {
        changes.push_back({.before = std::move(document), .after = {}});
    }
    return changes;
}

} // namespace care
