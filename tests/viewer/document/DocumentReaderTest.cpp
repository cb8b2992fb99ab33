#include "document/DocumentReader.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr UINT kRead = WM_APP + 1;

// An unpacked package with two programs.
class DocumentReaderTest : public testing::Test {
protected:
    DocumentReaderTest() {
        m_folder.Write(L"GCode\\a.nc", "N10\r\n");
        m_folder.Write(L"GCode\\b.nc", "N20\r\n");
        m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nGCode=GCode\\a.nc\r\n");
    }

    void Ask(int row) { m_reader.Read(m_folder.PathWithSeparator(), {1, row}); }

    // Waits for the message of a document.
    [[nodiscard]] bool WaitForMessage() const {
        MSG message = {};
        for (int i = 0; i < 1000; ++i) {
            if (PeekMessageW(&message, m_window.get(), kRead, kRead, PM_REMOVE)) {
                return true;
            }
            Sleep(10);
        }
        return false;
    }

    TempFolder m_folder;
    common::UniqueWindow m_window{
        CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)};
    DocumentReader m_reader{m_window.get(), kRead};
};

} // namespace

TEST_F(DocumentReaderTest, ADocumentIsTakenOnce) {
    Ask(0);
    ASSERT_TRUE(WaitForMessage());
    const auto content = m_reader.Take();
    ASSERT_TRUE(content && *content);
    EXPECT_EQ((*content)->details.name, L"a.nc");
    EXPECT_FALSE(m_reader.Take()) << "a second message must not look like a row without a document";
}

TEST_F(DocumentReaderTest, TheLastOneAskedIsTheOneThatIsRead) {
    for (int i = 0; i < 20; ++i) {
        Ask(0);
        Ask(1);
        std::optional<std::unique_ptr<DocumentContent>> content;
        while (!content) {
            ASSERT_TRUE(WaitForMessage());
            content = m_reader.Take();
        }
        EXPECT_EQ((*content)->details.name, L"b.nc");
    }
}

TEST_F(DocumentReaderTest, ARowWithoutADocumentIsReported) {
    Ask(7);
    ASSERT_TRUE(WaitForMessage());
    const auto content = m_reader.Take();
    ASSERT_TRUE(content);
    EXPECT_FALSE(*content);
}

TEST_F(DocumentReaderTest, WhatWasCancelledIsForgotten) {
    Ask(0);
    m_reader.Cancel();
    EXPECT_FALSE(m_reader.Take());
    Ask(1);
    while (WaitForMessage()) {
        if (const auto content = m_reader.Take()) {
            EXPECT_EQ((*content)->details.name, L"b.nc");
            return;
        }
    }
    ADD_FAILURE() << "nothing was read";
}
