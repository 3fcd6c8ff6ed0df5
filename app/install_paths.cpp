#include "app/install_paths.h"

#include <cstring>

namespace vrl {

std::u16string JoinPath(const std::u16string& folder, const std::u16string& name) {
    if (folder.empty()) return name;
    const char16_t last = folder.back();
    if (last == u'\\' || last == u'/') return folder + name;
    return folder + u'\\' + name;
}

std::u16string FolderOf(const std::u16string& path) {
    const std::size_t slash = path.rfind(u'\\');
    return slash == std::u16string::npos ? std::u16string() : path.substr(0, slash);
}

bool DeriveGameFolders(const std::u16string& programFolder, GameFolders* out) {
    const std::size_t slash = programFolder.rfind(u'\\');
    if (slash == std::u16string::npos) return false;
    GameFolders folders;
    folders.game = programFolder.substr(0, slash);
    folders.sound = JoinPath(folders.game, u"sound");
    folders.save = JoinPath(folders.game, u"save");
    folders.user = JoinPath(folders.game, u"user");
    folders.userMusic = JoinPath(folders.user, u"music");
    folders.userSound = JoinPath(folders.user, u"sound");
    *out = std::move(folders);
    return true;
}

std::size_t FindHspMarker(const unsigned char* data, std::size_t size) {
    const std::size_t markerSize = sizeof(kHspMarker);
    if (data == nullptr || size < markerSize) return kNoHspMarker;
    // memchr jumps between candidate first bytes; the full compare only runs at those offsets.
    const unsigned char* const end = data + size - markerSize + 1;
    for (const unsigned char* p = data; p < end; ++p) {
        p = static_cast<const unsigned char*>(std::memchr(p, kHspMarker[0], static_cast<std::size_t>(end - p)));
        if (p == nullptr) break;
        if (std::memcmp(p, kHspMarker, markerSize) == 0) return static_cast<std::size_t>(p - data);
    }
    return kNoHspMarker;
}

}  // namespace vrl
