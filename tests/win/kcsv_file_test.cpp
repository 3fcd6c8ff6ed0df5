// KcsvFile against the real file system: loads, safe saves, and the two message boxes.

#include "settings/kcsv.h"
#include "tests/common/test_files_win.h"
#include "ui/wide_win.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace {

using vrl::KcsvFile;
using vrl::W;

// A fresh folder per test, removed with everything in it afterwards.
class Folder {
public:
    explicit Folder(const std::u16string& stem) : scratch_(vrl::Wstr(stem)) {}
    std::u16string File(const std::u16string& name) const { return vrl::U16(scratch_ / vrl::Wstr(name)); }
    int FileCount() const {
        int count = 0;
        WIN32_FIND_DATAW found;
        const HANDLE search = FindFirstFileW((scratch_.Path() + L"\\*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) return 0;
        do {
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) ++count;
        } while (FindNextFileW(search, &found));
        FindClose(search);
        return count;
    }

private:
    vrltest::ScratchFolder scratch_;
};

void WriteFileBytes(const std::u16string& path, const std::string& bytes) {
    vrltest::WriteFileBytes(vrl::Wstr(path), bytes);
}

std::string ReadBytes(const std::u16string& path) { return vrltest::ReadFileBytes(vrl::Wstr(path)); }

// Waits on another thread for a message box with the given caption, keeps its text and closes it
// with OK, as a player would.
class BoxCloser {
public:
    explicit BoxCloser(const wchar_t* caption)
        : caption_(caption), thread_([this] { Watch(); }) {}
    ~BoxCloser() { Join(); }
    void Join() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
    }
    bool Seen() const { return seen_; }
    const std::wstring& Text() const { return text_; }

private:
    void Watch() {
        for (int i = 0; i < 1000 && !seen_; ++i) {
            if (const HWND box = FindWindowW(L"#32770", caption_)) {
                wchar_t text[2048] = {};
                GetDlgItemTextW(box, 0xFFFF, text, 2048);
                text_ = text;
                seen_ = true;
                PostMessageW(box, WM_COMMAND, IDOK, 0);
                return;
            }
            if (stop_ && i > 100) return;  // the box should have come by now
            Sleep(10);
        }
    }

    const wchar_t* caption_;
    std::atomic<bool> stop_{false};
    std::atomic<bool> seen_{false};
    std::wstring text_;
    std::thread thread_;
};

KcsvFile SampleTable() {
    KcsvFile t;
    t.SetOption(u"MasterVolume", u"80");
    t.SetOption(u"FontFace", u"メイリオ");
    t.AddColumn(u"keyword");
    t.AddColumn(u"color");
    t.SetCell(0, 0, u"仲間, \"友\"");
    t.SetCell(0, 1, u"#ff8000");
    t.SetCell(1, 0, u"ally");
    return t;
}

void ExpectSameTable(const KcsvFile& a, const KcsvFile& b) {
    EXPECT_EQ(a.Options(), b.Options());
    EXPECT_EQ(a.Columns(), b.Columns());
    EXPECT_EQ(a.Rows(), b.Rows());
}

TEST(KcsvFile, SaveAndLoadRoundTripInAJapanesePath) {
    Folder folder(u"vrl_kcsv_日本語");
    const std::u16string path = folder.File(u"ログ設定.kcsv");
    const KcsvFile saved = SampleTable();
    ASSERT_TRUE(saved.SaveFile(path));
    EXPECT_EQ(ReadBytes(path), saved.ToUtf8());
    EXPECT_EQ(folder.FileCount(), 1);  // no temporary left beside it
    KcsvFile loaded;
    ASSERT_TRUE(loaded.LoadFile(path));
    ExpectSameTable(loaded, saved);

    // Saving again replaces the old content completely.
    KcsvFile smaller;
    ASSERT_TRUE(smaller.SaveFile(path));
    EXPECT_EQ(ReadBytes(path), "#format,kcsv\r\n#column\r\n");
}

TEST(KcsvFile, MissingEmptyOrForeignFilesKeepTheTableWithoutABox) {
    Folder folder(u"vrl_kcsv_load");
    KcsvFile t = SampleTable();
    EXPECT_FALSE(t.LoadFile(folder.File(u"missing.kcsv")));
    WriteFileBytes(folder.File(u"empty.kcsv"), "");
    EXPECT_FALSE(t.LoadFile(folder.File(u"empty.kcsv")));
    ExpectSameTable(t, SampleTable());

    WriteFileBytes(folder.File(u"bom.kcsv"), "\xEF\xBB\xBF#format,kcsv\r\n#column,a\r\n");
    EXPECT_FALSE(t.LoadFile(folder.File(u"bom.kcsv")));
    EXPECT_TRUE(t.Columns().empty());
}

TEST(KcsvFile, FileHeldOpenForWritingShowsTheWarningBox) {
    Folder folder(u"vrl_kcsv_busy");
    const std::u16string path = folder.File(u"LogEx.kcsv");
    WriteFileBytes(path, "#format,kcsv\r\n#column,keyword\r\nally\r\n");
    const HANDLE writer = CreateFileW(W(path), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    KcsvFile t = SampleTable();
    BoxCloser closer(L"Vorrel Error");
    EXPECT_FALSE(t.LoadFile(path));
    closer.Join();
    CloseHandle(writer);
    ASSERT_TRUE(closer.Seen());
    EXPECT_EQ(closer.Text(), L"Cannot open file\r\nFile name " + vrl::Wstr(path));
    ExpectSameTable(t, SampleTable());
}

// A read-only target, one another program holds open, a missing folder: the write box, and the
// old file (if any) as it was, with no temporary left beside it.
TEST(KcsvFile, ASaveThatCannotWriteShowsTheWriteBoxAndKeepsTheOldFile) {
    enum class Obstacle { ReadOnly, HeldByReader, MissingFolder };
    for (Obstacle obstacle : {Obstacle::ReadOnly, Obstacle::HeldByReader, Obstacle::MissingFolder}) {
        Folder folder(u"vrl_kcsv_unwritable");
        const std::string old = "#format,kcsv\r\n#column,File,Volume\r\nold.ogg,70\r\n";
        std::u16string path = folder.File(u"Volume.kcsv");
        HANDLE reader = INVALID_HANDLE_VALUE;
        if (obstacle == Obstacle::MissingFolder) {
            path = folder.File(u"absent\\Volume.kcsv");
        } else {
            WriteFileBytes(path, old);
        }
        if (obstacle == Obstacle::ReadOnly) SetFileAttributesW(W(path), FILE_ATTRIBUTE_READONLY);
        if (obstacle == Obstacle::HeldByReader) {
            reader = CreateFileW(W(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
            ASSERT_NE(reader, INVALID_HANDLE_VALUE);
        }
        BoxCloser closer(L"Vorrel");
        EXPECT_FALSE(SampleTable().SaveFile(path));
        closer.Join();
        if (reader != INVALID_HANDLE_VALUE) CloseHandle(reader);
        ASSERT_TRUE(closer.Seen());
        EXPECT_EQ(closer.Text(), L"KCSV error: Cannot write \"" + vrl::Wstr(path) + L"\".");
        EXPECT_EQ(ReadBytes(path), obstacle == Obstacle::MissingFolder ? "" : old);
        EXPECT_EQ(folder.FileCount(), obstacle == Obstacle::MissingFolder ? 0 : 1);
    }
}

// Another program holding the table for a moment delays the save without a box.
TEST(KcsvFile, ASaveWaitsForABriefHolder) {
    Folder folder(u"vrl_kcsv_retry");
    const std::u16string path = folder.File(u"Volume.kcsv");
    WriteFileBytes(path, "old");
    const HANDLE holder = CreateFileW(W(path), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    std::thread release([holder] {
        Sleep(300);
        CloseHandle(holder);
    });
    {
        BoxCloser closer(L"Vorrel");
        EXPECT_TRUE(SampleTable().SaveFile(path));
        release.join();
        closer.Join();
        EXPECT_FALSE(closer.Seen());
    }
    EXPECT_EQ(ReadBytes(path), SampleTable().ToUtf8());
}

}  // namespace
