#include "sim_trace_win.h"

#include <cstdio>
#include <cstring>
#include <cwctype>
#include <vector>

namespace vrlsim {
namespace {

std::wstring TracePath() {
    const std::wstring chosen = vrl::sim::EnvironmentValue(L"VRL_SIM_BASS_TRACE");
    if (!chosen.empty()) return chosen;
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&TracePath), &self);
    return vrl::sim::ModuleFolder(self) + L"\\bass_trace.txt";
}

}  // namespace

void Trace(const std::string& line) { vrl::sim::AppendLine(TracePath(), line); }

std::wstring PathArgument(const void* file, bool wide) {
    if (!file) return std::wstring();
    if (wide) return static_cast<const wchar_t*>(file);
    const char* ansi = static_cast<const char*>(file);
    const int n = MultiByteToWideChar(CP_ACP, 0, ansi, -1, nullptr, 0);
    if (n <= 1) return std::wstring();
    std::wstring out(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi, -1, &out[0], n);
    out.resize(static_cast<std::size_t>(n - 1));
    return out;
}

std::string Quoted(const std::wstring& text) { return "\"" + Utf8(text) + "\""; }

std::string Hex(unsigned long value) {
    char buffer[16];
    std::snprintf(buffer, sizeof(buffer), "0x%lx", value);
    return buffer;
}

std::string Pointer(const void* value) {
    if (!value) return "null";
    char buffer[32];
    std::snprintf(buffer, sizeof(buffer), "0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<UINT_PTR>(value)));
    return buffer;
}

std::string FloatText(float value) {
    unsigned int bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    char buffer[64];
    std::snprintf(buffer, sizeof(buffer), "%g bits=0x%08x", static_cast<double>(value), bits);
    return buffer;
}

std::wstring LowerFileName(const std::wstring& path) {
    const std::size_t slash = path.find_last_of(L"\\/");
    std::wstring name = slash == std::wstring::npos ? path : path.substr(slash + 1);
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towlower(c));
    return name;
}

bool ReadWholeFile(const std::wstring& path, std::string* bytes) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    LARGE_INTEGER size = {};
    // The stand-ins only ever see small test files; anything huge is refused as unreadable.
    bool ok = GetFileSizeEx(file, &size) && size.QuadPart < (64LL << 20);
    if (ok) {
        bytes->assign(static_cast<std::size_t>(size.QuadPart), '\0');
        DWORD read = 0;
        ok = bytes->empty() ||
             (ReadFile(file, &(*bytes)[0], static_cast<DWORD>(bytes->size()), &read, nullptr) &&
              read == bytes->size());
    }
    CloseHandle(file);
    return ok;
}

}  // namespace vrlsim
