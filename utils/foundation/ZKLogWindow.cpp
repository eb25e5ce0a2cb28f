#include "ZKLogWindow.h"

#include <QApplication>
#include <QList>
#include <QTextCursor>
#include <QTextEdit>
#include <QThread>

ZKLogWindow* ZKLogWindow::m_logWindow = nullptr;
QThread* ZKLogWindow::m_windowThread = nullptr;

namespace {

// Windows whose instance was released: still on screen, held here so that
// they stay reachable until the user closes them (they delete themselves on
// close and the guarded pointers then read null).
QList<QPointer<QTextEdit>>& releasedWidgets() {
    static QList<QPointer<QTextEdit>> widgets;
    return widgets;
}

} // namespace

ZKLogWindow* ZKLogWindow::getLogWindow() {
    if (!m_logWindow)
        m_logWindow = new ZKLogWindow();
    return m_logWindow;
}

void ZKLogWindow::releaseLogWindow() {
    if (!m_logWindow)
        return;
    if (m_logWindow->m_widget) {
        QList<QPointer<QTextEdit>>& kept = releasedWidgets();
        kept.removeAll(QPointer<QTextEdit>());
        kept.append(m_logWindow->m_widget);
    }
    delete m_logWindow;
    m_logWindow = nullptr;
}

bool ZKLogWindow::isInWindowThread() {
    return m_windowThread != nullptr && QThread::currentThread() == m_windowThread;
}

ZKLogWindow::ZKLogWindow() {
    createWindow();
    if (m_widget) {
        m_visible = true;
        m_widget->show();
    }
    m_enabled = true;
}

bool ZKLogWindow::createWindow() {
    QApplication* app = qobject_cast<QApplication*>(QCoreApplication::instance());
    // Widgets need a QApplication and its GUI thread.
    if (!app || QThread::currentThread() != app->thread())
        return false;
    m_windowThread = QThread::currentThread();
    QTextEdit* widget = new QTextEdit(QStringLiteral("Log Window"));
    widget->setAttribute(Qt::WA_DeleteOnClose);
    widget->resize(320, 600);
    widget->move(1200, 50);
    m_widget = widget;
    return true;
}

void ZKLogWindow::show(bool visible) {
    if (!m_widget)
        return;
    m_visible = visible;
    m_widget->setVisible(visible);
}

QTextEdit* ZKLogWindow::getTextWidget() const {
    return m_widget.data();
}

void ZKLogWindow::addText(const ZKStringW& text) {
    if (!m_enabled || !m_widget)
        return;
    QTextCursor cursor(m_widget->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
}

void ZKLogWindow::addText(const ZKStringC& text) {
    addText(ZKStringW(text));
}

void ZKLogWindow::addLine(const ZKStringW& text) {
    if (m_enabled)
        addText(ZKStringW(text + QLatin1Char('\n')));
}

void ZKLogWindow::addLine(const ZKStringC& text) {
    addLine(ZKStringW(text));
}

void ZKLogWindow::clearLines() {
    if (!m_widget)
        return;
    QTextCursor cursor(m_widget->document());
    cursor.setPosition(0);
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void ZKLogWindow::setTopMost(bool) {}

void ZKLogWindow::setParentWindow(void*) {}

void ZKLogWindow::setTextColor(const ZKColor3ub&) {}
