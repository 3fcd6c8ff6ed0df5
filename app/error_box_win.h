#pragma once
// The two kinds of error box: a fatal error ends the process with exit code 0; a warning does not.
// Both carry the two-language "Vorrel Error" caption.

#include <string>

namespace vrl {

[[noreturn]] void FatalError(const std::u16string& text);
void WarningBox(const std::u16string& text);

}  // namespace vrl
