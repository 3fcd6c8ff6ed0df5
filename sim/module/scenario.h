#pragma once
// The scenario language of the module stand-in: one command per line, read from a UTF-8 text
// file and played against the companion from inside the game process. Parsing is portable; the
// commands are carried out by scenario_runner_win.cpp. The language is described in README.md.

#include <cstdint>
#include <string>
#include <vector>

#include "panels/item_record.h"

namespace vrl::sim {

enum class Op {
    kLog,          // log TEXT: WM_COPYDATA of TEXT (ANSI code page, no NUL) to the full log
    kLog0,         // log0 TEXT: the same with the NUL counted in cbData
    kLogBytes,     // logbytes HEX: raw bytes to the full log
    kCopyData,     // copydata TARGET DWDATA [HEX]
    kItem,         // item CHIP ITEMID BITS ENCHANTS NAME: one item record to the item panel
    kMusic,        // music CODE MONTH DAY HOUR MAPOBJ PLAYCOUNT PATH: a music request record
    kReload,       // reload BITS: OR into slot 8
    kRequest,      // request MSG [WPARAM]: SendMessage to the frame (MSG in hex: 9000, 9001, a000)
    kCommand,      // command ID: PostMessage WM_COMMAND to the frame
    kSendCommand,  // sendcommand ID: SendMessage WM_COMMAND to the frame, result recorded
    kHotkey,       // hotkey ID: WM_HOTKEY to the treasure map window
    kSlot,         // slot INDEX VALUE: write a frame slot (byte index)
    kReadSlot,     // readslot INDEX
    kStatic1,      // static1 TEXT: text of the status static in slot 12
    kWord,         // word: the text of the quick search word box in slot 16
    kScreen,       // screen N: slot 4
    kOpen36,       // open36 [WIDTH HEIGHT]: the game opens its further window, published in slot 36
    kShowMap,      // showmap 1|0: the game shows or hides its treasure map
    kWait,         // wait MS
    kWaitFor,      // waitfor TARGET
    kClose,        // close: WM_CLOSE to the game window
    kCloseMain,    // closemain: destroy the game's main window only
    kExit,         // exit: end the game process
    kPet,          // pet NAME STATUS AREA LEVEL XP/NEXT HP/MAX MP/MAX ST/MAX: one more pet slot
    kPetSend,      // petsend [COUNT [BYTES]]: the slots so far in one WM_COPYDATA to the pet panel
    kPetIcons,     // peticons [CELLS]: the strip of pet pictures, written beside the module
};

// Companion windows the module reaches without a published handle (the item panel is in slot 28).
enum class Target { kNone, kFullLog, kExtractedLog, kMusic, kPet, kItem, kTreasureMap };

struct Command {
    Op op = Op::kWait;
    Target target = Target::kNone;
    std::string text;                  // log, log0, static1: UTF-8 after escapes
    std::vector<unsigned char> bytes;  // logbytes, copydata, music (the record)
    std::int64_t first = 0;            // message, id, slot index, bits, screen, milliseconds, dwData, code
    std::int64_t second = 0;           // wParam, slot value, height
    ItemInfoRecord item;               // item: every field but the name, which is `text`
    std::vector<std::int32_t> numbers; // pet: status, area, level, xp, next, hp, max, mp, max, st, max
};

struct ParsedLine {
    enum class Kind { kEmpty, kCommand, kError } kind = Kind::kEmpty;
    Command command;
    std::string error;
};

// One line without its line break ('#' starts a comment line; blank lines are empty).
ParsedLine ParseScenarioLine(const std::string& line);

// Splits file content into lines (LF or CR LF), dropping a leading UTF-8 byte-order mark.
std::vector<std::string> SplitScenarioLines(const std::string& content);

// Building blocks, exposed for tests.
// Decimal, or hexadecimal after "0x"; an optional leading minus. The whole token must be a number.
bool ParseNumber(const std::string& token, std::int64_t* value);
// Hexadecimal bytes, white space allowed between byte pairs ("41 42 0d0a").
bool ParseHexBytes(const std::string& text, std::vector<unsigned char>* bytes);
// Text as written, or between double quotes to keep outer spaces; escapes \\ \" \r \n \t \xHH.
bool UnescapeText(const std::string& text, std::string* out);
// "fulllog", "extractedlog", "music", "pet", "item", "map"; kNone for anything else.
Target ParseTarget(const std::string& word);
const char* TargetName(Target target);

}  // namespace vrl::sim
