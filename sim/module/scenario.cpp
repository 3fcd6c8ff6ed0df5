#include "sim/module/scenario.h"

#include "music/music_request.h"
#include "settings/kcsv.h"

#include <cctype>
#include <cstdint>
#include <iterator>

namespace vrl::sim {
namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string Trim(const std::string& s) {
    std::size_t begin = 0;
    std::size_t end = s.size();
    while (begin < end && IsSpace(s[begin])) ++begin;
    while (end > begin && IsSpace(s[end - 1])) --end;
    return s.substr(begin, end - begin);
}

// The first word and the trimmed rest.
void SplitFirst(const std::string& s, std::string* word, std::string* rest) {
    std::size_t end = 0;
    while (end < s.size() && !IsSpace(s[end])) ++end;
    *word = s.substr(0, end);
    *rest = Trim(s.substr(end));
}

std::vector<std::string> Words(const std::string& s) {
    std::vector<std::string> words;
    std::string rest = Trim(s);
    while (!rest.empty()) {
        std::string word;
        SplitFirst(rest, &word, &rest);
        words.push_back(word);
    }
    return words;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool ParseHexNumber(const std::string& token, std::int64_t* value) {
    std::string digits = token;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) digits = digits.substr(2);
    if (digits.empty() || digits.size() > 8) return false;
    std::int64_t v = 0;
    for (char c : digits) {
        const int d = HexDigit(c);
        if (d < 0) return false;
        v = v * 16 + d;
    }
    *value = v;
    return true;
}

struct Shape {
    const char* name;
    Op op;
    enum Args { kNone, kText, kHex, kNumber, kTwoNumbers, kMessage, kTarget, kCopyData, kItem, kPet, kUpToTwo, kMusic } args;
};

constexpr Shape kShapes[] = {
    {"log", Op::kLog, Shape::kText},
    {"log0", Op::kLog0, Shape::kText},
    {"logbytes", Op::kLogBytes, Shape::kHex},
    {"copydata", Op::kCopyData, Shape::kCopyData},
    {"item", Op::kItem, Shape::kItem},
    {"music", Op::kMusic, Shape::kMusic},
    {"reload", Op::kReload, Shape::kNumber},
    {"request", Op::kRequest, Shape::kMessage},
    {"command", Op::kCommand, Shape::kNumber},
    {"sendcommand", Op::kSendCommand, Shape::kNumber},
    {"hotkey", Op::kHotkey, Shape::kNumber},
    {"slot", Op::kSlot, Shape::kTwoNumbers},
    {"readslot", Op::kReadSlot, Shape::kNumber},
    {"static1", Op::kStatic1, Shape::kText},
    {"word", Op::kWord, Shape::kNone},
    {"screen", Op::kScreen, Shape::kNumber},
    {"open36", Op::kOpen36, Shape::kUpToTwo},
    {"showmap", Op::kShowMap, Shape::kNumber},
    {"wait", Op::kWait, Shape::kNumber},
    {"waitfor", Op::kWaitFor, Shape::kTarget},
    {"close", Op::kClose, Shape::kNone},
    {"closemain", Op::kCloseMain, Shape::kNone},
    {"exit", Op::kExit, Shape::kNone},
    {"pet", Op::kPet, Shape::kPet},
    {"petsend", Op::kPetSend, Shape::kUpToTwo},
    {"peticons", Op::kPetIcons, Shape::kUpToTwo},
};

// "12" or "12/30": one or two numbers into `out`.
bool ParseNumbers(const std::string& token, std::size_t expected, std::vector<std::int32_t>* out) {
    std::string rest = token;
    for (std::size_t i = 0; i < expected; ++i) {
        const std::size_t slash = i + 1 < expected ? rest.find('/') : std::string::npos;
        if (i + 1 < expected && slash == std::string::npos) return false;
        std::int64_t value = 0;
        if (!ParseNumber(rest.substr(0, slash), &value) || value < INT32_MIN || value > INT32_MAX) return false;
        out->push_back(static_cast<std::int32_t>(value));
        rest = slash == std::string::npos ? std::string() : rest.substr(slash + 1);
    }
    return true;
}

// NAME (a word, or quoted text with escapes) STATUS AREA LEVEL XP/NEXT HP/MAX MP/MAX ST/MAX.
std::string ParsePet(const std::string& rest, Command* command) {
    std::string name = rest;
    std::string numbers;
    if (!rest.empty() && rest[0] == '"') {
        std::size_t close = 1;
        while (close < rest.size() && (rest[close] != '"' || rest[close - 1] == '\\')) ++close;
        if (close >= rest.size()) return "unclosed name";
        name = rest.substr(0, close + 1);
        numbers = rest.substr(close + 1);
    } else {
        SplitFirst(rest, &name, &numbers);
    }
    if (!UnescapeText(name, &command->text)) return "bad escape in name";
    const std::vector<std::string> words = Words(numbers);
    static const std::size_t kWidths[] = {1, 1, 1, 2, 2, 2, 2};
    if (words.size() != std::size(kWidths)) return "expects NAME STATUS AREA LEVEL XP/NEXT HP/MAX MP/MAX ST/MAX";
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!ParseNumbers(words[i], kWidths[i], &command->numbers)) return "bad number " + words[i];
    }
    return "";
}

// The record of a music request, with the path given in UTF-8.
std::vector<unsigned char> MusicRecord(const std::string& utf8Path, const std::int64_t (&numbers)[6]) {
    vrl::MusicRequest request;
    request.path = vrl::Utf8ToUtf16(utf8Path);
    request.month = static_cast<int>(numbers[1]);
    request.day = static_cast<int>(numbers[2]);
    request.hour = static_cast<int>(numbers[3]);
    request.mapObjectId = static_cast<int>(numbers[4]);
    request.playCount = static_cast<int>(numbers[5]);
    const std::string bytes = vrl::MusicRequestBytes(request);
    return std::vector<unsigned char>(bytes.begin(), bytes.end());
}

ParsedLine Error(const std::string& message) {
    ParsedLine parsed;
    parsed.kind = ParsedLine::Kind::kError;
    parsed.error = message;
    return parsed;
}

// "-" for none, else "ID:VALUE" pairs separated by commas, at most one per slot.
bool ParseEnchantments(const std::string& text, ItemInfoRecord* item) {
    if (text == "-") return true;
    std::size_t slot = 0;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find(',', start);
        if (end == std::string::npos) end = text.size();
        const std::string pair = text.substr(start, end - start);
        const std::size_t colon = pair.find(':');
        std::int64_t id = 0;
        std::int64_t value = 0;
        if (slot == ItemInfoRecord::kEnchantmentSlots || colon == std::string::npos ||
            !ParseNumber(pair.substr(0, colon), &id) || !ParseNumber(pair.substr(colon + 1), &value)) {
            return false;
        }
        item->enchantments[slot++] = {static_cast<std::int32_t>(id), static_cast<std::int32_t>(value)};
        start = end + 1;
    }
    return true;
}

// item CHIP ITEMID BITS ENCHANTS NAME
std::string ParseItem(const std::string& rest, Command* command) {
    std::string fields[4];
    std::string name = rest;
    for (std::string& field : fields) SplitFirst(name, &field, &name);
    std::int64_t chip = 0;
    std::int64_t id = 0;
    std::int64_t bits = 0;
    if (!ParseNumber(fields[0], &chip) || !ParseNumber(fields[1], &id) || !ParseNumber(fields[2], &bits)) {
        return "expects chip, item id and property bits as numbers";
    }
    command->item.chipId = static_cast<std::int32_t>(chip);
    command->item.itemId = static_cast<std::int32_t>(id);
    command->item.properties = static_cast<std::uint32_t>(bits);
    if (!ParseEnchantments(fields[3], &command->item)) return "expects - or up to 15 ID:VALUE pairs";
    return UnescapeText(name, &command->text) ? "" : "bad escape in name";
}

// Reads the arguments of `shape` from `rest` into `command`; an error text, or empty.
std::string ParseArguments(Shape::Args args, const std::string& rest, Command* command) {
    const std::vector<std::string> words = Words(rest);
    switch (args) {
        case Shape::kNone:
            return words.empty() ? "" : "takes no arguments";
        case Shape::kText:
            return UnescapeText(rest, &command->text) ? "" : "bad escape in text";
        case Shape::kHex:
            return ParseHexBytes(rest, &command->bytes) ? "" : "bad hex bytes";
        case Shape::kNumber:
            return words.size() == 1 && ParseNumber(words[0], &command->first) ? "" : "expects one number";
        case Shape::kTwoNumbers:
            return words.size() == 2 && ParseNumber(words[0], &command->first) &&
                           ParseNumber(words[1], &command->second)
                       ? ""
                       : "expects two numbers";
        case Shape::kMessage:
            if (words.empty() || words.size() > 2 || !ParseHexNumber(words[0], &command->first)) {
                return "expects a message number in hex and an optional wParam";
            }
            return words.size() == 1 || ParseNumber(words[1], &command->second) ? "" : "bad wParam";
        case Shape::kTarget:
            command->target = words.size() == 1 ? ParseTarget(words[0]) : Target::kNone;
            return command->target != Target::kNone ? "" : "unknown window";
        case Shape::kCopyData: {
            if (words.size() < 2) return "expects a window, a code and optional hex bytes";
            command->target = ParseTarget(words[0]);
            if (command->target == Target::kNone) return "unknown window";
            if (!ParseNumber(words[1], &command->first)) return "bad code";
            std::string hex;
            for (std::size_t i = 2; i < words.size(); ++i) hex += words[i];
            return ParseHexBytes(hex, &command->bytes) ? "" : "bad hex bytes";
        }
        case Shape::kItem:
            return ParseItem(rest, command);
        case Shape::kPet:
            return ParsePet(rest, command);
        case Shape::kUpToTwo:
            // Missing numbers are -1: "as many as there are".
            command->first = command->second = -1;
            if (words.size() > 2) return "expects at most two numbers";
            for (std::size_t i = 0; i < words.size(); ++i) {
                if (!ParseNumber(words[i], i == 0 ? &command->first : &command->second)) return "bad number";
            }
            return "";
        case Shape::kMusic: {
            std::int64_t numbers[6] = {};
            std::string path = Trim(rest);
            for (std::int64_t& number : numbers) {
                std::string word;
                SplitFirst(path, &word, &path);
                if (!ParseNumber(word, &number)) return "expects code, month, day, hour, map object, play count and a path";
            }
            if (path.empty()) return "expects a path";
            command->text = path;  // as written: backslashes are the path's own
            command->first = numbers[0];
            command->bytes = MusicRecord(command->text, numbers);
            return "";
        }
    }
    return "unknown argument shape";
}

}  // namespace

bool ParseNumber(const std::string& token, std::int64_t* value) {
    if (token.empty()) return false;
    const bool negative = token[0] == '-';
    const std::string body = negative ? token.substr(1) : token;
    std::int64_t v = 0;
    if (body.size() > 2 && body[0] == '0' && (body[1] == 'x' || body[1] == 'X')) {
        if (!ParseHexNumber(body, &v)) return false;
    } else {
        if (body.empty() || body.size() > 12) return false;
        for (char c : body) {
            if (c < '0' || c > '9') return false;
            v = v * 10 + (c - '0');
        }
    }
    *value = negative ? -v : v;
    return true;
}

bool ParseHexBytes(const std::string& text, std::vector<unsigned char>* bytes) {
    std::vector<unsigned char> result;
    int high = -1;
    for (char c : text) {
        if (IsSpace(c)) {
            if (high >= 0) return false;  // a byte split by a space is a typing error
            continue;
        }
        const int d = HexDigit(c);
        if (d < 0) return false;
        if (high < 0) {
            high = d;
        } else {
            result.push_back(static_cast<unsigned char>(high * 16 + d));
            high = -1;
        }
    }
    if (high >= 0) return false;
    *bytes = std::move(result);
    return true;
}

bool UnescapeText(const std::string& text, std::string* out) {
    std::string body = text;
    if (body.size() >= 2 && body.front() == '"' && body.back() == '"') body = body.substr(1, body.size() - 2);
    std::string result;
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (body[i] != '\\') {
            result += body[i];
            continue;
        }
        if (++i == body.size()) return false;
        switch (body[i]) {
            case '\\': result += '\\'; break;
            case '"': result += '"'; break;
            case 'r': result += '\r'; break;
            case 'n': result += '\n'; break;
            case 't': result += '\t'; break;
            case 'x': {
                const int hi = i + 1 < body.size() ? HexDigit(body[i + 1]) : -1;
                const int lo = i + 2 < body.size() ? HexDigit(body[i + 2]) : -1;
                if (hi < 0 || lo < 0) return false;
                result += static_cast<char>(hi * 16 + lo);
                i += 2;
                break;
            }
            default: return false;
        }
    }
    *out = std::move(result);
    return true;
}

Target ParseTarget(const std::string& word) {
    for (Target t : {Target::kFullLog, Target::kExtractedLog, Target::kMusic, Target::kPet, Target::kItem,
                     Target::kTreasureMap}) {
        if (word == TargetName(t)) return t;
    }
    return Target::kNone;
}

const char* TargetName(Target target) {
    switch (target) {
        case Target::kFullLog: return "fulllog";
        case Target::kExtractedLog: return "extractedlog";
        case Target::kMusic: return "music";
        case Target::kPet: return "pet";
        case Target::kItem: return "item";
        case Target::kTreasureMap: return "map";
        case Target::kNone: break;
    }
    return "none";
}

ParsedLine ParseScenarioLine(const std::string& line) {
    const std::string trimmed = Trim(line);
    if (trimmed.empty() || trimmed[0] == '#') return ParsedLine{};
    std::string name;
    std::string rest;
    SplitFirst(trimmed, &name, &rest);
    for (const Shape& shape : kShapes) {
        if (name != shape.name) continue;
        ParsedLine parsed;
        parsed.kind = ParsedLine::Kind::kCommand;
        parsed.command.op = shape.op;
        const std::string error = ParseArguments(shape.args, rest, &parsed.command);
        return error.empty() ? parsed : Error(name + ": " + error);
    }
    return Error("unknown command " + name);
}

std::vector<std::string> SplitScenarioLines(const std::string& content) {
    std::string text = content;
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text = text.substr(3);
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
        start = end + 1;
    }
    return lines;
}

}  // namespace vrl::sim
