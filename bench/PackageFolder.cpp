#include "PackageFolder.h"

#include <random>

namespace {

constexpr int kFiles = 200;
constexpr std::size_t kSize = 500'000;

std::string Text(unsigned seed) {
    std::mt19937 random(seed);
    std::string text;
    text.reserve(kSize + 100);
    for (int line = 10; text.size() < kSize; line += 10) {
        const auto number = [&random] { return std::to_string(random() % 200'000).insert(1, "."); };
        text += "N" + std::to_string(line) + " G01 X" + number() + " Y" + number() + " F1200\r\n";
    }
    text.resize(kSize);
    return text;
}

std::string Noise(unsigned seed) {
    std::mt19937 random(seed);
    std::string noise(kSize, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    return noise;
}

} // namespace

PackageFolder::PackageFolder() {
    m_folder.Write(L"mxinfo.ini", "[FILEINFO]\r\nMaxtlreVersion=Package Writer 2024\r\n");
    for (unsigned i = 0; i < kFiles; ++i) {
        m_names.push_back((i % 2 == 0 ? L"GCode\\" : L"ReferanceFiles\\") + std::to_wstring(i));
        m_folder.Write(m_names.back(), i % 2 == 0 ? Text(i) : Noise(i));
    }
}

void PackageFolder::ChangeOne() {
    m_folder.Write(m_names[0], Text(1000 + ++m_changes));
}
