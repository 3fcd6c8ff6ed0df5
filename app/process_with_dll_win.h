#pragma once
// Starting a program with one DLL of ours loaded into it before any of the program's own code
// runs: the process is created suspended, the DLL is added to the front of the import directory
// of its image in memory, and the main thread is resumed. The loader then loads the DLL as an
// ordinary static import on the main thread, before the program's C++ constructors and entry.

#include <windows.h>

#include <string>

namespace vrl {

// CreateProcessW with `dllName` (ANSI, as written into the import directory: a full path, or a
// bare name the loader finds through its search order) added to the new process. CREATE_SUSPENDED
// is always used internally; the main thread is resumed unless the caller asked for it too.
//
// The DLL must export ordinal 1 (the import names it) and match the program's machine. A DLL
// given by path is checked before the process is created (missing, not a DLL, no ordinal 1: no
// process is started). When adding the DLL fails after creation, the new process is terminated
// and waited for, its handles are closed and *processInformation is zeroed. Either way the
// result is FALSE with the reason in GetLastError(). On success the caller owns both handles.
BOOL CreateProcessWithDllW(LPCWSTR applicationName, LPWSTR commandLine,
                           LPSECURITY_ATTRIBUTES processAttributes, LPSECURITY_ATTRIBUTES threadAttributes,
                           BOOL inheritHandles, DWORD creationFlags, LPVOID environment,
                           LPCWSTR currentDirectory, LPSTARTUPINFOW startupInfo,
                           LPPROCESS_INFORMATION processInformation, LPCSTR dllName);

// The name to write into an import directory for the DLL at `widePath`, whose ANSI form (in the
// system's ANSI code page) is `ansiPath`. An import name is narrow text: a path of plain ASCII is
// used as it is; otherwise the short (8.3) form of the path, when that is plain ASCII; otherwise
// the ANSI form, which the loader decodes with the ANSI code page (right on a system whose code
// page covers the folder's characters; a folder it cannot represent then fails to load).
std::string ChooseDllImportName(const std::wstring& widePath, const std::string& ansiPath);

}  // namespace vrl
