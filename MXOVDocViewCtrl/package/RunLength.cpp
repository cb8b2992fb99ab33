#include "RunLength.h"

#include <cstddef>
#include <cstdint>

namespace docview {

namespace {

enum Escape : unsigned { kEndOfLine = 0, kEndOfBitmap = 1, kDelta = 2 };

/// Walks through the codes without drawing them.
class RunLengthWalk {
public:
    RunLengthWalk(std::string_view bytes, const RunLengthImage& image) : m_rest(bytes), m_image(image) {}

    bool ReachesTheEnd() {
        while (m_rest.size() >= 2) {
            const unsigned count = Next();
            const unsigned value = Next();
            if (count == 0 && value == kEndOfBitmap) {
                return true;
            }
            if (!(count != 0 ? Draw(count) : Obey(value))) {
                return false;
            }
        }
        return false;
    }

private:
    unsigned Next() {
        const auto byte = static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(1);
        return byte;
    }

    bool Draw(unsigned pixels) {
        m_column += pixels;
        return m_column <= m_image.width && m_row < m_image.height;
    }

    bool Obey(unsigned escape) {
        if (escape == kEndOfLine) {
            m_column = 0;
            return ++m_row <= m_image.height;
        }
        return escape == kDelta ? Move() : Copy(escape);
    }

    bool Move() {
        if (m_rest.size() < 2) {
            return false;
        }
        m_column += Next();
        m_row += Next();
        return m_column <= m_image.width && m_row < m_image.height;
    }

    // Pixels as they are, padded to an even number of bytes.
    bool Copy(unsigned pixels) {
        const std::size_t bytes = m_image.bits == 8 ? pixels : (pixels + 1) / 2;
        const std::size_t padded = bytes + bytes % 2;
        if (m_rest.size() < padded) {
            return false;
        }
        m_rest.remove_prefix(padded);
        return Draw(pixels);
    }

    std::string_view m_rest;
    const RunLengthImage& m_image;
    std::int64_t m_column = 0;
    std::int64_t m_row = 0;
};

} // namespace

bool IsCompleteRunLength(std::string_view bytes, const RunLengthImage& image) {
    return RunLengthWalk(bytes, image).ReachesTheEnd();
}

} // namespace docview
