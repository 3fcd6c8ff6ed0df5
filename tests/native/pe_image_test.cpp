#include "app/pe_image.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

void Put16(std::vector<unsigned char>& b, std::size_t at, std::uint16_t v) {
    b[at] = static_cast<unsigned char>(v);
    b[at + 1] = static_cast<unsigned char>(v >> 8);
}
void Put32(std::vector<unsigned char>& b, std::size_t at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) b[at + i] = static_cast<unsigned char>(v >> (8 * i));
}
std::uint32_t Get32(const std::vector<unsigned char>& b, std::size_t at) {
    return b[at] | b[at + 1] << 8 | b[at + 2] << 16 | static_cast<std::uint32_t>(b[at + 3]) << 24;
}
std::uint64_t Get64(const std::vector<unsigned char>& b, std::size_t at) {
    return Get32(b, at) | static_cast<std::uint64_t>(Get32(b, at + 4)) << 32;
}

constexpr std::size_t kNt = 0x80;
constexpr std::uint32_t kSectionRva = 0x1000;
constexpr std::uint32_t kSectionFile = 0x200;

// A minimal image file: headers, one section at RVA 0x1000 (file 0x200) holding an export table
// of two functions starting at ordinal `exportBase` whose first entry is `firstFunction`.
std::vector<unsigned char> MakeImage(bool pe32plus, bool dll, std::uint32_t exportBase, std::uint32_t firstFunction) {
    std::vector<unsigned char> b(0x400, 0);
    Put16(b, 0, 0x5A4D);
    Put32(b, 60, kNt);
    Put32(b, kNt, 0x00004550);
    const std::size_t file = kNt + 4;
    const std::uint16_t fixed = pe32plus ? 112 : 96;
    const std::uint16_t optionalSize = fixed + 16 * 8;
    Put16(b, file, pe32plus ? 0x8664 : 0x14C);
    Put16(b, file + 2, 1);
    Put16(b, file + 16, optionalSize);
    Put16(b, file + 18, dll ? 0x2102 : 0x0102);
    const std::size_t optional = file + 20;
    Put16(b, optional, pe32plus ? 0x20B : 0x10B);
    Put32(b, optional + 56, 0x2000);  // SizeOfImage
    Put32(b, optional + 60, 0x200);   // SizeOfHeaders
    Put32(b, optional + fixed - 4, 16);
    Put32(b, optional + fixed, kSectionRva);  // export directory
    Put32(b, optional + fixed + 4, 40);
    Put32(b, optional + fixed + 8, 0x1800);  // import directory
    Put32(b, optional + fixed + 12, 60);
    const std::size_t section = optional + optionalSize;
    std::memcpy(&b[section], ".edata", 6);
    Put32(b, section + 8, 0x1000);
    Put32(b, section + 12, kSectionRva);
    Put32(b, section + 16, 0x200);
    Put32(b, section + 20, kSectionFile);
    Put32(b, kSectionFile + 16, exportBase);
    Put32(b, kSectionFile + 20, 2);
    Put32(b, kSectionFile + 28, kSectionRva + 0x40);
    Put32(b, kSectionFile + 0x40, firstFunction);
    return b;
}

TEST(PeHeaders, ReadBothKindsOfOptionalHeader) {
    for (bool pe32plus : {false, true}) {
        const std::vector<unsigned char> image = MakeImage(pe32plus, false, 1, 0x1100);
        vrl::PeHeaders pe;
        ASSERT_TRUE(vrl::ParsePeHeaders(image.data(), image.size(), &pe)) << pe32plus;
        EXPECT_EQ(pe.pe32plus, pe32plus);
        EXPECT_EQ(pe.machine, pe32plus ? 0x8664 : 0x14C);
        EXPECT_EQ(pe.sizeOfImage, 0x2000u);
        EXPECT_FALSE(pe.isDll);
        EXPECT_EQ(pe.Directory(vrl::kPeDirImport).rva, 0x1800u);
        EXPECT_EQ(pe.Directory(vrl::kPeDirImport).size, 60u);
        // The patch position of the import entry is where the parser read it.
        EXPECT_EQ(Get32(image, pe.DirectoryEntryOffset(vrl::kPeDirImport)), 0x1800u);
    }
}

TEST(PeHeaders, RejectMalformedOrTruncatedHeaders) {
    std::vector<unsigned char> image = MakeImage(true, false, 1, 1);
    vrl::PeHeaders pe;
    EXPECT_FALSE(vrl::ParsePeHeaders(image.data(), 0x100, &pe));  // cut inside the optional header
    std::vector<unsigned char> bad = image;
    Put32(bad, 60, 0xFFFFFFF0);  // NT headers far outside
    EXPECT_FALSE(vrl::ParsePeHeaders(bad.data(), bad.size(), &pe));
    bad = image;
    Put16(bad, kNt + 24, 0x30B);  // unknown magic
    EXPECT_FALSE(vrl::ParsePeHeaders(bad.data(), bad.size(), &pe));
    bad = image;
    Put32(bad, kNt + 24 + 108, 17);  // more directories than the header holds
    EXPECT_FALSE(vrl::ParsePeHeaders(bad.data(), bad.size(), &pe));
    EXPECT_FALSE(vrl::ParsePeHeaders(nullptr, 0, &pe));
}

TEST(ImportDescriptors, CountStopsAtAMissingNameOrAddressTable) {
    std::vector<unsigned char> table(5 * vrl::kImportDescriptorSize, 0);
    for (std::size_t i = 0; i < 3; ++i) {
        Put32(table, i * 20 + 12, 0x100);
        Put32(table, i * 20 + 16, 0x200);
    }
    Put32(table, 2 * 20 + 16, 0);  // third has a name but no address table
    EXPECT_EQ(vrl::CountImportDescriptors(table.data(), table.size()), 2u);
    EXPECT_EQ(vrl::CountImportDescriptors(table.data(), 30), 1u);  // a cut descriptor is not counted
}

TEST(ImportBlock, PutsTheAddedDllFirstAndKeepsTheProgramsImports) {
    std::vector<unsigned char> old(2 * vrl::kImportDescriptorSize);
    for (std::size_t i = 0; i < old.size(); ++i) old[i] = static_cast<unsigned char>(i + 1);
    for (bool pe32plus : {false, true}) {
        vrl::ImportBlock block;
        ASSERT_TRUE(vrl::BuildImportBlock(old, 0x50000, "C:\\Vorrel\\VrlDLL.dll", pe32plus, &block));
        EXPECT_EQ(block.directoryRva, 0x50000u);
        EXPECT_EQ(block.directorySize, 4 * vrl::kImportDescriptorSize);
        const std::vector<unsigned char>& b = block.bytes;
        EXPECT_EQ(block.bytes.size() % 8, 0u);
        EXPECT_TRUE(std::equal(old.begin(), old.end(), b.begin() + 20));
        EXPECT_TRUE(std::all_of(b.begin() + 60, b.begin() + 80, [](unsigned char c) { return c == 0; }));

        const std::uint32_t lookup = Get32(b, 0) - 0x50000;
        const std::uint32_t name = Get32(b, 12) - 0x50000;
        const std::uint32_t address = Get32(b, 16) - 0x50000;
        EXPECT_EQ(Get32(b, 4), 0u);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&b[name])), "C:\\Vorrel\\VrlDLL.dll");
        for (std::uint32_t table : {lookup, address}) {
            if (pe32plus) {
                EXPECT_EQ(Get64(b, table), 0x8000000000000001ull);
                EXPECT_EQ(Get64(b, table + 8), 0u);
            } else {
                EXPECT_EQ(Get32(b, table), 0x80000001u);
                EXPECT_EQ(Get32(b, table + 4), 0u);
            }
        }
        EXPECT_NE(lookup, address);  // the loader overwrites the address table only
    }
}

TEST(ImportBlock, RefusesAnEmptyNameAndABlockBeyond32BitRvas) {
    vrl::ImportBlock block;
    EXPECT_FALSE(vrl::BuildImportBlock({}, 0x1000, "", true, &block));
    EXPECT_FALSE(vrl::BuildImportBlock({}, 0xFFFFFFF0u, "VrlDLL.dll", true, &block));
    EXPECT_FALSE(vrl::BuildImportBlock(std::vector<unsigned char>(7), 0x1000, "VrlDLL.dll", true, &block));
    EXPECT_TRUE(vrl::BuildImportBlock({}, 0x1000, "VrlDLL.dll", true, &block));
    EXPECT_EQ(block.directorySize, 2 * vrl::kImportDescriptorSize);
}

TEST(DllFile, TellsWhetherOrdinalOneIsExported) {
    vrl::DllFileInfo info;
    std::vector<unsigned char> dll = MakeImage(false, true, 1, 0x1100);
    ASSERT_TRUE(vrl::InspectDllFile(dll.data(), dll.size(), &info));
    EXPECT_EQ(info.machine, 0x14C);
    EXPECT_FALSE(info.pe32plus);
    EXPECT_TRUE(info.exportsOrdinal1);

    dll = MakeImage(true, true, 2, 0x1100);  // ordinals 2 and 3 only
    ASSERT_TRUE(vrl::InspectDllFile(dll.data(), dll.size(), &info));
    EXPECT_FALSE(info.exportsOrdinal1);
    dll = MakeImage(true, true, 1, 0);  // an empty slot is no export
    ASSERT_TRUE(vrl::InspectDllFile(dll.data(), dll.size(), &info));
    EXPECT_FALSE(info.exportsOrdinal1);

    const std::vector<unsigned char> exe = MakeImage(true, false, 1, 0x1100);
    EXPECT_FALSE(vrl::InspectDllFile(exe.data(), exe.size(), &info));
}

}  // namespace
