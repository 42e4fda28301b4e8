#include "Platform/PatientThread.h"

#include "Base/Fault.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

using namespace std::chrono_literals;

TEST(PatientThread, HandsOnAnExceptionThatLeavesItsWork)
{
    static std::atomic<int> handed = 0;
    Fault::setHandler([] { ++handed; });
    PatientThread::alone([] { throw 7; });
    EXPECT_TRUE(waitUntil([] { return handed == 1; }));
    Fault::setHandler({});
}

TEST(PatientThread, LetsTheProgramEndThoughAThreadIsStuck)
{
    const auto endWithAStuckThread = [] {
        PatientThread::alone([] { std::promise<void>().get_future().wait(); });
        std::exit(PatientThread::endProgram(7));
    };
    EXPECT_EXIT(endWithAStuckThread(), testing::ExitedWithCode(7), "");
}

TEST(PatientThread, WaitsAtTheEndOfTheProgramForAThreadThatIsAboutToEnd)
{
    const auto done = std::make_shared<std::atomic<bool>>(false);
    PatientThread::alone([done] {
        std::this_thread::sleep_for(20ms);
        *done = true;
    });
    EXPECT_EQ(PatientThread::endProgram(0), 0);
    EXPECT_TRUE(*done);
}
