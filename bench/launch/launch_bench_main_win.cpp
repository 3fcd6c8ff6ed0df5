// vrl_launch_bench [runs]: how much the launch path adds to the start of the game. Both ways start
// DemoGame.exe from this program's folder and stop the clock when the game's first constructor
// sets the event named in VRL_SIM_READY_EVENT:
//   plain   CreateProcessW of the game;
//   launch  the executable check (16 MiB read and marker scan) and CreateProcessWithDllW with
//           VrlDLL.dll, as the game launch does it.
// The two ways alternate run by run, so drifts of the machine hit both alike.
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
Timing TimeOneStart(const Bench& bench, bool withModule) {
    ResetEvent(bench.ready);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION pi{};
    LARGE_INTEGER start;
    LARGE_INTEGER returned;
    LARGE_INTEGER end;
    QueryPerformanceCounter(&start);
    BOOL started = FALSE;
    if (withModule) {
        started = vrl::ExecutableCarriesHspMarker(bench.game) &&
                  vrl::CreateProcessWithDllW(bench.game.c_str(), nullptr, nullptr, nullptr, FALSE,
                                             CREATE_DEFAULT_ERROR_MODE, nullptr, nullptr, &startup, &pi,
                                             bench.dll.c_str());
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
    const std::wstring eventName = L"VrlLaunchBench" + std::to_wstring(GetCurrentProcessId());
    bench.ready = CreateEventW(nullptr, TRUE, FALSE, eventName.c_str());
    // The module must stay idle: no scenario, no transcript, no companion to wait for.
    SetEnvironmentVariableW(L"VRL_SIM_READY_EVENT", eventName.c_str());
    SetEnvironmentVariableW(L"VRL_SIM_SCENARIO", (folder + L"\\no-such-scenario").c_str());
    SetEnvironmentVariableW(L"VRL_SIM_TRANSCRIPT", nullptr);
    SetEnvironmentVariableW(L"VRL_SIM_CONNECT_MS", L"0");

    if (TimeOneStart(bench, false).ready < 0 || TimeOneStart(bench, true).ready < 0) {  // warm-up, not counted
        std::fprintf(stderr, "the demo game did not start (error %lu)\n", GetLastError());
        return 1;
    }
    std::vector<double> plain;
    std::vector<double> launch;
    std::vector<double> plainReturned;
    std::vector<double> launchReturned;
    for (int i = 0; i < runs; ++i) {
        const bool launchFirst = i % 2 == 1;
        const Timing first = TimeOneStart(bench, launchFirst);
        const Timing second = TimeOneStart(bench, !launchFirst);
        if (first.ready < 0 || second.ready < 0) continue;
        const Timing& withModule = launchFirst ? first : second;
        const Timing& without = launchFirst ? second : first;
        launch.push_back(withModule.ready);
        launchReturned.push_back(withModule.returned);
        plain.push_back(without.ready);
        plainReturned.push_back(without.returned);
    }
    CloseHandle(bench.ready);
    std::vector<double> checks;
    for (int i = 0; i < runs; ++i) checks.push_back(TimeCheck(bench));
    if (plain.empty()) {
        std::fprintf(stderr, "no run completed\n");
        return 1;
    }
    const double plainMedian = Median(plain);
    const double launchMedian = Median(launch);
    std::printf("runs: %zu each\n", plain.size());
    std::printf("plain CreateProcess to first constructor: median %.2f ms (call returned after %.2f ms)\n",
                plainMedian, Median(plainReturned));
    std::printf("launch path (check + start with module):  median %.2f ms (call returned after %.2f ms)\n",
                launchMedian, Median(launchReturned));
    std::printf("of which the executable check:            median %.2f ms\n", Median(checks));
    std::printf("ratio launch / plain: %.2f\n", launchMedian / plainMedian);
    return 0;
}
