#include "settings/ini_check.h"

#include "settings/install_check_texts.h"
#include "settings/kcsv.h"
#include "settings/table_check_texts.h"

#include <algorithm>
#include <map>

namespace vrl {
namespace {

namespace text = install_text;

bool IsWholeNumber(std::u16string_view value) {
    if (!value.empty() && (value.front() == u'+' || value.front() == u'-')) value.remove_prefix(1);
    return !value.empty() && value.find_first_not_of(u"0123456789") == std::u16string_view::npos;
}

std::string Number(int value) { return std::to_string(value); }

class IniChecker {
public:
    IniChecker(IniCheck& check, int language) : check_(check), language_(language) {}

    void CheckEncoding(std::string_view bytes) {
        const IniText& ini = check_.ini;
        if (ini.encoding == IniText::Encoding::Utf8Marked) {
            const bool hidden = !ini.beforeSections.empty() && ini.beforeSections.front().line == 1 &&
                                ini.beforeSections.front().name.rfind(u"\uFEFF[", 0) == 0;
            if (hidden) Report(1, text::kUtf8Mark, {});
            utf8MarkHidesSection_ = hidden;
            return;
        }
        if (ini.encoding != IniText::Encoding::Ansi) return;
        const auto high = std::find_if(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
        if (high == bytes.end() || Utf8ToUtf16(bytes).find(u'\uFFFD') != std::u16string::npos) return;
        Report(static_cast<unsigned>(std::count(bytes.begin(), high, '\n')) + 1, text::kUtf8Text, {});
    }

    void CheckSections() {
        const IniText& ini = check_.ini;
        for (const IniEntry& entry : ini.beforeSections) {
            if (entry.hasEquals && AppSettings::FindKey(entry.name) && !utf8MarkHidesSection_) {
                Report(entry.line, text::kBeforeSection, {Utf16ToUtf8(entry.name)});
            }
        }
        const IniSection* read = ini.FindSection(AppSettings::kSection);
        if (read == nullptr) {
            if (!utf8MarkHidesSection_) Report(1, text::kNoSection, {});
            for (const IniSection& section : ini.sections) {
                if (!NearestName(section.name, {AppSettings::kSection}).empty()) {
                    Report(section.line, text::kSectionNotRead, {Utf16ToUtf8(section.name)});
                }
            }
            return;
        }
        for (const IniSection& section : ini.sections) {
            if (&section != read && AsciiLower(section.name) == AsciiLower(AppSettings::kSection)) {
                Report(section.line, text::kSectionAgain, {Number(static_cast<int>(read->line))});
            }
        }
        CheckKeys(*read);
    }

private:
    void CheckKeys(const IniSection& section) {
        std::vector<std::u16string> known;
        for (const AppSettings::Entry& entry : AppSettings::KeyTable()) known.emplace_back(entry.name);
        std::map<std::u16string, unsigned> firstLine;
        for (const IniEntry& entry : section.entries) {
            const std::string name = Utf16ToUtf8(entry.name);
            const auto [first, isFirst] = firstLine.emplace(AsciiLower(entry.name), entry.line);
            if (!entry.hasEquals) {
                Report(entry.line, text::kNoEquals, {name});
            } else if (!isFirst) {
                Report(entry.line, text::kKeyAgain, {name, Number(static_cast<int>(first->second))});
            } else if (const AppSettings::Entry* key = AppSettings::FindKey(entry.name)) {
                CheckValue(*key, entry);
            } else {
                ReportUnknownKey(section, entry, NearestName(entry.name, known));
            }
        }
        if (check_.settings.wstrMorva.empty()) {
            const IniEntry* game = check_.ini.FindEntry(AppSettings::kSection, u"wstrMorva");
            Report(game ? game->line : section.line, text::kNoGame, {});
        }
    }

    void ReportUnknownKey(const IniSection& section, const IniEntry& entry, const std::u16string& nearest) {
        std::string message = SayText(language_, text::kUnknownKey, {Utf16ToUtf8(entry.name)});
        if (!nearest.empty()) {
            const AppSettings::Entry* meant = AppSettings::FindKey(nearest);
            const bool meantIsSet = check_.ini.FindEntry(section.name, nearest) != nullptr;
            if (!meantIsSet && meant->type == AppSettings::KeyType::Integer) {
                const std::string stays = SayText(language_, text::kStaysAt,
                                                  {Utf16ToUtf8(nearest), Number(check_.settings.*meant->integer)});
                message = SayText(language_, check_text::kThen, {message, stays});
            }
            message = SayText(language_, check_text::kDidYouMean, {message, Utf16ToUtf8(nearest)});
        }
        check_.problems.push_back({entry.line, message});
    }

    void CheckValue(const AppSettings::Entry& key, const IniEntry& entry) {
        const std::string name = Utf16ToUtf8(key.name);
        const std::u16string value = ProfileValue(entry);
        if (key.type == AppSettings::KeyType::String) {
            if (value.size() > AppSettings::kMaxStringLength) {
                Report(entry.line, text::kTooLong, {name, Number(static_cast<int>(value.size()))});
            }
            return;
        }
        const int read = check_.settings.*key.integer;
        if (value.empty()) {
            Report(entry.line, text::kNoValue, {name, Number(read)});
            return;
        }
        if (!IsWholeNumber(value)) Report(entry.line, text::kNotWholeNumber, {name, Utf16ToUtf8(value), Number(read)});
        if (read >= key.low && read <= key.high) return;
        LangText consequence = text::kUsedAsItIs;
        for (const text::RangeConsequence& known : text::kRangeConsequences) {
            if (known.key == key.name) consequence = known.consequence;
        }
        Report(entry.line, text::kOutOfRange,
               {name, Number(read), Number(key.low), Number(key.high), SayText(language_, consequence, {})});
    }

    void Report(unsigned line, const LangText& message, std::initializer_list<std::string> args) {
        check_.problems.push_back({line, SayText(language_, message, args)});
    }

    IniCheck& check_;
    int language_;
    bool utf8MarkHidesSection_ = false;
};

}  // namespace

IniCheck CheckIniText(std::string_view bytes, AnsiDecoder ansi, int language) {
    IniCheck check;
    check.ini = ParseIniBytes(bytes, ansi);
    IniTextSource source(check.ini);
    check.settings.Load(source);
    IniChecker checker(check, language);
    checker.CheckEncoding(bytes);
    checker.CheckSections();
    std::stable_sort(check.problems.begin(), check.problems.end(),
                     [](const TableProblem& a, const TableProblem& b) { return a.line < b.line; });
    return check;
}

}  // namespace vrl
