#include "music/stream_tags.h"

#include <cstring>

namespace vrl {
namespace {

bool ContainsIgnoringCase(const char* text, const char* upperKey) {
    const std::size_t keyLength = std::strlen(upperKey);
    for (const char* p = text; *p; ++p) {
        std::size_t i = 0;
        while (i < keyLength && p[i] && (p[i] == upperKey[i] || (p[i] >= 'a' && p[i] <= 'z' && p[i] - 32 == upperKey[i]))) ++i;
        if (i == keyLength) return true;
    }
    return false;
}

// Leading white space, a sign, the digits; no digits give 0. Wraps like a 32-bit number.
std::uint32_t ReadNumber(const char* p) {
    while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
    bool negative = false;
    if (*p == '+' || *p == '-') negative = *p++ == '-';
    std::uint32_t value = 0;
    for (; *p >= '0' && *p <= '9'; ++p) value = value * 10u + static_cast<std::uint32_t>(*p - '0');
    return negative ? 0u - value : value;
}

}  // namespace

LoopPoints LoopPointsOf(const char* comments) {
    std::uint32_t start = 0;
    std::uint32_t length = 0;
    if (comments) {
        for (const char* comment = comments; *comment; comment += std::strlen(comment) + 1) {
            // The key's presence guarantees the comment is long enough to read from there.
            if (ContainsIgnoringCase(comment, "LOOPSTART=")) start = ReadNumber(comment + 10) * 4u;
            if (ContainsIgnoringCase(comment, "LOOPLENGTH=")) length = ReadNumber(comment + 11) * 4u;
        }
    }
    return {start, length != 0 ? start + length : 0};
}

std::u16string OutputRateText(std::uint32_t frequency) {
    const bool kilo = frequency % 1000 == 0;
    const std::string text = std::to_string(kilo ? frequency / 1000 : frequency) + (kilo ? " kHz" : " Hz");
    return std::u16string(text.begin(), text.end());
}

}  // namespace vrl
