// vrltables check, and the check of the tables in the current folder.

#include "settings/checker/vrltables.h"
#include "settings/checker/vrltables_texts.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"
#include "settings/table_schema.h"

namespace vrl::vrltables {

int Usage(const Context& context) {
    Print(stderr, SayText(context.language, text::kUsage, {}));
    return 2;
}

int Check(const Args& paths, const Context& context) {
    if (paths.empty()) return Usage(context);
    bool found = false;
    for (const std::u16string& path : paths) {
        if (IsSettingsFile(path)) {
            found = CheckSettings(path, context) != 0 || found;
            continue;
        }
        const std::string name = Utf16ToUtf8(path);
        std::string bytes;
        if (!ReadFileBytes(path, bytes)) {
            Print(stdout, SayText(context.language, text::kCannotRead, {name}));
            found = true;
            continue;
        }
        const std::vector<TableProblem> problems = CheckTableText(path, bytes, context.language);
        for (const TableProblem& problem : problems) {
            Print(stdout, SayText(context.language, text::kProblem, {name, std::to_string(problem.line), problem.message}));
        }
        if (problems.empty()) Print(stdout, SayText(context.language, text::kNoProblems, {name}));
        found = found || !problems.empty();
    }
    return found ? 1 : 0;
}

int CheckTablesHere(const Context& context) {
    Args present;
    for (const TableSchema& table : KnownTables()) {
        const std::u16string name(table.fileName);
        if (FileExists(name)) present.push_back(name);
    }
    if (present.empty()) {
        Print(stdout, SayText(context.language, text::kNoTablesHere, {Utf16ToUtf8(FullPath(u"."))}));
        return 0;
    }
    return Check(present, context);
}

}  // namespace vrl::vrltables
