// The settings-editor stand-in. It appends its command line to "VrlConfig.started" in its own
// folder (and to VRL_SIM_TRANSCRIPT when set) and ends at once.
// It also carries the built-in enchant table ("FILE_ENCHANTTABLE", type "FILE", config.rc), which
// the companion reads without starting it.
#include "sim/common/sim_io_win.h"

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const std::string line = "started: " + vrl::sim::Utf8(GetCommandLineW());
    vrl::sim::AppendLine(vrl::sim::ModuleFolder(nullptr) + L"\\VrlConfig.started", line);
    vrl::sim::AppendLine(vrl::sim::EnvironmentValue(L"VRL_SIM_TRANSCRIPT"), "config: " + line);
    return 0;
}
