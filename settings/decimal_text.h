#pragma once
// Whole numbers as tables, fields and command lines write them ("%d"): a minus sign when negative,
// no leading zeros. The counterpart of ReadInt (settings/kcsv.h). Portable.

#include <cstdint>
#include <string>

namespace vrl {

inline std::u16string DecimalText(std::int64_t value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace vrl
