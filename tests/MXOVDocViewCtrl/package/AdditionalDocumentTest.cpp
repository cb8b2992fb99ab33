// One additional document, read from its section.
#include "FakeCatalogueSource.h"
#include "package/CatalogueLoader.h"

#include <gtest/gtest.h>

TEST(ReadAdditionalDocument, IsLinkedUnlessMarkedExactlyNo) {
    for (const wchar_t* mark : {L"YES", L"no", L"No", L"", L"NO!", L"anything"}) {
        FakeCatalogueSource source;
        source.sections = {{L"REFERANCE_FILE_1", {{L"IsReferencedFile", mark}}}};
        EXPECT_EQ(ReadAdditionalDocument(source, L"REFERANCE_FILE_1").isReferenced, 1) << mark;
    }
    FakeCatalogueSource source;
    source.sections = {{L"REFERANCE_FILE_1", {{L"IsReferencedFile", L"NO"}}}};
    EXPECT_EQ(ReadAdditionalDocument(source, L"REFERANCE_FILE_1").isReferenced, 0);
}

TEST(ReadAdditionalDocument, TakesTheNameBehindTheLastBackslash) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\X\\file.txt", L"file.txt"},
        {L"ReferanceFiles\\a", L"a"},
        {L"\\a", L"a"},
        {L"C:\\X\\", L""},
        {L"file.txt", L"file.tx"}, // without a backslash the last character is lost
        {L"x", L""},
        {L"", L""}};
    for (const auto& [path, name] : cases) {
        FakeCatalogueSource source;
        source.sections = {{L"REFERANCE_FILE_1", {{L"FilePath", path}}}};
        EXPECT_EQ(ReadAdditionalDocument(source, L"REFERANCE_FILE_1").fileName, name) << path;
    }
}
