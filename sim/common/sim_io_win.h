#pragma once
// Small helpers the stand-in programs share: environment values, UTF-8, their own folder, and the
// transcript they append to so that tests can read back what happened inside them.

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

namespace vrl::sim {

inline std::wstring EnvironmentValue(const wchar_t* name) {
    const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
    if (size == 0) return std::wstring();
    std::wstring value(size, L'\0');
    const DWORD length = GetEnvironmentVariableW(name, &value[0], size);
    value.resize(length < size ? length : 0);
    return value;
}

inline std::string Utf8(const std::wstring& text) {
    if (text.empty()) return std::string();
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), nullptr, 0,
                                         nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), &result[0], size, nullptr, nullptr);
    return result;
}

inline std::wstring FromUtf8(const std::string& text) {
    if (text.empty()) return std::wstring();
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), &result[0], size);
    return result;
}

// Folder of a module's file (null: the running executable), without the trailing backslash.
inline std::wstring ModuleFolder(HMODULE module) {
    std::vector<wchar_t> buffer(32768);
    const DWORD length = GetModuleFileNameW(module, buffer.data(), static_cast<DWORD>(buffer.size()));
    std::wstring path(buffer.data(), length);
    const std::size_t slash = path.rfind(L'\\');
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
}

// Appends one line (UTF-8, CR LF). One write to a file opened for appending only, under a named
// mutex: Wine appends by seeking to the end and writing, so two writers (the game and the module
// in one process, or several processes) could otherwise overwrite each other's lines.
inline void AppendLine(const std::wstring& path, const std::string& line) {
    if (path.empty()) return;
    HANDLE lock = CreateMutexW(nullptr, FALSE, L"Local\\VrlSimTranscriptAppend");
    if (lock) WaitForSingleObject(lock, 5000);
    HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        const std::string text = line + "\r\n";
        DWORD written = 0;
        WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        CloseHandle(file);
    }
    if (lock) {
        ReleaseMutex(lock);
        CloseHandle(lock);
    }
}

inline std::string Hex(unsigned long long value) {
    char buffer[24];
    std::snprintf(buffer, sizeof(buffer), "0x%llX", value);
    return buffer;
}

inline std::string ReadWholeFile(const std::wstring& path, bool* ok) {
    *ok = false;
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::string();
    std::string content;
    char chunk[4096];
    DWORD read = 0;
    while (ReadFile(file, chunk, sizeof(chunk), &read, nullptr) && read > 0) content.append(chunk, read);
    CloseHandle(file);
    *ok = true;
    return content;
}

}  // namespace vrl::sim
