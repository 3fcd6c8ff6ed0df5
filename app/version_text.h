#pragma once
// The release shown in the About box: "[Dec 30, 2023]" in English, "[2023/12/30]" in Japanese.

#include <string>

#include "app/release.h"

namespace vrl {

struct ReleaseDate {
    int year;
    int month;  // 1 to 12; 0 shows "---"
    int day;
    int kind;   // 0 release, 1 beta, 2 alpha, 3 test
};

inline constexpr ReleaseDate kThisRelease{VRL_RELEASE_YEAR, VRL_RELEASE_MONTH, VRL_RELEASE_DAY, VRL_RELEASE_KIND};

std::u16string FormatVersionText(const ReleaseDate& release, int language);

}  // namespace vrl
