#include "app/version_text.h"

#include <cstdio>

namespace vrl {
namespace {

const char* MonthName(int month) {
    static const char* const kNames[] = {"---", "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    return month >= 0 && month <= 12 ? kNames[month] : "---";
}

const char* KindSuffix(int kind) {
    static const char* const kSuffixes[] = {"", " (beta)", " (alpha)", " (test)"};
    return kind >= 0 && kind <= 3 ? kSuffixes[kind] : "";
}

}  // namespace

std::u16string FormatVersionText(const ReleaseDate& release, int language) {
    char buffer[64];
    if (language == 1) {
        std::snprintf(buffer, sizeof buffer, "[%d/%02d/%02d%s]", release.year, release.month, release.day,
                      KindSuffix(release.kind));
    } else {
        std::snprintf(buffer, sizeof buffer, "[%s %d, %d%s]", MonthName(release.month), release.day,
                      release.year, KindSuffix(release.kind));
    }
    std::u16string text;
    for (const char* p = buffer; *p; ++p) text.push_back(static_cast<char16_t>(static_cast<unsigned char>(*p)));
    return text;
}

}  // namespace vrl
