#include "PackageBuilder.h"

namespace {

constexpr SYSTEMTIME kFileTime = {2024, 1, 1, 1, 9, 5, 3, 0};

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t c : text) {
        narrow += static_cast<char>(c);
    }
    return narrow;
}

} // namespace

PackageBuilder::PackageBuilder() {
    const struct {
        const wchar_t* name;
        unsigned long long size;
    } files[] = {
        {L"outside\\bracket.sldprt", 1025},
        {L"outside\\certificate.pdf", 1},
        {L"pkg\\nc\\op10.nc", 1024},
        {L"pkg\\nc\\op20", 0},
        {L"pkg\\other\\op30.nc", 10},
        {L"pkg\\sheets\\a.PDF", 5000},
        {L"pkg\\sheets\\b.docx", 10},
        {L"pkg\\sheets\\c.html", 2048},
        {L"pkg\\ReferanceFiles\\plan.txt", 1023},
    };
    for (const auto& file : files) {
        m_folder.WriteSized(file.name, file.size);
        m_folder.SetTime(file.name, kFileTime);
    }
    m_folder.WriteSized(L"pkg\\nc\\sub\\hidden.nc", 1);
    WriteInformation(Information());
}

void PackageBuilder::WriteInformation(const std::string& text) const {
    std::string lines;
    for (const char c : text) {
        lines += c == '\n' ? "\r\n" : std::string(1, c);
    }
    m_folder.Write(L"pkg\\mxinfo.ini", lines);
}

std::string PackageBuilder::Outside(const char* name) const {
    return Narrow(m_folder / L"outside\\") + name;
}

std::string PackageBuilder::Information(const std::string& version) const {
    return "[FILEINFO]\n"
           "MaxtlreVersion=Package Writer " +
           version +
           "\n"
           "CADFilePath=" +
           Outside("bracket.sldprt") +
           "\n"
           "CADFileLastModifiedTime=yesterday at noon\n"
           "CADFileDescription=The part\n"
           "GCode=nc\\op10.nc;other\\op30.nc\n"
           "SetupSheets=sheets\\c.html\n"
           "[REFERANCE_FILE_1]\n"
           "IsReferencedFile=YES\nDescription=Certificate\nTimestamp=2023-02-03 04:05:06\n"
           "FilePath=" +
           Outside("certificate.pdf") +
           "\n"
           "[REFERANCE_FILE_3]\n"
           "IsReferencedFile=no\nDescription=Lost\nTimestamp=2022-01-01 00:00:00\n"
           "FilePath=" +
           Outside("lost.pdf") +
           "\n"
           "[REFERANCE_FILE_4]\n"
           "IsReferencedFile=NO\nDescription=Plan\nTimestamp=2024-01-01 09:05:03\n"
           "FilePath=ReferanceFiles\\plan.txt\n";
}

std::vector<ShownRow> PartRows() {
    return {{L"bracket.sldprt", L"2 KB", L"yesterday at noon", kLinked}};
}

std::vector<ShownRow> GCodeRows() {
    return {{L"op10.nc", L"1 KB", L"2024-01-01 09:05:03", kPackaged},
            {L"op20", L"0 KB", L"2024-01-01 09:05:03", kPackaged}};
}

std::vector<ShownRow> SetupRows() {
    return {{L"a.PDF", L"5 KB", L"2024-01-01 09:05:03", kPackaged},
            {L"c.html", L"2 KB", L"2024-01-01 09:05:03", kPackaged}};
}

std::vector<ShownRow> AdditionalRows() {
    return {{L"certificate.pdf", L"1 KB", L"2023-02-03 04:05:06", kLinked},
            {L"lost.pdf", L"0 KB", L"2022-01-01 00:00:00", kMissing},
            {L"plan.txt", L"1 KB", L"2024-01-01 09:05:03", kPackaged}};
}
