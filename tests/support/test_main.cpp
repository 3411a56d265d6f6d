// Runs the tests. An exception of the framework that escapes a test is told by its message.

#include "TlvnMisc.h"

#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    try {
        return RUN_ALL_TESTS();
    } catch (CException* e) {
        std::fprintf(stderr, "uncaught: %s\n", GetExceptionMessage(e).GetString());
        e->Delete();
        return 1;
    }
}
