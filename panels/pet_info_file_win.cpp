#include "panels/pet_info_file_win.h"

#include <windows.h>

#include "settings/table_schema.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

const std::u16string kPath(tables::petinfo::kFile);

bool HasContent(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(W(path), GetFileExInfoStandard, &data)) return false;
    return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && (data.nFileSizeLow != 0 || data.nFileSizeHigh != 0);
}

}  // namespace

bool PetInfoFile::Load() {
    table_ = KcsvFile();
    const bool loaded = table_.LoadFile(kPath);
    if (!loaded) table_ = KcsvFile();
    unreadable_ = !loaded && HasContent(kPath);
    return loaded;
}

bool PetInfoFile::Save() const {
    if (unreadable_) return false;
    return table_.SaveFile(kPath);
}

}  // namespace vrl
