#include "panels/equip_set.h"

#include "settings/decimal_text.h"

namespace vrl::equip_set {
namespace {

std::u16string Padded(int value, int width, char16_t pad) {
    std::u16string digits = DecimalText(value);
    if (static_cast<int>(digits.size()) < width) digits.insert(0, static_cast<size_t>(width) - digits.size(), pad);
    return digits;
}

bool IsSet(int index) { return index >= 0 && index < kSetCount; }

}  // namespace

Mode ModeForMenuChoice(int selected) {
    switch (selected) {
    case 0: return Mode::kRestore;
    case 1: return Mode::kSave;
    case 2: return Mode::kEdit;
    }
    return Mode::kMenu;
}

bool IsCharacterFolderName(std::u16string_view name) {
    if (name.empty() || name == u"." || name == u"..") return false;
    return name.find_first_of(u"\\/:") == std::u16string_view::npos;
}

std::u16string NameKey(int index) { return u"EqSetName_" + Padded(IsSet(index) ? index : 0, 2, u'0'); }

std::u16string DefaultName(int index, int language) {
    const std::u16string number = Padded(IsSet(index) ? index + 1 : 1, 2, u' ');
    return (language == 1 ? std::u16string(u"装備セット") : std::u16string(u"Set")) + number;
}

std::u16string ListEntry(int index, std::u16string_view name) {
    std::u16string entry = DecimalText((index + 1) % 10) + u":";
    entry.append(name);
    return entry;
}

int RequestCode(Mode mode, int index) {
    if (!IsSet(index)) return 0;
    if (mode == Mode::kRestore) return 11000 + index;
    if (mode == Mode::kSave) return 12000 + index;
    return 0;
}

const LangText& ModeTitle(Mode mode) {
    switch (mode) {
    case Mode::kRestore: return texts::kRestore;
    case Mode::kSave: return texts::kSave;
    case Mode::kEdit: return texts::kEdit;
    case Mode::kMenu: break;
    }
    return texts::kMenuTitle;
}

}  // namespace vrl::equip_set
