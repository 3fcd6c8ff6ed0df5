// vrltables try TABLE ...: sample input run through the code the program uses for that table.
// One row per table that can be tried; each takes the words after the table's path.

#include "settings/checker/vrltables.h"
#include "settings/checker/vrltables_texts.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"
#include "settings/table_schema.h"
#include "settings/table_try.h"

#include "app/install_paths.h"
#include "music/music_try.h"

#include <string_view>

namespace vrl::vrltables {
namespace {

// vrltables try LogEx.kcsv "LINE"
int TryLogTable(const std::u16string& path, const std::string& bytes, const Args& rest, const Context& context) {
    if (rest.size() != 1) return Usage(context);
    TrialPlace place;
    place.programFolder = FolderOf(FullPath(path));
    place.speechProgramFound = FileExists(JoinPath(place.programFolder, u"RemoteTalk.exe"));
    place.language = context.language;
    Print(stdout, TryLogLine(bytes, rest[0], place));
    return 0;
}

// A number as the player types it: an optional minus sign and digits, nothing else.
bool ReadWholeNumber(const std::u16string& text, int* value) {
    const std::size_t digits = !text.empty() && text[0] == u'-' ? 1 : 0;
    if (text.size() == digits || text.find_first_not_of(u"0123456789", digits) != std::u16string::npos) return false;
    *value = ReadInt(text);
    return true;
}

std::u16string Backslashed(std::u16string path) {
    for (char16_t& c : path) c = c == u'/' ? u'\\' : c;
    return path;
}

bool IsAbsolute(const std::u16string& path) {
    return (path.size() >= 2 && path[1] == u':') || (!path.empty() && path[0] == u'\\');
}

// vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ: the request as the module sends it, tried
// against the rules with Volume.kcsv beside them.
int TryMusicTable(const std::u16string& path, const std::string& bytes, const Args& rest, const Context& context) {
    MusicRequest request;
    if (rest.size() != 5 || !ReadWholeNumber(rest[1], &request.month) || !ReadWholeNumber(rest[2], &request.day) ||
        !ReadWholeNumber(rest[3], &request.hour) || !ReadWholeNumber(rest[4], &request.mapObjectId)) {
        Print(stderr, SayText(context.language, text::kTryMusicUsage, {}));
        return 2;
    }
    request.path = Backslashed(rest[0]);
    KcsvFile rules;
    if (bytes.empty() || !rules.ParseUtf8(bytes)) {
        Print(stderr, SayText(context.language, text::kNoMusicRules, {Utf16ToUtf8(path)}));
        return 1;
    }
    const std::u16string program = FolderOf(FullPath(path));
    KcsvFile volumes;
    std::string volumeBytes;
    if (ReadFileBytes(JoinPath(program, std::u16string(tables::volume::kFile)), volumeBytes) && !volumeBytes.empty())
        volumes.ParseUtf8(volumeBytes);
    GameFolders folders;
    DeriveGameFolders(program, &folders);
    // The panel's current folder is the program folder: relative entries are found there.
    const vrl::FileExists exists = [&program](const std::u16string& file) {
        return FileExists(IsAbsolute(file) ? file : JoinPath(program, file));
    };
    Print(stdout, MusicTryReport(rules, volumes, request, folders, exists, context.language));
    return 0;
}

using TryFn = int (*)(const std::u16string& path, const std::string& bytes, const Args& rest, const Context& context);

struct Trial {
    std::u16string_view table;
    TryFn run;
};

constexpr Trial kTrials[] = {
    {tables::logex::kFile, TryLogTable},
    {tables::bgmex::kFile, TryMusicTable},
};

}  // namespace

int Try(const Args& args, const Context& context) {
    if (args.empty()) return Usage(context);
    const std::u16string& path = args[0];
    const TableSchema* schema = FindTableSchema(path);
    for (const Trial& trial : kTrials) {
        if (!schema || schema->fileName != trial.table) continue;
        std::string bytes;
        if (!ReadFileBytes(path, bytes)) {
            Print(stderr, SayText(context.language, text::kCannotRead, {Utf16ToUtf8(path)}));
            return 1;
        }
        return trial.run(path, bytes, Args(args.begin() + 1, args.end()), context);
    }
    std::string known;
    for (const Trial& trial : kTrials) known += (known.empty() ? "" : ", ") + Utf16ToUtf8(trial.table);
    Print(stderr, SayText(context.language, text::kCannotTry, {Utf16ToUtf8(path), known}));
    return 2;
}

}  // namespace vrl::vrltables
