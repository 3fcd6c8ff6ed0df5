#include "tests/common/alerts_support_win.h"

#include <objidl.h>
#include <shlobj.h>

#include <cstdlib>
#include <utility>

namespace vrltest {

bool CopyStandIn(const std::wstring& subfolder, const std::wstring& name,
                 const std::wstring& folder) {
    wchar_t self[MAX_PATH * 2] = {};
    std::wstring bin(self, GetModuleFileNameW(nullptr, self, MAX_PATH * 2));
    bin = bin.substr(0, bin.find_last_of(L"\\/"));
    return CopyFileW((bin + L"\\" + subfolder + L"\\" + name).c_str(),
                     (folder + L"\\" + name).c_str(), FALSE) != 0;
}

void WriteWav(const std::wstring& path, unsigned milliseconds) {
    const unsigned rate = 8000;
    const unsigned data = rate * milliseconds / 1000;
    auto le32 = [](unsigned v) {
        return std::string{static_cast<char>(v), static_cast<char>(v >> 8),
                           static_cast<char>(v >> 16), static_cast<char>(v >> 24)};
    };
    auto le16 = [](unsigned v) { return std::string{static_cast<char>(v), static_cast<char>(v >> 8)}; };
    std::string bytes = "RIFF" + le32(36 + data) + "WAVE";
    bytes += "fmt " + le32(16) + le16(1) + le16(1) + le32(rate) + le32(rate) + le16(1) + le16(8);
    bytes += "data" + le32(data) + std::string(data, '\x80');
    WriteFileBytes(path, bytes);
}

void WriteMidi(const std::wstring& path, unsigned notes) {
    // Delta times of 96 ticks fit one byte; the tempo is left at its default of 120 beats a minute.
    std::string track;
    for (unsigned i = 0; i < notes; ++i) {
        const char key = static_cast<char>(60 + i % 12);
        track += std::string{'\0', '\x90', key, '\x60'} + std::string{'\x60', '\x80', key, '\0'};
    }
    track += std::string{'\0', '\xFF', '\x2F', '\0'};
    auto be32 = [](std::size_t v) {
        return std::string{static_cast<char>(v >> 24), static_cast<char>(v >> 16), static_cast<char>(v >> 8),
                           static_cast<char>(v)};
    };
    const std::string header = std::string("MThd") + be32(6) + std::string{'\0', '\0', '\0', '\1', '\0', '\x60'};
    WriteFileBytes(path, header + "MTrk" + be32(track.size()) + track);
}

namespace {

std::string Le32(unsigned v) {
    return std::string{static_cast<char>(v), static_cast<char>(v >> 8), static_cast<char>(v >> 16),
                       static_cast<char>(v >> 24)};
}

// One Ogg page holding one packet (under 255 * 255 bytes), with its checksum.
std::string OggPage(const std::string& packet, unsigned sequence, unsigned char headerType) {
    std::string page = "OggS";
    page += '\0';
    page += static_cast<char>(headerType);
    page += std::string(8, '\0');  // granule position
    page += Le32(0x56524C31) + Le32(sequence) + Le32(0);  // stream serial, page number, checksum
    std::string lacing;
    std::size_t left = packet.size();
    for (; left >= 255; left -= 255) lacing += '\xFF';
    lacing += static_cast<char>(left);
    page += static_cast<char>(lacing.size()) + lacing + packet;
    unsigned crc = 0;
    for (unsigned char byte : page) {
        crc ^= static_cast<unsigned>(byte) << 24;
        for (int bit = 0; bit < 8; ++bit) crc = crc & 0x80000000u ? crc << 1 ^ 0x04C11DB7u : crc << 1;
    }
    page.replace(22, 4, Le32(crc));
    return page;
}

}  // namespace

void WriteOgg(const std::wstring& path, const std::vector<std::string>& comments) {
    std::string id = "\x01vorbis" + Le32(0) + '\x02' + Le32(48000) + Le32(0) + Le32(128000) + Le32(0);
    id += '\xB8';  // block sizes 256 and 2048
    id += '\x01';  // framing
    const std::string vendor = "VrlTest";
    std::string comment = "\x03vorbis" + Le32(static_cast<unsigned>(vendor.size())) + vendor +
                          Le32(static_cast<unsigned>(comments.size()));
    for (const std::string& c : comments) comment += Le32(static_cast<unsigned>(c.size())) + c;
    comment += '\x01';
    WriteFileBytes(path, OggPage(id, 0, 2) + OggPage(comment, 1, 0));
}

std::vector<std::string> ReadLines(const std::wstring& path) {
    const std::string text = ReadFileBytes(path);
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<std::string> Calls(const std::vector<std::string>& lines, const std::string& call) {
    std::vector<std::string> matching;
    for (const std::string& line : lines) {
        if (line.compare(0, call.size() + 1, call + " ") == 0) matching.push_back(line);
    }
    return matching;
}

std::string Field(const std::string& line, const std::string& key) {
    const std::size_t at = line.find(" " + key + "=");
    if (at == std::string::npos) return "<missing " + key + ">";
    const std::size_t value = at + key.size() + 2;
    if (line[value] == '"') return line.substr(value, line.find('"', value + 1) - value + 1);
    return line.substr(value, line.find(' ', value) - value);
}

unsigned long ResultOf(const std::string& line) {
    const std::size_t at = line.rfind(" -> ");
    return at == std::string::npos ? 0 : std::strtoul(line.c_str() + at + 4, nullptr, 10);
}

bool MakeShortcut(const std::wstring& lnkPath, const std::wstring& target) {
    IShellLinkW* link = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                reinterpret_cast<void**>(&link)))) {
        return false;
    }
    IPersistFile* file = nullptr;
    bool ok = SUCCEEDED(link->SetPath(target.c_str())) &&
              SUCCEEDED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file))) &&
              SUCCEEDED(file->Save(lnkPath.c_str(), TRUE));
    if (file) file->Release();
    link->Release();
    return ok;
}

}  // namespace vrltest
