// The numbers of the controls in the dialog of the document control.
#pragma once

namespace viewer::part {

inline constexpr int kFirstSection = 1000;
inline constexpr int kFirstList = 1004;
inline constexpr int kSectionCount = 4;
inline constexpr int kSaveButton = 1039;
inline constexpr int kAddButton = 1040;
inline constexpr int kRemoveButton = 1041;
inline constexpr int kUpdateButton = 1042; ///< hidden; what the properties window presses after a change

} // namespace viewer::part
