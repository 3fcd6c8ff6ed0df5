// vrltables: shows how the program reads a table file, and checks table files for what it would
// read differently from what the player meant.
//   vrltables dump FILE        the table as JSON
//   vrltables check FILE...    one line per problem, FILE:LINE: message

#include "music/music_try.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"

#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>

#include "ui/wide_win.h"
#endif

namespace {

using vrl::Utf16ToUtf8;

FILE* OpenForReading(const std::u16string& path) {
#ifdef _WIN32
    return _wfopen(vrl::W(path), L"rb");
#else
    return std::fopen(Utf16ToUtf8(path).c_str(), "rb");
#endif
}

bool ReadFileBytes(const std::u16string& path, std::string& bytes) {
    FILE* file = OpenForReading(path);
    if (!file) return false;
    char buffer[65536];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) bytes.append(buffer, got);
    const bool ok = std::ferror(file) == 0;
    std::fclose(file);
    return ok;
}

// A Windows console shows UTF-16 only through the wide console call; files and pipes get UTF-8.
void Print(FILE* stream, const std::string& text) {
#ifdef _WIN32
    const HANDLE handle = GetStdHandle(stream == stderr ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (handle != INVALID_HANDLE_VALUE && GetFileType(handle) == FILE_TYPE_CHAR && GetConsoleMode(handle, &mode)) {
        const std::u16string wide = vrl::Utf8ToUtf16(text);
        DWORD written = 0;
        std::fflush(stream);
        WriteConsoleW(handle, vrl::W(wide), static_cast<DWORD>(wide.size()), &written, nullptr);
        return;
    }
#endif
    std::fwrite(text.data(), 1, text.size(), stream);
}

int Usage() {
    Print(stderr,
          "usage: vrltables dump FILE\n"
          "       vrltables check FILE...\n"
          "       vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ\n"
          "dump shows the table as the program reads it (JSON); check reports what in the files the\n"
          "program would read differently from what was meant, and exits with 1 when it finds anything.\n");
    return 2;
}

int Dump(const std::u16string& path) {
    const std::string name = Utf16ToUtf8(path);
    std::string bytes;
    if (!ReadFileBytes(path, bytes)) {
        Print(stderr, name + ": cannot read the file\n");
        return 1;
    }
    if (bytes.empty()) {
        Print(stderr, name + ": the file is empty; the program does not read it\n");
        return 1;
    }
    vrl::KcsvFile table;
    vrl::KcsvSourceLines where;
    const bool complete = table.ParseLines(vrl::TokeniseKcsv(vrl::Utf8ToUtf16(bytes)), &where);
    if (!complete && where.formatLine == 0) {
        Print(stderr, name + ": not a KCSV table (vrltables check " + name + " says why)\n");
        return 1;
    }
    Print(stdout, vrl::TableToJson(table));
    if (!complete) {
        Print(stderr, name + ":" + std::to_string(where.stopLine) +
                          ": the program stops reading at this line; the table above is all it reads\n");
    }
    return 0;
}

int Check(const std::vector<std::u16string>& paths) {
    bool found = false;
    for (const std::u16string& path : paths) {
        const std::string name = Utf16ToUtf8(path);
        std::string bytes;
        if (!ReadFileBytes(path, bytes)) {
            Print(stdout, name + ": cannot read the file\n");
            found = true;
            continue;
        }
        const std::vector<vrl::TableProblem> problems = vrl::CheckTableText(path, bytes);
        for (const vrl::TableProblem& problem : problems) {
            Print(stdout, name + ":" + std::to_string(problem.line) + ": " + problem.message + "\n");
        }
        if (problems.empty()) Print(stdout, name + ": no problems found\n");
        found = found || !problems.empty();
    }
    return found ? 1 : 0;
}

int Run(const std::vector<std::u16string>& args) {
    if (args.size() == 2 && args[0] == u"dump") return Dump(args[1]);
    if (args.size() >= 2 && args[0] == u"check") return Check({args.begin() + 1, args.end()});
    if (!args.empty() && args[0] == u"try") {
        std::string out, err;
        const int code = vrl::RunMusicTry(args, &out, &err);
        Print(stdout, out);
        Print(stderr, err);
        return code;
    }
    return Usage();
}

}  // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
    std::vector<std::u16string> args;
    for (int i = 1; i < argc; ++i) args.emplace_back(vrl::U(argv[i]));
    return Run(args);
}
#else
int main(int argc, char** argv) {
    std::vector<std::u16string> args;
    for (int i = 1; i < argc; ++i) args.push_back(vrl::Utf8ToUtf16(argv[i]));
    return Run(args);
}
#endif
