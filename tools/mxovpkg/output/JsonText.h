// JSON as the commands print it.
#pragma once

#include <common/Json.h>

#include <string>
#include <utility>
#include <vector>

using common::JsonArray;
using common::JsonString;
using common::JsonTruth;

/// An object with these members, whose values are JSON.
std::string JsonObject(const std::vector<std::pair<std::string, std::string>>& members);

/// A time as "2024-05-15T07:31:50Z".
std::string JsonTime(const FILETIME& utc);

/// Prints one line of JSON.
void PrintJson(const std::string& json);
