#pragma once
// Extended dialog templates built in memory, in the layout the platform's dialog creator reads
// (an extended header, then one extended item per control, each item 4-byte aligned).
// Portable: the bytes are the same on every host, so they can be checked without windows.h.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vrl {

// The few window and dialog style bits the templates need.
namespace dlgstyle {
inline constexpr std::uint32_t kChild = 0x40000000u;    // WS_CHILD
inline constexpr std::uint32_t kVisible = 0x10000000u;  // WS_VISIBLE
inline constexpr std::uint32_t kSetFont = 0x00000040u;  // DS_SETFONT
}  // namespace dlgstyle

// The platform's predefined control classes, as template atoms.
enum class ControlAtom : std::uint16_t {
    kButton = 0x0080,
    kEdit = 0x0081,
    kStatic = 0x0082,
    kListBox = 0x0083,
    kScrollBar = 0x0084,
    kComboBox = 0x0085,
};

// A control's class: a predefined atom or a registered class name ("SysListView32").
struct ControlClass {
    ControlClass(ControlAtom a) : atom(static_cast<std::uint16_t>(a)) {}  // NOLINT: implicit on purpose
    ControlClass(const char16_t* className) : name(className) {}          // NOLINT
    std::uint16_t atom = 0;  // 0: use the name
    std::u16string name;
};

// A control's text: a string (possibly empty) or a resource id.
struct ControlText {
    ControlText(const char16_t* s = u"") : text(s) {}                // NOLINT: implicit on purpose
    ControlText(std::u16string s) : text(std::move(s)) {}             // NOLINT
    static ControlText Resource(std::uint16_t id) {
        ControlText t;
        t.resourceId = id;
        return t;
    }
    std::u16string text;
    std::uint16_t resourceId = 0;  // non-zero: the text is this resource
};

struct DialogFont {
    std::u16string face;  // empty: the template carries no font
    std::uint16_t pointSize = 9;
    std::uint16_t weight = 400;
    bool italic = false;
    std::uint8_t charset = 0;
};

// Geometry in dialog units; the template keeps 16 bits of each. (Not "DialogBox": windows.h
// defines that name as a macro, which would rename the type in Win32 files only.)
struct DialogRect {
    int x = 0, y = 0, cx = 0, cy = 0;
};

class DialogTemplate {
public:
    // Offsets into the header that callers and tests read back.
    static constexpr std::size_t kStyleOffset = 12;
    static constexpr std::size_t kItemCountOffset = 16;

    // The block starts at `initialSize` rounded down to a multiple of 1024, plus 1024 bytes.
    explicit DialogTemplate(std::size_t initialSize = 0);

    // Starts over with a new header. DS_SETFONT is added to the style when the font has a face.
    void Create(std::u16string_view title, DialogRect box, std::uint32_t style,
                std::uint32_t exStyle, const DialogFont& font);
    // Adds one control; WS_CHILD and WS_VISIBLE are always added to `style`. An id of -1 marks a
    // label that is never addressed. False (and nothing added) without a header, or when the
    // header's 16-bit item count is full.
    bool AddControl(const ControlClass& cls, int id, DialogRect box, std::uint32_t style,
                    std::uint32_t exStyle, const ControlText& text);

    bool IsCreated() const { return created_; }
    // The template as the dialog creator takes it; valid until the next Create or AddControl.
    const void* Data() const { return block_.data(); }
    std::size_t Size() const { return used_; }
    std::size_t Capacity() const { return block_.size(); }
    std::uint16_t ItemCount() const;
    // The font given to Create (no face: none).
    const DialogFont& Font() const { return font_; }

private:
    void Reserve(std::size_t pieceSize);
    void AlignTo4();
    void Put16(std::uint16_t value);
    void Put32(std::uint32_t value);
    void PutString(std::u16string_view text);
    void PutBytes(const void* bytes, std::size_t count);

    std::size_t initialSize_;
    std::vector<std::uint8_t> block_;
    std::size_t used_ = 0;
    bool created_ = false;
    DialogFont font_;
};

// The template in `slot`, built by `build` on first use: each window builds its template once, at
// its first creation, in the language in force then.
inline const DialogTemplate& BuiltOnce(DialogTemplate& slot, void (*build)(DialogTemplate&)) {
    if (!slot.IsCreated()) build(slot);
    return slot;
}

// Block size for a piece of `size` bytes: rounded down to a multiple of 1024, plus 1024.
constexpr std::size_t TemplateBlockStep(std::size_t size) { return size / 1024 * 1024 + 1024; }

}  // namespace vrl
