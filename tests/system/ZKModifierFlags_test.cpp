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
}

TEST(ZKModifierFlags, TextListsCtrlShiftAltAndReadsCaseSensitiveSubstrings) {
    // Command, the extra keys and the mouse buttons never appear.
    const std::pair<unsigned, const char*> written[] = {{0, ""},
                                                        {1, "Shift"},
                                                        {2, "Alt"},
                                                        {4, "Ctrl"},
                                                        {5, "Ctrl+Shift"},
                                                        {3, "Shift+Alt"},
                                                        {7, "Ctrl+Shift+Alt"},
                                                        {8 | 16 | 32 | 0x700, ""},
                                                        {8 | 4 | 0x100, "Ctrl"}};
    for (const auto& c : written)
        EXPECT_EQ(ZKModifierFlags(c.first).toString(), ZKStringC(c.second)) << c.first;

    // Reading clears every other bit.
    const std::pair<const char*, unsigned> read[] = {
        {"Ctrl+Shift", 5}, {"ShiftCtrl", 5}, {"alt+ctrl", 0},   {"xxAltxxCtrlxxShift", 7},
        {"", 0},           {"Alt", 2},       {"Command+Tab", 0}};
    for (const auto& c : read) {
        ZKModifierFlags flags(0x7FF);
        flags.fromString(c.first);
        EXPECT_EQ(flags.getFlags(), c.second) << c.first;
    }
}
