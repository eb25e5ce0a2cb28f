#include "ZKMouseServer.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <gtest/gtest.h>

// QtTest's hook for a window-system mouse event (updates mouseButtons()).
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers mods, int timestamp);

namespace {

void sendButtons(QWindow& window, Qt::MouseButtons state, Qt::MouseButton button,
                 QEvent::Type type) {
    static int timestamp = 0;
    qt_handleMouseEvent(&window, QPointF(10, 10), QPointF(10, 10), state, button, type,
                        Qt::NoModifier, ++timestamp);
}

} // namespace

TEST(ZKMouseServer, ButtonsAreQtsLeftRightAndMiddleShiftedBy8) {
    ASSERT_NE(qobject_cast<QGuiApplication*>(QCoreApplication::instance()), nullptr);
    QWindow window;
    window.resize(100, 100);
    window.show();

    EXPECT_EQ(ZKMouseServer::getCurrentButtonModifiers().getFlags(), 0u);
    sendButtons(window, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress);
    EXPECT_EQ(ZKMouseServer::getCurrentButtonModifiers().getFlags(), 0x100u);
    EXPECT_TRUE(ZKMouseServer::isButtonPressed(0x100));
    EXPECT_FALSE(ZKMouseServer::isButtonPressed(0x200 | 0x400));

    sendButtons(window, Qt::LeftButton | Qt::RightButton, Qt::RightButton,
                QEvent::MouseButtonPress);
    EXPECT_EQ(ZKMouseServer::getCurrentButtonModifiers().getFlags(), 0x300u);
    EXPECT_TRUE(ZKMouseServer::isButtonPressed(ZKModifierFlags(0x200)));

    sendButtons(window, Qt::RightButton, Qt::LeftButton, QEvent::MouseButtonRelease);
    sendButtons(window, Qt::RightButton | Qt::MiddleButton | Qt::BackButton, Qt::MiddleButton,
                QEvent::MouseButtonPress);
    // Buttons other than left, right and middle are not reported.
    EXPECT_EQ(ZKMouseServer::getCurrentButtonModifiers().getFlags(), 0x600u);
    EXPECT_FALSE(ZKMouseServer::isButtonPressed(ZKModifierFlags(0x100 | 1 | 4)));

    sendButtons(window, Qt::NoButton, Qt::MiddleButton, QEvent::MouseButtonRelease);
    EXPECT_EQ(ZKMouseServer::getCurrentButtonModifiers().getFlags(), 0u);
    EXPECT_FALSE(ZKMouseServer::isButtonPressed(-1));
}

TEST(ZKMouseServer, CursorPositionIsReadButNeverMoved) {
    QCursor::setPos(123, 45);
    // setCursorPos is empty on purpose: the cursor stays where it was.
    ZKMouseServer::setCursorPos(ZKVec2i(5, 6));
    const ZKVec2i pos = ZKMouseServer::getCursorPos();
    EXPECT_EQ(pos.x, 123);
    EXPECT_EQ(pos.y, 45);
}
