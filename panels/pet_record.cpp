#include "panels/pet_record.h"

#include <algorithm>
#include <cstring>

#include "panels/pet_texts.h"
#include "settings/decimal_text.h"

namespace vrl {
namespace {

std::int32_t Int32At(const unsigned char* p) {
    const std::uint32_t v = static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
                            static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
    return static_cast<std::int32_t>(v);
}

void PutInt32(unsigned char* p, std::int32_t value) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<unsigned char>(static_cast<std::uint32_t>(value) >> (8 * i));
}

std::u16string Pair(std::int32_t current, std::int32_t maximum) { return DecimalText(current) + u"/" + DecimalText(maximum); }

unsigned Bit(int column) { return 1u << column; }

}  // namespace

std::string PetRecord::NameBytes() const {
    const auto end = std::find(name.begin(), name.end(), '\0');
    return std::string(name.begin(), end);
}

template <typename Visit>
void PetRecord::ForEachField(PetRecord& pet, Visit visit) {
    std::int32_t* const fields[] = {&pet.status, &pet.level, &pet.xp, &pet.xpNeeded, &pet.hp, &pet.hpMax,
                                    &pet.mp,     &pet.mpMax, &pet.st, &pet.stMax,    &pet.areaKind};
    std::size_t offset = 68;
    for (std::int32_t* field : fields) {
        visit(*field, offset);
        offset += 4;
    }
}

PetRecord PetRecord::Decode(const unsigned char* wire) {
    PetRecord pet;
    pet.chipId = Int32At(wire);
    std::memcpy(pet.name.data(), wire + 4, kNameBytes);
    ForEachField(pet, [wire](std::int32_t& field, std::size_t offset) { field = Int32At(wire + offset); });
    return pet;
}

void PetRecord::Encode(std::string& out) const {
    const std::size_t start = out.size();
    out.resize(start + kWireSize, '\0');
    auto* wire = reinterpret_cast<unsigned char*>(&out[start]);
    PutInt32(wire, chipId);
    std::memcpy(wire + 4, name.data(), kNameBytes);
    PetRecord copy = *this;
    ForEachField(copy, [wire](std::int32_t& field, std::size_t offset) { PutInt32(wire + offset, field); });
}

PetRecord PetRecord::Make(const std::string& petName, std::int32_t status, std::int32_t level, std::int32_t xp,
                          std::int32_t xpNeeded, std::int32_t hp, std::int32_t hpMax, std::int32_t mp,
                          std::int32_t mpMax, std::int32_t st, std::int32_t stMax, std::int32_t areaKind) {
    PetRecord pet;
    std::memcpy(pet.name.data(), petName.data(), std::min(petName.size(), kNameBytes));
    pet.status = status;
    pet.level = level;
    pet.xp = xp;
    pet.xpNeeded = xpNeeded;
    pet.hp = hp;
    pet.hpMax = hpMax;
    pet.mp = mp;
    pet.mpMax = mpMax;
    pet.st = st;
    pet.stMax = stMax;
    pet.areaKind = areaKind;
    return pet;
}

std::size_t PetRecordCount(std::uint64_t claimed, const void* bytes, std::size_t byteCount) {
    if (!bytes) return 0;
    return static_cast<std::size_t>(std::min<std::uint64_t>(claimed, byteCount / PetRecord::kWireSize));
}

bool PetFilterAdmits(int filterIndex, int status) {
    switch (filterIndex) {
    case kPetFilterSameMap:
        return status == 1 || status == 6;
    case kPetFilterAll:
        return status != 0;
    }
    return false;
}

LangText PetStatusText(int status, int areaKind) {
    if (status >= 0 && status < static_cast<int>(std::size(pet_texts::kStatus))) return pet_texts::kStatus[status];
    if (status == 9) {
        for (const pet_texts::AreaName& area : pet_texts::kAreas) {
            if (area.kind == areaKind) return area.name;
        }
        return pet_texts::kUnknownArea;
    }
    // A code the module has not told us about: shown as its number rather than as nothing.
    return {u"", u""};
}

std::u16string PetCellText(const PetRecord& pet, int column, int language) {
    switch (column) {
    case kPetColumnStatus: {
        const std::u16string text = PetStatusText(pet.status, pet.areaKind).Get(language);
        return text.empty() ? u"(" + DecimalText(pet.status) + u")" : text;
    }
    case kPetColumnLevel:
        return DecimalText(pet.level);
    case kPetColumnNextXp:
        return DecimalText(static_cast<std::int64_t>(pet.xpNeeded) - pet.xp);
    case kPetColumnHp:
        return Pair(pet.hp, pet.hpMax);
    case kPetColumnMp:
        return Pair(pet.mp, pet.mpMax);
    case kPetColumnSt:
        return Pair(pet.st, pet.stMax);
    }
    return {};
}

BarValue PetBarValue(const PetRecord& pet, int bar) {
    switch (bar) {
    case 0:
        return {pet.xp, pet.xpNeeded};
    case 1:
        return {pet.hp, pet.hpMax};
    case 2:
        return {pet.mp, pet.mpMax};
    default:
        return {pet.st, pet.stMax};
    }
}

int BarFillWidth(int width, std::int32_t current, std::int32_t maximum) {
    if (width <= 0) return 0;
    const std::int64_t divisor = maximum == 0 ? 1 : maximum;
    const std::int64_t filled = static_cast<std::int64_t>(width) * current / divisor;
    return static_cast<int>(std::clamp<std::int64_t>(filled, 0, width));
}

std::array<int, kPetBarCount> SplitBarColumns(int freeWidth, const std::array<int, kPetBarCount>& ratios) {
    std::int64_t total = 0;
    for (int ratio : ratios) total += ratio;
    if (total < 1) total = 1;
    // Negative widths would ask the list view to size the column to its contents.
    const std::int64_t share = std::max(freeWidth, 0);
    std::array<int, kPetBarCount> widths{};
    for (int i = 0; i < kPetBarCount; ++i) widths[i] = static_cast<int>(std::max<std::int64_t>(0, ratios[i] * share / total));
    return widths;
}

unsigned ChangedPetColumns(const PetRecord& before, const PetRecord& after) {
    unsigned columns = 0;
    if (before.name != after.name) columns |= Bit(kPetColumnName);
    // A status-9 pet moved to another area shows another name.
    if (before.status != after.status || (after.status == 9 && before.areaKind != after.areaKind))
        columns |= Bit(kPetColumnStatus);
    if (before.level != after.level) columns |= Bit(kPetColumnLevel);
    if (before.xp != after.xp || before.xpNeeded != after.xpNeeded) columns |= Bit(kPetColumnNextXp);
    if (before.hp != after.hp || before.hpMax != after.hpMax) columns |= Bit(kPetColumnHp);
    if (before.mp != after.mp || before.mpMax != after.mpMax) columns |= Bit(kPetColumnMp);
    if (before.st != after.st || before.stMax != after.stMax) columns |= Bit(kPetColumnSt);
    return columns;
}

PetRows::Update PetRows::Take(const unsigned char* records, std::size_t count, int filterIndex) {
    previous_ = rows_;
    const std::array<int, kPetRows> previousSlots = slots_;
    const int previousCount = rowCount_;
    rows_ = {};
    slots_ = {};
    int shown = 0;
    for (std::size_t slot = 0; slot < count && shown < kPetRows; ++slot) {
        const PetRecord pet = PetRecord::Decode(records + slot * PetRecord::kWireSize);
        if (!PetFilterAdmits(filterIndex, pet.status)) continue;
        rows_[static_cast<std::size_t>(shown)] = pet;
        slots_[static_cast<std::size_t>(shown)] = static_cast<int>(slot);
        ++shown;
    }
    rowCount_ = shown;

    Update update;
    update.rowCount = shown;
    update.fullRefresh = shown != previousCount;
    update.picturesMoved = slots_ != previousSlots;
    constexpr unsigned kEveryTextColumn = ((1u << kPetColumnCount) - 1) & ~1u;
    for (int row = 0; row < shown; ++row) {
        const auto r = static_cast<std::size_t>(row);
        update.changedColumns[r] = update.fullRefresh ? kEveryTextColumn : ChangedPetColumns(previous_[r], rows_[r]);
    }
    return update;
}

}  // namespace vrl
