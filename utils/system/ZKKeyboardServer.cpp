#include "ZKKeyboardServer.h"

#include "ZKLog.h"
#include "ZKNative.h"

namespace {

constexpr unsigned int kModifierBits = ZKModifierFlags::Shift | ZKModifierFlags::Alt |
                                       ZKModifierFlags::Ctrl | ZKModifierFlags::Command;
constexpr unsigned int kExtraKeyBits = ZKModifierFlags::CapsLock | ZKModifierFlags::Tab;

} // namespace

ZKModifierFlags ZKKeyboardServer::getCurrentKeyModifiers(bool withExtraKeys) {
    const unsigned int down = ZKNative::keysDown();
    return ZKModifierFlags(down & (withExtraKeys ? kModifierBits | kExtraKeyBits : kModifierBits));
}

bool ZKKeyboardServer::isKeyPressed(int flags) {
    return (getCurrentKeyModifiers(true).getFlags() & static_cast<unsigned int>(flags)) != 0;
}

bool ZKKeyboardServer::isKeyPressed(const ZKModifierFlags& flags) {
    return (getCurrentKeyModifiers(false).getFlags() & flags.getFlags()) != 0;
}

void ZKKeyboardServer::completeExtraKeyModifiers(ZKModifierFlags& flags) {
    flags.setFlags(flags.getFlags() | (ZKNative::keysDown() & kExtraKeyBits));
}

void ZKKeyboardServer::debugLogKeyModifierStates() {
    const unsigned int down = getCurrentKeyModifiers(true).getFlags();
    ZKLog::userLog("Keys: Shift=%d Alt=%d Ctrl=%d Command=%d CapsLock=%d Tab=%d",
                   (down & ZKModifierFlags::Shift) != 0, (down & ZKModifierFlags::Alt) != 0,
                   (down & ZKModifierFlags::Ctrl) != 0, (down & ZKModifierFlags::Command) != 0,
                   (down & ZKModifierFlags::CapsLock) != 0, (down & ZKModifierFlags::Tab) != 0);
}

bool IS_KEYDOWN(int keyCode, const unsigned int* keyMap) {
    if (keyCode < 0 || keyCode >= 128 || !keyMap)
        return false;
    return ((keyMap[keyCode / 32] >> (keyCode % 32)) & 1u) != 0;
}
