#include <QApplication>

#include <gmock/gmock.h>

#include "TestDesktop.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    const brimwick::TestDesktop desktop;
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
