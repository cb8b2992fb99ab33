// Compression of one piece of data at a time, so that pieces can be worked on independently of each other.
#pragma once

#include "files/ByteSource.h"

#include <vector>

namespace mxovshare {

/// Data is compressed in pieces of this many bytes.
inline constexpr std::size_t kDeflatePiece = std::size_t{1} << 20;
/// So many bytes in front of a piece help to compress it.
inline constexpr std::size_t kDeflateDictionary = std::size_t{32} << 10;

enum class DeflateEffort {
    Normal,
    EntropyOnly, ///< no repetition is used, so that nothing shrinks to less than an eighth
};

/// The deflated form of `piece`, which follows `dictionary` (at most kDeflateDictionary bytes of the same
/// data). The results of all pieces of the data, one behind the other, are one deflate stream; `last` ends
/// it.
std::vector<std::uint8_t> DeflatePiece(Bytes piece, Bytes dictionary, bool last, DeflateEffort effort);

/// A deflate stream's form of a piece that stays as it is.
std::vector<std::uint8_t> StoredPiece(Bytes piece, bool last);

/// A piece in the shorter of two forms.
struct PackedPiece {
    std::vector<std::uint8_t> bytes;
    bool isRaw = false; ///< `bytes` are the piece itself, since compressing it does not pay
    std::size_t size = 0;
    std::uint32_t crc32 = 0;
};

/// Packs a piece as DeflatePiece does, unless it is as good as incompressible.
PackedPiece PackPiece(Bytes piece, Bytes dictionary, bool last);

} // namespace mxovshare
