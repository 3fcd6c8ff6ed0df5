#include "app/tray_menu.h"

#include <utility>

namespace vrl::tray_menu {
namespace {

// --- Texts of the tray menu, English and Japanese side by side -------------------------------

const LangText kShowFullLog{u"Show &Full Log", u"全ログを表示 (&F)"};
const LangText kShowExtractedLog{u"Show Extracted &Log", u"抽出ログを表示 (&L)"};
const LangText kShowItemInfo{u"Show &Item Info Panel", u"アイテム情報を表示 (&P)"};
const LangText kShowQuickSearch{u"Show &Quick Search", u"クイックサーチを表示 (&Q)"};
const LangText kShowMusicPanel{u"Show &Music Control Panel", u"音楽コントロールパネルを表示 (&M)"};
const LangText kShowVstEditor{u"Show &VSTi Embed Editor", u"VSTi内蔵エディタを表示 (&V)"};
const LangText kShowPetInfo{u"Show &Pet Info Panel", u"ペット情報を表示 (&P)"};
const LangText kWindowPlacement{u"&Window Placement", u"ウィンドウ配置 (&W)"};
const LangText kScreenshot{u"&Screenshot", u"スクリーンショットを撮る (&S)"};
const LangText kConfig{u"&Config...", u"設定(&C)"};
const LangText kAbout{u"&About Vorrel", u"バージョン情報 (&A)"};
const LangText kExitPattern{u"E&xit %s", u"%sを終了 (&X)"};

const LangText kPlacementSave{u"&Save", u"記憶 (&S)"};
const LangText kPlacementRestore{u"&Restore", u"復元 (&R)"};
const LangText kPlacementReset{u"R&eset", u"リセット (&E)"};

const LangText kAutoDetectPattern{u"Auto &detect [%s]", u"自動判定 [%s] (&D)"};

const LangText kRangeNames[kScreenshotRangeCount] = {
    {u"Auto detect (&D)", u"自動判定 (&D)"},
    {u"Full + Window Frame (&W)", u"全体+ウィンドウ枠 (&W)"},
    {u"Full (&F)", u"全体 (&F)"},
    {u"Character info (&C)", u"キャラクター情報 (&C)"},
    {u"Inventory (&I)", u"所持品 (&I)"},
    {u"Wear (&W)", u"装備 (&W)"},
    {u"Feat (&G)", u"フィート (&G)"},
    {u"Magic (&M)", u"魔法 (&M)"},
    {u"Ability (&A)", u"技能 (&A)"},
    {u"Treasure map (&T)", u"宝の地図 (&T)"},
    {u"Material (&E)", u"マテリアル (&E)"},
    {u"Dialogue (&L)", u"会話 (&L)"},
};

// ----------------------------------------------------------------------------------------------

MenuEntry Command(unsigned id, std::u16string text) { return {MenuEntry::Kind::Command, id, std::move(text)}; }
MenuEntry Command(unsigned id, const LangText& text, int language) { return Command(id, text.Get(language)); }
MenuEntry Separator() { return {MenuEntry::Kind::Separator, 0, {}}; }

// The one "%s" of a pattern replaced by `value`.
std::u16string FillIn(std::u16string_view pattern, std::u16string_view value) {
    std::u16string text(pattern);
    const std::size_t at = text.find(u"%s");
    if (at != std::u16string::npos) text.replace(at, 2, value);
    return text;
}

bool IsWhiteSpace(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == u'\v' || c == u'\f' || c == u'\u3000';
}

}  // namespace

const LangText& ScreenshotRangeName(int range) {
    if (range < 0 || range >= kScreenshotRangeCount) range = 0;
    return kRangeNames[range];
}

std::u16string ShortRangeName(std::u16string_view name) {
    const std::size_t paren = name.rfind(u'(');
    if (paren != std::u16string_view::npos && paren > 0) name = name.substr(0, paren);
    while (!name.empty() && IsWhiteSpace(name.back())) name.remove_suffix(1);
    while (!name.empty() && name.back() == u'&') name.remove_suffix(1);
    while (!name.empty() && name.front() == u'&') name.remove_prefix(1);
    return std::u16string(name);
}

std::u16string AutoDetectText(int screenSlot, int language) {
    const std::u16string shortName = ShortRangeName(ScreenshotRangeName(screenSlot).Get(language));
    return FillIn(kAutoDetectPattern.Get(language), shortName);
}

std::u16string ExitText(int language) { return FillIn(kExitPattern.Get(language), kAppName); }

MenuEntries PlacementMenu(int language) {
    return {Command(kCmdPlacementSave, kPlacementSave, language),
            Command(kCmdPlacementRestore, kPlacementRestore, language), Separator(),
            Command(kCmdPlacementReset, kPlacementReset, language)};
}

MenuEntries ScreenshotMenu(int screenSlot, int language) {
    MenuEntries menu;
    for (int range = 1; range < kScreenshotRangeCount; ++range) {
        if (range == 3) menu.push_back(Separator());
        menu.push_back(Command(kCmdScreenshotFirst + static_cast<unsigned>(range), kRangeNames[range], language));
    }
    menu.push_back(Separator());
    menu.push_back(Command(kCmdScreenshotFirst, AutoDetectText(screenSlot, language)));
    return menu;
}

TrayMenuModel BuildTrayMenu(const AppSettings& settings, std::u16string_view statusStatic2, int screenSlot,
                            int language) {
    TrayMenuModel model;
    model.placement = PlacementMenu(language);
    model.screenshot = ScreenshotMenu(screenSlot, language);

    MenuEntries& menu = model.main;
    auto add = [&](bool present, unsigned id, const LangText& text) {
        if (present) menu.push_back(Command(id, text, language));
    };
    add(settings.enLogExtender && settings.enLogExtender_FullLog, kCmdShowFullLog, kShowFullLog);
    add(settings.enLogExtender, kCmdShowExtractedLog, kShowExtractedLog);
    add(settings.enItemInfo, kCmdShowItemInfo, kShowItemInfo);
    add(settings.enQuickSearch, kCmdShowQuickSearch, kShowQuickSearch);
    add(settings.enMusicExtender, kCmdShowMusicPanel, kShowMusicPanel);
    add(settings.enMusicExtender && VstEditorAvailable(statusStatic2), kCmdShowVstEditor, kShowVstEditor);
    add(settings.enPetInfo, kCmdShowPetInfo, kShowPetInfo);
    menu.push_back({MenuEntry::Kind::PlacementSubmenu, 0, kWindowPlacement.Get(language)});
    if (settings.enScreenshot) menu.push_back({MenuEntry::Kind::ScreenshotSubmenu, 0, kScreenshot.Get(language)});
    menu.push_back(Separator());
    add(true, kCmdStartSettingsEditor, kConfig);
    add(true, kCmdAbout, kAbout);
    menu.push_back(Separator());
    menu.push_back(Command(kCmdExit, ExitText(language)));
    return model;
}

}  // namespace vrl::tray_menu
