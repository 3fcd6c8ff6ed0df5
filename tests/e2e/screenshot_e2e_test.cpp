// Screenshots of the demo game through the running companion: the files the tray commands and the
// hotkey write, read back pixel by pixel against the pattern the game draws, the formats, the
// auto-detection from the screen the module reports, and the confirmation sound left to the system.

#include <gtest/gtest.h>
#include <windows.h>
// GDI+ after windows.h, which it builds on.
#include <gdiplus.h>

#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/game_link.h"
#include "e2e_support.h"
#include "sim/demo_game/test_pattern.h"
#include "tests/common/alerts_support_win.h"

namespace {

using vrltest::ReadLines;

constexpr WPARAM kShot = vrl::kCmdScreenshotFirst;  // + range; also the hotkey's id

struct GdiplusSession {
    GdiplusSession() {
        ::Gdiplus::GdiplusStartupInput input;
        ::Gdiplus::GdiplusStartup(&token, &input, nullptr);
    }
    ~GdiplusSession() { ::Gdiplus::GdiplusShutdown(token); }
    ULONG_PTR token = 0;
};

// A decoded picture: 0x00BBGGRR pixels, row by row.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned> pixels;
    unsigned At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

Picture Decode(const std::wstring& path) {
    Picture picture;
    ::Gdiplus::Bitmap image(path.c_str());
    if (image.GetLastStatus() != ::Gdiplus::Ok) return picture;
    ::Gdiplus::Rect all(0, 0, static_cast<INT>(image.GetWidth()), static_cast<INT>(image.GetHeight()));
    ::Gdiplus::BitmapData data{};
    if (image.LockBits(&all, ::Gdiplus::ImageLockModeRead, PixelFormat32bppRGB, &data) != ::Gdiplus::Ok) return picture;
    picture.width = all.Width;
    picture.height = all.Height;
    for (int y = 0; y < all.Height; ++y) {
        const auto* row = reinterpret_cast<const unsigned*>(static_cast<const char*>(data.Scan0) + y * data.Stride);
        for (int x = 0; x < all.Width; ++x) {
            const unsigned argb = row[x];  // 0xAARRGGBB
            picture.pixels.push_back((argb & 0xFF) << 16 | (argb & 0xFF00) | (argb >> 16 & 0xFF));
        }
    }
    image.UnlockBits(&data);
    return picture;
}

// How many pixels of the picture's rectangle (origin at client (left, top)) that lie inside the
// client area differ from the game's pattern; the first one in `where`.
int PatternMismatches(const Picture& picture, int left, int top, int clientWidth, int clientHeight,
                      std::string* where) {
    int wrong = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const int cx = left + x;
            const int cy = top + y;
            if (cx < 0 || cy < 0 || cx >= clientWidth || cy >= clientHeight) continue;
            if (picture.At(x, y) == vrl::sim::TestPatternColour(cx, cy)) continue;
            if (wrong++ == 0) *where = "client " + std::to_string(cx) + "," + std::to_string(cy);
        }
    }
    return wrong;
}

std::vector<std::wstring> FilesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) names.push_back(found.cFileName);
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
    return names;
}

struct ShotSession : e2e::Session {
    std::wstring shots;   // the screenshot folder
    std::wstring backup;  // the save-backup folder
    GdiplusSession gdiplus;

    void Start(const std::string& ini) {
        const std::wstring program = install.programFolder;
        shots = program + L"\\screenshot";
        backup = program + L"\\save.bak";
        ::CreateDirectoryW(shots.c_str(), nullptr);
        ::CreateDirectoryW(backup.c_str(), nullptr);
        ::CreateDirectoryW((install.gameFolder + L"\\sound").c_str(), nullptr);
        vrltest::WriteWav(install.gameFolder + L"\\sound\\pray1.wav", 50);
        ASSERT_TRUE(vrltest::CopyStandIn(L"simbass", L"bass.dll", program));
        // The module's own writes of slot 4 are over with its scenario.
        ASSERT_NO_FATAL_FAILURE(StartWithGame("enScreenshot=1\r\n" + ini, "screen 0\n"));
        install.WaitForScenarioEnd();
        ASSERT_EQ(::SendMessageW(game, vrl::sim::kDrawTestPattern, 0, 0), 1);
    }

    // Takes a shot by a tray command (sent: the file is written when it returns) and hands back
    // the one file it wrote in `folder`, removed from there.
    std::wstring Shoot(WPARAM range, const std::wstring& folder) { return Take(WM_COMMAND, kShot + range, folder); }

    std::wstring Take(UINT message, WPARAM id, const std::wstring& folder) {
        ::SendMessageW(frame, message, id, 0);
        const std::vector<std::wstring> files = FilesIn(folder);
        if (files.size() != 1) return {};
        const std::wstring moved = install.root + L"\\" + files[0];
        ::MoveFileExW((folder + L"\\" + files[0]).c_str(), moved.c_str(), MOVEFILE_REPLACE_EXISTING);
        return moved;
    }

    void SetScreen(int screen) const { ::SetWindowLongW(frame, vrl::game_link::kSlotScreen, screen); }

    // Calls into the audio library beside the companion: the confirmation sound is the system's
    // to play, and holds no audio device once it has ended.
    std::size_t AudioLibraryCalls() const { return ReadLines(install.programFolder + L"\\bass_trace.txt").size(); }

    SIZE Client() const {
        RECT r{};
        ::GetClientRect(game, &r);
        return {r.right, r.bottom};
    }
};

TEST(Screenshots, PngShotsHoldExactlyTheCapturedPixels) {
    ShotSession session;
    session.Start("iScreenshotFormat=0\r\niScreenshotRange=4\r\nenScreenshotIncludeFrame=1\r\n");
    const SIZE client = session.Client();
    ASSERT_EQ(client.cx, 800);
    ASSERT_EQ(client.cy, 600);
    std::string where;

    // The client area (the frame flag belongs to auto-detection only): 12 rows above the client.
    const std::wstring file = session.Shoot(2, session.shots);
    ASSERT_FALSE(file.empty());
    EXPECT_EQ(file.substr(file.size() - 4), L".png");
    Picture shot = Decode(file);
    EXPECT_EQ(shot.width, 800);
    EXPECT_EQ(shot.height, 600);
    EXPECT_EQ(PatternMismatches(shot, 0, -12, 800, 600, &where), 0) << where;

    // The whole window: the client area sits inside the frame where the window has it.
    RECT window{};
    ::GetWindowRect(session.game, &window);
    POINT origin{0, 0};
    ::ClientToScreen(session.game, &origin);
    shot = Decode(session.Shoot(1, session.shots));
    EXPECT_EQ(shot.width, window.right - window.left);
    EXPECT_EQ(shot.height, window.bottom - window.top);
    EXPECT_EQ(PatternMismatches(shot, window.left - origin.x, window.top - origin.y, 800, 600, &where), 0) << where;

    // Auto-detection: no screen reported writes nothing; the client-area screen with the frame flag
    // takes the whole window.
    session.SetScreen(0);
    EXPECT_TRUE(session.Shoot(0, session.shots).empty());
    EXPECT_TRUE(FilesIn(session.shots).empty());
    session.SetScreen(2);
    EXPECT_EQ(Decode(session.Shoot(0, session.shots)).width, window.right - window.left);

    // The hotkey takes the configured range (the inventory screen), not auto-detection.
    shot = Decode(session.Take(WM_HOTKEY, kShot, session.shots));
    EXPECT_EQ(shot.width, 638);
    EXPECT_EQ(shot.height, 432);
    EXPECT_EQ(PatternMismatches(shot, 81, 72, 800, 600, &where), 0) << where;
    EXPECT_EQ(session.AudioLibraryCalls(), 0u);
}

TEST(Screenshots, JpegShotsAreValidJpegsOfTheCapturedSize) {
    ShotSession session;
    session.Start("iScreenshotFormat=2\r\niJpegQuality=85\r\n");
    const std::wstring file = session.Shoot(9, session.shots);
    ASSERT_FALSE(file.empty());
    EXPECT_EQ(file.substr(file.size() - 4), L".jpg");
    const std::string bytes = vrltest::ReadFileBytes(file);
    ASSERT_GT(bytes.size(), 4u);
    EXPECT_EQ(bytes.substr(0, 2), "\xFF\xD8");
    EXPECT_EQ(bytes.substr(bytes.size() - 2), "\xFF\xD9");
    const Picture shot = Decode(file);
    EXPECT_EQ(shot.width, 408);
    EXPECT_EQ(shot.height, 312);
}

TEST(Screenshots, TheBackupFormatOverwritesItsOneFile) {
    ShotSession session;
    session.Start("iScreenshotFormat=3\r\n");
    const std::wstring file = session.backup + L"\\MorvaBackupSS.jpg";
    ::SendMessageW(session.frame, WM_COMMAND, kShot + 2, 0);
    vrltest::WriteFileBytes(file, "stale");
    ::SendMessageW(session.frame, WM_COMMAND, kShot + 10, 0);
    EXPECT_EQ(FilesIn(session.backup), std::vector<std::wstring>{L"MorvaBackupSS.jpg"});
    EXPECT_TRUE(FilesIn(session.shots).empty());
    const Picture shot = Decode(file);
    EXPECT_EQ(shot.width, 604);
    EXPECT_EQ(shot.height, 408);
}

// In both languages: the box must follow the chosen one.
TEST(Screenshots, AnUnknownFormatWarnsInTheChosenLanguageAndWritesNothing) {
    const struct {
        const char* ini;
        const wchar_t* caption;
        const wchar_t* text;
    } languages[] = {{"iLanguage=0\r\n", L"Vorrel Error", L"Error: Unknown screenshot format."},
                     {"iLanguage=1\r\n", L"Vorrel エラー", L"エラー: 不明なスクリーンショット形式です。"}};
    for (const auto& language : languages) {
        ShotSession session;
        session.Start(std::string("iScreenshotFormat=7\r\n") + language.ini);
        ::PostMessageW(session.frame, WM_COMMAND, kShot + 2, 0);
        const e2e::MessageBoxSeen box = e2e::WaitForMessageBox(session.companion->ProcessId(), 10000);
        ASSERT_TRUE(box.window);
        EXPECT_EQ(box.caption, language.caption);
        EXPECT_EQ(box.text, language.text);
        e2e::Press(box.window, IDOK);
        EXPECT_TRUE(FilesIn(session.shots).empty());
        EXPECT_TRUE(FilesIn(session.backup).empty());
    }
}

}  // namespace
