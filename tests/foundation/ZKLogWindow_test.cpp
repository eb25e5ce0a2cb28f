#include "ZKLogWindow.h"

#include <QApplication>
#include <QPointer>
#include <QTextEdit>

#include <gtest/gtest.h>

#include <thread>

TEST(ZKLogWindow, WindowIsATextEditShownAtItsPlace) {
    ASSERT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
    ZKLogWindow* window = ZKLogWindow::getLogWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(ZKLogWindow::getLogWindow(), window);
    QTextEdit* widget = window->getTextWidget();
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->toPlainText(), QStringLiteral("Log Window"));
    EXPECT_EQ(widget->size(), QSize(320, 600));
    EXPECT_EQ(widget->pos(), QPoint(1200, 50));
    EXPECT_TRUE(widget->isVisible());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isEnabled());
    EXPECT_TRUE(ZKLogWindow::isInWindowThread());
    bool inOtherThread = true;
    std::thread([&] { inOtherThread = ZKLogWindow::isInWindowThread(); }).join();
    EXPECT_FALSE(inOtherThread);

    window->show(false);
    EXPECT_FALSE(widget->isVisible());
    EXPECT_FALSE(window->isVisible());
    window->show(true);
    EXPECT_TRUE(widget->isVisible());
    window->setTopMost(true);
    window->setParentWindow(nullptr);
    window->setTextColor(ZKColor3ub(1, 2, 3));
    ZKLogWindow::releaseLogWindow();
    delete widget;
}

TEST(ZKLogWindow, LinesAreAddedOnlyWhileEnabled) {
    ZKLogWindow* window = ZKLogWindow::getLogWindow();
    QTextEdit* widget = window->getTextWidget();
    ASSERT_NE(widget, nullptr);
    window->clearLines();
    EXPECT_EQ(widget->toPlainText(), QString());
    window->addLine(ZKStringW("one"));
    window->addText(ZKStringC("t\xc3\xa9")); // UTF-8 bytes
    window->addLine(ZKStringC("wo"));
    EXPECT_EQ(widget->toPlainText(), QString::fromUtf8("one\nt\xc3\xa9wo\n"));
    window->enable(false);
    window->addLine(ZKStringW("hidden"));
    window->addText(ZKStringW("hidden"));
    EXPECT_EQ(widget->toPlainText(), QString::fromUtf8("one\nt\xc3\xa9wo\n"));
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
    ASSERT_FALSE(widget.isNull());
    ZKLogWindow::releaseLogWindow();
    ZKLogWindow::releaseLogWindow(); // nothing left to release
    ASSERT_FALSE(widget.isNull());
    EXPECT_TRUE(widget->isVisible());
    // A new instance makes a new window.
    ZKLogWindow* again = ZKLogWindow::getLogWindow();
    EXPECT_NE(again->getTextWidget(), widget.data());
    QPointer<QTextEdit> second = again->getTextWidget();
    ZKLogWindow::releaseLogWindow();

    widget->close();
    second->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(widget.isNull());
    EXPECT_TRUE(second.isNull());
}

TEST(ZKLogWindow, NoWindowAwayFromTheGuiThread) {
    bool created = true;
    bool hasWidget = true;
    bool enabled = false;
    std::thread([&] {
        ZKLogWindow* window = ZKLogWindow::getLogWindow();
        created = window->createWindow();
        hasWidget = window->getTextWidget() != nullptr;
        enabled = window->isEnabled();
        // Every operation is harmless without a window.
        window->addLine(ZKStringW("x"));
        window->show(true);
        window->clearLines();
        ZKLogWindow::releaseLogWindow();
    }).join();
    EXPECT_FALSE(created);
    EXPECT_FALSE(hasWidget);
    EXPECT_TRUE(enabled);
}
