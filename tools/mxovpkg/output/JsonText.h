// JSON as the commands print it.
#pragma once

#include <common/Json.h>

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

using common::JsonArray;
using common::JsonString;
using common::JsonTruth;

/// Names and their values, which are JSON.
using JsonMembers = std::vector<std::pair<std::string, std::string>>;

/// An object with these members.
std::string JsonObject(const JsonMembers& members);

/// A time as "2024-05-15T07:31:50Z".
std::string JsonTime(const FILETIME& utc);

/// Prints an object that lists items on one line. Each item is printed at once, since together they may take
/// several times the memory of the package.
class JsonListing {
public:
    /// The object with these members, and the beginning of the array `name`.
    JsonListing(const JsonMembers& members, const std::string& name);
    void Print(const std::string& item);
    /// The end of the array, and the beginning of another one.
    void Next(const std::string& name);
    /// The end of the array, and other members.
    void End(const JsonMembers& members = {});

private:
    bool m_isFirst = true;
};
