#include "settings/ini_profile.h"

#include "settings/kcsv.h"

namespace vrl {
namespace {

bool IsSpace(char16_t c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); }

std::u16string_view Trimmed(std::u16string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    return text;
}

std::u16string DecodeUtf16Le(std::string_view bytes) {
    std::u16string out;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        out.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                            static_cast<unsigned char>(bytes[i + 1]) << 8));
    }
    return out;
}

}  // namespace

const IniSection* IniText::FindSection(std::u16string_view name) const {
    const std::u16string lower = AsciiLower(name);
    for (const IniSection& section : sections) {
        if (AsciiLower(section.name) == lower) return &section;
    }
    return nullptr;
}

const IniEntry* IniText::FindEntry(std::u16string_view section, std::u16string_view key) const {
    const IniSection* found = FindSection(section);
    if (found == nullptr) return nullptr;
    const std::u16string lower = AsciiLower(key);
    for (const IniEntry& entry : found->entries) {
        if (AsciiLower(entry.name) == lower) return &entry;
    }
    return nullptr;
}

IniText ParseIniBytes(std::string_view bytes, AnsiDecoder ansi) {
    IniText ini;
    std::u16string text;
    if (bytes.substr(0, 2) == "\xFF\xFE") {
        ini.encoding = IniText::Encoding::Utf16;
        text = DecodeUtf16Le(bytes.substr(2));
    } else {
        if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
            // Read as code-page text the mark is three characters; one stands for them here.
            ini.encoding = IniText::Encoding::Utf8Marked;
            text = u"\uFEFF";
            bytes.remove_prefix(3);
        }
        text += ansi(bytes);
    }
    std::u16string_view rest = text;
    for (unsigned number = 1; !rest.empty(); ++number) {
        const std::size_t end = rest.find(u'\n');
        const std::u16string_view line = Trimmed(rest.substr(0, end));
        rest = end == std::u16string_view::npos ? std::u16string_view() : rest.substr(end + 1);
        if (line.empty() || line.front() == u';') continue;
        const std::size_t close = line.rfind(u']');
        if (line.front() == u'[' && close != std::u16string_view::npos) {
            ini.sections.push_back({std::u16string(Trimmed(line.substr(1, close - 1))), number, {}});
            continue;
        }
        IniEntry entry;
        entry.line = number;
        const std::size_t equals = line.find(u'=');
        entry.hasEquals = equals != std::u16string_view::npos;
        entry.name = Trimmed(line.substr(0, equals));
        if (entry.hasEquals) entry.value = Trimmed(line.substr(equals + 1));
        (ini.sections.empty() ? ini.beforeSections : ini.sections.back().entries).push_back(std::move(entry));
    }
    return ini;
}

std::u16string ProfileValue(const IniEntry& entry) {
    const std::u16string& value = entry.value;
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front()) {
        return value.substr(1, value.size() - 2);
    }
    return value;
}

std::u16string IniTextSource::ReadString(std::u16string_view section, std::u16string_view key) {
    const IniEntry* entry = ini_.FindEntry(section, key);
    std::u16string value = entry ? ProfileValue(*entry) : std::u16string();
    if (value.size() > AppSettings::kMaxStringLength) value.resize(AppSettings::kMaxStringLength);
    return value;
}

int IniTextSource::ReadInt(std::u16string_view section, std::u16string_view key, int fallback) {
    const std::u16string value = ReadString(section, key);
    return value.empty() ? fallback : vrl::ReadInt(value);
}

}  // namespace vrl
