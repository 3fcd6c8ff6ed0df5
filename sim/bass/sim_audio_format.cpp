#include "sim_audio_format.h"

namespace vrlsim {
namespace {

std::uint32_t Le32(const std::string& b, std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 2])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 3])) << 24;
}

bool ParseWav(const std::string& b, AudioFormat* out) {
    if (b.size() < 12 || b.compare(0, 4, "RIFF") != 0 || b.compare(8, 4, "WAVE") != 0) {
        return false;
    }
    bool haveFmt = false;
    bool haveData = false;
    std::size_t at = 12;
    while (at + 8 <= b.size()) {
        const std::string id = b.substr(at, 4);
        const std::uint64_t size = Le32(b, at + 4);
        const std::size_t body = at + 8;
        if (id == "fmt ") {
            if (size < 16 || body + 16 > b.size()) return false;
            out->byteRate = Le32(b, body + 8);
            haveFmt = out->byteRate != 0;
        } else if (id == "data") {
            out->dataBytes = size;
            haveData = true;
        }
        at = static_cast<std::size_t>(body + size + (size & 1));
        if (at < body) break;  // wrapped: a damaged size
    }
    return haveFmt && haveData;
}

void ParseVorbisComments(const std::string& b, AudioFormat* out) {
    const std::size_t header = b.find("\x03vorbis");
    if (header == std::string::npos) return;
    std::size_t at = header + 7;
    if (at + 4 > b.size()) return;
    at += 4 + static_cast<std::size_t>(Le32(b, at));  // vendor string
    if (at + 4 > b.size()) return;
    const std::uint32_t count = Le32(b, at);
    at += 4;
    std::string block;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (at + 4 > b.size()) return;
        const std::size_t length = Le32(b, at);
        at += 4;
        if (length > b.size() - at) return;
        block.append(b, at, length).push_back('\0');
        at += length;
    }
    out->hasComments = true;
    out->comments = block + '\0';
}

}  // namespace

AudioFormat RecogniseAudio(const std::string& bytes) {
    AudioFormat format;
    if (ParseWav(bytes, &format)) {
        format.kind = AudioKind::Wav;
    } else if (bytes.compare(0, 4, "OggS") == 0) {
        format = AudioFormat();
        format.kind = AudioKind::Ogg;
        ParseVorbisComments(bytes, &format);
    } else if (bytes.compare(0, 4, "MThd") == 0) {
        format = AudioFormat();
        format.kind = AudioKind::Midi;
    } else {
        format = AudioFormat();
    }
    return format;
}

std::uint64_t PlayingMilliseconds(const AudioFormat& format) {
    if (format.kind != AudioKind::Wav || format.byteRate == 0) return 0;
    return format.dataBytes * 1000 / format.byteRate + 1;
}

}  // namespace vrlsim
