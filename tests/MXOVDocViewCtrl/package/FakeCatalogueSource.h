// A package that lies nowhere, for what a disk cannot be made to do at will; counts the questions it is
// asked.
#pragma once

#include "package/CatalogueSource.h"

#include <map>
#include <utility>

class FakeCatalogueSource final : public docview::CatalogueSource {
public:
    std::vector<std::pair<std::wstring, std::map<std::wstring, std::wstring>>> sections;
    std::map<std::wstring, docview::FileStatus> files;
    std::map<std::wstring, std::vector<std::wstring>> folders;
    std::map<std::wstring, int> sizes; ///< answers of FileSize
    mutable std::vector<std::wstring> statusQueries;
    mutable std::vector<std::wstring> sizeQueries;

    std::wstring Value(const std::wstring& section, const std::wstring& key) const override {
        for (const auto& [name, values] : sections) {
            if (const auto found = values.find(key); name == section && found != values.end()) {
                return found->second;
            }
        }
        return {};
    }

    std::vector<std::wstring> SectionNames(const std::wstring& prefix) const override {
        std::vector<std::wstring> names;
        for (const auto& section : sections) {
            if (section.first.starts_with(prefix)) {
                names.push_back(section.first);
            }
        }
        return names;
    }

    docview::FileStatus Status(const std::wstring& path) const override {
        statusQueries.push_back(path);
        const auto found = files.find(path);
        return found == files.end() ? docview::FileStatus{} : found->second;
    }

    int FileSize(const std::wstring& path) const override {
        sizeQueries.push_back(path);
        const auto found = sizes.find(path);
        return found == sizes.end() ? 0 : found->second;
    }

    std::vector<std::wstring> FileNames(const std::wstring& folder) const override {
        const auto found = folders.find(folder);
        return found == folders.end() ? std::vector<std::wstring>() : found->second;
    }
};
