#include "Checksum.h"

#include <immintrin.h>
#include <zlib.h>

namespace mxovshare {

namespace {

constexpr std::size_t kBlock = 16;        // bytes of a register
constexpr std::size_t kStep = 4 * kBlock; // taken at once, so that the multiplications overlap
constexpr std::uint32_t kNothing = ~0u;   // what zlib's function takes for a register of zeros

// x to the power of n modulo the CRC's polynomial, with the lowest power in the highest bit. One bit more to
// the left it is what a reflected product is to be multiplied by.
constexpr std::int64_t Power(int n) {
    std::uint32_t power = 1u << 31;
    for (; n > 0; --n) {
        power = power >> 1 ^ ((power & 1) != 0 ? 0xEDB88320 : 0);
    }
    return static_cast<std::int64_t>(power) << 1;
}

// The factors that shift the halves of a register over so many bytes.
constexpr std::int64_t kByStep[] = {Power(8 * kStep + 32), Power(8 * kStep - 32)};
constexpr std::int64_t kByBlock[] = {Power(8 * kBlock + 32), Power(8 * kBlock - 32)};

#define MXOV_MULTIPLIES __attribute__((target("pclmul,sse2")))

MXOV_MULTIPLIES __m128i Load(const std::uint8_t* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

// Something congruent to `value` with as many bytes behind it as the factors stand for.
MXOV_MULTIPLIES __m128i Shift(__m128i value, __m128i factors) {
    return _mm_xor_si128(_mm_clmulepi64_si128(value, factors, 0x00),
                         _mm_clmulepi64_si128(value, factors, 0x11));
}

// Takes whole steps, of which there must be one, off the front of `bytes`.
MXOV_MULTIPLIES std::uint32_t Fold(std::uint32_t before, Bytes& bytes) {
    const __m128i byStep = _mm_set_epi64x(kByStep[1], kByStep[0]);
    const __m128i byBlock = _mm_set_epi64x(kByBlock[1], kByBlock[0]);
    const std::uint8_t* next = bytes.data();
    __m128i part[4];
    for (std::size_t i = 0; i < 4; ++i) {
        part[i] = Load(next + i * kBlock);
    }
    part[0] = _mm_xor_si128(part[0], _mm_cvtsi32_si128(static_cast<int>(~before)));
    const std::uint8_t* const end = next + bytes.size() / kStep * kStep;
    for (next += kStep; next != end; next += kStep) {
        for (std::size_t i = 0; i < 4; ++i) {
            part[i] = _mm_xor_si128(Shift(part[i], byStep), Load(next + i * kBlock));
        }
    }
    for (std::size_t i = 1; i < 4; ++i) {
        part[i] = _mm_xor_si128(Shift(part[i - 1], byBlock), part[i]);
    }
    std::uint8_t rest[kBlock];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(rest), part[3]);
    bytes = bytes.subspan(static_cast<std::size_t>(end - bytes.data()));
    return static_cast<std::uint32_t>(crc32_z(kNothing, rest, kBlock));
}

} // namespace

std::uint32_t Checksum(std::uint32_t before, Bytes bytes) {
    static const bool multiplies = __builtin_cpu_supports("pclmul") != 0;
    if (multiplies && bytes.size() >= kStep) {
        before = Fold(before, bytes);
    }
    return static_cast<std::uint32_t>(crc32_z(before, bytes.data(), bytes.size()));
}

std::uint32_t CombinedChecksum(std::uint32_t first, std::uint32_t second, std::uint32_t size) {
    return static_cast<std::uint32_t>(crc32_combine(first, second, static_cast<z_off_t>(size)));
}

} // namespace mxovshare
