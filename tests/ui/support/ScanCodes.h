#pragma once

#include <QtGlobal>

namespace brimwick {

/// Keys by their place on the keyboard.
inline constexpr quint32 scanEscape = 9;
inline constexpr quint32 scanMinus = 20;
inline constexpr quint32 scanEquals = 21;
inline constexpr quint32 scanTab = 23;
inline constexpr quint32 scanW = 25;
inline constexpr quint32 scanReturn = 36;
inline constexpr quint32 scanA = 38;
inline constexpr quint32 scanH = 43;
inline constexpr quint32 scanZ = 52;
inline constexpr quint32 scanM = 58;
inline constexpr quint32 scanRightShift = 62;
inline constexpr quint32 scanSpace = 65;
inline constexpr quint32 scanCapsLock = 66;
inline constexpr quint32 scanUp = 111;
inline constexpr quint32 scanPageUp = 112;
inline constexpr quint32 scanDown = 116;
inline constexpr quint32 scanPageDown = 117;
inline constexpr quint32 scanSuper = 133;

} // namespace brimwick
