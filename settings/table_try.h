#pragma once
// "What would the program do with this?" for players: a sample input run through the very code the
// windows use, put into words. Portable; the tool reads the files and the command line.

#include <string>
#include <string_view>

namespace vrl {

struct TrialPlace {
    std::u16string programFolder;     // where the tables live; the game folder is its parent
    bool speechProgramFound = false;  // RemoteTalk.exe exists in the program folder
    int language = 0;                 // of the report: 0 English, 1 Japanese
};

// What the log window does with `line` under the rules of LogEx.kcsv (`tableBytes`, the whole
// file): which rule takes it, or none, and why the rules that came close did not; its colour,
// speech and the sound files tried. UTF-8, one statement a line.
std::string TryLogLine(std::string_view tableBytes, std::u16string_view line, const TrialPlace& place);

}  // namespace vrl
