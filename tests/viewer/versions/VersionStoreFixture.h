// A package that is saved several times, and a store for its versions.
#pragma once

#include "TempFolder.h"
#include "versions/VersionStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

/// Bytes that cannot be compressed.
inline std::string Noise(unsigned seed, std::size_t size) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    std::ranges::generate(bytes, [&random] { return static_cast<char>(random()); });
    return bytes;
}

/// A program that is longer than all other files of the package.
inline std::string Program(int save) {
    return "N10 M30 " + Noise(static_cast<unsigned>(save), 500);
}

class VersionStoreFixture : public testing::Test {
protected:
    VersionStoreFixture() {
        m_folder.Write(L"job\\mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n");
        m_folder.Write(L"job\\GCode\\a.nc", "N10 M30");
        m_folder.Write(L"job\\GCode\\b.nc", "N10 G0 X1");
    }

    void Save() { ASSERT_TRUE(mxovshare::CreatePackage(m_folder / L"job", Package()).ok); }

    void SaveWith(const std::wstring& name, std::string_view bytes) {
        m_folder.Write(L"job\\" + name, bytes);
        Save();
    }

    [[nodiscard]] mxovshare::PackageResult Keep(mxovshare::PackageProgress* progress = nullptr) {
        return m_store.Keep(Package(), m_limits, progress);
    }

    // Saves and keeps `count` times, each time with another program.
    void SaveAndKeep(int count) {
        for (int i = 0; i < count; ++i) {
            SaveWith(L"GCode\\a.nc", Program(++m_saves));
            const mxovshare::PackageResult kept = Keep();
            ASSERT_TRUE(kept.ok) << kept.message.c_str();
        }
    }

    [[nodiscard]] std::wstring Package() const { return m_folder / L"job.mxov"; }
    [[nodiscard]] std::vector<viewer::Version> Versions() const { return m_store.Read(Package()).versions; }

    [[nodiscard]] std::vector<std::wstring> Stored() const {
        std::vector<std::wstring> names;
        for (const viewer::FolderEntry& entry : viewer::EntriesOf(m_store.FolderOf(Package()))) {
            names.push_back(entry.name);
        }
        std::ranges::sort(names);
        return names;
    }

    [[nodiscard]] std::uint64_t StoredSize() const {
        std::uint64_t size = 0;
        for (const std::wstring& name : Stored()) {
            size += m_folder.Read(InStore(name)).size();
        }
        return size;
    }

    // Relative to the folder of the test.
    [[nodiscard]] std::wstring InStore(const std::wstring& name) const {
        return (m_store.FolderOf(Package()) + L"\\" + name).substr(m_folder.Path().size() + 1);
    }

    [[nodiscard]] mxovshare::PackageResult Restore(const viewer::Version& version) const {
        return m_store.Restore(Package(), version.files, m_folder / L"restored");
    }

    void ExpectOnlyWhole() const {
        for (const std::wstring& name : Stored()) {
            EXPECT_TRUE(name.ends_with(viewer::kListExtension) || name.ends_with(viewer::kContentsExtension))
                << name.c_str();
        }
    }

    TempFolder m_folder;
    viewer::VersionStore m_store{m_folder / L"store"};
    viewer::VersionLimits m_limits;
    int m_saves = 0;
};
