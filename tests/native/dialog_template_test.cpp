#include "ui/dialog_template.h"
#include "ui/panel_style.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using vrl::ControlAtom;
using vrl::ControlText;
using vrl::DialogTemplate;
namespace style = vrl::dlgstyle;

// Reads a built template back the way the dialog creator walks it.
class Reader {
public:
    explicit Reader(const DialogTemplate& t)
        : bytes_(static_cast<const std::uint8_t*>(t.Data())), size_(t.Size()) {}
    std::uint16_t U16() {
        EXPECT_LE(pos_ + 2, size_);
        const std::uint16_t v = static_cast<std::uint16_t>(bytes_[pos_] | bytes_[pos_ + 1] << 8);
        pos_ += 2;
        return v;
    }
    std::uint32_t U32() {
        const std::uint32_t low = U16();
        return low | static_cast<std::uint32_t>(U16()) << 16;
    }
    std::uint8_t U8() { return bytes_[pos_++]; }
    std::u16string String() {
        std::u16string s;
        for (char16_t c = U16(); c != 0; c = U16()) s += c;
        return s;
    }
    // A class or text field: "#<number>" for an ordinal, else the string.
    std::u16string StringOrOrdinal() {
        if (bytes_[pos_] == 0xFF && bytes_[pos_ + 1] == 0xFF) {
            U16();
            const std::string n = std::to_string(U16());
            return u"#" + std::u16string(n.begin(), n.end());
        }
        return String();
    }
    void Align4() { pos_ = (pos_ + 3) / 4 * 4; }
    std::size_t Pos() const { return pos_; }

private:
    const std::uint8_t* bytes_;
    std::size_t size_;
    std::size_t pos_ = 0;
};

struct Item {
    std::uint32_t help, exStyle, style;
    std::int16_t x, y, cx, cy;
    std::uint32_t id;
    std::u16string cls, text;
    std::uint16_t extra;
};

Item ReadItem(Reader& r) {
    r.Align4();
    EXPECT_EQ(r.Pos() % 4, 0u);
    Item it{};
    it.help = r.U32();
    it.exStyle = r.U32();
    it.style = r.U32();
    it.x = static_cast<std::int16_t>(r.U16());
    it.y = static_cast<std::int16_t>(r.U16());
    it.cx = static_cast<std::int16_t>(r.U16());
    it.cy = static_cast<std::int16_t>(r.U16());
    it.id = r.U32();
    it.cls = r.StringOrOrdinal();
    it.text = r.StringOrOrdinal();
    it.extra = r.U16();
    return it;
}

// Skips the header, checking the fields every template shares.
void SkipHeader(Reader& r, bool withFont) {
    EXPECT_EQ(r.U16(), 1);
    EXPECT_EQ(r.U16(), 0xFFFF);
    r.U32();
    r.U32();
    r.U32();
    r.U16();
    for (int i = 0; i < 4; ++i) r.U16();
    r.StringOrOrdinal();
    r.StringOrOrdinal();
    r.String();
    if (withFont) {
        r.U16();
        r.U16();
        r.U8();
        r.U8();
        r.String();
    }
}

TEST(DialogTemplate, HeaderCarriesGeometryTitleAndFont) {
    DialogTemplate t;
    t.Create(u"Pet Information - Vorrel", {0, 0, 520, 400}, 0x00CC0000u, 0x100u,
             vrl::PanelFont(1));
    Reader r(t);
    EXPECT_EQ(r.U16(), 1);       // version
    EXPECT_EQ(r.U16(), 0xFFFF);  // extended
    EXPECT_EQ(r.U32(), 0u);      // help id
    EXPECT_EQ(r.U32(), 0x100u);
    EXPECT_EQ(r.U32(), 0x00CC0000u | style::kSetFont);
    EXPECT_EQ(r.U16(), 0);  // no controls yet
    EXPECT_EQ(r.U16(), 0);
    EXPECT_EQ(r.U16(), 0);
    EXPECT_EQ(r.U16(), 520);
    EXPECT_EQ(r.U16(), 400);
    EXPECT_EQ(r.U16(), 0);  // no menu
    EXPECT_EQ(r.U16(), 0);  // default class
    EXPECT_EQ(r.String(), u"Pet Information - Vorrel");
    EXPECT_EQ(r.U16(), 9);
    EXPECT_EQ(r.U16(), 400);
    EXPECT_EQ(r.U8(), 0);    // not italic
    EXPECT_EQ(r.U8(), 128);  // Shift-JIS
    EXPECT_EQ(r.String(), u"Meiryo UI");
    EXPECT_EQ(r.Pos(), t.Size());
}

TEST(DialogTemplate, WithoutAFaceThereIsNoFontAndNoSetFontStyle) {
    DialogTemplate t;
    t.Create(u"", {1, 2, 3, 4}, 0x80000000u, 0, vrl::DialogFont{});
    Reader r(t);
    r.U32();
    r.U32();
    r.U32();
    EXPECT_EQ(r.U32(), 0x80000000u);
    r.U16();
    for (int i = 0; i < 6; ++i) r.U16();
    EXPECT_EQ(r.String(), u"");
    EXPECT_EQ(r.Pos(), t.Size());
}

TEST(DialogTemplate, ControlsAreAlignedCountedAndAlwaysVisibleChildren) {
    DialogTemplate t;
    t.Create(u"abc", {0, 0, 100, 50}, 0, 0, vrl::PanelFont(0));  // odd-length strings
    ASSERT_TRUE(t.AddControl(ControlAtom::kStatic, -1, {6, 6, 42, 12}, 0, 0, u"Filter:"));
    ASSERT_TRUE(t.AddControl(u"SysListView32", 1004, {6, 24, -6, -6}, 0x1u, 0x200u, u""));
    ASSERT_TRUE(t.AddControl(ControlAtom::kComboBox, 1001, {54, 6, 60, 12}, 0x3u, 0,
                             ControlText::Resource(57)));
    EXPECT_EQ(t.ItemCount(), 3);

    Reader r(t);
    SkipHeader(r, true);
    const Item label = ReadItem(r);
    EXPECT_EQ(label.help, 0u);
    EXPECT_EQ(label.style, style::kChild | style::kVisible);
    EXPECT_EQ(label.id, 0xFFFFFFFFu);
    EXPECT_EQ(label.cls, u"#130");  // 0x0082
    EXPECT_EQ(label.text, u"Filter:");
    EXPECT_EQ(label.extra, 0);
    EXPECT_EQ((std::vector<int>{label.x, label.y, label.cx, label.cy}),
              (std::vector<int>{6, 6, 42, 12}));

    const Item list = ReadItem(r);
    EXPECT_EQ(list.style, 0x1u | style::kChild | style::kVisible);
    EXPECT_EQ(list.exStyle, 0x200u);
    EXPECT_EQ(list.id, 1004u);
    EXPECT_EQ(list.cls, u"SysListView32");
    EXPECT_EQ(list.text, u"");
    EXPECT_EQ(list.cx, -6);

    const Item combo = ReadItem(r);
    EXPECT_EQ(combo.cls, u"#133");  // 0x0085
    EXPECT_EQ(combo.text, u"#57");
    EXPECT_EQ(r.Pos(), t.Size());
}

TEST(DialogTemplate, NothingIsAddedBeforeAHeader) {
    DialogTemplate t;
    EXPECT_FALSE(t.AddControl(ControlAtom::kButton, 1, {}, 0, 0, u"x"));
    EXPECT_EQ(t.ItemCount(), 0);
    EXPECT_EQ(t.Size(), 0u);
}

TEST(DialogTemplate, BlockStartsRoundedAndGrowsPerPieceThatDoesNotFit) {
    EXPECT_EQ(DialogTemplate().Capacity(), 1024u);
    EXPECT_EQ(DialogTemplate(1023).Capacity(), 1024u);
    EXPECT_EQ(DialogTemplate(1024).Capacity(), 2048u);
    EXPECT_EQ(DialogTemplate(1500).Capacity(), 2048u);

    DialogTemplate t;
    t.Create(u"Big", {0, 0, 300, 300}, 0, 0, vrl::PanelFont(0));
    std::vector<std::size_t> capacities{t.Capacity()};
    // Small pieces: each overflow adds exactly 1024 bytes, across several boundaries.
    for (int i = 0; i < 120; ++i) {
        const std::u16string text = u"Label number " + std::u16string(1, u'A' + i % 26);
        ASSERT_TRUE(t.AddControl(ControlAtom::kButton, 100 + i, {0, 0, 10, 10}, 0, 0, text));
        ASSERT_LE(t.Size(), t.Capacity());
        if (t.Capacity() != capacities.back()) capacities.push_back(t.Capacity());
    }
    ASSERT_GE(capacities.size(), 4u);
    for (std::size_t i = 1; i < capacities.size(); ++i)
        EXPECT_EQ(capacities[i] - capacities[i - 1], 1024u);

    // A long string is one piece: the block grows by its size rounded down plus 1024.
    const std::size_t before = t.Capacity();
    const std::u16string longText(3000, u'x');  // 6002 bytes with its terminator
    ASSERT_TRUE(t.AddControl(ControlAtom::kEdit, 999, {}, 0, 0, longText));
    EXPECT_EQ(t.Capacity(), before + 6144u);

    Reader r(t);
    SkipHeader(r, true);
    for (int i = 0; i < 120; ++i) {
        const Item it = ReadItem(r);
        EXPECT_EQ(it.id, static_cast<std::uint32_t>(100 + i));
        EXPECT_EQ(it.text, u"Label number " + std::u16string(1, u'A' + i % 26));
    }
    EXPECT_EQ(ReadItem(r).text, longText);
    EXPECT_EQ(t.ItemCount(), 121);
    // Everything past the write position is still zero.
    const auto* bytes = static_cast<const std::uint8_t*>(t.Data());
    for (std::size_t i = t.Size(); i < t.Capacity(); ++i) ASSERT_EQ(bytes[i], 0) << i;
}

TEST(PanelStyle, FontAndTitleFollowTheLanguage) {
    const vrl::DialogFont en = vrl::PanelFont(0);
    EXPECT_EQ(en.face, u"Arial");
    EXPECT_EQ(en.charset, 0);
    EXPECT_EQ(en.pointSize, 9);
    EXPECT_EQ(en.weight, 400);
    EXPECT_FALSE(en.italic);
    const vrl::DialogFont ja = vrl::PanelFont(1);
    EXPECT_EQ(ja.face, u"Meiryo UI");
    EXPECT_EQ(ja.charset, 128);

    const vrl::LangText name{u"Pet Information", u"ペット情報"};
    EXPECT_EQ(vrl::PanelTitle(name.Get(0)), u"Pet Information - Vorrel");
    EXPECT_EQ(vrl::PanelTitle(name.Get(1)), u"ペット情報 - Vorrel");
}

}  // namespace
