// How long the game waits for one pet message. A sender thread stands in for the module: it sends
// 16 pets with SendMessage WM_COPYDATA across threads, alternately to the real pet panel (shown,
// every bar drawn) and to a window that only answers TRUE, so both round trips are measured side
// by side under the same load. First the same 16 pets again and again (what the module sends
// while nothing happens), then messages in which every row changed.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstdio>
#include <string>
#include <vector>

#include "app/app_state_win.h"
#include "bench/common/round_trip_win.h"
#include "app/game_link.h"
#include "panels/pet_extender_dlg_win.h"
#include "panels/pet_record.h"

namespace {

using Clock = std::chrono::steady_clock;

int g_messages = 2000;  // or the first argument
constexpr UINT kSettle = WM_APP + 1;  // to the frame's stand-in: paint what the panel has left to paint
HWND g_panel = nullptr;

// The frame's stand-in: the panel reads its reload bit from its slots on every message.
LRESULT CALLBACK FrameStandIn(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == kSettle) {
        ::RedrawWindow(g_panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        return 0;
    }
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

HWND CreateFrameStandIn() {
    WNDCLASSW cls{};
    cls.lpfnWndProc = FrameStandIn;
    cls.hInstance = ::GetModuleHandleW(nullptr);
    cls.lpszClassName = L"VorrelUI";
    cls.cbWndExtra = vrl::game_link::kFrameExtraBytes;
    ::RegisterClassW(&cls);
    return ::CreateWindowExW(0, cls.lpszClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, cls.hInstance, nullptr);
}

// 16 living pets; `round` moves every pet's HP, so that each message changes every row.
std::string Pets(int round) {
    std::string bytes;
    for (int slot = 0; slot < vrl::kPetRows; ++slot) {
        const int hp = 10 + (slot + round) % 40;
        vrl::PetRecord::Make("pet " + std::to_string(slot), 1, 5 + slot, 100 * slot, 5000, hp, 60, 3, 9, 40, 50)
            .Encode(bytes);
    }
    return bytes;
}

double Send(HWND target, const std::string& bytes) {
    COPYDATASTRUCT data{};
    data.dwData = vrl::kPetRows;
    data.cbData = static_cast<DWORD>(bytes.size());
    data.lpData = const_cast<char*>(bytes.data());
    const auto start = Clock::now();
    ::SendMessageW(target, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Returns once the panel's thread has handled everything sent to it before and painted what that
// changed: the time it took, so that the next message finds the thread idle.
double Settle() {
    const auto start = Clock::now();
    ::SendMessageW(vrl::App().frame, kSettle, 0, 0);
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Compare(const char* what, HWND panel, HWND nullReceiver, bool changing) {
    std::vector<double> toPanel, toNull, handled;
    for (int i = 0; i < g_messages; ++i) {
        const std::string pets = Pets(changing ? i : 0);
        Settle();
        toNull.push_back(Send(nullReceiver, pets));
        Settle();
        const double answered = Send(panel, pets);
        toPanel.push_back(answered);
        handled.push_back(answered + Settle());
    }
    std::printf("%s, %d messages side by side (ms):\n", what, g_messages);
    std::printf("  receiver that does nothing:     median %.3f\n", vrlbench::Median(toNull));
    std::printf("  pet panel, answered:            median %.3f\n", vrlbench::Median(toPanel));
    std::printf("  pet panel, list updated, drawn: median %.3f\n", vrlbench::Median(handled));
    std::printf("  ratio of the answers: median %.2f\n", vrlbench::Median(toPanel) / vrlbench::Median(toNull));
    std::fflush(stdout);
}

void Measure(HWND panel, HWND nullReceiver, DWORD uiThread) {
    Send(panel, Pets(0));  // the first message fills the list
    Compare("16 unchanged pets", panel, nullReceiver, false);
    Compare("16 pets, every row changed", panel, nullReceiver, true);
    ::PostThreadMessageW(uiThread, WM_QUIT, 0, 0);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) g_messages = std::max(1, std::atoi(argv[1]));
    const std::wstring folder = vrlbench::EnterBenchFolder(L"vrl_pet_message_bench");
    vrl::App().folders.program = folder;
    // The panel reads its reload bit from the frame's slots on every message.
    vrl::App().frame = CreateFrameStandIn();

    vrl::CPetExtenderDlg panel;
    if (!panel.Create()) {
        std::printf("the pet panel could not be created\n");
        return 1;
    }
    panel.Show(SW_SHOW);
    g_panel = panel.Handle();
    HWND nullReceiver = vrlbench::CreateNullReceiver();

    vrlbench::PumpWhileSending([&](DWORD uiThread) { Measure(panel.Handle(), nullReceiver, uiThread); });
    panel.Destroy();
    ::DestroyWindow(nullReceiver);
    ::DestroyWindow(vrl::App().frame);
    ::RemoveDirectoryW(folder.c_str());
    return 0;
}
