// Edits and saves a package as the product does, once and once more, so that faults can hit the first time.
// fault_driver CONTROL ACTION FOLDER PACKAGE SOURCE [MODE TARGET]...
//   ACTION: edit, attach, remove or save. Without a mode it acts once. Each MODE TARGET arms the faults of
//   the control file before the first of two acts, on the next of the folders FOLDER-0, FOLDER-1, ... and
//   packages alike, and one line reports how it went: calls that could be spoilt, whether one was, the
//   messages to the user of the first act and of the second, and the name of the file that the spoilt call
//   was about.
#include "host/MessageBoxes.h"
#include "mxovpackage.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

using namespace mxovshare;

namespace {

struct Control {
    std::int32_t armed, target, mode, count, fired, victim;
    char spoilt[64];
};

int notices = 0;

struct Scene {
    std::wstring action, folder, package, source;

    std::wstring Information() const { return folder + L"\\mxinfo.ini"; }
};

void Set(const Scene& scene, const wchar_t* section, const wchar_t* key, const wchar_t* value) {
    INIFile::AddRecordToINI(section, key, value, scene.Information());
}

void Act(const Scene& scene, bool again) {
    if (scene.action == L"edit") {
        Set(scene, L"REFERANCE_FILE_1", again ? L"Again" : L"Description", L"a new text");
    } else if (scene.action == L"attach") {
        CopyFileW(scene.source.c_str(), (scene.folder + L"\\ReferanceFiles\\copy.txt").c_str(), FALSE);
        Set(scene, L"REFERANCE_FILE_2", L"IsReferencedFile", L"NO");
        Set(scene, L"REFERANCE_FILE_2", L"Description", L"");
        Set(scene, L"REFERANCE_FILE_2", L"Timestamp", L"2024-05-15 07:31:50");
        Set(scene, L"REFERANCE_FILE_2", L"FilePath", L"ReferanceFiles\\copy.txt");
    } else if (scene.action == L"remove") {
        INIFile::RemoveSectionFromINI(again ? L"NONE" : L"REFERANCE_FILE_1", scene.Information());
    } else {
        Utils::ReGenerateOrvandoFile(scene.folder, scene.package, L"Edited");
    }
}

class ControlFile {
public:
    explicit ControlFile(const wchar_t* path)
        : m_file(CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                             OPEN_EXISTING, 0, nullptr)) {}

    void Arm(int mode, int target) const {
        Control control = Read();
        control = {1, target, mode, 0, 0, control.victim, {}};
        Write(control);
    }
    Control Disarm() const {
        Control control = Read();
        control.armed = 0;
        Write(control);
        return control;
    }

private:
    Control Read() const {
        Control control = {};
        DWORD done = 0;
        SetFilePointer(m_file, 0, nullptr, FILE_BEGIN);
        ReadFile(m_file, &control, sizeof(control), &done, nullptr);
        return control;
    }
    void Write(const Control& control) const {
        DWORD done = 0;
        SetFilePointer(m_file, 0, nullptr, FILE_BEGIN);
        WriteFile(m_file, &control, sizeof(control), &done, nullptr);
    }

    HANDLE m_file;
};

std::wstring Kept(const std::wstring& path) {
    return path + L".first";
}

// Keeps what the first act left, to be looked at afterwards.
void KeepState(const Scene& scene) {
    CopyFileW(scene.Information().c_str(), Kept(scene.folder).append(L".ini").c_str(), FALSE);
    CopyFileW(scene.package.c_str(), Kept(scene.package).c_str(), FALSE);
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count < 6) {
        return 2;
    }
    SetErrorSink([](const wchar_t*) { ++notices; });
    SetQuestionSink([](const std::wstring&) { return false; });
    const std::vector<std::wstring> rest(arguments + 6, arguments + count);
    const Scene scene = {arguments[2], arguments[3], arguments[4], arguments[5]};
    if (rest.empty()) {
        Act(scene, false);
        std::printf("done %d\n", notices);
        return 0;
    }
    const ControlFile control(arguments[1]);
    for (std::size_t i = 0; i + 1 < rest.size(); i += 2) {
        const std::wstring number = L"-" + std::to_wstring(i / 2);
        const Scene next = {scene.action, scene.folder + number, scene.package + number, scene.source};
        notices = 0;
        control.Arm(std::stoi(rest[i]), std::stoi(rest[i + 1]));
        Act(next, false);
        const Control after = control.Disarm();
        const int first = notices;
        KeepState(next);
        Act(next, true);
        std::printf("%d %d %d %d %s\n", after.count, after.fired, first, notices - first, after.spoilt);
    }
    return 0;
}
