// A module that does nothing when loaded: the launch path started with it costs what the
// launcher itself adds, without the module stand-in's own set-up.
#include <windows.h>

extern "C" __declspec(dllexport) int VrlModuleVersion() { return 1; }

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { return TRUE; }
