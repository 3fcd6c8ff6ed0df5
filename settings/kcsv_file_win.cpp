// KcsvFile's file access: whole-file reads with read sharing, and saves that never leave the
// player's table half written.

#include "settings/kcsv.h"
#include "ui/lang_text.h"
#include "ui/wide_win.h"

#include <algorithm>
#include <new>
#include <string>

namespace vrl {
namespace {

const LangText kCannotOpen{u"Cannot open file", u"ファイルを開くことができません"};
const LangText kFileName{u"File name", u"ファイル名"};
const LangText kErrorCaption{u"Vorrel Error", u"Vorrel エラー"};

// Another program may hold the table or our temporary open for a moment: an editor saving, a
// spreadsheet, a virus scanner that opens every new file. Windows then refuses with a sharing,
// lock or access-denied error that passes; a save tries again for up to about a second.
constexpr int kWriteAttempts = 10;
constexpr DWORD kWriteRetryPauseMs = 100;

bool MayPass(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_ACCESS_DENIED;
}

template <class Attempt>
bool WithRetries(Attempt attempt) {
    for (int tries = 1;; ++tries) {
        if (attempt()) return true;
        const DWORD error = GetLastError();
        if (tries == kWriteAttempts || !MayPass(error)) return false;
        Sleep(kWriteRetryPauseMs);
        SetLastError(error);
    }
}

// Tables are tens to hundreds of rows; anything this large is not a table and is not read.
constexpr LONGLONG kLargestFile = 256LL * 1024 * 1024;

class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : handle_(handle) {}
    ~FileHandle() { Close(); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    bool Valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }
    bool Close() {
        const bool ok = !Valid() || CloseHandle(handle_) != FALSE;
        handle_ = INVALID_HANDLE_VALUE;
        return ok;
    }

private:
    HANDLE handle_;
};

void ShowCannotOpen(const std::u16string& path) {
    std::u16string text = std::u16string(kCannotOpen.Get()) + u"\r\n" + kFileName.Get() + u" " + path;
    text.resize(std::min<std::size_t>(text.size(), 1023));
    MessageBoxW(nullptr, W(text), W(kErrorCaption.Get()), MB_OK | MB_ICONWARNING);
}

void ShowCannotWrite(const std::u16string& path) {
    std::u16string text = u"KCSV error: Cannot write \"" + path + u"\".";
    text.resize(std::min<std::size_t>(text.size(), 512));
    MessageBoxW(nullptr, W(text), W(kAppName), MB_OK);
}

bool ReadWhole(HANDLE file, std::string& bytes) {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size) || size.QuadPart <= 0 || size.QuadPart > kLargestFile) return false;
    try {
        bytes.resize(static_cast<std::size_t>(size.QuadPart));
    } catch (const std::bad_alloc&) {
        return false;
    }
    DWORD read = 0;
    return ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) &&
           read == bytes.size();
}

bool WriteWhole(HANDLE file, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1u << 30));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data() + done, chunk, &written, nullptr) || written == 0) return false;
        done += written;
    }
    return FlushFileBuffers(file) != FALSE;
}

// Beside the target, so that the final rename stays within one folder (and one volume).
std::u16string TemporaryPathFor(const std::u16string& path) {
    return path + u".~" + std::u16string(U(std::to_wstring(GetCurrentProcessId()).c_str())) + u".tmp";
}

}  // namespace

bool KcsvFile::LoadFile(const std::u16string& path) {
    if (GetFileAttributesW(W(path)) == INVALID_FILE_ATTRIBUTES) return false;
    FileHandle file(CreateFileW(W(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.Valid()) {
        ShowCannotOpen(path);
        return false;
    }
    std::string bytes;
    if (!ReadWhole(file.Get(), bytes)) return false;
    file.Close();
    try {
        return ParseUtf8(bytes);
    } catch (const std::bad_alloc&) {
        Clear();
        return false;
    }
}

// The new content goes to a temporary file first and replaces the table only once it is
// completely written and flushed; whatever fails on the way, the old file stays as it was.
bool KcsvFile::SaveFile(const std::u16string& path) const {
    const DWORD attributes = GetFileAttributesW(W(path));
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        ShowCannotWrite(path);
        return false;
    }
    const std::u16string temporary = TemporaryPathFor(path);
    HANDLE created = INVALID_HANDLE_VALUE;
    WithRetries([&] {
        created = CreateFileW(W(temporary), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
        return created != INVALID_HANDLE_VALUE;
    });
    FileHandle file(created);
    if (!file.Valid()) {
        ShowCannotWrite(path);
        return false;
    }
    bool written = false;
    try {
        written = WriteWhole(file.Get(), ToUtf8());
    } catch (const std::bad_alloc&) {
        written = false;
    }
    written = file.Close() && written;
    const auto replace = [&] {
        return MoveFileExW(W(temporary), W(path), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
    };
    if (!written || !WithRetries(replace)) {
        DeleteFileW(W(temporary));
        ShowCannotWrite(path);
        return false;
    }
    return true;
}

}  // namespace vrl
