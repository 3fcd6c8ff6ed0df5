#include "ui/dialog_template.h"
#include "ui/lang_text.h"
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

struct Header {
    std::uint16_t version, signature;
    std::uint32_t help, exStyle, style;
    std::uint16_t items;
    std::vector<int> geometry;
    std::u16string menu, cls, title;
    vrl::DialogFont font;  // read only when the style asks for one
};

Header ReadHeader(Reader& r) {
    Header h{};
    h.version = r.U16();
    h.signature = r.U16();
    h.help = r.U32();
    h.exStyle = r.U32();
    h.style = r.U32();
    h.items = r.U16();
    for (int i = 0; i < 4; ++i) h.geometry.push_back(static_cast<std::int16_t>(r.U16()));
    h.menu = r.StringOrOrdinal();
    h.cls = r.StringOrOrdinal();
    h.title = r.String();
    if (h.style & style::kSetFont) {
        h.font.pointSize = r.U16();
        h.font.weight = r.U16();
        h.font.italic = r.U8() != 0;
        h.font.charset = r.U8();
        h.font.face = r.String();
    }
    return h;
}

struct Item {
    std::uint32_t help, exStyle, style;
    std::vector<int> geometry;
    std::uint32_t id;
    std::u16string cls, text;
    std::uint16_t extra;
};

Item ReadItem(Reader& r) {
    r.Align4();
    Item it{};
    it.help = r.U32();
    it.exStyle = r.U32();
    it.style = r.U32();
    for (int i = 0; i < 4; ++i) it.geometry.push_back(static_cast<std::int16_t>(r.U16()));
    it.id = r.U32();
    it.cls = r.StringOrOrdinal();
    it.text = r.StringOrOrdinal();
    it.extra = r.U16();
    return it;
}

TEST(DialogTemplate, HeaderCarriesGeometryTitleAndFontOnlyWithAFace) {
    DialogTemplate t;
    t.Create(u"Pet Information - Vorrel", {0, 0, 520, 400}, 0x00CC0000u, 0x100u, vrl::PanelFont(1));
    Reader r(t);
    const Header h = ReadHeader(r);
    EXPECT_EQ(h.version, 1);
    EXPECT_EQ(h.signature, 0xFFFF);  // extended
    EXPECT_EQ(h.help, 0u);
    EXPECT_EQ(h.exStyle, 0x100u);
    EXPECT_EQ(h.style, 0x00CC0000u | style::kSetFont);
    EXPECT_EQ(h.items, 0);
    EXPECT_EQ(h.geometry, (std::vector<int>{0, 0, 520, 400}));
    EXPECT_EQ(h.menu + h.cls, u"");  // no menu, default class
    EXPECT_EQ(h.title, u"Pet Information - Vorrel");
    EXPECT_EQ(h.font.pointSize, 9);
    EXPECT_EQ(h.font.weight, 400);
    EXPECT_FALSE(h.font.italic);
    EXPECT_EQ(h.font.charset, 128);  // Shift-JIS
    EXPECT_EQ(h.font.face, u"Meiryo UI");
    EXPECT_EQ(r.Pos(), t.Size());

    DialogTemplate bare;
    bare.Create(u"", {1, 2, 3, 4}, 0x80000000u, 0, vrl::DialogFont{});
    Reader rb(bare);
    EXPECT_EQ(ReadHeader(rb).style, 0x80000000u);
    EXPECT_EQ(rb.Pos(), bare.Size());
}

TEST(DialogTemplate, ControlsAreAlignedCountedAndAlwaysVisibleChildren) {
    DialogTemplate t;
    EXPECT_FALSE(t.AddControl(ControlAtom::kButton, 1, {}, 0, 0, u"x")) << "nothing is added before a header";
    EXPECT_EQ(t.Size(), 0u);
    t.Create(u"abc", {0, 0, 100, 50}, 0, 0, vrl::PanelFont(0));  // odd-length strings
    ASSERT_TRUE(t.AddControl(ControlAtom::kStatic, -1, {6, 6, 42, 12}, 0, 0, u"Filter:"));
    ASSERT_TRUE(t.AddControl(u"SysListView32", 1004, {6, 24, -6, -6}, 0x1u, 0x200u, u""));
    ASSERT_TRUE(t.AddControl(ControlAtom::kComboBox, 1001, {54, 6, 60, 12}, 0x3u, 0,
                             ControlText::Resource(57)));
    EXPECT_EQ(t.ItemCount(), 3);

    Reader r(t);
    EXPECT_EQ(ReadHeader(r).items, 3);
    const Item label = ReadItem(r);
    EXPECT_EQ(label.help, 0u);
    EXPECT_EQ(label.style, style::kChild | style::kVisible);
    EXPECT_EQ(label.id, 0xFFFFFFFFu);
    EXPECT_EQ(label.cls, u"#130");  // 0x0082
    EXPECT_EQ(label.text, u"Filter:");
    EXPECT_EQ(label.extra, 0);
    EXPECT_EQ(label.geometry, (std::vector<int>{6, 6, 42, 12}));

    const Item list = ReadItem(r);
    EXPECT_EQ(list.style, 0x1u | style::kChild | style::kVisible);
    EXPECT_EQ(list.exStyle, 0x200u);
    EXPECT_EQ(list.id, 1004u);
    EXPECT_EQ(list.cls, u"SysListView32");
    EXPECT_EQ(list.text, u"");
    EXPECT_EQ(list.geometry, (std::vector<int>{6, 24, -6, -6}));

    const Item combo = ReadItem(r);
    EXPECT_EQ(combo.cls, u"#133");  // 0x0085
    EXPECT_EQ(combo.text, u"#57");
    EXPECT_EQ(r.Pos(), t.Size());
}

TEST(DialogTemplate, BlockStartsRoundedAndGrowsPerPieceThatDoesNotFit) {
    EXPECT_EQ(DialogTemplate(1023).Capacity(), 1024u);
    EXPECT_EQ(DialogTemplate(1024).Capacity(), 2048u);

    DialogTemplate t;
    t.Create(u"Big", {0, 0, 300, 300}, 0, 0, vrl::PanelFont(0));
    std::vector<std::size_t> capacities{t.Capacity()};
    // Small pieces: each overflow adds exactly 1024 bytes, across several boundaries.
    for (int i = 0; i < 120; ++i) {
        const std::u16string text = u"Label number " + std::u16string(1, u'A' + i % 26);
        ASSERT_TRUE(t.AddControl(ControlAtom::kButton, 100 + i, {0, 0, 10, 10}, 0, 0, text));
        if (t.Capacity() != capacities.back()) capacities.push_back(t.Capacity());
    }
    ASSERT_GE(capacities.size(), 4u);
    for (std::size_t i = 1; i < capacities.size(); ++i) EXPECT_EQ(capacities[i] - capacities[i - 1], 1024u);

    // A long string is one piece: the block grows by its size rounded down plus 1024.
    const std::size_t before = t.Capacity();
    const std::u16string longText(3000, u'x');  // 6002 bytes with its terminator
    ASSERT_TRUE(t.AddControl(ControlAtom::kEdit, 999, {}, 0, 0, longText));
    EXPECT_EQ(t.Capacity(), before + 6144u);

    // What was written before each growth is still there, and the rest of the block is zero.
    Reader r(t);
    ReadHeader(r);
    for (int i = 0; i < 120; ++i) {
        const Item it = ReadItem(r);
        EXPECT_EQ(it.id, static_cast<std::uint32_t>(100 + i));
        EXPECT_EQ(it.text, u"Label number " + std::u16string(1, u'A' + i % 26));
    }
    EXPECT_EQ(ReadItem(r).text, longText);
    const auto* bytes = static_cast<const std::uint8_t*>(t.Data());
    for (std::size_t i = t.Size(); i < t.Capacity(); ++i) ASSERT_EQ(bytes[i], 0) << i;
}

TEST(PanelStyle, FontAndTitleFollowTheLanguage) {
    EXPECT_EQ(vrl::PanelFont(0).face, u"Arial");
    EXPECT_EQ(vrl::PanelFont(0).charset, 0);
    EXPECT_EQ(vrl::PanelFont(1).face, u"Meiryo UI");
    EXPECT_EQ(vrl::PanelTitle(u"ペット情報"), u"ペット情報 - Vorrel");
}

TEST(LangText, PicksByLanguageAndTreatsUnknownLanguagesAsEnglish) {
    const vrl::LangText text{u"Full Log", u"全ログ"};
    vrl::SetLanguageIndex(1);
    EXPECT_EQ(std::u16string(text.Get()), u"全ログ");
    vrl::SetLanguageIndex(7);
    EXPECT_EQ(vrl::LanguageIndex(), 0);
    EXPECT_EQ(std::u16string(text.Get()), u"Full Log");
    vrl::SetLanguageIndex(0);
}

}  // namespace
