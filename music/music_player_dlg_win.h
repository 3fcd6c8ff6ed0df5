#pragma once
// CMusicPlayerDlg, the music control panel: answers the game's music requests with a file its
// rules choose, plays it through the player facade, and shows the request, the candidates, the
// draw, the playing file, the sound source and the volumes. Closing it only hides it.

#include <windows.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "music/audio_player_win.h"
#include "music/music_rules.h"
#include "music/volume_table.h"
#include "settings/kcsv.h"
#include "ui/dialog_win.h"

namespace vrl {

class CMusicPlayerDlg : public CDialogImplBase {
public:
    // Control ids.
    enum : int {
        kPlayingFile = 1000, kFileVolume = 1001, kFileVolumeValue = 1002, kSoundFontField = 1003,
        kChangeButton = 1004, kOriginalFile = 1005, kDateTime = 1006, kCandidateList = 1007,
        kRandValue = 1008, kErrorField = 1009, kMapObjIdValue = 1010, kMasterVolume = 1011,
        kMasterVolumeValue = 1012, kArrow = 1013, kRandLabel = 1014, kPlayingFileLabel = 1015,
        kSoundFontLabel = 1016, kMasterVolumeLabel = 1017, kVolumeLabel = 1018, kErrorLabel = 1019,
        kMapObjIdLabel = 1020,
    };
    static constexpr unsigned kMciRepeatAfterMs = 15000;

    CMusicPlayerDlg();
    ~CMusicPlayerDlg() override;

    // Modeless, without owner, not shown; the template is built on first use.
    HWND Create();
    // Writes the per-file and master volumes to Volume.kcsv (the frame calls it at its end).
    void SaveVolumeTable();
    // The player facade; null before the panel is initialised.
    CAudioPlayer* Player() const { return player_.get(); }

    void ApplySoundFont(const std::u16string& path);
    void SetVolumes(int master, int volume);
    void ApplyVolumes(int master, int volume);

    bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

private:
    void OnInitDialog();
    void OnSize(int width, int height);
    void OnSizing(WPARAM edge, RECT* rect) const;
    void OnVolumeScroll(WORD code);
    void OnMciNotify(WPARAM code);
    void OnChangeSoundSource();

    void LoadMusicRules();
    void LoadVolumeTable();
    void HandleMusicRequest(ULONG_PTR code, const void* data, std::size_t size);
    void AddCandidates(const std::vector<std::u16string>& entries);
    void ChooseAndPlay();
    void PlayMusicFile(const std::u16string& entry);
    ResolvedMusicPath Resolve(const std::u16string& entry) const;
    void SetField(int id, const std::u16string& text) const;
    // A report in the "Playing File:" field, which then names no file.
    void ShowPlayingReport(const std::u16string& text);
    std::u16string FieldText(int id) const;
    void EnableFileVolume(bool enable) const;

    std::unique_ptr<CAudioPlayer> player_;
    int midiDeviceCode_ = 1;
    KcsvFile rulesTable_;
    std::vector<MusicRule> rules_;
    KcsvFile volumeFile_;
    bool volumeFileUnreadable_ = false;
    VolumeTable volumes_;
    int masterVolume_ = VolumeTable::kDefault;
    std::u16string soundFontPath_;
    std::mt19937 generator_;
    std::u16string playingPath_;
    std::u16string fieldFile_;  // the file the "Playing File:" field names; empty while it shows a report
    int playCount_ = 0;
    DWORD playStartMs_ = 0;
    GameFolders folders_;
    HWND frame_ = nullptr;
    int screenDpi_ = 96;
};

}  // namespace vrl
