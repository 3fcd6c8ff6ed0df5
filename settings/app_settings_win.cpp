#include "settings/app_settings_win.h"

#include "ui/wide_win.h"

namespace vrl {
namespace {

class IniFileSource : public ProfileSource {
public:
    explicit IniFileSource(const std::u16string& path) : path_(path) {}

    std::u16string ReadString(std::u16string_view section, std::u16string_view key) override {
        wchar_t buffer[AppSettings::kMaxStringLength + 1] = {};
        const std::u16string s(section), k(key);
        const DWORD length = ::GetPrivateProfileStringW(W(s), W(k), L"", buffer, ARRAYSIZE(buffer), W(path_));
        return std::u16string(U(buffer), length);
    }

    int ReadInt(std::u16string_view section, std::u16string_view key, int fallback) override {
        const std::u16string s(section), k(key);
        return static_cast<int>(::GetPrivateProfileIntW(W(s), W(k), fallback, W(path_)));
    }

private:
    std::u16string path_;
};

}  // namespace

void LoadAppSettings(AppSettings& settings) {
    settings.iLanguage = -1;
    IniFileSource source(settings.filePath);
    settings.Load(source);
}

}  // namespace vrl
