#include "ZKChildProcess.h"
#include "ZKKeyboardServer.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(ZKKeyboardServer, IsKeyDownReadsBitsOfThirtyTwoBitWords) {
    // Only 128 bits are read: codes past them are never down.
    const unsigned int map[8] = {0x1u, 0x80000000u, 0u, 0x4u, 0x1u, 0u, 0u, 0x80000000u};
    const struct {
        int code;
        bool down;
    } cases[] = {{0, true},    {1, false},  {63, true},   {32, false}, {98, true},
                 {127, false}, {-1, false}, {128, false}, {255, false}};
    for (const auto& c : cases)
        EXPECT_EQ(IS_KEYDOWN(c.code, map), c.down) << c.code;
    EXPECT_FALSE(IS_KEYDOWN(0, nullptr));
}

TEST(ZKKeyboardServer, NoReachableDisplayMeansNoKeyDown) {
    for (const char* display : {"", ":4321"}) {
        ZKEnvGuard env;
        *display ? env.set("DISPLAY", display) : env.unset("DISPLAY");
        EXPECT_EQ(ZKKeyboardServer::getCurrentKeyModifiers(true).getFlags(), 0u) << display;
        EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(ZKModifierFlags(0xFF)));
        ZKModifierFlags flags(0x105); // extra keys are only ever added
        ZKKeyboardServer::completeExtraKeyModifiers(flags);
        EXPECT_EQ(flags.getFlags(), 0x105u);
    }
}

namespace {

// Presses (or releases) keys in the X server of DISPLAY.
void xdotool(const char* action, std::initializer_list<const char*> keys) {
    for (const char* key : keys)
        ASSERT_EQ(QProcess::execute("xdotool", {action, key}), 0) << action << " " << key;
}

unsigned int flagsNow(bool extra = true) {
    return ZKKeyboardServer::getCurrentKeyModifiers(extra).getFlags();
}

} // namespace

// Runs inside a private X server, started by the test below.
TEST(DISABLED_ZKKeyboardUnderX, OnlyLeftHandModifiersAreSeen) {
    const QString marker = QFile::decodeName(qgetenv("ZK_CHILD_RECORD"));
    if (marker.isEmpty())
        GTEST_SKIP() << "runs only under the X server of KeyStateUnderRealXServer";
    QFile(marker).open(QIODevice::WriteOnly);

    EXPECT_EQ(flagsNow(), 0u);
    const struct {
        const char* key;
        bool extra;
        unsigned int flags;
    } held[] = {{"Shift_L", false, 1u}, {"Control_L", false, 4u}, {"Alt_L", false, 2u},
                {"Super_L", false, 8u}, {"Tab", false, 0u},       {"Tab", true, 32u}};
    for (const auto& h : held) {
        xdotool("keydown", {h.key});
        EXPECT_EQ(flagsNow(h.extra), h.flags) << h.key;
        xdotool("keyup", {h.key});
    }
    // Kept: the right-hand keys are not seen. xdotool presses the left-hand
    // twin with them, so that one is let go first.
    const struct {
        const char *right, *left;
        unsigned int bit;
    } twins[] = {{"Shift_R", "Shift_L", 1u}, {"Control_R", "Control_L", 4u}};
    for (const auto& t : twins) {
        xdotool("keydown", {t.right});
        xdotool("keyup", {t.left});
        EXPECT_EQ(flagsNow(), 0u) << t.right;
        xdotool("keydown", {t.left});
        EXPECT_EQ(flagsNow(), t.bit) << t.left;
        xdotool("keyup", {t.left, t.right});
    }

    xdotool("keydown", {"Shift_L", "Control_L", "Tab"});
    EXPECT_EQ(flagsNow(false), 5u);
    EXPECT_EQ(flagsNow(true), 37u);
    EXPECT_TRUE(ZKKeyboardServer::isKeyPressed(32));
    EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(ZKModifierFlags(32)));
    EXPECT_TRUE(ZKKeyboardServer::isKeyPressed(ZKModifierFlags(4)));
    EXPECT_FALSE(ZKKeyboardServer::isKeyPressed(2 | 8 | 16));
    ZKModifierFlags flags(0x100);
    ZKKeyboardServer::completeExtraKeyModifiers(flags);
    EXPECT_EQ(flags.getFlags(), 0x120u);
    xdotool("keyup", {"Tab", "Control_L", "Shift_L"});
    EXPECT_EQ(flagsNow(), 0u);
}

TEST(ZKKeyboardServer, KeyStateUnderRealXServer) {
    const QString xvfbRun = QStandardPaths::findExecutable("xvfb-run");
    if (xvfbRun.isEmpty() || QStandardPaths::findExecutable("xdotool").isEmpty())
        GTEST_SKIP() << "xvfb-run and xdotool are needed (scripts/deps.sh installs them)";
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString marker = dir.path() + QStringLiteral("/ran");
    QProcess child;
    {
        ZKChildEnvironment env(marker, "DISABLED_ZKKeyboardUnderX.*");
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(xvfbRun, {"-a", "-s", "-screen 0 640x480x24 -noreset",
                              QCoreApplication::applicationFilePath()});
    }
    ASSERT_TRUE(child.waitForFinished(90000)) << "the test under the X server did not end";
    const QByteArray output = child.readAll();
    if (!QFile::exists(marker))
        GTEST_SKIP() << "no X server could start: " << output.constData();
    EXPECT_EQ(child.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(child.exitCode(), 0) << output.constData();
}

TEST(ZKKeyboardServer, LostXServerIsNotFatal) {
    const QString xvfb = QStandardPaths::findExecutable("Xvfb");
    if (xvfb.isEmpty())
        GTEST_SKIP() << "Xvfb is needed (scripts/deps.sh installs it)";
    QProcess server;
    // -displayfd: the server picks a free display and writes its number.
    server.start(xvfb, {"-displayfd", "1", "-nolisten", "tcp"});
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
    EXPECT_EQ(flagsNow(), 0u);
    server.kill();
    server.waitForFinished(10000);
    // The connection is gone: no key is down and the program goes on.
    EXPECT_EQ(flagsNow(), 0u);
    EXPECT_EQ(flagsNow(), 0u);
}
