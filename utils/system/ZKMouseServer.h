// ZKMouseServer.h: the state of the mouse buttons and the cursor right now.
//
// A server class: static functions only, no state. The state is Qt's
// (QGuiApplication::mouseButtons, QCursor::pos) and so needs a
// QGuiApplication (or QApplication); without one no button is down and the
// cursor is at (0, 0). Call it from the GUI thread.
#pragma once

#include "ZKExport.h"
#include "ZKModifierFlags.h"
#include "ZKVec.h"

class ZKUTILS_EXPORT ZKMouseServer {
public:
    ZKMouseServer() = delete;

    // LeftButton, RightButton and MiddleButton for the buttons that are down.
    static ZKModifierFlags getCurrentButtonModifiers();
    // True if any requested button bit is down.
    static bool isButtonPressed(int flags);
    static bool isButtonPressed(const ZKModifierFlags& flags);
    // The cursor in global screen coordinates.
    static ZKVec2i getCursorPos();
    // Kept empty: the cursor is never moved by the library.
    static void setCursorPos(const ZKVec2i& pos);
    // Kept empty: there is nothing to log.
    static void debugLogMouseModifierStates();
};
