#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace brimwick {

/// A key by its place on the keyboard: the position's evdev code and its virtual key code.
struct KeyPosition {
    std::uint16_t evdevCode = 0;
    std::uint16_t virtualKeyCode = 0;
};

/// Every position that has a virtual key code, whatever the layout prints on it.
inline constexpr std::array keyPositions = std::to_array<KeyPosition>({
    {30, 0},    {31, 1},    {32, 2},   {33, 3},    {35, 4},   {34, 5},    {44, 6},   {45, 7},    {46, 8},
    {47, 9},    {86, 10},   {48, 11},  {16, 12},   {17, 13},  {18, 14},   {19, 15},  {21, 16},   {20, 17},
    {2, 18},    {3, 19},    {4, 20},   {5, 21},    {7, 22},   {6, 23},    {13, 24},  {10, 25},   {8, 26},
    {12, 27},   {9, 28},    {11, 29},  {27, 30},   {24, 31},  {22, 32},   {26, 33},  {23, 34},   {25, 35},
    {28, 36},   {38, 37},   {36, 38},  {40, 39},   {37, 40},  {39, 41},   {43, 42},  {51, 43},   {53, 44},
    {49, 45},   {50, 46},   {52, 47},  {15, 48},   {57, 49},  {41, 50},   {14, 51},  {1, 53},    {126, 54},
    {125, 55},  {42, 56},   {58, 57},  {56, 58},   {29, 59},  {54, 60},   {100, 61}, {97, 62},   {83, 65},
    {55, 67},   {78, 69},   {69, 71},  {98, 75},   {96, 76},  {74, 78},   {82, 82},  {79, 83},   {80, 84},
    {81, 85},   {75, 86},   {76, 87},  {77, 88},   {71, 89},  {72, 91},   {73, 92},  {63, 96},   {64, 97},
    {65, 98},   {61, 99},   {66, 100}, {67, 101},  {87, 103}, {68, 109},  {88, 111}, {110, 114}, {102, 115},
    {104, 116}, {111, 117}, {62, 118}, {107, 119}, {60, 120}, {109, 121}, {59, 122}, {105, 123}, {106, 124},
    {108, 125}, {103, 126},
});

/// What the desktops that give scan codes add to an evdev code.
inline constexpr std::uint32_t scanCodeOffset = 8;

constexpr std::optional<std::uint16_t> virtualKeyCodeOfScanCode(std::uint32_t scanCode) {
    for (const KeyPosition& key : keyPositions)
        if (key.evdevCode + scanCodeOffset == scanCode) return key.virtualKeyCode;
    return std::nullopt;
}

constexpr std::optional<std::uint32_t> scanCodeOfVirtualKeyCode(std::uint16_t virtualKeyCode) {
    for (const KeyPosition& key : keyPositions)
        if (key.virtualKeyCode == virtualKeyCode) return key.evdevCode + scanCodeOffset;
    return std::nullopt;
}

} // namespace brimwick
