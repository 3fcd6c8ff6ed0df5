#pragma once
// Plays a scenario against the companion from the module's worker thread. Every wait is bounded,
// a missing companion or window is recorded as an error line, and nothing here may bring down
// the game process except the scenario's own "exit".

#include "sim/module/scenario.h"

#include <windows.h>

#include <string>
#include <vector>

namespace vrl::sim {

class ScenarioRunner {
public:
    explicit ScenarioRunner(std::wstring transcriptPath) : transcript_(std::move(transcriptPath)) {}

    // Waits (bounded) for the game's main window and the companion's frame, then publishes slot 0
    // (the game window) and slot 4 (screen 0).
    void Connect();
    // Runs every line in order, one transcript line per command or bad line.
    void Run(const std::vector<std::string>& lines);
    // Appends "module: <line>" to the transcript.
    void Record(const std::string& line) const;

private:
    std::string Execute(const Command& command);
    std::string SendData(Target target, ULONG_PTR code, const std::vector<unsigned char>& bytes);
    std::string SendToFrame(UINT message, WPARAM wParam, LPARAM lParam);
    std::string WriteSlot(int index, LONG value);
    std::string WaitFor(Target target);
    // Opens (or resizes, when `width` and `height` are not 0) the game's further window.
    std::string OpenFurtherWindow(int width, int height);
    // The quick search word box's text, in double quotes.
    std::string ReadWord();
    std::string QueuePet(const Command& command);
    std::string SendPets(const Command& command);
    // The frame, found again when the one we knew has gone; null when there is none.
    HWND Frame();
    HWND CompanionWindow(Target target);

    std::wstring transcript_;
    HWND frame_ = nullptr;
    HWND game_ = nullptr;
    std::vector<unsigned char> pets_;  // pet slots written since the last petsend
};

}  // namespace vrl::sim
