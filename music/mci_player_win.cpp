#include "music/mci_player_win.h"

#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr ULONG_PTR kSequencerType = 523;  // the MCI sequencer's device type id

}  // namespace

CMciPlayer::CMciPlayer(HWND owner) : CMidiPlayer(owner) {}

CMciPlayer::~CMciPlayer() {
    // Its notices must not reach a panel that is going.
    if (deviceId_ != 0) Close();
}

bool CMciPlayer::Open(const std::u16string& path, int playCount) {
    playCount_ = playCount;
    element_ = Wstr(path);
    open_ = MCI_OPEN_PARMSW{};
    open_.lpstrDeviceType = reinterpret_cast<LPCWSTR>(kSequencerType);
    open_.lpstrElementName = element_.c_str();
    const MCIERROR result = ::mciSendCommandW(0, MCI_OPEN, MCI_OPEN_TYPE | MCI_OPEN_TYPE_ID | MCI_OPEN_ELEMENT,
                                              reinterpret_cast<DWORD_PTR>(&open_));
    deviceId_ = open_.wDeviceID;
    return result == 0;
}

void CMciPlayer::SetPosition(int) { ::mciSendCommandW(deviceId_, MCI_SEEK, MCI_SEEK_TO_START, 0); }

bool CMciPlayer::Play() {
    if (playCount_ == 0) return true;
    play_.dwCallback = reinterpret_cast<DWORD_PTR>(owner_);
    lastError_ = ::mciSendCommandW(deviceId_, MCI_PLAY, playCount_ >= 2 ? MCI_NOTIFY : 0,
                                   reinterpret_cast<DWORD_PTR>(&play_));
    --playCount_;
    return lastError_ == 0;
}

void CMciPlayer::Stop() { ::mciSendCommandW(deviceId_, MCI_STOP, 0, 0); }

void CMciPlayer::GetErrorText(std::u16string& text) {
    wchar_t message[256] = {};
    ::mciGetErrorStringW(lastError_, message, 256);
    text = U16(message);
}

void CMciPlayer::Close() {
    ::mciSendCommandW(deviceId_, MCI_CLOSE, 0, 0);
    deviceId_ = 0;
}

}  // namespace vrl
