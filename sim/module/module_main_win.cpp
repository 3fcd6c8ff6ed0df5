// The in-game module stand-in. It is loaded as an import of the game, so DllMain runs inside the
// loader: it only starts the worker thread, which does everything else once the loader is done.
//   VRL_SIM_SCENARIO    scenario file (default: VrlDLL.scenario next to the DLL)
//   VRL_SIM_TRANSCRIPT  transcript file (default: VrlDLL.transcript next to the DLL)
//   VRL_SIM_CONNECT_MS  how long to wait for the companion's frame (default 15000)
#include "sim/common/sim_io_win.h"
#include "sim/module/scenario_runner_win.h"

#include <windows.h>

namespace {

std::wstring SettingOrBeside(const wchar_t* variable, HMODULE module, const wchar_t* fileName) {
    std::wstring value = vrl::sim::EnvironmentValue(variable);
    return value.empty() ? vrl::sim::ModuleFolder(module) + L'\\' + fileName : value;
}

DWORD WINAPI Worker(void* parameter) {
    const HMODULE module = static_cast<HMODULE>(parameter);
    vrl::sim::ScenarioRunner runner(SettingOrBeside(L"VRL_SIM_TRANSCRIPT", module, L"VrlDLL.transcript"));
    runner.Record("attached to process " + std::to_string(GetCurrentProcessId()));
    runner.Connect();
    const std::wstring scenarioPath = SettingOrBeside(L"VRL_SIM_SCENARIO", module, L"VrlDLL.scenario");
    bool found = false;
    const std::string scenario = vrl::sim::ReadWholeFile(scenarioPath, &found);
    if (!found) {
        runner.Record("no scenario " + vrl::sim::Utf8(scenarioPath));
        return 0;
    }
    runner.Run(vrl::sim::SplitScenarioLines(scenario));
    return 0;
}

}  // namespace

// The import that loads this module names it by ordinal 1.
extern "C" int VrlModuleVersion() { return 1; }

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(instance);
        // Wine sets up the display of a process the first time a thread asks for a device context,
        // and two threads doing that at once can deadlock (and with them every later program
        // that waits for the display). The game's main thread is about to make its window while
        // the worker starts looking for it, so the display is set up here, before either runs.
        ReleaseDC(nullptr, GetDC(nullptr));
        if (HANDLE thread = CreateThread(nullptr, 0, Worker, instance, 0, nullptr)) CloseHandle(thread);
    }
    return TRUE;
}
