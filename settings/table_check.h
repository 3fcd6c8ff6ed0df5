#pragma once
// The players' table checker: finds what in a KCSV file the program would read differently from
// what the player meant, and says so in plain words with the physical line.

#include "settings/kcsv.h"
#include "ui/lang_text.h"

#include <initializer_list>

#include <string>
#include <string_view>
#include <vector>

namespace vrl {

struct TableProblem {
    unsigned line = 0;    // physical line, from 1
    std::string message;  // UTF-8
};

// `path` names the file in messages and picks the known table by its base name. `bytes` is the
// whole file. The problems come ordered by line, in English (language 0) or Japanese (1).
std::vector<TableProblem> CheckTableText(std::u16string_view path, std::string_view bytes, int language = 0);

// A text as the player wrote it, between double quotes (UTF-8); very long texts are shortened.
std::string QuotedForReport(std::u16string_view text);

// The text of `message` in `language` (UTF-8), with %1, %2, ... replaced by `args`.
std::string SayText(int language, const LangText& message, std::initializer_list<std::string> args);

// The known name nearest to `name` (case of A to Z ignored), when it is near enough to be a slip;
// empty when none is.
std::u16string NearestName(std::u16string_view name, const std::vector<std::u16string>& known);

}  // namespace vrl
