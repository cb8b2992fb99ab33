// What typing a description writes.
#include "PopupFixture.h"

#include "package/RecordLists.h"

#include <mxovshare.h>

using namespace docview;

using MXOVPopupSavingTest = PopupFixture;

TEST_F(MXOVPopupSavingTest, EveryKeystrokeIsInTheFileAtOnce) {
    Fill(DocumentCategory::PartAssembly);
    Type(L"!");
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"The part!");
    EXPECT_EQ(Value(L"FILEINFO", L"CADFilePath"), partAssemblyRecords[0].filePath);
    EXPECT_EQ(partAssemblyRecords[0].description, L"The part!");
    EXPECT_EQ(m_owner.updates, 0) << "posted, not sent";
    HandleMessages();
    EXPECT_EQ(m_owner.updates, 1);
    EXPECT_EQ(m_owner.strangeCommands, 0);
    Type(L"?");
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"The part!?");
}

TEST_F(MXOVPopupSavingTest, PartKeysStandInTheirOrder) {
    Fill(DocumentCategory::PartAssembly);
    Type(L"!");
    const std::string file = m_package.Read(L"mxinfo.ini");
    ASSERT_NE(file.find("CADFileDescription"), std::string::npos);
    EXPECT_LT(file.find("CADFilePath"), file.find("CADFileDescription"));
}

TEST_F(MXOVPopupSavingTest, GCodeFilesShareOneDescription) {
    Fill(DocumentCategory::GCode, 1);
    Type(L".");
    EXPECT_EQ(Value(L"FILEINFO", L"GCodeFileDescription"), L"Three steps.");
    EXPECT_EQ(Value(L"FILEINFO", L"CADFilePath"), L"");
    for (const DocumentRecord& record : gCodeRecords) {
        EXPECT_EQ(record.description, L"Three steps.");
    }
    Fill(DocumentCategory::GCode, 0);
    EXPECT_EQ(Text(IDC_DESCRIPTION), L"Three steps.");
    EXPECT_EQ(setupSheetRecords[0].description, L"One sheet");
}

TEST_F(MXOVPopupSavingTest, SetupSheetsShareOneDescription) {
    Fill(DocumentCategory::SetupSheets, 0);
    Type(L".");
    EXPECT_EQ(Value(L"FILEINFO", L"SetupSheetsFileDescription"), L"One sheet.");
    EXPECT_EQ(setupSheetRecords[1].description, L"One sheet.");
}

TEST_F(MXOVPopupSavingTest, AnAdditionalDocumentHasItsOwn) {
    Fill(DocumentCategory::AdditionalDocument, 1);
    Type(L".");
    EXPECT_EQ(Value(L"REFERANCE_FILE_4", L"FilePath"), L"ReferanceFiles\\plan.txt");
    EXPECT_EQ(Value(L"REFERANCE_FILE_4", L"Description"), L"Plan.");
    EXPECT_EQ(additionalRecords[0].description, L"Notes");
    EXPECT_EQ(additionalRecords[1].description, L"Plan.");
    const std::string file = m_package.Read(L"mxinfo.ini");
    EXPECT_LT(file.find("FilePath"), file.find("Description"));
}

TEST_F(MXOVPopupSavingTest, FillingWritesNothing) {
    Fill(DocumentCategory::PartAssembly);
    Fill(DocumentCategory::GCode);
    HandleMessages();
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
    EXPECT_EQ(m_owner.updates, 0);
}

TEST_F(MXOVPopupSavingTest, TypedTextSurvives) {
    std::wstring longText;
    // In lines: the system's edit box takes seconds to wrap one of 40 000 characters.
    for (int line = 0; line < 400; ++line) {
        longText += std::wstring(98, L'm') + L"\r\n";
    }
    const std::wstring texts[] = {
        L"two\r\nlines\r\n",    L"\"quoted\"",         L"  blanks at both ends  ", L"[x]",
        L"; = not an INI line", L"\u65e5\u672c\u8a9e", L"\U0001F527 wrench",       longText};
    for (const std::wstring& text : texts) {
        additionalRecords[0].description.clear();
        Fill(DocumentCategory::AdditionalDocument);
        SendMessageW(Item(IDC_DESCRIPTION), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
        EXPECT_TRUE(Value(L"REFERANCE_FILE_1", L"Description") == text) << "length " << text.size();
        additionalRecords[0].description = Value(L"REFERANCE_FILE_1", L"Description");
        Fill(DocumentCategory::AdditionalDocument);
        EXPECT_TRUE(Text(IDC_DESCRIPTION) == text) << "length " << text.size();
    }
}

TEST_F(MXOVPopupSavingTest, WorksWhenTheRecordsHaveGone) {
    Fill(DocumentCategory::GCode, 1);
    gCodeRecords.resize(1);
    Type(L".");
    EXPECT_EQ(Value(L"FILEINFO", L"GCodeFileDescription"), L"Three steps.");
    partAssemblyRecords.clear();
    Fill(DocumentCategory::PartAssembly, 0);
    MXOVPopupDlg::Current()->SaveProperties();
    EXPECT_EQ(Value(L"FILEINFO", L"CADFilePath"), L"");
}

TEST_F(MXOVPopupSavingTest, AnOwnerWithoutTheButtonIsSentNothing) {
    Fill(DocumentCategory::PartAssembly);
    ::DestroyWindow(m_owner.Update());
    Type(L"!");
    HandleMessages();
    EXPECT_EQ(m_owner.updates + m_owner.strangeCommands, 0);
    EXPECT_EQ(Value(L"FILEINFO", L"CADFileDescription"), L"The part!");
}

TEST_F(MXOVPopupSavingTest, BeforeItIsFilledThereIsNothingToSave) {
    MXOVPopupDlg::Open(m_owner)->SaveProperties();
    HandleMessages();
    EXPECT_EQ(m_package.Read(L"mxinfo.ini"), "");
    EXPECT_EQ(m_owner.updates + m_owner.strangeCommands, 0);
}
