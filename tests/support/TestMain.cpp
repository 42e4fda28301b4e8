// The main of every test program without windows.

#include "Platform/PatientThread.h"
#include "support/TestPlace.h"
#include "support/phone/PhoneWriteWatch.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace
{
int run(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const TestPlace place;
    const QCoreApplication application(argc, argv);
    PhoneWriteWatch::install();
    return RUN_ALL_TESTS();
}
} // namespace

int main(int argc, char** argv)
{
    return PatientThread::endProgram(run(argc, argv));
}
