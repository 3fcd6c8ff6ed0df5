#pragma once
// File helpers the Windows tests share: whole files in and out, text as UTF-8, and scratch folders
// that are new for every test and go away with everything in them.

#include <windows.h>

#include <stdexcept>
#include <string>

namespace vrltest {

inline std::string Utf8(const std::wstring& text) {
    if (text.empty()) return std::string();
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                           nullptr, nullptr);
    std::string out(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), &out[0], size, nullptr, nullptr);
    return out;
}

// The whole file; empty when it cannot be read. Others may be writing it meanwhile.
inline std::string ReadFileBytes(const std::wstring& path) {
    std::string content;
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return content;
    char chunk[4096];
    DWORD read = 0;
    while (::ReadFile(file, chunk, sizeof chunk, &read, nullptr) && read > 0) content.append(chunk, read);
    ::CloseHandle(file);
    return content;
}

// Creates or replaces the file; a file that cannot be written fails the test that asked.
inline void WriteFileBytes(const std::wstring& path, const std::string& bytes) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                      nullptr);
    if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot write " + Utf8(path));
    DWORD written = 0;
    const BOOL ok = ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    ::CloseHandle(file);
    if (!ok || written != bytes.size()) throw std::runtime_error("cannot write " + Utf8(path));
}

// Best effort: what a program of the test still holds open stays.
inline void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring path = folder + L"\\" + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveTree(path);
            } else {
                ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                ::DeleteFileW(path.c_str());
            }
        } while (::FindNextFileW(search, &found));
        ::FindClose(search);
    }
    ::RemoveDirectoryW(folder.c_str());
}

// A new, empty folder under the temporary folder, named `stem` and numbers. Wine hands out the
// same process ids again soon, so a name is taken only when the folder could be created.
inline std::wstring CreateNewFolder(const std::wstring& stem) {
    wchar_t temp[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, temp);
    LARGE_INTEGER now{};
    ::QueryPerformanceCounter(&now);
    for (unsigned n = 0;; ++n) {
        const std::wstring folder = std::wstring(temp) + stem + L"-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                                    std::to_wstring(now.QuadPart % 1000000) + L"-" + std::to_wstring(n);
        if (::CreateDirectoryW(folder.c_str(), nullptr)) return folder;
        if (::GetLastError() != ERROR_ALREADY_EXISTS) throw std::runtime_error("cannot create " + Utf8(folder));
    }
}

// A folder of CreateNewFolder, removed with everything in it at the end.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::wstring& stem = L"vrl-test") : path_(CreateNewFolder(stem)) {}
    ~ScratchFolder() { RemoveTree(path_); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::wstring& Path() const { return path_; }
    std::wstring operator/(const std::wstring& name) const { return path_ + L"\\" + name; }

private:
    std::wstring path_;
};

}  // namespace vrltest
