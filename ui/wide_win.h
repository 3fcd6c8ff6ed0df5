#pragma once
// Bridges the portable UTF-16 text (char16_t) and the Win32 wide API (wchar_t): on Windows both
// are 16-bit code units, so the bridge is a reinterpretation, never a conversion.

#include <windows.h>

#include <string>

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Win32 wide text is UTF-16");

namespace vrl {

inline const wchar_t* W(const char16_t* s) { return reinterpret_cast<const wchar_t*>(s); }
inline const wchar_t* W(const std::u16string& s) { return reinterpret_cast<const wchar_t*>(s.c_str()); }
inline const char16_t* U(const wchar_t* s) { return reinterpret_cast<const char16_t*>(s); }
inline std::u16string U16(const std::wstring& s) { return std::u16string(U(s.c_str()), s.size()); }
inline std::wstring Wstr(const std::u16string& s) { return std::wstring(W(s), s.size()); }

}  // namespace vrl
