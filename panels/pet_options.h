#pragma once
// The options of PetInfo.kcsv: the pet panel's own (filter, auto-adjust, column widths) and the
// look of the list that the colour dialog edits (text colours, and per bar whether it is drawn,
// its share of the free width and its three colours). Portable.

#include <array>

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

struct PetListLook {
    Colour text = MakeColour(0, 0, 0);
    Colour background = MakeColour(255, 255, 255);
    std::array<PetBarLook, kPetBarCount> bars;  // XP, HP, MP, ST

    PetListLook();
    // Every value from its option; a missing option, or a colour that does not read as one,
    // keeps the default.
    static PetListLook Read(const KcsvFile& table);
    // Sets every option of the look ("%d" numbers, "#rrggbb" colours), leaving the others alone.
    void Write(KcsvFile& table) const;
    std::array<int, kPetBarCount> Ratios() const;
};

struct PetPanelOptions {
    int filterIndex = kPetFilterSameMap;
    bool autoAdjust = true;
    std::array<int, kPetColumnCount> widths{50, 160, 80, 80, 120, 120, 120, 120};

    static PetPanelOptions Read(const KcsvFile& table);
    void Write(KcsvFile& table) const;
};

}  // namespace vrl
