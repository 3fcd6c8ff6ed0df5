#include "app/process_with_dll_win.h"

#include "app/pe_image.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vrl {
namespace {

// A header page is always mapped; sane images keep their DOS, NT and section headers inside it.
constexpr std::size_t kHeaderReadSize = 0x1000;
// Import RVAs are 32-bit and the loader adds them to the image base: the new block must lie above
// the image and well within reach of it.
constexpr std::uintptr_t kImportReach = 0x7FF00000;

class ScopedHandle {
public:
    explicit ScopedHandle(HANDLE h) : handle_(h) {}
    ~ScopedHandle() {
        if (handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    }
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;
    HANDLE get() const { return handle_; }
    bool valid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE handle_;
};

bool ReadRemote(HANDLE process, std::uintptr_t address, void* buffer, std::size_t size) {
    SIZE_T done = 0;
    return ReadProcessMemory(process, reinterpret_cast<LPCVOID>(address), buffer, size, &done) && done == size;
}

bool WriteRemote(HANDLE process, std::uintptr_t address, const void* data, std::size_t size) {
    SIZE_T done = 0;
    return WriteProcessMemory(process, reinterpret_cast<LPVOID>(address), data, size, &done) && done == size;
}

// The leading fields of PROCESS_BASIC_INFORMATION, which is all we read.
struct ProcessBasicInformation {
    void* exitStatus;
    void* pebBaseAddress;
    void* reserved[4];
};
using NtQueryInformationProcessFn = LONG(NTAPI*)(HANDLE, int, PVOID, ULONG, PULONG);

// The PEB of a process of our own bitness holds the image base after two pointer-sized fields.
std::uintptr_t ImageBaseFromPeb(HANDLE process, std::uintptr_t peb) {
    std::uintptr_t base = 0;
    if (peb == 0 || !ReadRemote(process, peb + 2 * sizeof(void*), &base, sizeof(base))) return 0;
    return base;
}

std::uintptr_t RemoteImageBase(HANDLE process, HANDLE thread) {
    const auto query = reinterpret_cast<NtQueryInformationProcessFn>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess"));
    ProcessBasicInformation info{};
    if (query != nullptr && query(process, 0, &info, sizeof(info), nullptr) >= 0) {
        const std::uintptr_t base = ImageBaseFromPeb(process, reinterpret_cast<std::uintptr_t>(info.pebBaseAddress));
        if (base != 0) return base;
    }
    // A new process's main thread starts with the PEB in a register of its initial context.
    CONTEXT context{};
    context.ContextFlags = CONTEXT_INTEGER;
    if (!GetThreadContext(thread, &context)) return 0;
#if defined(_WIN64)
    return ImageBaseFromPeb(process, static_cast<std::uintptr_t>(context.Rdx));
#else
    return ImageBaseFromPeb(process, static_cast<std::uintptr_t>(context.Ebx));
#endif
}

// Reserves and commits `size` bytes in the first free place above the image that 32-bit RVAs reach.
std::uintptr_t AllocateAboveImage(HANDLE process, std::uintptr_t base, std::uint32_t sizeOfImage, std::size_t size) {
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    const std::uintptr_t granularity = system.dwAllocationGranularity;
    const std::uintptr_t highest = reinterpret_cast<std::uintptr_t>(system.lpMaximumApplicationAddress);
    const std::uintptr_t limit = highest - base > kImportReach ? base + kImportReach : highest;

    std::uintptr_t address = (base + sizeOfImage + granularity - 1) / granularity * granularity;
    while (address > base && address < limit && limit - address > size) {
        MEMORY_BASIC_INFORMATION region{};
        if (VirtualQueryEx(process, reinterpret_cast<LPCVOID>(address), &region, sizeof(region)) == 0) break;
        const std::uintptr_t regionEnd = reinterpret_cast<std::uintptr_t>(region.BaseAddress) + region.RegionSize;
        if (region.State == MEM_FREE && regionEnd - address >= size) {
            void* block = VirtualAllocEx(process, reinterpret_cast<LPVOID>(address), size,
                                         MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
            if (block != nullptr) return reinterpret_cast<std::uintptr_t>(block);
        }
        address = (regionEnd + granularity - 1) / granularity * granularity;
    }
    return 0;
}

// The existing import descriptors of the remote image, without the terminator.
bool ReadImportDescriptors(HANDLE process, std::uintptr_t base, const PeHeaders& pe, std::vector<unsigned char>* out) {
    out->clear();
    const PeDataDirectory imports = pe.Directory(kPeDirImport);
    if (imports.rva == 0) return true;
    std::vector<unsigned char> descriptor(kImportDescriptorSize);
    // Bounded by the image: a directory without its terminator must not walk memory forever.
    for (std::uint32_t rva = imports.rva; rva + kImportDescriptorSize <= pe.sizeOfImage; rva += kImportDescriptorSize) {
        if (!ReadRemote(process, base + rva, descriptor.data(), descriptor.size())) return false;
        if (CountImportDescriptors(descriptor.data(), descriptor.size()) == 0) return true;
        out->insert(out->end(), descriptor.begin(), descriptor.end());
    }
    return false;
}

// Points the import directory at `block` and drops the bound imports, which describe the old table.
bool PatchDirectories(HANDLE process, std::uintptr_t base, const PeHeaders& pe, const ImportBlock& block) {
    const std::uintptr_t first = base + pe.DirectoryEntryOffset(kPeDirImport);
    const bool hasBound = pe.directoryCount > kPeDirBoundImport;
    const std::uintptr_t last = base + pe.DirectoryEntryOffset(hasBound ? kPeDirBoundImport : kPeDirImport) + 8;
    DWORD oldProtect = 0;
    if (!VirtualProtectEx(process, reinterpret_cast<LPVOID>(first), last - first, PAGE_READWRITE, &oldProtect)) {
        return false;
    }
    const std::uint32_t import[2] = {block.directoryRva, block.directorySize};
    const std::uint32_t none[2] = {0, 0};
    bool ok = WriteRemote(process, first, import, sizeof(import));
    if (ok && hasBound) ok = WriteRemote(process, base + pe.DirectoryEntryOffset(kPeDirBoundImport), none, sizeof(none));
    DWORD ignored = 0;
    VirtualProtectEx(process, reinterpret_cast<LPVOID>(first), last - first, oldProtect, &ignored);
    return ok;
}

// Adds the DLL to the suspended process's import directory; on failure the reason is in GetLastError().
bool AddDllToImports(const PROCESS_INFORMATION& pi, const std::string& dllName, const DllFileInfo* dll) {
    const std::uintptr_t base = RemoteImageBase(pi.hProcess, pi.hThread);
    std::vector<unsigned char> header(kHeaderReadSize);
    PeHeaders pe;
    if (base == 0 || !ReadRemote(pi.hProcess, base, header.data(), header.size()) ||
        !ParsePeHeaders(header.data(), header.size(), &pe)) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return false;
    }
    if (dll != nullptr && (dll->machine != pe.machine || dll->pe32plus != pe.pe32plus)) {
        SetLastError(ERROR_EXE_MACHINE_TYPE_MISMATCH);
        return false;
    }
    std::vector<unsigned char> descriptors;
    if (!ReadImportDescriptors(pi.hProcess, base, pe, &descriptors)) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return false;
    }
    // The RVA is only known once the block is placed, but its size does not depend on it.
    ImportBlock sizing;
    if (!BuildImportBlock(descriptors, 0, dllName, pe.pe32plus, &sizing)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    const std::uintptr_t blockAddress = AllocateAboveImage(pi.hProcess, base, pe.sizeOfImage, sizing.bytes.size());
    ImportBlock block;
    if (blockAddress == 0 ||
        !BuildImportBlock(descriptors, static_cast<std::uint32_t>(blockAddress - base), dllName, pe.pe32plus, &block) ||
        !WriteRemote(pi.hProcess, blockAddress, block.bytes.data(), block.bytes.size()) ||
        !PatchDirectories(pi.hProcess, base, pe, block)) {
        if (GetLastError() == ERROR_SUCCESS) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    return true;
}

bool NameIsPath(const std::string& name) { return name.find_first_of("\\/:") != std::string::npos; }

// Checks the DLL file the loader will open: a DLL that exports ordinal 1.
bool InspectDllPath(const std::string& path, DllFileInfo* info) {
    ScopedHandle file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return false;
    ScopedHandle mapping(CreateFileMappingW(file.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (!mapping.valid()) return false;
    LARGE_INTEGER size{};
    GetFileSizeEx(file.get(), &size);
    const void* view = MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0);
    if (view == nullptr) return false;
    const bool isDll = InspectDllFile(static_cast<const unsigned char*>(view), static_cast<std::size_t>(size.QuadPart), info);
    UnmapViewOfFile(view);
    if (!isDll) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return false;
    }
    if (!info->exportsOrdinal1) {
        SetLastError(ERROR_INVALID_ORDINAL);
        return false;
    }
    return true;
}

bool IsPlainAscii(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c > 0 && c < 0x80; });
}

}  // namespace

BOOL CreateProcessWithDllW(LPCWSTR applicationName, LPWSTR commandLine,
                           LPSECURITY_ATTRIBUTES processAttributes, LPSECURITY_ATTRIBUTES threadAttributes,
                           BOOL inheritHandles, DWORD creationFlags, LPVOID environment,
                           LPCWSTR currentDirectory, LPSTARTUPINFOW startupInfo,
                           LPPROCESS_INFORMATION processInformation, LPCSTR dllName) {
    if (processInformation == nullptr || dllName == nullptr || dllName[0] == '\0') {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *processInformation = PROCESS_INFORMATION{};
    DllFileInfo dll;
    const bool byPath = NameIsPath(dllName);
    if (byPath && !InspectDllPath(dllName, &dll)) return FALSE;

    PROCESS_INFORMATION pi{};
    if (!CreateProcessW(applicationName, commandLine, processAttributes, threadAttributes, inheritHandles,
                        creationFlags | CREATE_SUSPENDED, environment, currentDirectory, startupInfo, &pi)) {
        return FALSE;
    }
    if (!AddDllToImports(pi, dllName, byPath ? &dll : nullptr)) {
        const DWORD error = GetLastError();
        TerminateProcess(pi.hProcess, error);
        WaitForSingleObject(pi.hProcess, 5000);
        CloseHandle(pi.hThread);
        CloseHandle(pi.hProcess);
        SetLastError(error);
        return FALSE;
    }
    if ((creationFlags & CREATE_SUSPENDED) == 0) ResumeThread(pi.hThread);
    *processInformation = pi;
    return TRUE;
}

std::string ChooseDllImportName(const std::wstring& widePath, const std::string& ansiPath) {
    if (IsPlainAscii(widePath)) return std::string(widePath.begin(), widePath.end());
    const DWORD length = GetShortPathNameW(widePath.c_str(), nullptr, 0);
    if (length > 0) {
        std::wstring shortPath(length, L'\0');
        const DWORD written = GetShortPathNameW(widePath.c_str(), &shortPath[0], length);
        shortPath.resize(written < length ? written : 0);
        if (!shortPath.empty() && IsPlainAscii(shortPath)) return std::string(shortPath.begin(), shortPath.end());
    }
    return ansiPath;
}

}  // namespace vrl
