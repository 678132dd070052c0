#include "picker/PickerGeometry.h"

#include <gtest/gtest.h>

namespace brimwick {

TEST(PickerGeometry, RaisesALowStoredHeightToTheLeastOfEachLayout) {
    EXPECT_EQ(pickerGeometry(BWModeMove, 500).height, 550);
    EXPECT_EQ(pickerGeometry(BWModeCopy, 500).height, 550);
    EXPECT_EQ(pickerGeometry(BWModeOpen, 500).height, 422);
}

TEST(PickerGeometry, TakesAHighStoredHeightAsItIsAndOpenModeLess98) {
    EXPECT_EQ(pickerGeometry(BWModeMove, 900).height, 900);
    EXPECT_EQ(pickerGeometry(BWModeCopy, 900).height, 900);
    EXPECT_EQ(pickerGeometry(BWModeOpen, 900).height, 802);
}

TEST(PickerGeometry, PlacesTheControlsOfTheMoveAndCopyLayout) {
    for (const Mode mode : {BWModeMove, BWModeCopy}) {
        const PickerGeometry geometry = pickerGeometry(mode, 572);
        EXPECT_EQ(geometry.searchFieldY, 572 - 191);
        EXPECT_EQ(geometry.searchResultsHeight, 572 - 252);
        EXPECT_EQ(geometry.typeTheNameMessageY, 572 - 191 - 57);
        EXPECT_TRUE(geometry.selectedFoldersBoxIsVisible);
    }
}

TEST(PickerGeometry, PlacesTheControlsOfTheOpenLayout) {
    const PickerGeometry geometry = pickerGeometry(BWModeOpen, 572);
    EXPECT_EQ(geometry.height, 474);
    EXPECT_EQ(geometry.searchFieldY, 474 - 60);
    EXPECT_EQ(geometry.searchResultsHeight, 474 - 125);
    EXPECT_EQ(geometry.typeTheNameMessageY, 474 - 60 - 60);
    EXPECT_FALSE(geometry.selectedFoldersBoxIsVisible);
}

TEST(PickerGeometry, SurvivesStoredHeightsThatNoWindowHas) {
    EXPECT_EQ(pickerGeometry(BWModeMove, -5).height, 550);
    EXPECT_LT(pickerGeometry(BWModeMove, INT64_MAX).height, 32'767);
    EXPECT_LT(windowLength(99'999'999), 32'767);
    EXPECT_EQ(windowLength(INT64_MIN), 0);
    EXPECT_EQ(windowLength(520), 520);
    EXPECT_EQ(pickerGeometry(BWModeOpen, INT64_MIN).height, 422);
}

TEST(PickerGeometry, PutsTheWindowNearTheTopAndAtMinus22WithoutAScreen) {
    EXPECT_EQ(pickerY({0, 0, 1920, 1080}), 1058);
    EXPECT_EQ(pickerY({}), -22);
}

TEST(PickerGeometry, CentresOnTheVisibleFrameWithoutItsOrigin) {
    EXPECT_EQ(centredX({100, 0, 1920, 1080}, 520), 700);
}

TEST(PickerGeometry, StoresTheMoveHeightOfAWindowClosedInOpenMode) {
    EXPECT_EQ(storedPickerSize(BWModeOpen, 600, 480).width, 600);
    EXPECT_EQ(storedPickerSize(BWModeOpen, 600, 480).height, 578);
    EXPECT_EQ(storedPickerSize(BWModeMove, 600.9, 480.9).width, 600);
    EXPECT_EQ(storedPickerSize(BWModeMove, 600.9, 480.9).height, 480);
}

TEST(PickerGeometry, PagesByWholeRows) {
    EXPECT_EQ(rowsPerPage(320.9), 6);
    EXPECT_EQ(rowsPerPage(47), 0);
}

TEST(PickerGeometry, ClampsARequestedRow) {
    EXPECT_EQ(clampedRow(-5, 12), 0);
    EXPECT_EQ(clampedRow(1000, 12), 11);
    EXPECT_EQ(clampedRow(1000, 0), 0);
    EXPECT_EQ(clampedRow(3, 12), 3);
}

} // namespace brimwick
