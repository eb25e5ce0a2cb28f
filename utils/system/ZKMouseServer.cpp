#include "ZKMouseServer.h"

#include <QCursor>
#include <QGuiApplication>

namespace {

bool hasGuiApplication() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

} // namespace

ZKModifierFlags ZKMouseServer::getCurrentButtonModifiers() {
    if (!hasGuiApplication())
        return ZKModifierFlags();
    const unsigned int qtButtons = static_cast<unsigned int>(QGuiApplication::mouseButtons());
    const unsigned int wanted = Qt::LeftButton | Qt::RightButton | Qt::MiddleButton;
    return ZKModifierFlags((qtButtons & wanted) << 8);
}

bool ZKMouseServer::isButtonPressed(int flags) {
    return (getCurrentButtonModifiers().getFlags() & static_cast<unsigned int>(flags)) != 0;
}

bool ZKMouseServer::isButtonPressed(const ZKModifierFlags& flags) {
    return isButtonPressed(static_cast<int>(flags.getFlags()));
}

ZKVec2i ZKMouseServer::getCursorPos() {
    // Without a GUI application Qt has no screen and no cursor position.
    if (!hasGuiApplication())
        return ZKVec2i(0, 0);
    const QPoint pos = QCursor::pos();
    return ZKVec2i(pos.x(), pos.y());
}

void ZKMouseServer::setCursorPos(const ZKVec2i&) {}

void ZKMouseServer::debugLogMouseModifierStates() {}
