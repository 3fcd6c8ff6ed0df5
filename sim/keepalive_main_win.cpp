// Keeps the Wine server of a test session alive between the short programs the tests start.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    Sleep(INFINITE);
    return 0;
}
