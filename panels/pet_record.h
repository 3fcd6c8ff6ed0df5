#pragma once
// The pet slots the in-game module sends, and what the pet list makes of them: which slots a
// filter shows, which cells of the list a new message changes, the fill of a value bar and the
// share of the free width each bar column gets. Portable: no windows.h.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "ui/lang_text.h"

namespace vrl {

// The options of the pet list and its colours.
inline constexpr const char16_t* kPetInfoFile = u"PetInfo.kcsv";

// One pet slot on the wire: 112 bytes, little-endian, packed.
struct PetRecord {
    static constexpr std::size_t kWireSize = 112;
    static constexpr std::size_t kNameBytes = 64;

    std::int32_t chipId = 0;
    std::array<char, kNameBytes> name{};  // ANSI code page, NUL-terminated unless all 64 bytes are used
    std::int32_t status = 0;
    std::int32_t level = 0;
    std::int32_t xp = 0;
    std::int32_t xpNeeded = 0;  // experience needed for the next level
    std::int32_t hp = 0, hpMax = 0;
    std::int32_t mp = 0, mpMax = 0;
    std::int32_t st = 0, stMax = 0;
    std::int32_t areaKind = 0;  // where a pet with status 9 stays

    // The name's bytes, up to its NUL or all 64 of them.
    std::string NameBytes() const;
    static PetRecord Decode(const unsigned char* wire);
    // The wire form, appended to `out` (what the module sends; for tests and benchmarks).
    void Encode(std::string& out) const;
    // A slot with `name` (cut at 64 bytes) and the fields in the order of the wire.
    static PetRecord Make(const std::string& name, std::int32_t status, std::int32_t level, std::int32_t xp,
                          std::int32_t xpNeeded, std::int32_t hp, std::int32_t hpMax, std::int32_t mp,
                          std::int32_t mpMax, std::int32_t st, std::int32_t stMax, std::int32_t areaKind = 0);

private:
    template <typename Visit>
    static void ForEachField(PetRecord& pet, Visit visit);
};

// How many records a payload holds: the count the sender claims, but never more than its bytes carry.
std::size_t PetRecordCount(std::uint64_t claimed, const void* bytes, std::size_t byteCount);

// Filter positions of the drop-down list; any other value shows no pet.
inline constexpr int kPetFilterSameMap = 0;
inline constexpr int kPetFilterAll = 1;
bool PetFilterAdmits(int filterIndex, int status);

// The list's columns.
enum PetColumn : int {
    kPetColumnPicture,
    kPetColumnName,
    kPetColumnStatus,
    kPetColumnLevel,
    kPetColumnNextXp,
    kPetColumnHp,
    kPetColumnMp,
    kPetColumnSt,
    kPetColumnCount
};
inline constexpr int kPetBarCount = 4;  // XP, HP, MP, ST: columns 4 to 7
inline constexpr int kFirstBarColumn = kPetColumnNextXp;
inline constexpr int kPetRows = 16;

// The status text of a slot: the area's name for status 9 at a known area.
LangText PetStatusText(int status, int areaKind);
// The text of a text column (not the picture, not the name) of `pet`.
std::u16string PetCellText(const PetRecord& pet, int column, int language);

// A bar's current and maximum value; the XP bar is experience against experience needed.
struct BarValue {
    std::int32_t current, maximum;
};
BarValue PetBarValue(const PetRecord& pet, int bar);
// Pixels of `width` filled for `current` of `maximum`: a maximum of 0 counts as 1, and the result
// stays within 0 ... width.
int BarFillWidth(int width, std::int32_t current, std::int32_t maximum);

// A bar's share of the free width as PetInfo.kcsv's table knowledge bounds it (0 ... 9).
int ClampBarRatio(int ratio);
// Widths of columns 4 to 7: the free width shared by the ratios (a total of 0 counts as 1).
std::array<int, kPetBarCount> SplitBarColumns(int freeWidth, const std::array<int, kPetBarCount>& ratios);

// The rows of the pet list, from one message to the next.
class PetRows {
public:
    // What one message changes: per shown row, a mask of the columns (1 << column) to rewrite.
    struct Update {
        bool fullRefresh = false;  // the row count changed: every cell, the pictures, the unused rows
        bool picturesMoved = false;  // a row now comes from another slot: its picture is another
        int rowCount = 0;
        std::array<unsigned, kPetRows> changedColumns{};
    };

    // Takes a message of `count` records (112 bytes each) through `filterIndex`; at most the first
    // kPetRows passing records are shown, the rest are dropped.
    Update Take(const unsigned char* records, std::size_t count, int filterIndex);

    int RowCount() const { return rowCount_; }
    const PetRecord& Row(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    // The row's position in the message, which is also its picture's cell in the module's strip.
    int SlotOf(int row) const { return slots_[static_cast<std::size_t>(row)]; }

private:
    std::array<PetRecord, kPetRows> rows_{};
    std::array<PetRecord, kPetRows> previous_{};
    std::array<int, kPetRows> slots_{};
    int rowCount_ = 0;
};

// The columns whose text depends on fields that differ between `before` and `after`.
unsigned ChangedPetColumns(const PetRecord& before, const PetRecord& after);

}  // namespace vrl
