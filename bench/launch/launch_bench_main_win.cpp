// vrl_launch_bench [runs]: how much the launch path adds to the start of the game. Both ways start
// DemoGame.exe from this program's folder and stop the clock when the game's first constructor
// sets the event named in VRL_SIM_READY_EVENT:
//   plain   CreateProcessW of the game;
//   launch  the executable check (16 MiB read and marker scan) and CreateProcessWithDllW with
//           VrlDLL.dll, as the game launch does it;
//   idle    the same with IdleModule.dll, a module that does nothing when loaded: what the
//           launcher itself adds, without the stand-in's own set-up in its DllMain.
// The three ways take turns run by run, so drifts of the machine hit all alike.
#include "app/game_launch_win.h"
#include "app/process_with_dll_win.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

namespace {

struct Bench {
    std::wstring game;
    std::string dll;
    std::string idleDll;
    HANDLE ready = nullptr;
    LARGE_INTEGER frequency{};
};

double Milliseconds(const Bench& bench, LONGLONG ticks) {
    return 1000.0 * static_cast<double>(ticks) / static_cast<double>(bench.frequency.QuadPart);
}

struct Timing {
    double returned = -1;  // until the process-creation call returned
    double ready = -1;     // until the game's first constructor ran
};

// Starts the game one way, waits for its first constructor, ends it. Negative times on failure.
enum class Way { Plain, Launch, Idle };

Timing TimeOneStart(const Bench& bench, Way way) {
    ResetEvent(bench.ready);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION pi{};
    LARGE_INTEGER start;
    LARGE_INTEGER returned;
    LARGE_INTEGER end;
    QueryPerformanceCounter(&start);
    BOOL started = FALSE;
    if (way != Way::Plain) {
        started = vrl::ExecutableCarriesHspMarker(bench.game) &&
                  vrl::CreateProcessWithDllW(bench.game.c_str(), nullptr, nullptr, nullptr, FALSE,
                                             CREATE_DEFAULT_ERROR_MODE, nullptr, nullptr, &startup, &pi,
                                             (way == Way::Launch ? bench.dll : bench.idleDll).c_str());
    } else {
        started = CreateProcessW(bench.game.c_str(), nullptr, nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE,
                                 nullptr, nullptr, &startup, &pi);
    }
    QueryPerformanceCounter(&returned);
    if (!started) return Timing{};
    const bool signalled = WaitForSingleObject(bench.ready, 20000) == WAIT_OBJECT_0;
    QueryPerformanceCounter(&end);
    TerminateProcess(pi.hProcess, 0);
    WaitForSingleObject(pi.hProcess, 10000);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    if (!signalled) return Timing{};
    return Timing{Milliseconds(bench, returned.QuadPart - start.QuadPart), Milliseconds(bench, end.QuadPart - start.QuadPart)};
}

// The executable check alone: one 16 MiB buffer, one read, the marker scan.
double TimeCheck(const Bench& bench) {
    LARGE_INTEGER start;
    LARGE_INTEGER end;
    QueryPerformanceCounter(&start);
    const bool found = vrl::ExecutableCarriesHspMarker(bench.game);
    QueryPerformanceCounter(&end);
    return found ? Milliseconds(bench, end.QuadPart - start.QuadPart) : -1;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

std::wstring OwnFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.rfind(L'\\'));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const int runs = argc > 1 ? std::max(1, _wtoi(argv[1])) : 20;
    Bench bench;
    QueryPerformanceFrequency(&bench.frequency);
    const std::wstring folder = OwnFolder();
    bench.game = folder + L"\\DemoGame.exe";
    bench.dll = vrl::ChooseDllImportName(folder + L"\\VrlDLL.dll", vrl::ModulePathAnsi(""));
    bench.idleDll = vrl::ChooseDllImportName(folder + L"\\IdleModule.dll", vrl::ModulePathAnsi(""));
    const std::wstring eventName = L"VrlLaunchBench" + std::to_wstring(GetCurrentProcessId());
    bench.ready = CreateEventW(nullptr, TRUE, FALSE, eventName.c_str());
    // The module must stay idle: no scenario, no transcript, no companion to wait for.
    SetEnvironmentVariableW(L"VRL_SIM_READY_EVENT", eventName.c_str());
    SetEnvironmentVariableW(L"VRL_SIM_SCENARIO", (folder + L"\\no-such-scenario").c_str());
    SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", nullptr);
    SetEnvironmentVariableW(L"VRL_SIM_CONNECT_MS", L"0");

    for (Way way : {Way::Plain, Way::Launch, Way::Idle}) {  // warm-up, not counted
        if (TimeOneStart(bench, way).ready < 0) {
            std::fprintf(stderr, "the demo game did not start (error %lu)\n", GetLastError());
            return 1;
        }
    }
    const Way ways[3] = {Way::Plain, Way::Launch, Way::Idle};
    std::vector<double> ready[3];
    std::vector<double> returned[3];
    for (int i = 0; i < runs; ++i) {
        Timing timing[3];
        bool complete = true;
        for (int k = 0; k < 3; ++k) {
            const int w = (i + k) % 3;
            timing[w] = TimeOneStart(bench, ways[w]);
            complete = complete && timing[w].ready >= 0;
        }
        if (!complete) continue;
        for (int w = 0; w < 3; ++w) {
            ready[w].push_back(timing[w].ready);
            returned[w].push_back(timing[w].returned);
        }
    }
    CloseHandle(bench.ready);
    std::vector<double> checks;
    for (int i = 0; i < runs; ++i) checks.push_back(TimeCheck(bench));
    if (ready[0].empty()) {
        std::fprintf(stderr, "no run completed\n");
        return 1;
    }
    const double plainMedian = Median(ready[0]);
    std::printf("runs: %zu each\n", ready[0].size());
    std::printf("plain CreateProcess to first constructor: median %.2f ms (call returned after %.2f ms)\n",
                plainMedian, Median(returned[0]));
    std::printf("launch path with the module stand-in:     median %.2f ms (call returned after %.2f ms)\n",
                Median(ready[1]), Median(returned[1]));
    std::printf("launch path with a module doing nothing:  median %.2f ms (call returned after %.2f ms)\n",
                Median(ready[2]), Median(returned[2]));
    std::printf("of which the executable check:            median %.2f ms\n", Median(checks));
    std::printf("ratio launch / plain, with the stand-in:  %.2f\n", Median(ready[1]) / plainMedian);
    std::printf("ratio launch / plain, the launcher alone: %.2f\n", Median(ready[2]) / plainMedian);
    return 0;
}
