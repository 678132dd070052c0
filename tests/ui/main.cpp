#include "app/BWApplication.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    brimwick::BWApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
