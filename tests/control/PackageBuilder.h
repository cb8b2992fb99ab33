// A package folder whose documents have known sizes and times, and the rows that the control must show for
// it.
#pragma once

#include "ControlClient.h"
#include "TempFolder.h"

#include <string>

/// Identifiers of the dialog's parts that a test reaches.
enum DialogItem {
    kPartBox = 1000,
    kGCodeBox = 1001,
    kSetupBox = 1002,
    kAdditionalBox = 1003,
    kPartList = 1004,
    kGCodeList = 1005,
    kSetupList = 1006,
    kAdditionalList = 1007,
    kSaveButton = 1039,
    kAddButton = 1040,
    kDeleteButton = 1041,
    kUpdateButton = 1042,
};

/// Images of list items.
enum ItemImage { kLinked = 0, kMissing = 1, kPackaged = 2 };

/// One package folder on disk with a part, two G-code files, two setup sheets and three additional documents.
class PackageBuilder {
public:
    PackageBuilder();

    [[nodiscard]] const TempFolder& Folder() const { return m_folder; }
    /// The package folder as hosts pass it.
    [[nodiscard]] std::wstring Path() const { return m_folder.PathWithSeparator() + L"pkg\\"; }
    /// Replaces the information file; `text` is ASCII with "\n" line ends.
    void WriteInformation(const std::string& text) const;
    /// The information file of a whole package; `version` is the last word of its version line.
    [[nodiscard]] std::string Information(const std::string& version = "2024") const;

private:
    [[nodiscard]] std::string Outside(const char* name) const;

    TempFolder m_folder;
};

/// What the lists show for `PackageBuilder::Information`.
std::vector<ShownRow> PartRows();
std::vector<ShownRow> GCodeRows();
std::vector<ShownRow> SetupRows();
std::vector<ShownRow> AdditionalRows();
