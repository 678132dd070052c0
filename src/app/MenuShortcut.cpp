#include "app/MenuShortcut.h"

#include "hotkeys/NSStringKeyCodeTranslator.h"
#include "platform/ports/ModifierFlags.h"

#include <iostream>

namespace brimwick {

namespace {

Qt::KeyboardModifiers qtModifiers(std::uint64_t modifierFlags) {
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, (modifierFlags & ModifierFlag::control) != 0);
    modifiers.setFlag(Qt::MetaModifier, (modifierFlags & ModifierFlag::command) != 0);
    modifiers.setFlag(Qt::AltModifier, (modifierFlags & ModifierFlag::option) != 0);
    modifiers.setFlag(Qt::ShiftModifier, (modifierFlags & ModifierFlag::shift) != 0);
    return modifiers;
}

} // namespace

QKeySequence menuShortcut(KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags) {
    const auto log = [](const std::string& line) { std::cerr << "Brimwick: " + line + "\n"; };
    const auto text = NSStringKeyCodeTranslator::stringForKeyCodeWithModifierFlags(layout, keyCode, 0, log);
    if (!text) return {};
    const QString key = QString::fromStdString(*text);
    if (key.isEmpty()) return {};
    // A character stands for its key in capitals; a longer text is the name of a key.
    if (key.size() == 1)
        return QKeyCombination(qtModifiers(modifierFlags),
                               static_cast<Qt::Key>(key.front().toUpper().unicode()));
    const QKeySequence named(key, QKeySequence::PortableText);
    if (named.isEmpty()) return {};
    return QKeyCombination(qtModifiers(modifierFlags), named[0].key());
}

} // namespace brimwick
