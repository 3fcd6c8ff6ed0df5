#include "panels/pet_info_file_win.h"

#include <windows.h>

#include "panels/pet_record.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

bool HasContent(const char16_t* path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(W(path), GetFileExInfoStandard, &data)) return false;
    return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && (data.nFileSizeLow != 0 || data.nFileSizeHigh != 0);
}

}  // namespace

bool PetInfoFile::Load() {
    table_ = KcsvFile();
    const bool loaded = table_.LoadFile(kPetInfoFile);
    if (!loaded) table_ = KcsvFile();
    unreadable_ = !loaded && HasContent(kPetInfoFile);
    return loaded;
}

bool PetInfoFile::Save() const {
    if (unreadable_) return false;
    return table_.SaveFile(kPetInfoFile);
}

}  // namespace vrl
