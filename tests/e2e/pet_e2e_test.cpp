// The pet information panel of the running companion, fed by the module stand-in and by pet
// messages sent the way the module sends them: the rows as the player reads them in both
// languages, the filter, hostile payloads, the reload bit, the colour dialog and what it writes,
// the options kept across a restart, and the pixels of a bar.

#include <gtest/gtest.h>

#include <vector>

#include "e2e_support.h"
#include "panels/pet_record.h"

#include <commctrl.h>

namespace {

using vrl::PetRecord;

constexpr int kFilterId = 1001;
constexpr int kColourButtonId = 1002;
constexpr int kListId = 1004;
constexpr int kHpBarEditId = 1006 + 11 + 2;
constexpr int kStRatioEditId = 1006 + 33 + 1;
constexpr WPARAM kShowPetInfo = 34105;

const PetRecord kPutit = PetRecord::Make("putit", 1, 3, 10, 50, 50, 100, 5, 8, 70, 100);
const PetRecord kGwen = PetRecord::Make("Gwen", 9, 12, 300, 1000, 9, 9, 1, 2, 3, 4, 101);
const PetRecord kDog = PetRecord::Make("dog", 9, 7, 0, 90, 40, 40, 0, 0, 100, 100, 55);
const PetRecord kEmpty;

std::string Message(const std::vector<PetRecord>& pets) {
    std::string bytes;
    for (const PetRecord& pet : pets) pet.Encode(bytes);
    return bytes;
}

struct PetSession : e2e::Session {
    HWND panel = nullptr;
    HWND list = nullptr;

    void Start(const std::string& ini, const std::string& scenario = {}, const wchar_t* title = L"Pet Information - Vorrel") {
        ASSERT_NO_FATAL_FAILURE(StartWithGame("enPetInfo=1\r\n" + ini, "waitfor pet\n" + scenario));
        panel = e2e::WaitForWindow(L"#32770", title, 20000);
        ASSERT_TRUE(panel);
        // Found by its title as soon as it exists: its set-up ends with the list's sixteen rows.
        ASSERT_TRUE(e2e::WaitUntil([&] {
            list = ::GetDlgItem(panel, kListId);
            return list && ::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 16;
        }, 10000));
        ::SetWindowPos(panel, HWND_TOP, 0, 0, 900, 500, SWP_SHOWWINDOW);
    }

    LRESULT Send(const std::string& bytes, ULONG_PTR count) const { return e2e::SendCopyData(panel, count, bytes); }
    LRESULT Send(const std::vector<PetRecord>& pets) const { return Send(Message(pets), pets.size()); }

    std::string Cell(int row, int column) const { return e2e::ListViewRows(list, 8).at(row).at(column); }
    // Name to ST of a row, joined by "|".
    std::string Row(int row) const {
        const std::vector<std::string> cells = e2e::ListViewRows(list, 8).at(row);
        std::string line;
        for (int column = 1; column < 8; ++column) line += (column > 1 ? "|" : "") + cells[column];
        return line;
    }
    RECT CellRect(int row, int column, LONG part = LVIR_BOUNDS) const {
        return e2e::ListViewCellRect(list, row, column, part);
    }

    // The player picks a filter from the drop-down list.
    void ChooseFilter(int index) const {
        ::SendDlgItemMessageW(panel, kFilterId, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        ::SendMessageW(panel, WM_COMMAND, MAKEWPARAM(kFilterId, CBN_SELENDOK),
                       reinterpret_cast<LPARAM>(::GetDlgItem(panel, kFilterId)));
    }
    // The game goes out of the panel's way, so that the screen shows the panel.
    void MoveTheGameAway() const {
        ::SetWindowPos(game, HWND_BOTTOM, 0, 520, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    }
};

std::string ReadFile(const e2e::Install& install, const wchar_t* name) {
    return vrltest::ReadFileBytes(install.ProgramFile(name));
}

// The screen's pixel once it shows `expected`, or what it shows after a few seconds: windows of
// the companion paint in their own time.
COLORREF PixelOnceItIs(int x, int y, COLORREF expected) {
    COLORREF colour = CLR_INVALID;
    e2e::WaitUntil([&] { return (colour = e2e::ScreenPixel(x, y)) == expected; }, 3000);
    return colour;
}

TEST(PetPanel, RowsFiltersAndHostileMessagesAsThePlayerSeesThem) {
    PetSession pets;
    const std::string notes = "my pets: putit, Gwen\r\n";  // not a table: read as nothing, never overwritten
    pets.install.WriteProgramFile(L"PetInfo.kcsv", notes);
    pets.Start("",
               "peticons 3\n"
               "pet putit 1 0 3 10/50 50/100 5/8 70/100\n"
               "pet Gwen 9 101 12 300/1000 9/9 1/2 3/4\n"
               "pet \"sleepy dog\" 6 0 7 0/90 40/40 0/0 100/100\n"
               "petsend\n");
    pets.install.WaitForScenarioEnd();
    // Same map: status 1 and 6 only, in slot order.
    EXPECT_EQ(pets.Row(0), "putit|Live|3|40|50/100|5/8|70/100");
    EXPECT_EQ(pets.Row(1), "sleepy dog|Dead|7|90|40/40|0/0|100/100");
    EXPECT_EQ(pets.Row(2), "||||||");

    // A new filter shows with the next message only.
    pets.ChooseFilter(1);
    EXPECT_EQ(pets.Cell(1, 1), "sleepy dog");
    EXPECT_EQ(pets.Send({kEmpty, kPutit, kGwen, kDog}), TRUE);
    EXPECT_EQ(pets.Row(1), "Gwen|Museum|12|700|9/9|1/2|3/4");
    EXPECT_EQ(pets.Cell(2, 2), "Standby");  // an area without a name

    // Pictures from the module's strip of three cells: slot 1's tile; slot 3 is beyond the strip.
    pets.MoveTheGameAway();
    const RECT putit = pets.CellRect(0, 0, LVIR_ICON);
    const RECT dog = pets.CellRect(2, 0, LVIR_ICON);
    EXPECT_EQ(PixelOnceItIs(putit.left + 2, putit.top + 20, RGB(0x30, 0xA0, 0x30)), RGB(0x30, 0xA0, 0x30));
    EXPECT_EQ(PixelOnceItIs(dog.left + 2, dog.top + 20, RGB(255, 255, 255)), RGB(255, 255, 255));

    // How many records a message holds is decided natively; the panel blanks the rows it did not
    // get and shows sixteen of twenty.
    std::string three = Message({kPutit, kGwen, kDog});
    EXPECT_EQ(pets.Send(three.substr(0, 2 * 112 + 50), 3), TRUE);
    EXPECT_EQ(pets.Cell(1, 1), "Gwen");
    EXPECT_EQ(pets.Cell(2, 1), "");
    EXPECT_EQ(pets.Send(std::string(), 16), TRUE);
    EXPECT_EQ(pets.Cell(0, 1), "");
    EXPECT_EQ(pets.Send(std::vector<PetRecord>(20, kPutit)), TRUE);
    EXPECT_EQ(pets.Cell(15, 1), "putit");
    EXPECT_EQ(::SendMessageW(pets.list, LVM_GETITEMCOUNT, 0, 0), 16);

    // The tray item brings the closed panel back.
    ::SendMessageW(pets.panel, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(::IsWindowVisible(pets.panel));
    EXPECT_EQ(ReadFile(pets.install, L"PetInfo.kcsv"), notes);
    ::SendMessageW(pets.frame, WM_COMMAND, kShowPetInfo, 0);
    EXPECT_TRUE(::IsWindowVisible(pets.panel));
}

TEST(PetPanel, JapaneseTextsAndTheReloadBit) {
    PetSession pets;
    pets.install.WriteProgramFile(L"PetInfo.kcsv", "#format,kcsv\r\n#option,iFilterIndex:1\r\n#column\r\n");
    pets.install.WriteProgramFile(L"peticons.bmp", "BM not a bitmap");  // no pictures, the texts all the same
    pets.Start("iLanguage=1\r\n", "", L"ペット情報 - Vorrel");
    EXPECT_EQ(pets.Send({kPutit, kGwen, kDog}), TRUE);
    EXPECT_EQ(pets.Row(0), "putit|生存|3|40|50/100|5/8|70/100");
    EXPECT_EQ(pets.Cell(1, 2), "博物館");
    EXPECT_EQ(pets.Cell(2, 2), "待機X");

    // A new filter written by another program is read before the next message.
    pets.install.WriteProgramFile(L"PetInfo.kcsv", "#format,kcsv\r\n#option,iFilterIndex:0\r\n#column\r\n");
    ::SetWindowLongW(pets.frame, 8, ::GetWindowLongW(pets.frame, 8) | 0x8 | 0x2);
    EXPECT_EQ(pets.Send({kPutit, kGwen, kDog}), TRUE);
    EXPECT_EQ(pets.Cell(0, 1), "putit");
    EXPECT_EQ(pets.Cell(1, 1), "");
    EXPECT_EQ(::GetWindowLongW(pets.frame, 8), 0x2);  // only its own bit cleared
    EXPECT_EQ(::SendDlgItemMessageW(pets.panel, kFilterId, CB_GETCURSEL, 0, 0), 0);
}

// Opens the colour dialog from the panel's button; the dialog, or null.
HWND OpenColourDialog(const PetSession& pets) {
    ::PostMessageW(pets.panel, WM_COMMAND, MAKEWPARAM(kColourButtonId, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(pets.panel, kColourButtonId)));
    HWND dialog = e2e::WaitForWindow(L"#32770", L"Config Color of Pet Information", 10000);
    // Shown once its set-up (which centres it on the panel) is done.
    e2e::WaitUntil([&] { return ::IsWindowVisible(dialog) != FALSE; }, 5000);
    return dialog;
}

void ClickAt(int x, int y) {
    ::SetCursorPos(x, y);
    ::Sleep(100);
    INPUT input[2] = {};
    input[0].type = input[1].type = INPUT_MOUSE;
    input[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    input[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    ::SendInput(2, input, sizeof(INPUT));
}

COLORREF SwatchPixel(HWND dialog, int swatchId, COLORREF expected) {
    RECT r{};
    ::GetWindowRect(::GetDlgItem(dialog, swatchId), &r);
    return PixelOnceItIs((r.left + r.right) / 2, (r.top + r.bottom) / 2, expected);
}

TEST(PetPanel, ColourDialogBarsAndOptionsKeptAcrossARestart) {
    PetSession pets;
    const std::string foreign = "#format,kcsv\r\n#option,Mine:keep this,iNameColumnWidth:111\r\n#column\r\n";
    pets.install.WriteProgramFile(L"PetInfo.kcsv", foreign);
    pets.Start("");
    EXPECT_EQ(pets.Send({kPutit}), TRUE);

    // The HP bar of putit (50 of 100) is half in the default bar colour, half in its background.
    // The bar sits 2 pixels inside its cell (at 96 DPI), 6 high, with a frame of 1.
    pets.MoveTheGameAway();
    const auto px = e2e::AtScreenDpi;
    const RECT hp = pets.CellRect(0, 5);
    const int barY = hp.bottom - px(2) - px(3);
    const int inside = px(2) + px(1);
    const int inner = (hp.right - inside) - (hp.left + inside);
    EXPECT_EQ(PixelOnceItIs(hp.left + inside + inner / 4, barY, RGB(255, 155, 155)), RGB(255, 155, 155));
    EXPECT_EQ(PixelOnceItIs(hp.left + inside + inner * 3 / 4, barY, RGB(0, 0, 0)), RGB(0, 0, 0));

    // Cancel after changes writes nothing.
    HWND dialog = OpenColourDialog(pets);
    ASSERT_TRUE(dialog);
    ::SetDlgItemTextW(dialog, kHpBarEditId, L"#00ff00");
    e2e::Press(dialog, IDCANCEL);
    ASSERT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(dialog); }, 5000));
    EXPECT_EQ(ReadFile(pets.install, L"PetInfo.kcsv"), foreign);

    // Typed colours take effect at once; text that is not a colour leaves the bar colour alone.
    dialog = OpenColourDialog(pets);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(SwatchPixel(dialog, kHpBarEditId + 1, RGB(255, 155, 155)), RGB(255, 155, 155));
    ::SetDlgItemTextW(dialog, kHpBarEditId, L"#00ff00");
    EXPECT_EQ(SwatchPixel(dialog, kHpBarEditId + 1, RGB(0, 255, 0)), RGB(0, 255, 0));
    ::SetDlgItemTextW(dialog, kHpBarEditId, L"xyz");
    EXPECT_EQ(SwatchPixel(dialog, kHpBarEditId + 1, RGB(0, 255, 0)), RGB(0, 255, 0));
    ::SetDlgItemTextW(dialog, kStRatioEditId, L"");
    // "Select..." of the HP bar's background, and in the colour menu the last item of the first
    // column: "Orange". Clicked: the menu takes the mouse whichever window is active.
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(kHpBarEditId + 5, BN_CLICKED), 0);
    HWND menu = e2e::WaitForMenu(pets.companion->ProcessId(), 5000);
    ASSERT_TRUE(menu);
    // Shown a moment before its loop takes the mouse: a click that came too soon is given again.
    const auto chosen = [&] { return e2e::WindowText(::GetDlgItem(dialog, kHpBarEditId + 3)) == "#ff7f00"; };
    for (int attempt = 0; attempt < 3 && ::IsWindowVisible(menu) && !chosen(); ++attempt) {
        ::Sleep(300);
        RECT menuRect{};
        ::GetWindowRect(menu, &menuRect);
        ClickAt(menuRect.left + 30, menuRect.bottom - 7);
        e2e::WaitUntil(chosen, 2000);
    }
    EXPECT_TRUE(chosen());
    e2e::Press(dialog, IDOK);
    ASSERT_TRUE(e2e::WaitUntil([&] { return !::IsWindow(dialog); }, 5000));
    const std::string written = ReadFile(pets.install, L"PetInfo.kcsv");
    // Which options the file holds besides is tested natively.
    for (const char* option : {"Mine:keep this", "colHpBar:#00ff00", "iStColumnWidthRatio:0", "colHpBarBk:#ff7f00"})
        EXPECT_NE(written.find(option), std::string::npos) << option << " in\n" << written;
    const RECT hpNow = pets.CellRect(0, 5);  // the ST column has no width now: HP has more
    EXPECT_GT(hpNow.right - hpNow.left, hp.right - hp.left);
    EXPECT_EQ(PixelOnceItIs(hpNow.left + px(5), hpNow.bottom - px(5), RGB(0, 255, 0)), RGB(0, 255, 0));

    // The filter and a column width are saved when the game ends, and read at the next start; the
    // file holds widths at 96 DPI.
    pets.ChooseFilter(1);
    ::SendMessageW(pets.list, LVM_SETCOLUMNWIDTH, 1, px(133));
    ::PostMessageW(pets.game, WM_CLOSE, 0, 0);
    ASSERT_EQ(pets.companion->WaitExit(15000), 1u);
    const std::string saved = ReadFile(pets.install, L"PetInfo.kcsv");
    for (const char* option : {"Mine:keep this", "iFilterIndex:1", "iNameColumnWidth:133", "colHpBar:#00ff00"})
        EXPECT_NE(saved.find(option), std::string::npos) << option << " in\n" << saved;

    pets.Start("");
    EXPECT_EQ(::SendDlgItemMessageW(pets.panel, kFilterId, CB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(::SendMessageW(pets.list, LVM_GETCOLUMNWIDTH, 1, 0), px(133));
}

}  // namespace
