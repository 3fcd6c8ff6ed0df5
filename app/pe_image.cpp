#include "app/pe_image.h"

#include <algorithm>
#include <cstring>

namespace vrl {
namespace {

constexpr std::uint16_t kDosMagic = 0x5A4D;          // "MZ"
constexpr std::uint32_t kNtSignature = 0x00004550;   // "PE\0\0"
constexpr std::uint16_t kMagicPe32 = 0x10B;
constexpr std::uint16_t kMagicPe32Plus = 0x20B;
constexpr std::uint16_t kFileIsDll = 0x2000;
constexpr std::size_t kFileHeaderSize = 20;
constexpr std::size_t kSectionHeaderSize = 40;

std::uint16_t Read16(const unsigned char* p) { return static_cast<std::uint16_t>(p[0] | p[1] << 8); }
std::uint32_t Read32(const unsigned char* p) {
    return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
           static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}
void Write32(unsigned char* p, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<unsigned char>(v >> (8 * i));
}
void Write64(unsigned char* p, std::uint64_t v) {
    for (int i = 0; i < 8; ++i) p[i] = static_cast<unsigned char>(v >> (8 * i));
}

bool Fits(std::size_t offset, std::size_t length, std::size_t size) {
    return offset <= size && length <= size - offset;
}

std::size_t AlignUp(std::size_t value, std::size_t alignment) {
    return (value + alignment - 1) / alignment * alignment;
}

// Maps an RVA to its offset in the file through the section table; false when no section holds it.
bool RvaToFileOffset(const PeHeaders& pe, const unsigned char* data, std::uint32_t rva, std::size_t* offset) {
    if (rva < pe.sizeOfHeaders) {
        *offset = rva;
        return true;
    }
    for (std::uint16_t i = 0; i < pe.sectionCount; ++i) {
        const unsigned char* s = data + pe.sectionOffset + i * kSectionHeaderSize;
        const std::uint32_t virtualSize = Read32(s + 8);
        const std::uint32_t virtualAddress = Read32(s + 12);
        const std::uint32_t rawSize = Read32(s + 16);
        const std::uint32_t rawPointer = Read32(s + 20);
        const std::uint32_t extent = std::max(virtualSize, rawSize);
        if (rva >= virtualAddress && rva - virtualAddress < extent) {
            const std::uint32_t delta = rva - virtualAddress;
            if (delta >= rawSize) return false;  // in the zero-filled tail, not in the file
            *offset = static_cast<std::size_t>(rawPointer) + delta;
            return true;
        }
    }
    return false;
}

}  // namespace

bool ParsePeHeaders(const unsigned char* data, std::size_t size, PeHeaders* out) {
    if (data == nullptr || !Fits(0, 64, size) || Read16(data) != kDosMagic) return false;
    const std::uint32_t ntOffset = Read32(data + 60);
    if (!Fits(ntOffset, 4 + kFileHeaderSize + 2, size) || Read32(data + ntOffset) != kNtSignature) return false;

    const unsigned char* fileHeader = data + ntOffset + 4;
    PeHeaders pe;
    pe.machine = Read16(fileHeader);
    pe.sectionCount = Read16(fileHeader + 2);
    const std::uint16_t optionalSize = Read16(fileHeader + 16);
    pe.isDll = (Read16(fileHeader + 18) & kFileIsDll) != 0;

    const std::size_t optionalOffset = ntOffset + 4 + kFileHeaderSize;
    if (!Fits(optionalOffset, optionalSize, size) || optionalSize < 2) return false;
    const unsigned char* optional = data + optionalOffset;
    const std::uint16_t magic = Read16(optional);
    if (magic != kMagicPe32 && magic != kMagicPe32Plus) return false;
    pe.pe32plus = magic == kMagicPe32Plus;

    // The fixed part of the optional header ends with NumberOfRvaAndSizes; the directories follow.
    const std::size_t fixedSize = pe.pe32plus ? 112 : 96;
    if (optionalSize < fixedSize) return false;
    pe.sizeOfImage = Read32(optional + 56);
    pe.sizeOfHeaders = Read32(optional + 60);
    pe.directoryCount = Read32(optional + fixedSize - 4);
    if (pe.directoryCount > 16 || fixedSize + pe.directoryCount * 8 > optionalSize) return false;
    pe.directoryOffset = static_cast<std::uint32_t>(optionalOffset + fixedSize);
    for (std::uint32_t i = 0; i < pe.directoryCount; ++i) {
        pe.directories[i].rva = Read32(data + pe.directoryOffset + i * 8);
        pe.directories[i].size = Read32(data + pe.directoryOffset + i * 8 + 4);
    }

    pe.sectionOffset = static_cast<std::uint32_t>(optionalOffset + optionalSize);
    if (!Fits(pe.sectionOffset, pe.sectionCount * kSectionHeaderSize, size)) return false;
    *out = pe;
    return true;
}

std::size_t CountImportDescriptors(const unsigned char* data, std::size_t size) {
    std::size_t count = 0;
    for (std::size_t offset = 0; Fits(offset, kImportDescriptorSize, size); offset += kImportDescriptorSize) {
        const std::uint32_t name = Read32(data + offset + 12);
        const std::uint32_t firstThunk = Read32(data + offset + 16);
        if (name == 0 || firstThunk == 0) break;
        ++count;
    }
    return count;
}

bool BuildImportBlock(const std::vector<unsigned char>& oldDescriptors, std::uint32_t blockRva,
                      const std::string& dllName, bool pe32plus, ImportBlock* out) {
    if (dllName.empty() || dllName.find('\0') != std::string::npos ||
        oldDescriptors.size() % kImportDescriptorSize != 0) {
        return false;
    }
    const std::size_t thunkSize = pe32plus ? 8 : 4;
    const std::size_t descriptorsSize = oldDescriptors.size() + 2 * kImportDescriptorSize;
    const std::size_t lookupOffset = AlignUp(descriptorsSize, 8);
    const std::size_t addressOffset = lookupOffset + 2 * thunkSize;
    const std::size_t nameOffset = addressOffset + 2 * thunkSize;
    const std::size_t total = AlignUp(nameOffset + dllName.size() + 1, 8);
    if (static_cast<std::uint64_t>(blockRva) + total > 0xFFFFFFFFull) return false;

    ImportBlock block;
    block.bytes.assign(total, 0);
    unsigned char* b = block.bytes.data();
    // Our descriptor: lookup table, no time stamp, no forwarder chain, name, address table.
    Write32(b + 0, blockRva + static_cast<std::uint32_t>(lookupOffset));
    Write32(b + 12, blockRva + static_cast<std::uint32_t>(nameOffset));
    Write32(b + 16, blockRva + static_cast<std::uint32_t>(addressOffset));
    if (!oldDescriptors.empty()) std::memcpy(b + kImportDescriptorSize, oldDescriptors.data(), oldDescriptors.size());

    // Import by ordinal 1: the high bit of the thunk marks an ordinal; a zero thunk ends the table.
    for (std::size_t table : {lookupOffset, addressOffset}) {
        if (pe32plus) {
            Write64(b + table, 0x8000000000000001ull);
        } else {
            Write32(b + table, 0x80000001u);
        }
    }
    std::memcpy(b + nameOffset, dllName.data(), dllName.size());

    block.directoryRva = blockRva;
    block.directorySize = static_cast<std::uint32_t>(descriptorsSize);
    *out = std::move(block);
    return true;
}

bool InspectDllFile(const unsigned char* data, std::size_t size, DllFileInfo* out) {
    PeHeaders pe;
    if (!ParsePeHeaders(data, size, &pe) || !pe.isDll) return false;
    DllFileInfo info;
    info.machine = pe.machine;
    info.pe32plus = pe.pe32plus;

    const PeDataDirectory exports = pe.Directory(kPeDirExport);
    std::size_t exportOffset = 0;
    if (exports.rva != 0 && RvaToFileOffset(pe, data, exports.rva, &exportOffset) &&
        Fits(exportOffset, 40, size)) {
        const unsigned char* e = data + exportOffset;
        const std::uint32_t base = Read32(e + 16);
        const std::uint32_t functionCount = Read32(e + 20);
        const std::uint32_t functionsRva = Read32(e + 28);
        std::size_t functionsOffset = 0;
        if (base <= 1 && 1 - base < functionCount &&
            RvaToFileOffset(pe, data, functionsRva + (1 - base) * 4, &functionsOffset) &&
            Fits(functionsOffset, 4, size)) {
            info.exportsOrdinal1 = Read32(data + functionsOffset) != 0;
        }
    }
    *out = info;
    return true;
}

bool ManifestAsksForAdministrator(std::string_view image) {
    for (std::string_view level : {"\"requireAdministrator\"", "'requireAdministrator'", "\"highestAvailable\"",
                                   "'highestAvailable'"}) {
        if (image.find(level) != std::string_view::npos) return true;
    }
    return false;
}

}  // namespace vrl
