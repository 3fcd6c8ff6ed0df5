#include "ui/dialog_template.h"

#include <cstring>

namespace vrl {
namespace {

constexpr std::uint16_t kTemplateVersion = 1;
constexpr std::uint16_t kExtendedSignature = 0xFFFF;
// In a class, text or menu field, 0xFFFF says that an atom or resource id follows.
constexpr std::uint16_t kOrdinalMarker = 0xFFFF;

}  // namespace

DialogTemplate::DialogTemplate(std::size_t initialSize)
    : initialSize_(initialSize), block_(TemplateBlockStep(initialSize), 0) {}

void DialogTemplate::Create(std::u16string_view title, DialogRect box, std::uint32_t style,
                            std::uint32_t exStyle, const DialogFont& font) {
    block_.assign(TemplateBlockStep(initialSize_), 0);
    used_ = 0;
    created_ = true;
    font_ = font;

    const bool hasFont = !font.face.empty();
    if (hasFont) style |= dlgstyle::kSetFont;
    Put16(kTemplateVersion);
    Put16(kExtendedSignature);
    Put32(0);  // help id
    Put32(exStyle);
    Put32(style);
    Put16(0);  // item count, raised by AddControl
    Put16(static_cast<std::uint16_t>(box.x));
    Put16(static_cast<std::uint16_t>(box.y));
    Put16(static_cast<std::uint16_t>(box.cx));
    Put16(static_cast<std::uint16_t>(box.cy));
    Put16(0);  // no menu
    Put16(0);  // the default dialog class
    PutString(title);
    if (hasFont) {
        Put16(font.pointSize);
        Put16(font.weight);
        const std::uint8_t italicAndCharset[2] = {static_cast<std::uint8_t>(font.italic ? 1 : 0),
                                                  font.charset};
        PutBytes(italicAndCharset, sizeof italicAndCharset);
        PutString(font.face);
    }
}

bool DialogTemplate::AddControl(const ControlClass& cls, int id, DialogRect box,
                                std::uint32_t style, std::uint32_t exStyle,
                                const ControlText& text) {
    const std::uint16_t count = ItemCount();
    if (!created_ || count == 0xFFFF) return false;

    AlignTo4();
    Put32(0);  // help id
    Put32(exStyle);
    Put32(style | dlgstyle::kChild | dlgstyle::kVisible);
    Put16(static_cast<std::uint16_t>(box.x));
    Put16(static_cast<std::uint16_t>(box.y));
    Put16(static_cast<std::uint16_t>(box.cx));
    Put16(static_cast<std::uint16_t>(box.cy));
    Put32(static_cast<std::uint32_t>(id));  // -1 becomes 0xFFFFFFFF
    if (cls.atom != 0) {
        Put16(kOrdinalMarker);
        Put16(cls.atom);
    } else {
        PutString(cls.name);
    }
    if (text.resourceId != 0) {
        Put16(kOrdinalMarker);
        Put16(text.resourceId);
    } else {
        PutString(text.text);
    }
    Put16(0);  // no creation data

    const unsigned raised = count + 1u;
    block_[kItemCountOffset] = static_cast<std::uint8_t>(raised);
    block_[kItemCountOffset + 1] = static_cast<std::uint8_t>(raised >> 8);
    return true;
}

std::uint16_t DialogTemplate::ItemCount() const {
    if (!created_) return 0;
    return static_cast<std::uint16_t>(block_[kItemCountOffset] |
                                      block_[kItemCountOffset + 1] << 8);
}

void DialogTemplate::Reserve(std::size_t pieceSize) {
    if (used_ + pieceSize <= block_.size()) return;
    block_.resize(block_.size() + TemplateBlockStep(pieceSize), 0);
}

void DialogTemplate::AlignTo4() {
    const std::size_t padding = (4 - used_ % 4) % 4;
    Reserve(padding);
    used_ += padding;  // the block is zero-filled, so the padding already reads as zeros
}

// Little-endian, whatever the host: the template is read by x86 Windows.
void DialogTemplate::Put16(std::uint16_t value) {
    const std::uint8_t bytes[2] = {static_cast<std::uint8_t>(value),
                                   static_cast<std::uint8_t>(value >> 8)};
    PutBytes(bytes, sizeof bytes);
}

void DialogTemplate::Put32(std::uint32_t value) {
    Put16(static_cast<std::uint16_t>(value));
    Put16(static_cast<std::uint16_t>(value >> 16));
}

// A zero-terminated UTF-16 string, written as one piece.
void DialogTemplate::PutString(std::u16string_view text) {
    Reserve((text.size() + 1) * 2);
    for (char16_t c : text) Put16(static_cast<std::uint16_t>(c));
    Put16(0);
}

void DialogTemplate::PutBytes(const void* bytes, std::size_t count) {
    Reserve(count);
    std::memcpy(block_.data() + used_, bytes, count);
    used_ += count;
}

}  // namespace vrl
