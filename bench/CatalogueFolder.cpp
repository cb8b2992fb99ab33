#include "CatalogueFolder.h"

CatalogueFolder::CatalogueFolder(int count) {
    std::string information = "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n";
    for (int i = 1; i <= count; ++i) {
        const std::wstring name =
            L"linked\\" + std::to_wstring(i / 100) + L"\\document" + std::to_wstring(i) + L".pdf";
        m_documents.push_back(m_folder.Write(name, "content"));
        information += "[REFERANCE_FILE_" + std::to_string(i) +
                       "]\r\nIsReferencedFile=YES\r\nDescription=Document " + std::to_string(i) +
                       "\r\nTimestamp=2024-01-01 09:05:03\r\nFilePath=";
        for (const wchar_t c : m_documents.back()) {
            information += static_cast<char>(c);
        }
        information += "\r\n";
    }
    m_folder.Write(L"mxinfo.ini", information);
    Touch();
}

void CatalogueFolder::Touch() {
    SYSTEMTIME time = {2024, 1, 1, 1, 0, 0, 0, 0};
    time.wMinute = static_cast<WORD>(m_touches / 60 % 60);
    time.wSecond = static_cast<WORD>(m_touches++ % 60);
    m_folder.SetTime(L"mxinfo.ini", time);
    Sleep(20); // readers may take calls in quick succession for one piece of work
}
