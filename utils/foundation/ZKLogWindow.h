// ZKLogWindow.h: an optional text window that shows log lines.
//
// One instance at most, owned by the class (getLogWindow creates it,
// releaseLogWindow deletes it). The window is a QTextEdit and exists only
// when a QApplication exists and the instance is created on the
// application's GUI thread; without it every operation does nothing. The
// logging facade (ZKLog) does not feed this window: the application adds its
// own lines.
//
// Threads: use it only from the thread that created the window
// (isInWindowThread tells); nothing is locked.
#pragma once

#include "ZKColor.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <QPointer>

class QTextEdit;
class QThread;

class ZKUTILS_EXPORT ZKLogWindow {
public:
    // The single instance, constructed on the first call.
    static ZKLogWindow* getLogWindow();
    // Deletes the instance and forgets it. Kept: the window itself is not
    // deleted and stays on screen; it frees itself when the user closes it.
    static void releaseLogWindow();
    // Whether the calling thread is the one that created the window.
    static bool isInWindowThread();

    ZKLogWindow(const ZKLogWindow&) = delete;
    ZKLogWindow& operator=(const ZKLogWindow&) = delete;

    // Creates the window: a QTextEdit reading "Log Window", 320 by 600
    // pixels, at screen position (1200, 50). False, with no window, when
    // there is no QApplication or the caller is not on its GUI thread.
    bool createWindow();

    // Remembers the state and shows or hides the window; nothing without one.
    void show(bool visible);
    void enable(bool enabled) { m_enabled = enabled; }
    bool isEnabled() const { return m_enabled; }
    bool isVisible() const { return m_visible; }
    // The window, or null when there is none.
    QTextEdit* getTextWidget() const;

    // While enabled, inserts the text at the end of the document (a byte
    // string is decoded as UTF-8 first).
    void addText(const ZKStringW& text);
    void addText(const ZKStringC& text);
    // While enabled, addText of the text followed by "\n".
    void addLine(const ZKStringW& text);
    void addLine(const ZKStringC& text);
    // Removes the whole document.
    void clearLines();

    // Do nothing: the window keeps Qt's defaults.
    void setTopMost(bool topMost);
    void setParentWindow(void* parent);
    void setTextColor(const ZKColor3ub& color);

private:
    ZKLogWindow();
    ~ZKLogWindow() = default;

    static ZKLogWindow* m_logWindow;
    static QThread* m_windowThread;

    bool m_enabled = false;
    bool m_visible = false;
    QPointer<QTextEdit> m_widget;
};
