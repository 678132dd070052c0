#include "picker/PickerGeometry.h"

#include <algorithm>

namespace brimwick {

namespace {

constexpr std::int64_t minimumHeight = 550;
constexpr std::int64_t minimumOpenHeight = 422;
/// Longer than any screen, and short enough for every desktop.
constexpr std::int64_t longestLength = 10'000;
constexpr int rowHeight = 48;

} // namespace

int windowLength(std::int64_t stored) {
    return static_cast<int>(std::clamp<std::int64_t>(stored, 0, longestLength));
}

PickerGeometry pickerGeometry(Mode mode, std::int64_t storedHeight) {
    const std::int64_t stored = windowLength(storedHeight);
    const std::int64_t height = mode == BWModeOpen
                                    ? std::max(stored - PickerGeometry::openModeDifference, minimumOpenHeight)
                                    : std::max(stored, minimumHeight);
    return pickerGeometryAtHeight(mode, static_cast<int>(height));
}

PickerGeometry pickerGeometryAtHeight(Mode mode, int height) {
    PickerGeometry geometry;
    geometry.height = height;
    if (mode == BWModeOpen) {
        geometry.searchFieldY = height - 60;
        geometry.searchResultsHeight = height - 125;
        geometry.typeTheNameMessageY = geometry.searchFieldY - 60;
    } else {
        geometry.selectedFoldersBoxIsVisible = true;
        geometry.searchFieldY = height - 191;
        geometry.searchResultsHeight = height - 252;
        geometry.typeTheNameMessageY = geometry.searchFieldY - 57;
    }
    return geometry;
}

double pickerY(const ScreenRect& screen) {
    return screen.height - PickerGeometry::titleBarHeight;
}

double centredX(const ScreenRect& screen, double windowWidth) {
    return screen.width * 0.5 - windowWidth * 0.5;
}

StoredPickerSize storedPickerSize(Mode mode, double windowWidth, double windowHeight) {
    const int height = static_cast<int>(windowHeight);
    return {static_cast<int>(windowWidth),
            mode == BWModeOpen ? height + PickerGeometry::openModeDifference : height};
}

int rowsPerPage(double searchResultsHeight) {
    return static_cast<int>(searchResultsHeight) / rowHeight;
}

std::int64_t clampedRow(std::int64_t row, std::int64_t count) {
    return count == 0 ? 0 : std::clamp<std::int64_t>(row, 0, count - 1);
}

} // namespace brimwick
