// The sections of an information file, all decoded.
#pragma once

#include "mxovpackage.h"

using SectionList = std::vector<mxovshare::InformationSection>;

inline SectionList ListOf(const mxovshare::Information& information) {
    return {information.begin(), information.end()};
}
