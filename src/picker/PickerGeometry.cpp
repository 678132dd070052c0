#include "picker/PickerGeometry.h"

#include <algorithm>
#include <limits>

namespace brimwick {

namespace {

constexpr std::int64_t minimumHeight = 550;
constexpr std::int64_t minimumOpenHeight = 422;
constexpr int rowHeight = 48;

} // namespace

PickerGeometry pickerGeometry(Mode mode, std::int64_t storedHeight) {
    constexpr std::int64_t most = std::numeric_limits<std::int16_t>::max();
    const std::int64_t stored = std::clamp<std::int64_t>(storedHeight, 0, most);
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
