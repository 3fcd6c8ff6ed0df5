#include "music/music_request.h"

#include <cstdint>
#include <cstring>

namespace vrl {
namespace {

constexpr std::size_t kMonthAt = 520, kDayAt = 524, kHourAt = 528, kMapObjectAt = 540, kPlayCountAt = 548;

int Le32(const unsigned char* record, std::size_t at) {
    return static_cast<int>(static_cast<std::uint32_t>(record[at]) | static_cast<std::uint32_t>(record[at + 1]) << 8 |
                            static_cast<std::uint32_t>(record[at + 2]) << 16 |
                            static_cast<std::uint32_t>(record[at + 3]) << 24);
}

void PutLe32(std::string& bytes, std::size_t at, int value) {
    const auto v = static_cast<std::uint32_t>(value);
    for (int i = 0; i < 4; ++i) bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(v >> (8 * i) & 0xFF);
}

}  // namespace

MusicRequest ReadMusicRequest(const void* data, std::size_t size) {
    unsigned char record[kMusicRequestBytes] = {};
    if (data && size) std::memcpy(record, data, size < sizeof record ? size : sizeof record);
    MusicRequest request;
    for (std::size_t i = 0; i < kMusicPathChars; ++i) {
        const auto unit = static_cast<char16_t>(record[2 * i] | record[2 * i + 1] << 8);
        if (unit == 0) break;
        request.path.push_back(unit);
    }
    request.month = Le32(record, kMonthAt);
    request.day = Le32(record, kDayAt);
    request.hour = Le32(record, kHourAt);
    request.mapObjectId = Le32(record, kMapObjectAt);
    request.playCount = Le32(record, kPlayCountAt);
    return request;
}

std::string MusicRequestBytes(const MusicRequest& request) {
    std::string bytes(kMusicRequestBytes, '\0');
    const std::size_t units = request.path.size() < kMusicPathChars - 1 ? request.path.size() : kMusicPathChars - 1;
    for (std::size_t i = 0; i < units; ++i) {
        bytes[2 * i] = static_cast<char>(request.path[i] & 0xFF);
        bytes[2 * i + 1] = static_cast<char>(request.path[i] >> 8);
    }
    PutLe32(bytes, kMonthAt, request.month);
    PutLe32(bytes, kDayAt, request.day);
    PutLe32(bytes, kHourAt, request.hour);
    PutLe32(bytes, kMapObjectAt, request.mapObjectId);
    PutLe32(bytes, kPlayCountAt, request.playCount);
    return bytes;
}

}  // namespace vrl
