// Process entry: starts COM, the common controls and GDI+, runs the hidden main frame in the one
// message loop, and tears down in reverse. The exit code is the loop's result: 1 after a normal
// end; fatal start-up errors leave earlier through ExitProcess(0).

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <memory>

#include "app/gdiplus_win.h"
#include "app/main_frame_win.h"
#include "app/message_loop_win.h"

namespace {

int Run() {
    vrl::CMessageLoop loop;
    vrl::g_module.AddMessageLoop(&loop);
    ::CoInitialize(nullptr);
    const ULONG_PTR gdiplusToken = vrl::StartGdiplus();

    auto frame = std::make_unique<vrl::CMainFrame>();
    int result = 0;
    if (frame->CreateFrame()) result = loop.Run();

    vrl::g_module.RemoveMessageLoop();
    vrl::StopGdiplus(gdiplusToken);
    ::CoUninitialize();
    frame.reset();
    return result;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    ::CoInitialize(nullptr);
    ::DefWindowProcW(nullptr, 0, 0, 0);
    INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    vrl::g_module.Init(instance);

    const int result = Run();

    vrl::g_module.Term();
    ::CoUninitialize();
    return result;
}
