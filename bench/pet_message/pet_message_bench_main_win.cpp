// How long the game waits for one pet message. A sender thread stands in for the module: it sends
// 16 pets with SendMessage WM_COPYDATA across threads, alternately to the real pet panel (shown,
// every bar drawn) and to a window that only answers TRUE, so both round trips are measured side
// by side under the same load. First the same 16 pets again and again (what the module sends
// while nothing happens), then messages in which every row changed.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "app/app_state_win.h"
#include "app/game_link.h"
#include "panels/pet_extender_dlg_win.h"
#include "panels/pet_record.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kMessages = 2000;
constexpr UINT kSettle = WM_APP + 1;  // to the null receiver: paint what the panel has left to paint
HWND g_panel = nullptr;

LRESULT CALLBACK NullReceiver(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_COPYDATA) return TRUE;
    if (msg == kSettle) {
        ::RedrawWindow(g_panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        return 0;
    }
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

HWND CreateWindowOfClass(const wchar_t* name, WNDPROC proc, int extraBytes) {
    WNDCLASSW cls{};
    cls.lpfnWndProc = proc;
    cls.hInstance = ::GetModuleHandleW(nullptr);
    cls.lpszClassName = name;
    cls.cbWndExtra = extraBytes;
    ::RegisterClassW(&cls);
    return ::CreateWindowExW(0, name, L"", 0, 0, 0, 0, 0, nullptr, nullptr, cls.hInstance, nullptr);
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
double Settle(HWND nullReceiver) {
    const auto start = Clock::now();
    ::SendMessageW(nullReceiver, kSettle, 0, 0);
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Compare(const char* what, HWND panel, HWND nullReceiver, bool changing) {
    std::vector<double> toPanel, toNull, handled;
    for (int i = 0; i < kMessages; ++i) {
        const std::string pets = Pets(changing ? i : 0);
        Settle(nullReceiver);
        toNull.push_back(Send(nullReceiver, pets));
        Settle(nullReceiver);
        const double answered = Send(panel, pets);
        toPanel.push_back(answered);
        handled.push_back(answered + Settle(nullReceiver));
    }
    std::printf("%s, %d messages side by side (ms):\n", what, kMessages);
    std::printf("  receiver that does nothing:     median %.3f\n", Median(toNull));
    std::printf("  pet panel, answered:            median %.3f\n", Median(toPanel));
    std::printf("  pet panel, list updated, drawn: median %.3f\n", Median(handled));
    std::printf("  ratio of the answers: median %.2f\n", Median(toPanel) / Median(toNull));
    std::fflush(stdout);
}

void Measure(HWND panel, HWND nullReceiver, DWORD uiThread) {
    Send(panel, Pets(0));  // the first message fills the list
    Compare("16 unchanged pets", panel, nullReceiver, false);
    Compare("16 pets, every row changed", panel, nullReceiver, true);
    ::PostThreadMessageW(uiThread, WM_QUIT, 0, 0);
}

}  // namespace

int main() {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    const std::wstring folder = std::wstring(temp) + L"vrl_pet_message_bench";
    ::CreateDirectoryW(folder.c_str(), nullptr);
    ::SetCurrentDirectoryW(folder.c_str());
    vrl::App().folders.program = folder;
    // The panel reads its reload bit from the frame's slots on every message.
    vrl::App().frame = CreateWindowOfClass(L"VorrelUI", ::DefWindowProcW, vrl::game_link::kFrameExtraBytes);

    vrl::CPetExtenderDlg panel;
    if (!panel.Create()) {
        std::printf("the pet panel could not be created\n");
        return 1;
    }
    panel.Show(SW_SHOW);
    g_panel = panel.Handle();
    HWND nullReceiver = CreateWindowOfClass(L"VrlBenchNullReceiver", NullReceiver, 0);

    std::thread sender(Measure, panel.Handle(), nullReceiver, ::GetCurrentThreadId());
    MSG msg;
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
    sender.join();
    panel.Destroy();
    ::DestroyWindow(nullReceiver);
    ::DestroyWindow(vrl::App().frame);
    ::RemoveDirectoryW(folder.c_str());
    return 0;
}
