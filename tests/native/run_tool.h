#pragma once
// Runs a command line through the shell, as the native tests run the players' tools.

#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace vrltest {

// What the command printed (stdout and stderr, no input), and its exit status in `status`.
inline std::string RunTool(const std::string& command, int& status) {
    std::string output;
    FILE* pipe = popen((command + " 2>&1 </dev/null").c_str(), "r");
    if (!pipe) return output;
    char buffer[4096];
    for (std::size_t got; (got = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, got);
    status = WEXITSTATUS(pclose(pipe));
    return output;
}

}  // namespace vrltest
