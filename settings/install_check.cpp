#include "settings/install_check.h"

#include "log/log_rules.h"
#include "settings/install_check_texts.h"
#include "settings/kcsv.h"

#include <algorithm>

namespace vrl {
namespace {

namespace text = install_text;

bool IsAbsolute(const std::u16string& path) {
    return (path.size() >= 2 && path[1] == u':') || (!path.empty() && (path[0] == u'\\' || path[0] == u'/'));
}

// The folder of a path with "." and ".." steps taken, to compare folders as places.
std::u16string PlaceOf(const std::u16string& folder) {
    std::vector<std::u16string> steps;
    std::size_t start = 0;
    for (std::size_t end; start <= folder.size(); start = end + 1) {
        end = std::min(folder.find(u'\\', start), folder.size());
        const std::u16string step = folder.substr(start, end - start);
        if (step == u".." && !steps.empty()) {
            steps.pop_back();
        } else if (step != u"." && (!step.empty() || steps.empty())) {
            steps.push_back(AsciiLower(step));
        }
    }
    std::u16string out;
    for (const std::u16string& step : steps) out += (out.empty() ? u"" : u"\\") + step;
    return out;
}

// What the log window would do with LogEx.kcsv: play sounds, speak.
struct LogAlerts {
    bool sounds = false;
    bool speech = false;
};

LogAlerts LogAlertsOf(const std::u16string& programFolder, InstallFiles& files) {
    LogAlerts alerts;
    std::string bytes;
    if (!files.ReadFileBytes(JoinPath(programFolder, u"LogEx.kcsv"), bytes)) return alerts;
    KcsvFile table;
    table.ParseLines(TokeniseKcsv(Utf8ToUtf16(bytes)), nullptr);
    LogRuleSet rules;
    rules.Load(table);
    alerts.speech = rules.RemoteTalkRequested();
    for (const LogRule& rule : rules.Rules()) alerts.sounds = alerts.sounds || !rule.sound.empty();
    return alerts;
}

// The module is built for the companion's processor and goes into the game's process: a game of
// another type (a 64-bit program beside the 32-bit companion) cannot take it.
bool OtherMachine(std::uint16_t game, std::uint16_t companion) { return game && companion && game != companion; }

}  // namespace

void CheckGamePath(IniCheck* check, const std::u16string& programFolder, const std::u16string& gameFolder,
                   InstallFiles& files, int language) {
    const IniEntry* entry = check->ini.FindEntry(AppSettings::kSection, u"wstrMorva");
    const std::u16string& named = check->settings.wstrMorva;
    if (entry == nullptr || named.empty()) return;
    // The launcher opens the file while the game folder is the current folder.
    const std::u16string game = IsAbsolute(named) ? named : JoinPath(gameFolder, named);
    const std::string shown = "\"" + Utf16ToUtf8(named) + "\"";
    const LangText* problem = nullptr;
    if (files.FolderExists(game)) {
        problem = &text::kGameIsFolder;
    } else if (!files.FileExists(game)) {
        problem = &text::kGameMissing;
    } else if (!files.CarriesHspMarker(game)) {
        problem = &text::kGameNotMorva;
    } else if (OtherMachine(files.MachineOf(game), files.MachineOf(JoinPath(programFolder, u"VrlBoot.exe")))) {
        problem = &text::kGameOtherMachine;
    } else if (files.AsksForAdministrator(game)) {
        problem = &text::kGameNeedsAdministrator;
    }
    std::string message;
    if (problem) {
        message = SayText(language, *problem, {shown});
    } else if (PlaceOf(FolderOf(game)) != PlaceOf(gameFolder)) {
        message = SayText(language, text::kGameElsewhere, {Utf16ToUtf8(gameFolder)});
    } else {
        return;
    }
    auto& problems = check->problems;
    const auto after = std::find_if(problems.begin(), problems.end(),
                                    [&](const TableProblem& p) { return p.line > entry->line; });
    problems.insert(after, {entry->line, message});
}

std::vector<InstallFinding> CheckInstallFolder(const std::u16string& programFolder, const AppSettings* settings,
                                               InstallFiles& files, int language) {
    std::vector<InstallFinding> findings;
    auto report = [&](const std::u16string& subject, const LangText& message) {
        findings.push_back({subject, SayText(language, message, {})});
    };
    const AppSettings off;
    const AppSettings& in = settings ? *settings : off;
    auto requireFile = [&](const char16_t* name, const LangText& message) {
        const std::u16string path = JoinPath(programFolder, name);
        if (!files.FileExists(path)) report(path, message);
    };
    requireFile(u"VrlBoot.exe", text::kNoCompanion);
    requireFile(u"VrlDLL.dll", text::kNoModule);
    requireFile(u"VrlConfig.exe", text::kNoEditor);

    const LogAlerts alerts = in.enLogExtender ? LogAlertsOf(programFolder, files) : LogAlerts{};
    if (in.enMusicExtender) {
        requireFile(u"bass.dll", text::kNoAudioLibraryMusic);
    } else if (alerts.sounds) {
        requireFile(u"bass.dll", text::kNoAudioLibraryAlerts);
    }
    if (alerts.speech) requireFile(u"RemoteTalk.exe", text::kNoSpeechProgram);

    GameFolders game;
    if (!DeriveGameFolders(programFolder, &game)) return findings;
    const bool sound = files.FolderExists(game.sound), save = files.FolderExists(game.save),
               user = files.FolderExists(game.user);
    if (!sound && !save && !user) {
        report(game.game, text::kNotInGameFolder);
        return findings;
    }
    const bool music = in.enMusicExtender != 0;
    if (!sound && (music || alerts.sounds)) report(game.sound, text::kNoSoundFolder);
    if (!save && in.enEquipSet) report(game.save, text::kNoSaveFolder);
    if (music && !files.FolderExists(game.userMusic)) report(game.userMusic, text::kNoUserMusicFolder);
    if (alerts.sounds && !files.FolderExists(game.userSound)) report(game.userSound, text::kNoUserSoundFolder);
    return findings;
}

}  // namespace vrl
