#include "sim/module/scenario_runner_win.h"

#include "sim/common/sim_io_win.h"
#include "sim/module/companion_windows_win.h"
#include "sim/module/pet_strip.h"

#include <algorithm>
#include <cstring>

namespace vrl::sim {
namespace {

constexpr DWORD kGameWindowTimeoutMs = 15000;
constexpr DWORD kDefaultConnectTimeoutMs = 15000;
constexpr DWORD kWaitForTimeoutMs = 10000;
constexpr DWORD kSendTimeoutMs = 5000;
constexpr DWORD kLongestWaitMs = 600000;
constexpr DWORD kPollMs = 20;
constexpr UINT kOpenFurtherWindow = WM_APP + 0x36;
constexpr UINT kDestroyMainWindow = WM_APP + 0x37;
constexpr UINT kShowMap = WM_APP + 0x38;
constexpr int kSlotGameWindow = 0;
constexpr int kSlotScreen = 4;
constexpr int kSlotReload = 8;
constexpr int kSlotStatic1 = 12;
constexpr int kSlotWordBox = 16;
constexpr int kSlotItemPanel = 28;
constexpr int kSlotFurtherWindow = 36;

template <typename Find>
HWND PollFor(Find find, DWORD timeoutMs) {
    const ULONGLONG deadline = GetTickCount64() + timeoutMs;
    for (;;) {
        if (HWND window = find()) return window;
        if (GetTickCount64() >= deadline) return nullptr;
        Sleep(kPollMs);
    }
}

HWND FindFrame() { return FindWindowW(L"VorrelUI", L"Vorrel"); }

std::vector<unsigned char> AnsiBytes(const std::string& utf8) {
    const std::wstring wide = FromUtf8(utf8);
    if (wide.empty()) return {};
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), static_cast<int>(wide.size()), nullptr, 0,
                                         nullptr, nullptr);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_ACP, 0, wide.c_str(), static_cast<int>(wide.size()),
                        reinterpret_cast<char*>(bytes.data()), size, nullptr, nullptr);
    return bytes;
}

HWND SlotWindow(HWND frame, int index) {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(GetWindowLongW(frame, index)));
}

// The folder of this module, which is the companion's program folder.
std::wstring OwnFolder() {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnFolder), &self);
    return ModuleFolder(self);
}

std::string WritePetIcons(std::int64_t cells) {
    const std::string bytes = PetStripBmp(cells < 0 ? 16 : static_cast<int>(std::min<std::int64_t>(cells, 256)));
    const std::wstring path = OwnFolder() + L"\\peticons.bmp";
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "error: cannot write peticons.bmp";
    DWORD written = 0;
    const BOOL ok = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return ok && written == bytes.size() ? std::to_string(bytes.size()) + " bytes" : "error: cannot write peticons.bmp";
}

void PutInt32(unsigned char* at, std::int32_t value) {
    for (int i = 0; i < 4; ++i) at[i] = static_cast<unsigned char>(static_cast<std::uint32_t>(value) >> (8 * i));
}

std::string Posted(BOOL ok) { return ok ? "posted" : "error: post failed"; }

// Tests without a companion shorten the wait for the frame through VRL_SIM_CONNECT_MS.
DWORD ConnectTimeoutMs() {
    std::int64_t value = 0;
    const std::string text = Utf8(EnvironmentValue(L"VRL_SIM_CONNECT_MS"));
    if (!ParseNumber(text, &value) || value < 0) return kDefaultConnectTimeoutMs;
    return static_cast<DWORD>(std::min<std::int64_t>(value, kLongestWaitMs));
}

}  // namespace

void ScenarioRunner::Record(const std::string& line) const { AppendLine(transcript_, "module: " + line); }

void ScenarioRunner::Connect() {
    game_ = PollFor(FindOwnGameWindow, kGameWindowTimeoutMs);
    Record(game_ != nullptr ? "game window " + Hex(reinterpret_cast<ULONG_PTR>(game_)) : "error: no game window");
    frame_ = PollFor(FindFrame, ConnectTimeoutMs());
    if (frame_ == nullptr) {
        Record("error: no frame window");
        return;
    }
    Record("frame " + Hex(reinterpret_cast<ULONG_PTR>(frame_)));
    SetWindowLongW(frame_, kSlotGameWindow, static_cast<LONG>(reinterpret_cast<LONG_PTR>(game_)));
    SetWindowLongW(frame_, kSlotScreen, 0);
}

void ScenarioRunner::Run(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const ParsedLine parsed = ParseScenarioLine(line);
        if (parsed.kind == ParsedLine::Kind::kEmpty) continue;
        if (parsed.kind == ParsedLine::Kind::kError) {
            Record("error: " + parsed.error);
            continue;
        }
        std::string source = line;
        while (!source.empty() && (source.back() == ' ' || source.back() == '\t')) source.pop_back();
        source.erase(0, source.find_first_not_of(" \t"));
        if (parsed.command.op == Op::kExit) {
            Record(source + " -> exiting");
            ExitProcess(0);
        }
        Record(source + " -> " + Execute(parsed.command));
    }
    Record("end of scenario");
}

HWND ScenarioRunner::Frame() {
    if (frame_ == nullptr || !IsWindow(frame_)) frame_ = FindFrame();
    return frame_;
}

HWND ScenarioRunner::CompanionWindow(Target target) {
    HWND frame = Frame();
    if (frame == nullptr) return nullptr;
    if (target == Target::kItem) {
        HWND panel = SlotWindow(frame, kSlotItemPanel);
        if (panel != nullptr && IsWindow(panel)) return panel;
    }
    DWORD companion = 0;
    GetWindowThreadProcessId(frame, &companion);
    return FindCompanionWindow(companion, target);
}

std::string ScenarioRunner::SendData(Target target, ULONG_PTR code, const std::vector<unsigned char>& bytes) {
    HWND window = CompanionWindow(target);
    if (window == nullptr) return std::string("error: no ") + TargetName(target) + " window";
    COPYDATASTRUCT data{};
    data.dwData = code;
    data.cbData = static_cast<DWORD>(bytes.size());
    data.lpData = bytes.empty() ? nullptr : const_cast<unsigned char*>(bytes.data());
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG,
                             kSendTimeoutMs, &result)) {
        return "error: no answer";
    }
    return std::to_string(static_cast<long long>(result));
}

std::string ScenarioRunner::SendToFrame(UINT message, WPARAM wParam, LPARAM lParam) {
    HWND frame = Frame();
    if (frame == nullptr) return "error: no frame window";
    if (message == 0xA000) {
        // The game is in front: it hands the foreground on to the companion, which opens a window.
        DWORD companion = 0;
        GetWindowThreadProcessId(frame, &companion);
        AllowSetForegroundWindow(companion);
    }
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(frame, message, wParam, lParam, SMTO_ABORTIFHUNG, kSendTimeoutMs, &result)) {
        return "error: no answer";
    }
    return Hex(result);
}

std::string ScenarioRunner::WriteSlot(int index, LONG value) {
    HWND frame = Frame();
    if (frame == nullptr) return "error: no frame window";
    SetLastError(ERROR_SUCCESS);
    SetWindowLongW(frame, index, value);
    return GetLastError() == ERROR_SUCCESS ? "ok" : "error: " + std::to_string(GetLastError());
}

std::string ScenarioRunner::WaitFor(Target target) {
    HWND window = PollFor([&] { return CompanionWindow(target); }, kWaitForTimeoutMs);
    return window != nullptr ? Hex(reinterpret_cast<ULONG_PTR>(window))
                             : std::string("error: no ") + TargetName(target) + " window";
}

std::string ScenarioRunner::ReadWord() {
    HWND frame = Frame();
    HWND box = frame != nullptr ? SlotWindow(frame, kSlotWordBox) : nullptr;
    if (box == nullptr || !IsWindow(box)) return "error: no word box";
    wchar_t word[260] = {};
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(box, WM_GETTEXT, 260, reinterpret_cast<LPARAM>(word), SMTO_ABORTIFHUNG, kSendTimeoutMs,
                             &length)) {
        return "error: no answer";
    }
    return "\"" + Utf8(std::wstring(word, std::min<std::size_t>(length, 259))) + "\"";
}

std::string ScenarioRunner::OpenFurtherWindow(int width, int height) {
    if (game_ == nullptr || !IsWindow(game_)) return "error: no game window";
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(game_, kOpenFurtherWindow, static_cast<WPARAM>(width), static_cast<LPARAM>(height),
                             SMTO_ABORTIFHUNG, kSendTimeoutMs, &result) ||
        result == 0) {
        return "error: no further window";
    }
    const std::string published = WriteSlot(kSlotFurtherWindow, static_cast<LONG>(result));
    return Hex(result) + (published == "ok" ? "" : " (" + published + ")");
}

std::string ScenarioRunner::QueuePet(const Command& c) {
    constexpr std::size_t kRecord = 112;
    const std::size_t at = pets_.size();
    pets_.resize(at + kRecord, 0);
    unsigned char* record = &pets_[at];
    PutInt32(record, static_cast<std::int32_t>(at / kRecord));  // chip id: anything distinct
    // The name in the ANSI code page; a name of 64 bytes or more fills the field without its NUL.
    const std::vector<unsigned char> name = AnsiBytes(c.text);
    std::memcpy(record + 4, name.data(), std::min<std::size_t>(name.size(), 64));
    for (std::size_t i = 0; i < c.numbers.size() && i < 11; ++i) {
        // Wire order: status, level, xp, next, hp, max, mp, max, st, max, area; written: status, area, ...
        const std::size_t field = i == 0 ? 0 : i == 1 ? 10 : i - 1;
        PutInt32(record + 68 + 4 * field, c.numbers[i]);
    }
    return "slot " + std::to_string(at / kRecord);
}

std::string ScenarioRunner::SendPets(const Command& c) {
    std::vector<unsigned char> bytes;
    bytes.swap(pets_);
    const std::size_t slots = bytes.size() / 112;
    if (c.second >= 0) bytes.resize(static_cast<std::size_t>(std::min<std::int64_t>(c.second, 1 << 24)), 0);
    return SendData(Target::kPet, c.first >= 0 ? static_cast<ULONG_PTR>(c.first) : slots, bytes);
}

std::string ScenarioRunner::Execute(const Command& c) {
    switch (c.op) {
        case Op::kLog:
            return SendData(Target::kFullLog, 0, AnsiBytes(c.text));
        case Op::kLog0: {
            std::vector<unsigned char> bytes = AnsiBytes(c.text);
            bytes.push_back(0);
            return SendData(Target::kFullLog, 0, bytes);
        }
        case Op::kLogBytes:
            return SendData(Target::kFullLog, 0, c.bytes);
        case Op::kCopyData:
            return SendData(c.target, static_cast<ULONG_PTR>(c.first), c.bytes);
        case Op::kItem: {
            ItemInfoRecord item = c.item;
            const std::wstring name = FromUtf8(c.text);
            item.name.assign(name.begin(), name.end());
            return SendData(Target::kItem, 0, EncodeItemRecord(item));
        }
        case Op::kWord:
            return ReadWord();
        case Op::kMusic:
            return SendData(Target::kMusic, static_cast<ULONG_PTR>(c.first), c.bytes);
        case Op::kReload: {
            HWND frame = Frame();
            if (frame == nullptr) return "error: no frame window";
            const LONG bits = GetWindowLongW(frame, kSlotReload) | static_cast<LONG>(c.first);
            SetWindowLongW(frame, kSlotReload, bits);
            return Hex(static_cast<DWORD>(bits));
        }
        case Op::kRequest:
            return SendToFrame(static_cast<UINT>(c.first), static_cast<WPARAM>(c.second), 0);
        case Op::kCommand:
            return Frame() != nullptr ? Posted(PostMessageW(frame_, WM_COMMAND, static_cast<WPARAM>(c.first), 0))
                                      : "error: no frame window";
        case Op::kSendCommand:
            return SendToFrame(WM_COMMAND, static_cast<WPARAM>(c.first), 0);
        case Op::kHotkey: {
            HWND map = CompanionWindow(Target::kTreasureMap);
            return map != nullptr ? Posted(PostMessageW(map, WM_HOTKEY, static_cast<WPARAM>(c.first), 0))
                                  : "error: no map window";
        }
        case Op::kSlot:
            return WriteSlot(static_cast<int>(c.first), static_cast<LONG>(c.second));
        case Op::kReadSlot: {
            HWND frame = Frame();
            if (frame == nullptr) return "error: no frame window";
            return Hex(static_cast<DWORD>(GetWindowLongW(frame, static_cast<int>(c.first))));
        }
        case Op::kStatic1: {
            HWND frame = Frame();
            HWND label = frame != nullptr ? SlotWindow(frame, kSlotStatic1) : nullptr;
            if (label == nullptr || !IsWindow(label)) return "error: no status static";
            const std::wstring text = FromUtf8(c.text);
            DWORD_PTR result = 0;
            SendMessageTimeoutW(label, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()), SMTO_ABORTIFHUNG,
                                kSendTimeoutMs, &result);
            return std::to_string(static_cast<long long>(result));
        }
        case Op::kScreen:
            return WriteSlot(kSlotScreen, static_cast<LONG>(c.first));
        case Op::kOpen36:
            return OpenFurtherWindow(static_cast<int>(c.first), static_cast<int>(c.second));
        case Op::kShowMap: {
            DWORD_PTR ignored = 0;
            if (game_ == nullptr) return "error: no game window";
            return SendMessageTimeoutW(game_, kShowMap, c.first != 0, 0, SMTO_ABORTIFHUNG, kSendTimeoutMs, &ignored)
                       ? "ok"
                       : "error: no answer";
        }
        case Op::kWait:
            Sleep(static_cast<DWORD>(std::clamp<std::int64_t>(c.first, 0, kLongestWaitMs)));
            return "ok";
        case Op::kWaitFor:
            return WaitFor(c.target);
        case Op::kClose:
            return game_ != nullptr ? Posted(PostMessageW(game_, WM_CLOSE, 0, 0)) : "error: no game window";
        case Op::kCloseMain:
            return game_ != nullptr ? Posted(PostMessageW(game_, kDestroyMainWindow, 0, 0)) : "error: no game window";
        case Op::kPet:
            return QueuePet(c);
        case Op::kPetSend:
            return SendPets(c);
        case Op::kPetIcons:
            return WritePetIcons(c.first);
        case Op::kExit:
            break;
    }
    return "error: not handled";
}

}  // namespace vrl::sim
