#include "care/compare/DocumentComparison.h"

#include <gtest/gtest.h>

using namespace care;

namespace {

Section DocumentSection(const wchar_t* name, const wchar_t* path, const wchar_t* description = L"-") {
    const bool isLink = std::wstring_view(path).starts_with(L"C:");
    return {name,
            {{L"IsReferencedFile", isLink ? L"YES" : L"NO"},
             {L"Description", description},
             {L"Timestamp", L"2024-01-01 00:00:00"},
             {L"FilePath", path}}};
}

using SectionList = std::vector<Section>;

Sections Written(const SectionList& list) {
    Sections sections;
    for (const Section& section : list) {
        for (const auto& [key, value] : section.values) {
            sections.SetValue(section.name, key, value);
        }
    }
    return sections;
}

// Each change as the paths before and after.
std::wstring Changes(const SectionList& left, const SectionList& right) {
    std::wstring text;
    for (const DocumentChange& change : CompareDocuments(Written(left), Written(right))) {
        text += (change.before ? change.before->path : L"none") + L" > " +
                (change.after ? change.after->path : L"none") + L"; ";
    }
    return text;
}

} // namespace

TEST(DocumentComparison, AddedAndRemovedDocuments) {
    const Section plan = DocumentSection(L"REFERANCE_FILE_1", L"ReferanceFiles\\plan.pdf");
    const Section link = DocumentSection(L"REFERANCE_FILE_2", L"C:\\jobs\\list.txt");
    EXPECT_EQ(Changes({plan, link}, {plan, link}), L"");
    EXPECT_EQ(Changes({plan}, {plan, link}), L"none > C:\\jobs\\list.txt; ");
    EXPECT_EQ(Changes({plan, link}, {link}), L"ReferanceFiles\\plan.pdf > none; ");
}

TEST(DocumentComparison, DocumentsMayChangeTheirSection) {
    const SectionList left = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\a.txt"),
                              DocumentSection(L"REFERANCE_FILE_2", L"C:\\b.txt")};
    const SectionList right = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\B.TXT"),
                               DocumentSection(L"REFERANCE_FILE_2", L"C:\\a.txt")};
    EXPECT_EQ(Changes(left, right), L"C:\\b.txt > C:\\B.TXT; ");
}

TEST(DocumentComparison, ALinkThatPointsElsewhereIsTheSameDocument) {
    const SectionList left = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\old\\plan.pdf")};
    const SectionList moved = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\new\\drawing.pdf")};
    EXPECT_EQ(Changes(left, moved), L"C:\\old\\plan.pdf > C:\\new\\drawing.pdf; ");
}

TEST(DocumentComparison, ALinkThatBecameACopyIsTheSameDocument) {
    const SectionList left = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\old\\plan.pdf")};
    EXPECT_EQ(Changes(left, {DocumentSection(L"REFERANCE_FILE_1", L"ReferanceFiles\\plan.pdf")}),
              L"C:\\old\\plan.pdf > ReferanceFiles\\plan.pdf; ");
    EXPECT_EQ(Changes(left, {DocumentSection(L"REFERANCE_FILE_1", L"ReferanceFiles\\other.pdf")}),
              L"none > ReferanceFiles\\other.pdf; C:\\old\\plan.pdf > none; ");
}

TEST(DocumentComparison, DescriptionsAreCompared) {
    const SectionList left = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\a.txt", L"Old")};
    const SectionList right = {DocumentSection(L"REFERANCE_FILE_1", L"C:\\a.txt", L"New")};
    const std::vector<DocumentChange> changes = CompareDocuments(Written(left), Written(right));
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0].before->description, L"Old");
    EXPECT_EQ(changes[0].after->description, L"New");
}
