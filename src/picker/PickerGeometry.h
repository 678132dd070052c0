#pragma once

#include "model/Mode.h"

#include <cstdint>

namespace brimwick {

/// Where things lie in the picker. Lengths are points; y counts upwards from the bottom of the window.
struct PickerGeometry {
    /// What the Open layout is shorter by: the box of the selected files.
    static constexpr int openModeDifference = 98;
    /// The title bar that the numbers below allow for.
    static constexpr int titleBarHeight = 22;

    /// The height of the window, its title bar included.
    int height = 0;
    bool selectedFoldersBoxIsVisible = false;
    /// Of the search field and its caption.
    int searchFieldY = 0;
    int searchResultsHeight = 0;
    /// Of the prompt and its text.
    int typeTheNameMessageY = 0;
};

/// A stored width or height as one that a window can have.
int windowLength(std::int64_t stored);

/// The layout for a mode from the stored height of the window.
PickerGeometry pickerGeometry(Mode mode, std::int64_t storedHeight);

/// The same for a window that has been given its height already, by the user or the desktop.
PickerGeometry pickerGeometryAtHeight(Mode mode, int height);

/// A rectangle on the screen; y counts upwards from the bottom of the screen.
struct ScreenRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// The y of the picker's lower edge, by the visible frame of the first screen: near its top, where the
/// desktop keeps the whole window on the screen.
double pickerY(const ScreenRect& screen);

/// The x that centres a window on a visible frame; the frame's own x is not added.
double centredX(const ScreenRect& screen, double windowWidth);

/// What the size of a picker that closes is stored as.
struct StoredPickerSize {
    int width = 0;
    int height = 0;
};
StoredPickerSize storedPickerSize(Mode mode, double windowWidth, double windowHeight);

/// Rows that a page key moves by.
int rowsPerPage(double searchResultsHeight);

/// The row that a request for `row` selects out of `count`; 0 when there is none.
std::int64_t clampedRow(std::int64_t row, std::int64_t count);

} // namespace brimwick
