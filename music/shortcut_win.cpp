#include "music/shortcut_win.h"

#include <windows.h>
#include <objidl.h>
#include <shlobj.h>

#include "ui/wide_win.h"

namespace vrl {
namespace {

// Releases a COM interface pointer when the resolution ends, whichever step failed.
template <typename T>
class ComRef {
public:
    ComRef() = default;
    ~ComRef() {
        if (ptr_) ptr_->Release();
    }
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    T* operator->() const { return ptr_; }
    void** Out() { return reinterpret_cast<void**>(&ptr_); }

private:
    T* ptr_ = nullptr;
};

}  // namespace

std::u16string ResolveShortcut(const std::u16string& path) {
    ComRef<IShellLinkW> link;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                link.Out()))) {
        return path;
    }
    ComRef<IPersistFile> file;
    if (FAILED(link->QueryInterface(IID_IPersistFile, file.Out()))) return path;
    if (FAILED(file->Load(W(path), STGM_READ))) return path;

    wchar_t target[MAX_PATH] = {};
    // S_FALSE means the shortcut names no file-system item: keep the name as given.
    if (link->GetPath(target, MAX_PATH, nullptr, SLGP_UNCPRIORITY) != S_OK || target[0] == 0) {
        return path;
    }
    return U(target);
}

}  // namespace vrl
