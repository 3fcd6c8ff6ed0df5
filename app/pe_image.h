#pragma once
// Reading the headers of a PE image (an executable or DLL, as a file or as mapped in memory: the
// header layout is the same) and laying out a replacement import directory that makes the loader
// load one more DLL. Portable: works on plain bytes, little-endian, for PE32 and PE32+ alike.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <string>
#include <vector>

namespace vrl {

inline constexpr std::uint32_t kPeDirExport = 0;
inline constexpr std::uint32_t kPeDirImport = 1;
inline constexpr std::uint32_t kPeDirBoundImport = 11;
inline constexpr std::size_t kImportDescriptorSize = 20;

struct PeDataDirectory {
    std::uint32_t rva = 0;
    std::uint32_t size = 0;
};

struct PeHeaders {
    bool pe32plus = false;       // optional header magic 0x20B (64-bit) rather than 0x10B
    bool isDll = false;
    std::uint16_t machine = 0;
    std::uint32_t sizeOfImage = 0;
    std::uint32_t sizeOfHeaders = 0;
    std::uint32_t directoryOffset = 0;  // offset of the data directory array from the image start
    std::uint32_t directoryCount = 0;
    std::uint32_t sectionOffset = 0;    // offset of the section table from the image start
    std::uint16_t sectionCount = 0;
    PeDataDirectory directories[16] = {};

    PeDataDirectory Directory(std::uint32_t index) const {
        return index < directoryCount && index < 16 ? directories[index] : PeDataDirectory{};
    }
    // Offset of data directory entry `index` from the image start (where to patch it).
    std::uint32_t DirectoryEntryOffset(std::uint32_t index) const { return directoryOffset + index * 8; }
};

// Parses the DOS and NT headers at the start of `data`. False when they are not a well-formed PE
// header of either kind or do not lie within `size` bytes.
bool ParsePeHeaders(const unsigned char* data, std::size_t size, PeHeaders* out);

// Whether a program's embedded manifest asks Windows to run it with administrator rights
// ("requireAdministrator", or "highestAvailable", which asks the same of an administrator's
// account). Windows then refuses CreateProcess from a program that is not elevated
// (ERROR_ELEVATION_REQUIRED). The manifest is plain UTF-8 text among the resources.
bool ManifestAsksForAdministrator(std::string_view image);

// Number of import descriptors before the terminating one. The loader stops at the first
// descriptor without a name or without an address table, and so does this count.
std::size_t CountImportDescriptors(const unsigned char* data, std::size_t size);

// A new import directory for a process image: one descriptor for the added DLL (importing its
// ordinal 1) first, so it loads before the program's own imports, then the program's existing
// descriptors and the terminator, then the added DLL's lookup and address tables and its name.
struct ImportBlock {
    std::vector<unsigned char> bytes;  // to be written at blockRva
    std::uint32_t directoryRva = 0;    // the new import data directory
    std::uint32_t directorySize = 0;
};
// `oldDescriptors` holds whole descriptors (a multiple of 20 bytes) without the terminator.
// False when the name is empty or the block would not be addressable by 32-bit RVAs.
bool BuildImportBlock(const std::vector<unsigned char>& oldDescriptors, std::uint32_t blockRva,
                      const std::string& dllName, bool pe32plus, ImportBlock* out);

// What the launcher checks in a DLL file before adding it to a process: a DLL for the right
// machine that exports ordinal 1 (the loader fails the whole process otherwise).
struct DllFileInfo {
    std::uint16_t machine = 0;
    bool pe32plus = false;
    bool exportsOrdinal1 = false;
};
bool InspectDllFile(const unsigned char* data, std::size_t size, DllFileInfo* out);

}  // namespace vrl
