#include "ZKModifierFlags.h"

ZKStringC ZKModifierFlags::toString() const {
    ZKStringC text;
    if (m_flags & Ctrl)
        text += "Ctrl+";
    if (m_flags & Shift)
        text += "Shift+";
    if (m_flags & Alt)
        text += "Alt+";
    if (text.endsWith('+'))
        text.chop(1);
    return text;
}

void ZKModifierFlags::fromString(const ZKStringC& text) {
    m_flags = 0;
    if (text.contains(ZKStringC("Ctrl")))
        m_flags |= Ctrl;
    if (text.contains(ZKStringC("Shift")))
        m_flags |= Shift;
    if (text.contains(ZKStringC("Alt")))
        m_flags |= Alt;
}
