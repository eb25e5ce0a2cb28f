// Key state on Linux: the X server's key map (XQueryKeymap), read through one
// display connection that the library opens on first use and reopens when
// DISPLAY changes or the server went away. All calls are serialised by one
// lock, so any thread may ask.
#include "ZKNative.h"

#include <X11/Xlib.h>
#include <X11/keysym.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

namespace {

struct KeyToFlag {
    KeySym keySym;
    unsigned int flag;
};

// Kept: only the left-hand modifier keys are read; the right-hand Shift,
// Alt and Control keys are not seen, as on the original keyboard service.
constexpr KeyToFlag kWatchedKeys[] = {
    {XK_Shift_L, 1}, {XK_Alt_L, 2},      {XK_Control_L, 4},
    {XK_Super_L, 8}, {XK_Caps_Lock, 16}, {XK_Tab, 32},
};
constexpr int kWatchedKeyCount = int(sizeof kWatchedKeys / sizeof kWatchedKeys[0]);

class KeyboardConnection {
public:
    ~KeyboardConnection() { close(); }

    unsigned int keysDown() {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!ensureOpen())
            return 0;
        char keys[32];
        std::memset(keys, 0, sizeof keys);
        XQueryKeymap(m_display, keys);
        if (m_broken)
            return 0;
        unsigned int flags = 0;
        for (int i = 0; i < kWatchedKeyCount; ++i) {
            const unsigned int code = m_keyCodes[i];
            // Key code 0 means the key symbol is not on this keyboard.
            if (code != 0 && code < 256 && (keys[code / 8] >> (code % 8)) & 1)
                flags |= kWatchedKeys[i].flag;
        }
        return flags;
    }

private:
    bool ensureOpen() {
        const char* env = std::getenv("DISPLAY");
        const std::string name = env ? env : "";
        if (m_display && !m_broken && name == m_displayName)
            return true;
        close();
        if (name.empty())
            return false;
        m_display = XOpenDisplay(name.c_str());
        if (!m_display)
            return false;
        m_displayName = name;
        m_broken = false;
        // A lost server must not end the program: Xlib's default I/O error
        // handler exits, so for this connection only the handler returns and
        // the exit step just marks the link broken; the next call reconnects.
        // Other connections keep the handler that was there before.
        s_ownDisplay.store(m_display);
        static const XIOErrorHandler previous = XSetIOErrorHandler(&KeyboardConnection::onIOError);
        s_previousHandler = previous;
        XSetIOErrorExitHandler(m_display, &KeyboardConnection::onConnectionLost, this);
        for (int i = 0; i < kWatchedKeyCount; ++i)
            m_keyCodes[i] = XKeysymToKeycode(m_display, kWatchedKeys[i].keySym);
        return true;
    }

    void close() {
        if (m_display)
            XCloseDisplay(m_display);
        s_ownDisplay.store(nullptr);
        m_display = nullptr;
        m_displayName.clear();
        m_broken = false;
    }

    static int onIOError(Display* display) {
        if (display == s_ownDisplay.load())
            return 0;
        return s_previousHandler ? s_previousHandler(display) : 0;
    }

    static void onConnectionLost(Display*, void* self) {
        static_cast<KeyboardConnection*>(self)->m_broken = true;
    }

    static inline std::atomic<Display*> s_ownDisplay{nullptr};
    static inline XIOErrorHandler s_previousHandler = nullptr;

    std::mutex m_mutex;
    Display* m_display = nullptr;
    std::string m_displayName;
    bool m_broken = false;
    unsigned int m_keyCodes[kWatchedKeyCount] = {};
};

KeyboardConnection& connection() {
    static KeyboardConnection instance;
    return instance;
}

} // namespace

unsigned int ZKNative::keysDown() {
    return connection().keysDown();
}
