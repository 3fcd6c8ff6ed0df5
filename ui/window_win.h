#pragma once
// Our small window layer: a thin handle wrapper, and window and frame bases whose whole behaviour
// is one message-map dispatch per class (a switch from message to small handler functions).

#include <windows.h>

namespace vrl {

// A window handle with the few helpers the panels use. Owns nothing.
class CWindow {
public:
    CWindow() = default;
    explicit CWindow(HWND hwnd) : m_hWnd(hwnd) {}

    HWND Handle() const { return m_hWnd; }
    bool IsWindow() const { return m_hWnd && ::IsWindow(m_hWnd); }
    HWND Item(int id) const { return ::GetDlgItem(m_hWnd, id); }
    LRESULT Send(UINT msg, WPARAM wp = 0, LPARAM lp = 0) const { return ::SendMessageW(m_hWnd, msg, wp, lp); }
    bool Post(UINT msg, WPARAM wp = 0, LPARAM lp = 0) const { return ::PostMessageW(m_hWnd, msg, wp, lp) != FALSE; }
    void SetText(const wchar_t* text) const { ::SetWindowTextW(m_hWnd, text); }
    void Show(int command) const { ::ShowWindow(m_hWnd, command); }
    bool IsVisible() const { return ::IsWindowVisible(m_hWnd) != FALSE; }
    // Top of the Z order, shown and activated, position and size kept.
    void ShowInFront() const {
        ::SetWindowPos(m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);
    }
    void Destroy() {
        if (IsWindow()) ::DestroyWindow(m_hWnd);
        m_hWnd = nullptr;
    }

protected:
    HWND m_hWnd = nullptr;
};

class CMessageMap {
public:
    virtual ~CMessageMap() = default;
    // The class's message map: true when the message was handled, with its answer in `result`.
    virtual bool ProcessWindowMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) = 0;
};

// Binds a window handle to its object on the first message the window receives and routes every
// later message to the object's dispatch.
class CWindowImplBase : public CWindow, public CMessageMap {
public:
    CWindowImplBase() = default;
    CWindowImplBase(const CWindowImplBase&) = delete;
    CWindowImplBase& operator=(const CWindowImplBase&) = delete;

protected:
    // Called after the last message (WM_NCDESTROY); the object outlives its window.
    virtual void OnFinalMessage(HWND) {}

    // Creation bookkeeping: the object that the next window created on this thread belongs to.
    static void ExpectCreation(CWindowImplBase* object);
    static CWindowImplBase* TakeCreation();
    // The creation failed before the window saw a message: forget that `object` was waiting.
    static void CancelCreation(CWindowImplBase* object);

    void Attach(HWND hwnd) { m_hWnd = hwnd; }
    void Detach() { m_hWnd = nullptr; }

    // The class's message map as every window procedure of the layer calls it. Nothing thrown in
    // a handler leaves it: the message counts as handled, with the answer 0.
    bool Dispatch(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) noexcept;
};

// A top-level or child window of a class of our own.
class CWindowImpl : public CWindowImplBase {
public:
    struct ClassSpec {
        const wchar_t* name;
        UINT style = 0;
        int windowExtraBytes = 0;
        HBRUSH background = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    };

    // Registers the class on first use (once per process) and creates the window.
    HWND Create(const ClassSpec& spec, HWND parent, const wchar_t* title, DWORD style, DWORD exStyle,
                int x = CW_USEDEFAULT, int y = CW_USEDEFAULT, int width = CW_USEDEFAULT,
                int height = CW_USEDEFAULT, HMENU menu = nullptr);

protected:
    // What an unhandled message gets; a frame adds its own handling in front of the default.
    virtual LRESULT DefaultHandling(UINT msg, WPARAM wp, LPARAM lp);

private:
    static LRESULT CALLBACK StartWindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    LRESULT Route(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
};

// A frame: a top-level window whose destruction ends the message loop with the value 1.
class CFrameWindowImpl : public CWindowImpl {
protected:
    LRESULT DefaultHandling(UINT msg, WPARAM wp, LPARAM lp) override;
};

}  // namespace vrl
