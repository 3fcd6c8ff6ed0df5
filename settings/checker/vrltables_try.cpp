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

// vrltables try BGMEx.kcsv FILE MONTH DAY HOUR MAPOBJ
int TryMusicTable(const std::u16string& path, const std::string&, const Args& rest, const Context& context) {
    Args args{u"try", path};
    args.insert(args.end(), rest.begin(), rest.end());
    std::string out, err;
    const int code = RunMusicTry(args, context.language, &out, &err);
    Print(stdout, out);
    Print(stderr, err);
    return code;
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
