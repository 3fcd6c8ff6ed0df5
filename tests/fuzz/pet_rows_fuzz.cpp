// Any payload as a pet message, with any claimed record count and filter: the list reads only the
// bytes it was given, shows at most 16 rows of admitted slots, and every cell text and bar of
// every row can be made.

#include "panels/pet_record.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::uint64_t claimed = data[0] | data[1] << 8;
    const int filter = static_cast<std::int8_t>(data[2]) % 3;
    // An exact-size copy, so that the address sanitizer sees any read past the payload.
    std::uint8_t* payload = static_cast<std::uint8_t*>(std::malloc(size - 3 + 1));
    std::memcpy(payload, data + 3, size - 3);

    static vrl::PetRows rows;  // kept between inputs, like the panel's, for the diff
    const std::size_t count = vrl::PetRecordCount(claimed, payload, size - 3);
    const vrl::PetRows::Update update = rows.Take(payload, count, filter);
    if (update.rowCount > vrl::kPetRows || static_cast<std::size_t>(update.rowCount) > count) std::abort();
    for (int row = 0; row < update.rowCount; ++row) {
        const vrl::PetRecord& pet = rows.Row(row);
        if (!vrl::PetFilterAdmits(filter, pet.status) || rows.SlotOf(row) >= static_cast<int>(count)) std::abort();
        if (pet.NameBytes().size() > vrl::PetRecord::kNameBytes) std::abort();
        for (int column = vrl::kPetColumnStatus; column < vrl::kPetColumnCount; ++column)
            (void)vrl::PetCellText(pet, column, row % 2);
        for (int bar = 0; bar < vrl::kPetBarCount; ++bar) {
            const vrl::BarValue value = vrl::PetBarValue(pet, bar);
            const int width = vrl::BarFillWidth(100, value.current, value.maximum);
            if (width < 0 || width > 100) std::abort();
        }
    }
    std::free(payload);
    return 0;
}
