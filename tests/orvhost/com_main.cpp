#include <gtest/gtest.h>

#include "host/app/orvhost/system.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    const int status = RUN_ALL_TESTS();
    OleUninitialize();
    return status;
}
