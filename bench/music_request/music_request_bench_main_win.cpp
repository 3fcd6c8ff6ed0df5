// How long the game waits for one music request. A sender thread stands in for the module: it
// sends each request with SendMessage WM_COPYDATA across threads, alternately to the real music
// panel (200 rules, the matching one last, two candidates that exist) and to a window that only
// answers 1, so both round trips are measured side by side under the same load. The requests
// alternate between two files, so that each one chooses and starts a file anew.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "app/app_state_win.h"
#include "bench/common/round_trip_win.h"
#include "music/music_player_dlg_win.h"
#include "music/music_rules.h"

namespace {

using vrlbench::CreateNullReceiver;
using vrlbench::Mean;
using vrlbench::Median;
using Clock = std::chrono::steady_clock;

constexpr int kRequests = 2000;

// 198 rules for other files, months and hours, then the two that match.
std::string RulesTable() {
    std::string table = "#format,kcsv\r\n#column,orgfile,month,day,hour,playlist\r\n";
    for (int i = 0; i < 198; ++i) {
        table += "bgm" + std::to_string(100 + i) + ".mid:" + std::to_string(i) + ",12/1/2,,Morning/Noon,x" +
                 std::to_string(i) + ".ogg/y" + std::to_string(i) + ".ogg\r\n";
    }
    table += "bgm01.mid,,,,a.wav/b.wav\r\nbgm02.mid,,,,c.wav/d.wav\r\n";
    return table;
}

std::string Request(int i) {
    vrl::MusicRequest request;
    request.path = i % 2 ? u"C:\\Morva\\sound\\bgm01.mid" : u"C:\\Morva\\sound\\bgm02.mid";
    request.month = 4;
    request.day = 12;
    request.hour = 22;
    request.mapObjectId = 7;
    request.playCount = 2;
    return vrl::MusicRequestBytes(request);
}

double Send(HWND target, const std::string& bytes) {
    COPYDATASTRUCT data{1, static_cast<DWORD>(bytes.size()), const_cast<char*>(bytes.data())};
    const auto start = Clock::now();
    ::SendMessageW(target, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Measure(HWND panel, HWND nullReceiver, DWORD uiThread) {
    std::vector<double> toPanel, toNull;
    for (int i = 0; i < kRequests; ++i) {
        const std::string request = Request(i);
        toNull.push_back(Send(nullReceiver, request));
        toPanel.push_back(Send(panel, request));
    }
    std::printf("round trip of one music request, %d requests side by side (ms):\n", kRequests);
    std::printf("  receiver that does nothing: median %.3f  mean %.3f\n", Median(toNull), Mean(toNull));
    std::printf("  music panel (200 rules):    median %.3f  mean %.3f\n", Median(toPanel), Mean(toPanel));
    std::printf("  ratio: median %.2f  mean %.2f\n", Median(toPanel) / Median(toNull), Mean(toPanel) / Mean(toNull));
    ::PostThreadMessageW(uiThread, WM_QUIT, 0, 0);
}

}  // namespace

int main() {
    const std::wstring folder = vrlbench::EnterBenchFolder(L"vrl_music_request_bench");
    std::ofstream((folder + L"\\BGMEx.kcsv").c_str(), std::ios::binary) << RulesTable();
    for (const wchar_t* name : {L"a.wav", L"b.wav", L"c.wav", L"d.wav"}) std::ofstream((folder + L"\\" + name).c_str());

    vrl::App().folders.program = folder;
    vrl::CMusicPlayerDlg panel;
    if (!panel.Create()) {
        std::printf("the music panel could not be created\n");
        return 1;
    }
    panel.Show(SW_SHOW);
    HWND nullReceiver = CreateNullReceiver();

    vrlbench::PumpWhileSending([&](DWORD uiThread) { Measure(panel.Handle(), nullReceiver, uiThread); });
    panel.Destroy();
    ::DestroyWindow(nullReceiver);
    for (const wchar_t* name : {L"BGMEx.kcsv", L"a.wav", L"b.wav", L"c.wav", L"d.wav"}) ::DeleteFileW((folder + L"\\" + name).c_str());
    ::RemoveDirectoryW(folder.c_str());
    return 0;
}
