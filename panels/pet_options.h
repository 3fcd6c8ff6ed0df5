#pragma once
// The options of PetInfo.kcsv: the pet panel's own (filter, auto-adjust, column widths) and the
// look of the list that the colour dialog edits (text colours, and per bar whether it is drawn,
// its share of the free width and its three colours). Portable.

#include <array>
#include <string_view>

#include "panels/pet_record.h"
#include "settings/kcsv.h"
#include "ui/colour.h"

namespace vrl {

struct PetBarLook {
    bool drawn = true;
    int ratio = 1;  // 0 ... 9
    Colour bar = 0;
    Colour background = 0;
    Colour frame = 0;
};

// Defaults, names and limits of every value are PetInfo.kcsv's table knowledge (table_schema).
struct PetListLook {
    Colour text = 0;
    Colour background = 0;
    std::array<PetBarLook, kPetBarCount> bars;  // XP, HP, MP, ST

    // Every value from its option; a missing option, or a colour that does not read as one,
    // gives the default.
    static PetListLook Read(const KcsvFile& table);
    // A bar's ratio as typed into the colour dialog: a number brought into 0 ... 9.
    static int RatioOf(int bar, std::u16string_view text);
    // Sets every option of the look ("%d" numbers, "#rrggbb" colours), leaving the others alone.
    void Write(KcsvFile& table) const;
    std::array<int, kPetBarCount> Ratios() const;
};

struct PetPanelOptions {
    int filterIndex = kPetFilterSameMap;
    bool autoAdjust = true;
    std::array<int, kPetColumnCount> widths{};

    static PetPanelOptions Read(const KcsvFile& table);
    void Write(KcsvFile& table) const;
};

}  // namespace vrl
