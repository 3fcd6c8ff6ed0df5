// vrltables dump FILE: the table as the program reads it, as JSON.

#include "settings/checker/vrltables.h"
#include "settings/checker/vrltables_texts.h"
#include "settings/kcsv.h"
#include "settings/table_check.h"

namespace vrl::vrltables {
namespace {

std::string JsonString(std::u16string_view text) {
    std::string out = "\"";
    for (char c : Utf16ToUtf8(text)) {
        switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    static const char kHex[] = "0123456789abcdef";
                    out += "\\u00";
                    out += kHex[(c >> 4) & 0xF];
                    out += kHex[c & 0xF];
                } else {
                    out += c;
                }
        }
    }
    return out + "\"";
}

std::string JsonList(const std::vector<std::u16string>& texts) {
    std::string out = "[";
    for (std::size_t i = 0; i < texts.size(); ++i) out += (i ? ", " : "") + JsonString(texts[i]);
    return out + "]";
}

// {"options":[{"name":..,"value":..}],"columns":[..],"rows":[[..]]}, UTF-8.
std::string TableToJson(const KcsvFile& table) {
    std::string out = "{\n  \"options\": [";
    for (std::size_t i = 0; i < table.Options().size(); ++i) {
        const auto& [name, value] = table.Options()[i];
        out += std::string(i ? "," : "") + "\n    {\"name\": " + JsonString(name) + ", \"value\": " + JsonString(value) + "}";
    }
    out += table.Options().empty() ? "],\n" : "\n  ],\n";
    out += "  \"columns\": " + JsonList(table.Columns()) + ",\n  \"rows\": [";
    for (std::size_t i = 0; i < table.Rows().size(); ++i) out += std::string(i ? "," : "") + "\n    " + JsonList(table.Rows()[i]);
    out += table.Rows().empty() ? "]\n}\n" : "\n  ]\n}\n";
    return out;
}

}  // namespace

int Dump(const Args& args, const Context& context) {
    if (args.size() != 1) return Usage(context);
    const std::u16string& path = args[0];
    const std::string name = Utf16ToUtf8(path);
    std::string bytes;
    if (!ReadFileBytes(path, bytes)) {
        Print(stderr, SayText(context.language, text::kCannotRead, {name}));
        return 1;
    }
    if (bytes.empty()) {
        Print(stderr, SayText(context.language, text::kEmptyFile, {name}));
        return 1;
    }
    KcsvFile table;
    KcsvSourceLines where;
    const bool complete = table.ParseLines(TokeniseKcsv(Utf8ToUtf16(bytes)), &where);
    if (!complete && where.formatLine == 0) {
        Print(stderr, SayText(context.language, text::kNotKcsv, {name}));
        return 1;
    }
    Print(stdout, TableToJson(table));
    if (!complete) Print(stderr, SayText(context.language, text::kStopsHere, {name, std::to_string(where.stopLine)}));
    return 0;
}

}  // namespace vrl::vrltables
