// Entry point of the Windows test program: the process is set up as the agent
// sets itself up (common controls, COM) before GoogleTest runs.
#include <gtest/gtest.h>

#include "base/win_headers.h"
#include <objbase.h>

int main(int argc, char** argv) {
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&icc);
    CoInitialize(nullptr);
    testing::InitGoogleTest(&argc, argv);
    int rc = RUN_ALL_TESTS();
    CoUninitialize();
    return rc;
}
