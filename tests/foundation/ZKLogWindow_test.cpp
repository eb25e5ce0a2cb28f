#include "ZKLogWindow.h"

#include <QApplication>
#include <QPointer>
#include <QTextEdit>

#include <gtest/gtest.h>

#include <thread>

TEST(ZKLogWindow, WindowIsATextEditShownAtItsPlaceTakingLinesWhileEnabled) {
    ASSERT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
    ZKLogWindow* window = ZKLogWindow::getLogWindow();
    EXPECT_EQ(ZKLogWindow::getLogWindow(), window);
    QTextEdit* widget = window->getTextWidget();
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->toPlainText(), QStringLiteral("Log Window"));
    EXPECT_EQ(QRect(widget->pos(), widget->size()), QRect(1200, 50, 320, 600));
    EXPECT_TRUE(widget->isVisible());
    EXPECT_TRUE(ZKLogWindow::isInWindowThread());
    bool inOtherThread = true;
    std::thread([&] { inOtherThread = ZKLogWindow::isInWindowThread(); }).join();
    EXPECT_FALSE(inOtherThread);
    window->show(false);
    EXPECT_FALSE(widget->isVisible());
    window->show(true);

    window->clearLines();
    window->addLine(ZKStringW("one"));
    window->addText(ZKStringC("t\xc3\xa9")); // UTF-8 bytes
    window->addLine(ZKStringC("wo"));
    window->enable(false);
    window->addLine(ZKStringW("hidden"));
    window->enable(true);
    window->addText(ZKStringW("!"));
    EXPECT_EQ(widget->toPlainText(), QString::fromUtf8("one\nt\xc3\xa9wo\n!"));
    window->clearLines();
    EXPECT_EQ(widget->toPlainText(), QString());
    ZKLogWindow::releaseLogWindow();
    delete widget;
}

TEST(ZKLogWindow, ReleaseKeepsTheWindowUntilTheUserClosesIt) {
    QPointer<QTextEdit> widget = ZKLogWindow::getLogWindow()->getTextWidget();
    ZKLogWindow::releaseLogWindow();
    ZKLogWindow::releaseLogWindow(); // nothing left to release
    ASSERT_FALSE(widget.isNull());
    EXPECT_TRUE(widget->isVisible());
    // A new instance makes a new window.
    QPointer<QTextEdit> second = ZKLogWindow::getLogWindow()->getTextWidget();
    EXPECT_NE(second.data(), widget.data());
    ZKLogWindow::releaseLogWindow();
    widget->close();
    second->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(widget.isNull());
    EXPECT_TRUE(second.isNull());
}

TEST(ZKLogWindow, NoWindowAwayFromTheGuiThread) {
    bool created = true, hasWidget = true;
    std::thread([&] {
        ZKLogWindow* window = ZKLogWindow::getLogWindow();
        created = window->createWindow();
        hasWidget = window->getTextWidget() != nullptr;
        // Every operation is harmless without a window.
        window->addLine(ZKStringW("x"));
        window->show(true);
        window->clearLines();
        ZKLogWindow::releaseLogWindow();
    }).join();
    EXPECT_FALSE(created);
    EXPECT_FALSE(hasWidget);
}
