#include "ZKModifierFlags.h"

#include <gtest/gtest.h>

TEST(ZKModifierFlags, BitValuesFollowQtButtonsShiftedBy8) {
    EXPECT_EQ(ZKModifierFlags::LeftButton, unsigned(Qt::LeftButton) << 8);
    EXPECT_EQ(ZKModifierFlags::RightButton, unsigned(Qt::RightButton) << 8);
    EXPECT_EQ(ZKModifierFlags::MiddleButton, unsigned(Qt::MiddleButton) << 8);
    ZKModifierFlags flags(0x105);
    EXPECT_EQ(flags.getFlags(), 0x105u);
    flags.setFlags(6);
    EXPECT_EQ(flags.m_flags, 6u);
    EXPECT_EQ(ZKModifierFlags().getFlags(), 0u);
}

TEST(ZKModifierFlags, ToStringListsCtrlShiftAltInFixedOrder) {
    EXPECT_EQ(ZKModifierFlags(0).toString(), ZKStringC(""));
    EXPECT_EQ(ZKModifierFlags(1).toString(), ZKStringC("Shift"));
    EXPECT_EQ(ZKModifierFlags(2).toString(), ZKStringC("Alt"));
    EXPECT_EQ(ZKModifierFlags(4).toString(), ZKStringC("Ctrl"));
    EXPECT_EQ(ZKModifierFlags(1 | 4).toString(), ZKStringC("Ctrl+Shift"));
    EXPECT_EQ(ZKModifierFlags(2 | 1).toString(), ZKStringC("Shift+Alt"));
    EXPECT_EQ(ZKModifierFlags(7).toString(), ZKStringC("Ctrl+Shift+Alt"));
    // Command, the extra keys and the mouse buttons never appear.
    EXPECT_EQ(ZKModifierFlags(8 | 16 | 32 | 0x700).toString(), ZKStringC(""));
    EXPECT_EQ(ZKModifierFlags(8 | 4 | 0x100).toString(), ZKStringC("Ctrl"));
}

TEST(ZKModifierFlags, FromStringLooksForCaseSensitiveSubstrings) {
    ZKModifierFlags flags(0x7FF);
    flags.fromString("Ctrl+Shift");
    EXPECT_EQ(flags.getFlags(), 5u); // every other bit cleared
    flags.fromString("ShiftCtrl");
    EXPECT_EQ(flags.getFlags(), 5u);
    flags.fromString("Alt");
    EXPECT_EQ(flags.getFlags(), 2u);
    flags.fromString("alt+ctrl");
    EXPECT_EQ(flags.getFlags(), 0u);
    flags.fromString("xxAltxxCtrlxxShift");
    EXPECT_EQ(flags.getFlags(), 7u);
    flags.fromString("");
    EXPECT_EQ(flags.getFlags(), 0u);
    flags.fromString("Command+Tab");
    EXPECT_EQ(flags.getFlags(), 0u);
    // Round trip of every modifier combination.
    for (unsigned bits = 0; bits < 8; ++bits) {
        ZKModifierFlags back;
        back.fromString(ZKModifierFlags(bits).toString());
        EXPECT_EQ(back.getFlags(), bits);
    }
}
