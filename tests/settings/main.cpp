#include <stdlib.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Anything that falls back to the default store lands in memory, never in
    // the real ~/.config of whoever runs the tests.
    setenv("VEXPLOT_REGISTRY", ":memory:", 1);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
