#include "app/error_box_win.h"

#include "app/frame_texts.h"
#include "ui/wide_win.h"

namespace vrl {
namespace {

constexpr size_t kMaxMessage = 1023;

std::u16string Bounded(const std::u16string& text) { return text.substr(0, kMaxMessage); }

}  // namespace

void FatalError(const std::u16string& text) {
    ::MessageBoxW(nullptr, W(Bounded(text)), W(frame_texts::kErrorCaption.Get()), MB_OK | MB_ICONERROR);
    ::ExitProcess(0);
}

void WarningBox(const std::u16string& text) {
    ::MessageBoxW(nullptr, W(Bounded(text)), W(frame_texts::kErrorCaption.Get()), MB_OK | MB_ICONWARNING);
}

}  // namespace vrl
