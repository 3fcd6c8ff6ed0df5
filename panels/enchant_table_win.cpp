// The enchant table's two sources: the settings editor's built-in copy, read as a resource without
// running the editor, and the player's EnchantTable.kcsv.

#include "panels/enchant_table.h"

#include <windows.h>

#include "settings/kcsv.h"

namespace vrl {
namespace {

// The resource's bytes, or empty when the editor, the resource or its data is not there.
std::string BuiltInTableBytes() {
    // As data: the editor's code is never run, and the normal library search finds it in the
    // program's folder first.
    HMODULE editor = ::LoadLibraryExW(L"VrlConfig.exe", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!editor) return {};
    std::string bytes;
    if (HRSRC resource = ::FindResourceW(editor, L"FILE_ENCHANTTABLE", L"FILE")) {
        const DWORD size = ::SizeofResource(editor, resource);
        HGLOBAL loaded = ::LoadResource(editor, resource);
        const void* data = loaded ? ::LockResource(loaded) : nullptr;
        if (data && size > 0) bytes.assign(static_cast<const char*>(data), size);
    }
    ::FreeLibrary(editor);
    return bytes;
}

}  // namespace

void LoadEnchantTables(int language, EnchantTables& tables) {
    FillEnchantTablesFromUtf8(BuiltInTableBytes(), language, tables);
    KcsvFile file;
    if (file.LoadFile(kEnchantTableFile)) FillEnchantTables(file, language, tables);
}

}  // namespace vrl
