#pragma once
// GDI+ is started before the frame exists and stopped after its windows are gone.

#include <windows.h>

namespace vrl {

ULONG_PTR StartGdiplus();
void StopGdiplus(ULONG_PTR token);

}  // namespace vrl
