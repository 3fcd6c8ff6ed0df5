#include "music/midi_back_ends.h"

#include <cmath>
#include <iterator>
#include <string>

#include "settings/decimal_text.h"

namespace vrl {

std::uint32_t PeHeaderOffset(const unsigned char (&dosHeader)[kDosHeaderBytes]) {
    return static_cast<std::uint32_t>(dosHeader[60]) | static_cast<std::uint32_t>(dosHeader[61]) << 8 |
           static_cast<std::uint32_t>(dosHeader[62]) << 16 | static_cast<std::uint32_t>(dosHeader[63]) << 24;
}

int VstBitsOf(const unsigned char (&signature)[kPeSignatureBytes], int previous) {
    if (signature[0] != 'P' || signature[1] != 'E' || signature[2] != 0 || signature[3] != 0) return previous;
    switch (signature[4] | signature[5] << 8) {
    case 0x014C: return 32;
    case 0x8664: return 64;
    default: return 0;
    }
}

std::uint32_t VstCommandBytes(std::size_t characters) { return static_cast<std::uint32_t>(2 * characters + 2); }

bool VstCommandFits(std::size_t characters) { return characters < kVstCommandChars; }

std::u16string VstHostFolder(const std::u16string& currentFolder, int bits) {
    std::u16string folder = currentFolder;
    if (!folder.empty() && folder.back() == u'\\') folder.pop_back();
    return folder + u"\\vst" + DecimalText(bits);
}

std::u16string VstHostCommandLine(const std::u16string& folder, int bits, std::uint32_t processId,
                                  std::uint32_t playingFileWindow, std::uint32_t statusWindow) {
    return folder + u"\\VrlVstHost" + DecimalText(bits) + u".exe v=3 pid=" + DecimalText(processId) +
           u" hwndpf=" + DecimalText(playingFileWindow) + u" hwndee=" + DecimalText(statusWindow);
}

int SmfMasterVolume(float volume) {
    return static_cast<int>(std::sqrt(static_cast<double>(volume)) * 127.0 - 127.0);
}

int SmfPlayOption(int playCount) { return playCount >= 2 ? 3 : 2; }

const char16_t* SmfResultName(int code) {
    static const char16_t* const kNames[] = {
        u"NoError",      u"Failed",           u"FileNotFound",   u"CannotOpenFile",   u"FileLoadFailed",
        u"BadFileSize",  u"NoSmf",            u"BadSmf",         u"UnmatchedSmf",     u"CannotOpenDevice",
        u"CannotStartTimer", u"IllegalPointer", u"TrackLimit",   u"NotReady",         u"UndefinedId",
        u"ApiNull",
    };
    if (code < 0 || code >= static_cast<int>(std::size(kNames))) return u"";
    return kNames[code];
}

}  // namespace vrl
