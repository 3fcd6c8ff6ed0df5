#pragma once
// Vrl.ini read the way the Windows profile functions read it, for the players' checker: which
// section and which line a value comes from, and what the program then holds. The rules of those
// functions: a file that begins with the UTF-16 little-endian mark is Unicode, any other file is
// text in the system's code page (a UTF-8 mark is three characters like any others, so a section
// header behind it is not a header); section and key names compare without regard to case; names
// and values lose their surrounding white space, a value its enclosing pair of quotes; the first
// section of a name and the first key of a name in it are the ones read.

#include "settings/app_settings.h"

#include <string>
#include <string_view>
#include <vector>

namespace vrl {

struct IniEntry {
    std::u16string name;
    std::u16string value;  // trimmed, quotes kept
    bool hasEquals = false;
    unsigned line = 0;     // physical line, from 1
};

struct IniSection {
    std::u16string name;
    unsigned line = 0;
    std::vector<IniEntry> entries;
};

struct IniText {
    enum class Encoding { Ansi, Utf16, Utf8Marked };
    Encoding encoding = Encoding::Ansi;
    std::vector<IniEntry> beforeSections;  // lines ahead of any section header: never read
    std::vector<IniSection> sections;      // in file order, a repeated name included

    // The section the profile functions read under that name, or null.
    const IniSection* FindSection(std::u16string_view name) const;
    // The key they read in that section, or null.
    const IniEntry* FindEntry(std::u16string_view section, std::u16string_view key) const;
};

// Text in the system's code page to UTF-16 (the Windows code page where the checker runs there).
using AnsiDecoder = std::u16string (*)(std::string_view bytes);

IniText ParseIniBytes(std::string_view bytes, AnsiDecoder ansi);

// The value as the profile string function hands it out: without its enclosing pair of quotes.
std::u16string ProfileValue(const IniEntry& entry);

// The profile functions over a parsed file, for AppSettings::Load.
class IniTextSource : public ProfileSource {
public:
    explicit IniTextSource(const IniText& ini) : ini_(ini) {}
    std::u16string ReadString(std::u16string_view section, std::u16string_view key) override;
    int ReadInt(std::u16string_view section, std::u16string_view key, int fallback) override;

private:
    const IniText& ini_;
};

}  // namespace vrl
