/* A VST instrument stand-in: a DLL of the build's processor type. The companion only reads its
   program header; the host stand-in never loads it. */
#include <windows.h>

__declspec(dllexport) int VSTPluginMain(void) { return 0; }
