// ZKKeyboardServer.h: the state of the modifier keys right now.
//
// A server class: static functions only, no state. The keys are polled from
// the system at each call, not tracked from events, so the answer is the
// same in any thread and whether or not a window has the focus. Only the
// left-hand Shift, Alt (Option), Control and Command keys are seen, plus
// Caps Lock and Tab as "extra keys"; without a reachable keyboard (no display
// server) no key is down.
#pragma once

#include "ZKExport.h"
#include "ZKModifierFlags.h"

class ZKUTILS_EXPORT ZKKeyboardServer {
public:
    ZKKeyboardServer() = delete;

    // Shift, Alt, Ctrl and Command for the left-hand keys that are down; with
    // `withExtraKeys`, also CapsLock and Tab.
    static ZKModifierFlags getCurrentKeyModifiers(bool withExtraKeys);
    // True if any bit of `flags` is down among the modifiers and extra keys.
    static bool isKeyPressed(int flags);
    // True if any bit of `flags` is down among the four modifiers only.
    static bool isKeyPressed(const ZKModifierFlags& flags);
    // Adds CapsLock and Tab when they are down; clears nothing.
    static void completeExtraKeyModifiers(ZKModifierFlags& flags);
    // Writes the current states to the user log (ZKLog::userLog), one line.
    static void debugLogKeyModifierStates();
};

// Bit `keyCode mod 32` of the 32-bit word `keyCode / 32` of `keyMap` (a key
// map of 128 bits as four words). A key code outside 0 ... 127 is never down:
// the map holds no bit for it.
ZKUTILS_EXPORT bool IS_KEYDOWN(int keyCode, const unsigned int* keyMap);
