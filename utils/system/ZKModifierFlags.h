// ZKModifierFlags.h: one flag word for the modifier keys and mouse buttons.
//
// A small value type: the keyboard and mouse services fill it, the
// application tests its bits and turns it into a short text such as
// "Ctrl+Shift" for menus and settings. Copies are independent; a value must
// not be changed from two threads at once.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"

class ZKUTILS_EXPORT ZKModifierFlags {
public:
    // The bits of the word. The mouse bits are Qt's button bits shifted left
    // by 8.
    enum : unsigned int {
        Shift = 1,
        Alt = 2, // the Option key
        Ctrl = 4,
        Command = 8,
        CapsLock = 16, // extra key
        Tab = 32,      // extra key
        LeftButton = 0x100,
        RightButton = 0x200,
        MiddleButton = 0x400,
    };

    explicit ZKModifierFlags(unsigned int flags = 0) : m_flags(flags) {}

    unsigned int getFlags() const { return m_flags; }
    void setFlags(unsigned int flags) { m_flags = flags; }

    // "Ctrl+", "Shift+", "Alt+" in this fixed order for the bits that are set,
    // without the last "+": Ctrl and Shift give "Ctrl+Shift", no flag gives
    // "". The Command, extra-key and mouse bits never appear.
    ZKStringC toString() const;
    // The flags become Ctrl, Shift and Alt for each of "Ctrl", "Shift" and
    // "Alt" found anywhere in `text` (case-sensitive; separators are not
    // looked at, so "ShiftCtrl" gives Ctrl and Shift); every other bit is
    // cleared.
    void fromString(const ZKStringC& text);

    unsigned int m_flags;
};
