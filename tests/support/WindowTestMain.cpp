// The main of the test programs that show windows: each process has a desktop of its own.

#include "Platform/PatientThread.h"
#include "Window/Crash/Application.h"
#include "Window/Style.h"
#include "support/Desktop.h"
#include "support/TestPlace.h"
#include "support/phone/PhoneWriteWatch.h"

#include <gtest/gtest.h>

namespace
{
int run(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const TestPlace place;
    const Desktop desktop;
    const Application application(argc, argv);
    Style::install();
    PhoneWriteWatch::install();
    return RUN_ALL_TESTS();
}
} // namespace

int main(int argc, char** argv)
{
    return PatientThread::endProgram(run(argc, argv));
}
