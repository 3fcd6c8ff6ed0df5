#include "app/tray_icon_win.h"

#include <cwchar>

#include "app/resources/resource_ids.h"
#include "ui/lang_text.h"
#include "ui/wide_win.h"

namespace vrl {

HICON TrayIcon::LoadTrayIcon(HWND frame, HINSTANCE instance) {
    if (::GetFileAttributesW(L"VrlTray.ico") != INVALID_FILE_ATTRIBUTES) {
        HICON icon = static_cast<HICON>(::LoadImageW(nullptr, L"VrlTray.ico", IMAGE_ICON,
                                                     ::GetSystemMetrics(SM_CXSMICON),
                                                     ::GetSystemMetrics(SM_CYSMICON), LR_LOADFROMFILE));
        if (icon) return ownedIcon_ = icon;
    }
    HICON icon = static_cast<HICON>(
        ::LoadImageW(instance, MAKEINTRESOURCEW(IDI_VRL_TRAY), IMAGE_ICON, 48, 48, LR_DEFAULTCOLOR));
    if (icon) return ownedIcon_ = icon;
    return reinterpret_cast<HICON>(::GetClassLongPtrW(frame, GCLP_HICONSM));
}

void TrayIcon::Add(HWND frame, HINSTANCE instance) {
    if (added_) return;
    data_ = NOTIFYICONDATAW{};
    data_.cbSize = sizeof data_;
    data_.hWnd = frame;
    data_.uID = kId;
    data_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    data_.uCallbackMessage = kCallbackMessage;
    data_.hIcon = LoadTrayIcon(frame, instance);
    std::wcsncpy(data_.szTip, W(kAppName), ARRAYSIZE(data_.szTip) - 1);
    added_ = ::Shell_NotifyIconW(NIM_ADD, &data_) != FALSE;
}

void TrayIcon::Remove() {
    if (added_) ::Shell_NotifyIconW(NIM_DELETE, &data_);
    added_ = false;
}

TrayIcon::~TrayIcon() {
    Remove();
    if (ownedIcon_) ::DestroyIcon(ownedIcon_);
}

}  // namespace vrl
