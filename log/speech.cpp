#include "log/speech.h"

namespace vrl {
namespace {

constexpr std::u16string_view kPrefix = u" /Talk \"";
constexpr std::u16string_view kSuffix = u"\"";

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }

}  // namespace

std::u16string SpeechCommandLine(std::u16string_view text) {
    constexpr std::size_t kMaxText =
        kSpeechCommandLineCapacity - 1 - kPrefix.size() - kSuffix.size();
    std::size_t keep = text.size();
    if (keep > kMaxText) {
        // A log line is at most a few hundred characters in practice; cutting a pathological one
        // loses its tail but keeps the quoting intact and the buffer safe.
        keep = kMaxText;
        if (IsHighSurrogate(text[keep - 1])) --keep;
    }
    std::u16string line;
    line.reserve(kPrefix.size() + keep + kSuffix.size());
    line.append(kPrefix).append(text.substr(0, keep)).append(kSuffix);
    return line;
}

}  // namespace vrl
