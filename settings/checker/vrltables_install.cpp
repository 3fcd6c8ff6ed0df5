// vrltables on Vrl.ini and on the whole installation: the settings as the companion reads them,
// the game they name, and the files and folders around the companion, on the player's disk.

#include "app/pe_image.h"
#include "settings/checker/vrltables.h"
#include "settings/checker/vrltables_texts.h"
#include "settings/install_check.h"
#include "settings/install_check_texts.h"
#include "settings/kcsv.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <windows.h>

#include "app/game_launch_win.h"
#include "ui/wide_win.h"
#endif

namespace vrl::vrltables {
namespace {

std::filesystem::path DiskPath(const std::u16string& path) {
#ifdef _WIN32
    return std::filesystem::path(Wstr(path));
#else
    std::string native = Utf16ToUtf8(path);
    for (char& c : native) c = c == '\\' ? '/' : c;
    return std::filesystem::path(native);
#endif
}

// The first `limit` bytes of a file, or fewer when it is shorter (none when it cannot be read).
std::string ReadHead(const std::u16string& path, std::size_t limit) {
    std::ifstream file(DiskPath(path), std::ios::binary);
    std::string head(limit, '\0');
    file.read(&head[0], static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

class DiskFiles : public InstallFiles {
public:
    bool FileExists(const std::u16string& path) override {
        std::error_code error;
        return std::filesystem::is_regular_file(DiskPath(path), error);
    }
    bool FolderExists(const std::u16string& path) override {
        std::error_code error;
        return std::filesystem::is_directory(DiskPath(path), error);
    }
    bool CarriesHspMarker(const std::u16string& path) override {
#ifdef _WIN32
        return ExecutableCarriesHspMarker(Wstr(path));  // the launcher's own test
#else
        const std::string head = ReadHead(path, kHspScanLimit);
        return FindHspMarker(reinterpret_cast<const unsigned char*>(head.data()), head.size()) != kNoHspMarker;
#endif
    }
    std::uint16_t MachineOf(const std::u16string& path) override {
        const std::string head = ReadHead(path, 4096);
        PeHeaders pe;
        return ParsePeHeaders(reinterpret_cast<const unsigned char*>(head.data()), head.size(), &pe) ? pe.machine : 0;
    }
    bool AsksForAdministrator(const std::u16string& path) override {
        std::string image;
        if (vrltables::ReadFileBytes(path, image) && ManifestAsksForAdministrator(image)) return true;
#ifdef _WIN32
        // "Run this program as an administrator" on the Compatibility tab is kept per program path,
        // for the user or for every user, as a layer named RUNASADMIN.
        std::error_code error;
        const std::wstring full = std::filesystem::absolute(DiskPath(path), error).wstring();
        for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
            wchar_t layers[512] = {};
            DWORD size = sizeof layers;
            if (RegGetValueW(root, L"Software\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags\\Layers",
                             full.c_str(), RRF_RT_REG_SZ, nullptr, layers, &size) == ERROR_SUCCESS &&
                std::wstring(layers).find(L"RUNASADMIN") != std::wstring::npos) {
                return true;
            }
        }
#endif
        return false;
    }
    bool ReadFileBytes(const std::u16string& path, std::string& bytes) override {
        return vrltables::ReadFileBytes(path, bytes);
    }
};

// The profile functions read a file without the Unicode mark in the system's code page. Natively
// there is none; each byte stands for the character of that number.
std::u16string FromCodePage(std::string_view bytes) {
#ifdef _WIN32
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size > 0 ? size : 0), L'\0');
    if (size > 0) MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), &wide[0], size);
    return U16(wide);
#else
    return std::u16string(bytes.begin(), bytes.end());
#endif
}

bool IsSettingsName(const std::u16string& path) {
    return path.size() >= 4 && AsciiLower(path.substr(path.size() - 4)) == u".ini";
}

int ReportInstallation(const std::u16string& programFolder, const AppSettings* settings, const Context& context) {
    DiskFiles files;
    const std::vector<InstallFinding> findings = CheckInstallFolder(programFolder, settings, files, context.language);
    for (const InstallFinding& finding : findings) {
        Print(stdout, SayText(context.language, install_text::kFinding, {Utf16ToUtf8(finding.subject), finding.message}));
    }
    if (findings.empty()) {
        Print(stdout, SayText(context.language, install_text::kInstallationClean, {Utf16ToUtf8(programFolder)}));
    }
    return findings.empty() ? 0 : 1;
}

}  // namespace

bool IsSettingsFile(const std::u16string& path) { return IsSettingsName(path); }

int CheckSettings(const std::u16string& path, const Context& context) {
    const std::string name = Utf16ToUtf8(path);
    std::string bytes;
    if (!ReadFileBytes(path, bytes)) {
        Print(stdout, SayText(context.language, text::kCannotRead, {name}));
        return 1;
    }
    // The companion reads Vrl.ini from its own folder, so that is the installation to look at.
    const std::u16string programFolder = FolderOf(FullPath(path));
    IniCheck check = CheckIniText(bytes, FromCodePage, context.language);
    GameFolders game;
    DiskFiles files;
    if (DeriveGameFolders(programFolder, &game)) CheckGamePath(&check, programFolder, game.game, files, context.language);
    for (const TableProblem& problem : check.problems) {
        Print(stdout, SayText(context.language, text::kProblem, {name, std::to_string(problem.line), problem.message}));
    }
    if (check.problems.empty()) Print(stdout, SayText(context.language, text::kNoProblems, {name}));
    const int installation = ReportInstallation(programFolder, &check.settings, context);
    return check.problems.empty() ? installation : 1;
}

int CheckEverythingHere(const Context& context) {
    int status = 0;
    if (FileExists(u"Vrl.ini")) {
        status = CheckSettings(u"Vrl.ini", context);
    } else {
        Print(stdout, SayText(context.language, install_text::kNoIniYet, {"Vrl.ini"}));
        status = ReportInstallation(FullPath(u"."), nullptr, context);
    }
    return std::max(status, CheckTablesHere(context));
}

}  // namespace vrl::vrltables
