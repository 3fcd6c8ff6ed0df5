#pragma once
// The release shown in the About box: "[Dec 30, 2023]" in English, "[2023/12/30]" in Japanese.

#include <string>

namespace vrl {

struct ReleaseDate {
    int year;
    int month;  // 1 to 12; 0 shows "---"
    int day;
    int kind;   // 0 release, 1 beta, 2 alpha, 3 test
};

inline constexpr ReleaseDate kThisRelease{2023, 12, 30, 0};

std::u16string FormatVersionText(const ReleaseDate& release, int language);

}  // namespace vrl
