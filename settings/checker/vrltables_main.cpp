// vrltables: shows how the program reads its table files, checks them for what it would read
// differently from what the player meant, and tries sample input against them. Files given
// without a command are checked (Vrl.ini with the installation around it); without any arguments
// Vrl.ini, the installation and the known tables of the current folder are.

#include "settings/checker/vrltables.h"
#include "settings/kcsv.h"

#include <string_view>

#ifdef _WIN32
#include "ui/wide_win.h"
#endif

namespace vrl::vrltables {
namespace {

struct Command {
    std::u16string_view name;
    CommandFn run;
};

constexpr Command kCommands[] = {
    {u"check", Check},
    {u"dump", Dump},
    {u"try", Try},
};

int Run(const Args& args, const Context& context) {
    if (args.empty()) return CheckEverythingHere(context);
    for (const Command& command : kCommands) {
        if (args[0] == command.name) return command.run(Args(args.begin() + 1, args.end()), context);
    }
    if (args[0] == u"help" || args[0] == u"--help" || args[0] == u"-h" || args[0] == u"/?") {
        Usage(context);
        return 0;
    }
    return Check(args, context);
}

int Main(const Args& args) {
    Context context;
    context.language = ToolLanguage();
    const bool ownsConsole = OwnsConsole();
    const int status = Run(args, context);
    if (ownsConsole) WaitForEnter(context);
    return status;
}

}  // namespace
}  // namespace vrl::vrltables

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
    vrl::vrltables::Args args;
    for (int i = 1; i < argc; ++i) args.emplace_back(vrl::U(argv[i]));
    return vrl::vrltables::Main(args);
}
#else
int main(int argc, char** argv) {
    vrl::vrltables::Args args;
    for (int i = 1; i < argc; ++i) args.push_back(vrl::Utf8ToUtf16(argv[i]));
    return vrl::vrltables::Main(args);
}
#endif
