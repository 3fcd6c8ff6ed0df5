#pragma once
// Texts of the music control panel, English and Japanese side by side.

#include "ui/lang_text.h"

namespace vrl::music_texts {

inline constexpr LangText kTitle{u"Music Control Panel", u"音楽コントロールパネル"};
inline constexpr LangText kOriginalFile{u"Original File:", u"差し替え前のファイル名："};
inline constexpr LangText kMapObjId{u"MapObjID", u"MapObjID"};
inline constexpr LangText kDateTime{u"Date/Time:", u"日付と時刻："};
inline constexpr LangText kCandidates{u"List of candidate:", u"演奏候補："};
inline constexpr LangText kRand{u"Rand", u"乱数値"};
inline constexpr LangText kPlayingFile{u"Playing File:", u"再生中の音楽ファイル名："};
inline constexpr LangText kSoundFont{u"Soundfont:", u"サウンドフォント："};
inline constexpr LangText kChange{u"Change", u"変更"};
inline constexpr LangText kMasterVolume{u"Master Volume:", u"マスターボリューム："};
inline constexpr LangText kVolume{u"Volume:", u"ボリューム："};
inline constexpr LangText kErrorInformation{u"Error information:", u"エラー情報："};
inline constexpr LangText kFileColumn{u"File", u"ファイル"};
inline constexpr LangText kVolumeColumn{u"Volume", u"ボリューム"};

// "%s": the file.
inline constexpr LangText kFileNotFound{u"[%s] File not found.", u"[%s] ファイルが見つかりません。"};
inline constexpr LangText kSoundFontFailed{u"Failed to change soundfont.", u"サウンドフォントの変更に失敗。"};
inline constexpr LangText kSoundFontUnused{u"Sound Font is not loaded. (MCI/DirectMusic)",
                                           u"サウンドフォントを使用していません。（MCI/DirectMusicで演奏中）"};

}  // namespace vrl::music_texts
