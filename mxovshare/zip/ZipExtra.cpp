#include "ZipExtra.h"

#include "ZipFormat.h"

#include <limits>
#include <optional>

namespace mxovshare {

using namespace zip;

namespace {

constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
constexpr std::uint16_t kNtfsTimesTag = 1;
constexpr std::uint16_t kNtfsTimesSize = 24;
constexpr std::uint8_t kTimestampModified = 1;

// The content of the first extra field with this identifier. What follows a broken field is not read.
std::optional<Bytes> FindExtra(Bytes extra, std::uint16_t id) {
    FieldReader fields(extra);
    while (fields.Left() >= 4) {
        const std::uint16_t found = fields.U16();
        const std::uint16_t size = fields.U16();
        if (size > fields.Left()) {
            break;
        }
        const Bytes content = fields.Next(size);
        if (found == id) {
            return content;
        }
    }
    return {};
}

std::uint64_t ReadNtfsTime(Bytes content) {
    FieldReader fields(content);
    if (fields.Left() < 4) {
        return 0;
    }
    fields.Skip(4);
    const auto times = FindExtra(fields.Next(fields.Left()), kNtfsTimesTag);
    return times && times->size() >= 8 ? FieldReader(*times).U64() : 0;
}

std::uint64_t ReadTimestamp(Bytes content) {
    FieldReader fields(content);
    if (fields.Left() < 5 || (fields.U8() & kTimestampModified) == 0) {
        return 0;
    }
    const auto seconds = static_cast<std::int32_t>(fields.U32());
    return static_cast<std::uint64_t>(seconds + kSecondsTo1970) * kTicksPerSecond;
}

} // namespace

bool ResolveZip64(Bytes extra, WideFields& wide) {
    FieldReader fields(FindExtra(extra, kExtraZip64).value_or(Bytes{}));
    for (std::uint64_t* field : {&wide.size, &wide.packedSize, &wide.headerOffset}) {
        if (*field != kFull32) {
            continue;
        }
        if (fields.Left() < 8) {
            return false;
        }
        *field = fields.U64();
    }
    return true;
}

void ReadTimes(Bytes extra, ZipTime& time) {
    if (const auto ntfs = FindExtra(extra, kExtraNtfs)) {
        time.fileTime = ReadNtfsTime(*ntfs);
    }
    if (time.fileTime != 0) {
        return;
    }
    if (const auto timestamp = FindExtra(extra, kExtraTimestamp)) {
        time.fileTime = ReadTimestamp(*timestamp);
    }
}

void AppendTimes(const ZipTime& time, std::vector<std::uint8_t>& extra) {
    if (time.fileTime == 0) {
        return;
    }
    FieldWriter fields(extra);
    const std::int64_t seconds = static_cast<std::int64_t>(time.fileTime / kTicksPerSecond) - kSecondsTo1970;
    if (seconds >= std::numeric_limits<std::int32_t>::min() &&
        seconds <= std::numeric_limits<std::int32_t>::max()) {
        fields.U16(kExtraTimestamp).U16(5).U8(kTimestampModified).U32(static_cast<std::uint64_t>(seconds));
    }
    fields.U16(kExtraNtfs).U16(4 + 4 + kNtfsTimesSize).U32(0).U16(kNtfsTimesTag).U16(kNtfsTimesSize);
    fields.U64(time.fileTime).U64(time.fileTime).U64(time.fileTime);
}

} // namespace mxovshare
