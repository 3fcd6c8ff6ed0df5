#pragma once
// vrltables, the players' table checker: what its commands share. Each command lives in a file of
// its own and takes the words after its name; the tables of commands are in vrltables_main.cpp
// (commands) and vrltables_try.cpp (what "try" can try, by table file).

#include <cstdio>
#include <string>
#include <vector>

namespace vrl::vrltables {

using Args = std::vector<std::u16string>;

struct Context {
    int language = 0;  // of every message: 0 English, 1 Japanese
};

// Exit codes: 0 nothing found, 1 problems found or a file unreadable, 2 usage.
using CommandFn = int (*)(const Args& args, const Context& context);

int Check(const Args& paths, const Context& context);
int Dump(const Args& args, const Context& context);
int Try(const Args& args, const Context& context);
// Checks every known table that exists in the current folder (none is no problem).
int CheckTablesHere(const Context& context);
// Vrl.ini, the game it names and the installation around it (its folder).
bool IsSettingsFile(const std::u16string& path);
int CheckSettings(const std::u16string& path, const Context& context);
// Vrl.ini (when there is one yet), the installation and the tables of the current folder.
int CheckEverythingHere(const Context& context);
int Usage(const Context& context);

// Console and files.
void Print(FILE* stream, const std::string& utf8);
bool ReadFileBytes(const std::u16string& path, std::string& bytes);
bool FileExists(const std::u16string& path);
// The full path of a file, with backslashes as the program writes them.
std::u16string FullPath(const std::u16string& path);
// English or Japanese, decided as the companion decides it.
int ToolLanguage();
// True when the console closes with this process (started by a double-click or a drop).
bool OwnsConsole();
void WaitForEnter(const Context& context);

}  // namespace vrl::vrltables
