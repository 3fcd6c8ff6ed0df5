// Keeps the Wine server of a test session and its desktop alive between the short programs the
// tests start. The desktop process ends a few seconds after the last program with a window on it
// has gone, and a program that starts while it is going away can be handed a desktop that no
// longer exists (X errors, a game whose window never comes). So this program keeps a hidden window
// on the desktop, and answers its messages like any well-behaved window owner.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    WNDCLASSW cls{};
    cls.lpfnWndProc = DefWindowProcW;
    cls.hInstance = instance;
    cls.lpszClassName = L"VrlKeepAlive";
    ::RegisterClassW(&cls);
    ::CreateWindowExW(WS_EX_TOOLWINDOW, cls.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, instance,
                      nullptr);
    MSG msg;
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) ::DispatchMessageW(&msg);
    return 0;
}
