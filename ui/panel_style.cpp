#include "ui/panel_style.h"

namespace vrl {

DialogFont PanelFont(int language) {
    DialogFont font;
    const bool japanese = language == 1;
    font.face = japanese ? u"Meiryo UI" : u"Arial";
    font.pointSize = 9;
    font.weight = 400;
    font.italic = false;
    font.charset = japanese ? kShiftJisCharset : kAnsiCharset;
    return font;
}

std::u16string PanelTitle(std::u16string_view name) {
    std::u16string title(name);
    title += u" - ";
    title += kAppName;
    return title;
}

}  // namespace vrl
