#include "music/bass_player_win.h"

#include "music/bass_errors.h"
#include "music/stream_tags.h"
#include "music/vst_host_win.h"
#include "settings/kcsv.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

std::u16string ExtensionOf(const std::u16string& path) {
    const std::size_t dot = path.find_last_of(u'.');
    const std::size_t cut = path.find_last_of(u"\\/");
    if (dot == std::u16string::npos || (cut != std::u16string::npos && dot < cut)) return {};
    return AsciiLower(path.substr(dot));
}

bool IsMidiExtension(const std::u16string& extension) {
    return extension == u".mid" || extension == u".midi" || extension == u".smf";
}

}  // namespace

CBassPlayer::CBassPlayer(HWND owner) : CMidiPlayer(owner), use_(owner) { LoadPlugins(); }

CBassPlayer::~CBassPlayer() {
    // The library may outlive this player for the alert sounds: give back what it holds for us.
    if (stream_) Bass().StreamFree(stream_);
    if (soundFont_) Bass().MidiFontFree(soundFont_);
}

void CBassPlayer::LoadPlugins() const {
    wchar_t folder[MAX_PATH] = {};
    const DWORD length = ::GetCurrentDirectoryW(MAX_PATH, folder);
    if (length == 0 || length >= MAX_PATH) return;
    const std::wstring base(folder, length);
    WIN32_FIND_DATAW found{};
    HANDLE search = ::FindFirstFileW((base + L"\\bass*.dll").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
        if (::lstrcmpiW(found.cFileName, L"bass.dll") == 0) continue;
        Bass().PluginLoad((base + L"\\" + found.cFileName).c_str(), kBassUnicode);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
}

bool CBassPlayer::Open(const std::u16string& path, int playCount) {
    playCount_ = playCount;
    vstMode_ = false;
    if (vstBits_ != 0 && IsMidiExtension(ExtensionOf(path))) {
        vstMode_ = true;
        SendVstHostCommand(kVstOpen, path);
        return true;
    }
    if (stream_ == 0) {
        const DWORD flags = kBassUnicode | (playCount >= 2 ? kBassSampleLoop : 0);
        stream_ = Bass().StreamCreateFile(FALSE, W(path), 0, 0, flags);
    }
    return stream_ != 0;
}

void CBassPlayer::SetPosition(int position) {
    if (stream_) Bass().ChannelSetPosition(stream_, static_cast<BassQword>(static_cast<long long>(position)), kBassPosByte);
}

bool CBassPlayer::Play() {
    if (vstMode_) {
        SendVstHostCommand(kVstPlay, u"");
        return true;
    }
    if (!stream_) return false;
    const LoopPoints loop = LoopPointsOf(Bass().ChannelGetTags(stream_, kBassTagOgg));
    loopStart_ = loop.start;
    loopEnd_ = loop.end;
    Bass().ChannelSetPosition(stream_, loopStart_, kBassPosLoop);
    Bass().ChannelSetPosition(stream_, loopEnd_, kBassPosEnd);
    return Bass().ChannelPlay(stream_, FALSE) != FALSE;
}

void CBassPlayer::Stop() {
    if (vstMode_) {
        SendVstHostCommand(kVstStop, u"");
    } else if (stream_) {
        Bass().ChannelStop(stream_);
    }
}

void CBassPlayer::SetVolume(float volume) {
    if (stream_) Bass().ChannelSetAttribute(stream_, kBassAttribVolume, volume);
}

void CBassPlayer::GetInfoText(std::u16string& text) {
    BassInfo info{};
    Bass().GetInfo(&info);
    text = OutputRateText(info.freq);
}

void CBassPlayer::GetErrorText(std::u16string& text) { text = BassErrorName(Bass().ErrorGetCode()); }

void CBassPlayer::Close() {
    if (vstMode_) {
        SendVstHostCommand(kVstClose, u"");
    } else if (stream_) {
        Bass().StreamFree(stream_);
        stream_ = 0;
    }
}

bool CBassPlayer::SetSoundFont(const std::u16string& path) {
    if (ExtensionOf(path) == u".dll") {
        // Always a change of source: a host that cannot start only drops the commands later.
        vstBits_ = ReadVstBits(Wstr(path), vstBits_);
        vstHost_.Start(vstBits_, path, playingFileWindow_, statusWindow_);
        return true;
    }
    const BassHandle previous = soundFont_;
    vstBits_ = 0;
    soundFont_ = Bass().MidiFontInit(W(path), kBassUnicode);
    const BassMidiFont font{soundFont_, -1, 0};
    // A font that did not load changes nothing, whatever the library makes of an empty entry.
    const bool changed = Bass().MidiStreamSetFonts(0, &font, 1) != FALSE && soundFont_ != 0;
    if (changed && stream_) Bass().MidiStreamSetFonts(stream_, &font, 1);
    if (previous) Bass().MidiFontFree(previous);
    return changed;
}

LRESULT CBassPlayer::SendVstHostCommand(int command, const std::u16string& text) { return vstHost_.Send(command, text); }

}  // namespace vrl
