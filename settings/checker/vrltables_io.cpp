// vrltables: the console, the files and the player's language.

#include "settings/checker/vrltables.h"
#include "settings/checker/vrltables_texts.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>

#include "settings/app_settings.h"
#include "settings/app_settings_win.h"
#include "ui/wide_win.h"
#else
#include <climits>
#include <sys/stat.h>
#endif

namespace vrl::vrltables {
namespace {

#ifndef _WIN32
// Natively, paths are shown with backslashes as the program writes them, and used with slashes.
std::string NativePath(const std::u16string& path) {
    std::string out = Utf16ToUtf8(path);
    for (char& c : out) c = c == '\\' ? '/' : c;
    return out;
}
#endif

FILE* OpenForReading(const std::u16string& path) {
#ifdef _WIN32
    return _wfopen(W(path), L"rb");
#else
    return std::fopen(NativePath(path).c_str(), "rb");
#endif
}

}  // namespace

// A Windows console shows UTF-16 only through the wide console call; files and pipes get UTF-8.
void Print(FILE* stream, const std::string& utf8) {
#ifdef _WIN32
    const HANDLE handle = GetStdHandle(stream == stderr ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (handle != INVALID_HANDLE_VALUE && GetFileType(handle) == FILE_TYPE_CHAR && GetConsoleMode(handle, &mode)) {
        const std::u16string wide = Utf8ToUtf16(utf8);
        DWORD written = 0;
        std::fflush(stream);
        WriteConsoleW(handle, W(wide), static_cast<DWORD>(wide.size()), &written, nullptr);
        return;
    }
#endif
    std::fwrite(utf8.data(), 1, utf8.size(), stream);
}

bool ReadFileBytes(const std::u16string& path, std::string& bytes) {
    FILE* file = OpenForReading(path);
    if (!file) return false;
    char buffer[65536];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) bytes.append(buffer, got);
    const bool ok = std::ferror(file) == 0;
    std::fclose(file);
    return ok;
}

bool FileExists(const std::u16string& path) {
#ifdef _WIN32
    const DWORD attributes = GetFileAttributesW(W(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
#else
    struct stat info {};
    return stat(NativePath(path).c_str(), &info) == 0 && S_ISREG(info.st_mode);
#endif
}

std::u16string FullPath(const std::u16string& path) {
#ifdef _WIN32
    wchar_t full[MAX_PATH * 4];
    const DWORD length = GetFullPathNameW(W(path), MAX_PATH * 4, full, nullptr);
    return length == 0 || length >= MAX_PATH * 4 ? path : std::u16string(U(full), length);
#else
    char full[PATH_MAX];
    std::u16string out = realpath(NativePath(path).c_str(), full) ? Utf8ToUtf16(full) : path;
    for (char16_t& c : out) c = c == u'/' ? u'\\' : c;
    return out;
#endif
}

int ToolLanguage() {
#ifdef _WIN32
    wchar_t self[MAX_PATH * 4];
    const DWORD length = GetModuleFileNameW(nullptr, self, MAX_PATH * 4);
    std::u16string folder(U(self), length);
    folder.resize(folder.find_last_of(u'\\') == std::u16string::npos ? 0 : folder.find_last_of(u'\\'));
    AppSettings settings;
    settings.filePath = folder + u"\\Vrl.ini";
    LoadAppSettings(settings);
    return AppSettings::ResolveLanguage(settings.iLanguage, GetUserDefaultLCID());
#else
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value) return std::string(value).rfind("ja", 0) == 0 ? 1 : 0;
    }
    return 0;
#endif
}

bool OwnsConsole() {
#ifdef _WIN32
    DWORD processes[2];
    return GetConsoleProcessList(processes, 2) == 1;
#else
    return false;
#endif
}

void WaitForEnter(const Context& context) {
    Print(stdout, SayText(context.language, text::kPressEnter, {}));
    std::fflush(stdout);
    for (int c = std::getchar(); c != '\n' && c != EOF;) c = std::getchar();
}

}  // namespace vrl::vrltables
