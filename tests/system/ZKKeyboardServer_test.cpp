#include "ZKChildProcess.h"
#include "ZKKeyboardServer.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(ZKKeyboardServer, IsKeyDownReadsBitsOfThirtyTwoBitWords) {
    const unsigned int map[4] = {0x1u, 0x80000000u, 0u, 0x4u};
    EXPECT_TRUE(IS_KEYDOWN(0, map));
    EXPECT_FALSE(IS_KEYDOWN(1, map));
    EXPECT_TRUE(IS_KEYDOWN(63, map));
    EXPECT_FALSE(IS_KEYDOWN(32, map));
    EXPECT_TRUE(IS_KEYDOWN(98, map));
    EXPECT_FALSE(IS_KEYDOWN(127, map));
    EXPECT_FALSE(IS_KEYDOWN(-1, map));
    EXPECT_FALSE(IS_KEYDOWN(0, nullptr));
    // The map has 128 bits: codes past it are never down, nothing is read
    // beyond the four words.
    const unsigned int wide[8] = {0u, 0u, 0u, 0u, 0x1u, 0u, 0u, 0x80000000u};
    EXPECT_FALSE(IS_KEYDOWN(128, wide));
    EXPECT_FALSE(IS_KEYDOWN(255, wide));
}

TEST(ZKKeyboardServer, NoReachableDisplayMeansNoKeyDown) {
    for (const char* display : {"", ":4321", "no-such-host:0"}) {
        ZKEnvGuard env;
        if (*display)
            env.set("DISPLAY", display);
        else
            env.unset("DISPLAY");
        EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u) << display;
        EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(-1));
        EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(ZKModifierFlags(0xFF)));
        // Extra keys are only ever added.
        ZKModifierFlags flags(0x105);
        ZKKeyboardServer::completeExtraKeyModifiers(flags);
        EXPECT_EQ(flags.getFlags(), 0x105u);
    }
}

namespace {

// Presses (or releases) a key in the X server of DISPLAY.
void xdotool(const char* action, const char* key) {
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                                {QString::fromLatin1(action), QString::fromLatin1(key)}),
              0)
        << action << " " << key;
}

unsigned int modifiersWhileHeld(const char* key, bool withExtraKeys) {
    xdotool("keydown", key);
    const unsigned int flags = ZKKeyboardServer::getCurrentKeyModifiers(withExtraKeys).getFlags();
    xdotool("keyup", key);
    return flags;
}

// Holds only the right-hand key: xdotool presses the left-hand twin with it,
// so that one is let go again.
unsigned int modifiersWhileOnlyRightHeld(const char* rightKey, const char* leftKey) {
    xdotool("keydown", rightKey);
    xdotool("keyup", leftKey);
    const unsigned int flags = ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags();
    xdotool("keydown", leftKey);
    const unsigned int withLeft = ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags();
    xdotool("keyup", leftKey);
    xdotool("keyup", rightKey);
    return flags | (withLeft << 16);
}

} // namespace

// Runs inside a private X server, started by the test below.
TEST(DISABLED_ZKKeyboardUnderX, OnlyLeftHandModifiersAreSeen) {
    const QString marker = QFile::decodeName(qgetenv("ZK_CHILD_RECORD"));
    if (marker.isEmpty())
        GTEST_SKIP() << "runs only under the X server of KeyStateUnderRealXServer";
    QFile(marker).open(QIODevice::WriteOnly);

    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u);
    EXPECT_EQ(modifiersWhileHeld("Shift_L", false), 1u);
    EXPECT_EQ(modifiersWhileHeld("Control_L", false), 4u);
    EXPECT_EQ(modifiersWhileHeld("Alt_L", false), 2u);
    EXPECT_EQ(modifiersWhileHeld("Super_L", false), 8u);
    // Kept: the right-hand keys are not seen (low half); the left-hand key
    // pressed with them is (high half).
    EXPECT_EQ(modifiersWhileOnlyRightHeld("Shift_R", "Shift_L"), 1u << 16);
    EXPECT_EQ(modifiersWhileOnlyRightHeld("Control_R", "Control_L"), 4u << 16);
    // Extra keys only when asked for.
    EXPECT_EQ(modifiersWhileHeld("Tab", false), 0u);
    EXPECT_EQ(modifiersWhileHeld("Tab", true), 32u);

    xdotool("keydown", "Shift_L");
    xdotool("keydown", "Control_L");
    xdotool("keydown", "Tab");
    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(false).getFlags(), 5u);
    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 37u);
    EXPECT_TRUE(ZKKeyboardServer::isKeyPressed(32));
    EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(ZKModifierFlags(32)));
    EXPECT_TRUE(ZKKeyboardServer::isKeyPressed(ZKModifierFlags(4)));
    EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(2 | 8 | 16));
    ZKModifierFlags flags(0x100);
    ZKKeyboardServer::completeExtraKeyModifiers(flags);
    EXPECT_EQ(flags.getFlags(), 0x120u);
    xdotool("keyup", "Tab");
    xdotool("keyup", "Control_L");
    xdotool("keyup", "Shift_L");
    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u);
}

TEST(ZKKeyboardServer, KeyStateUnderRealXServer) {
    const QString xvfbRun = QStandardPaths::findExecutable(QStringLiteral("xvfb-run"));
    if (xvfbRun.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
        GTEST_SKIP() << "xvfb-run and xdotool are needed (scripts/deps.sh installs them)";
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString marker = dir.path() + QStringLiteral("/ran");
    QProcess child;
    {
        ZKChildEnvironment env(marker, "DISABLED_ZKKeyboardUnderX.*");
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(xvfbRun, {QStringLiteral("-a"), QStringLiteral("-s"),
                              QStringLiteral("-screen 0 640x480x24 -noreset"),
                              QCoreApplication::applicationFilePath()});
    }
    ASSERT_TRUE(child.waitForStarted(10000));
    ASSERT_TRUE(child.waitForFinished(90000)) << "the test under the X server did not end";
    const QByteArray output = child.readAll();
    if (!QFile::exists(marker))
        GTEST_SKIP() << "no X server could start: " << output.constData();
    EXPECT_EQ(child.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(child.exitCode(), 0) << output.constData();
}

TEST(ZKKeyboardServer, LostXServerIsNotFatal) {
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty())
        GTEST_SKIP() << "Xvfb is needed (scripts/deps.sh installs it)";
    QProcess server;
    // -displayfd: the server picks a free display and writes its number.
    server.start(xvfb, {QStringLiteral("-displayfd"), QStringLiteral("1"),
                        QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    ASSERT_TRUE(server.waitForStarted(10000));
    QByteArray number;
    ASSERT_TRUE(zkWaitFor(
        [&] {
            server.waitForReadyRead(100);
            number += server.readAllStandardOutput();
            return number.contains('\n');
        },
        20000))
        << "no X server could start";
    ZKEnvGuard env("DISPLAY", ':' + number.trimmed());
    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u);

    server.kill();
    server.waitForFinished(10000);
    // The connection is gone: no key is down and the program goes on.
    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u);
    EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u);
}
