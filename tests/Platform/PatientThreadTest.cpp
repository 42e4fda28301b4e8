#include "Platform/PatientThread.h"

#include "Base/Fault.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

using namespace std::chrono_literals;

TEST(PatientThread, RunsJobsOneAfterAnother)
{
    PatientThread thread;
    const auto order = std::make_shared<std::vector<int>>();
    thread.post([order] { order->push_back(1); });
    EXPECT_TRUE(thread.run([order] { order->push_back(2); }, 10s));
    EXPECT_EQ(*order, (std::vector<int>{1, 2}));
    EXPECT_FALSE(thread.isStuck());
}

TEST(PatientThread, GivesUpAfterTheLimitAndForGood)
{
    const auto gate = std::make_shared<std::promise<void>>();
    const auto ran = std::make_shared<std::atomic<bool>>(false);
    {
        PatientThread thread;
        EXPECT_FALSE(thread.run([gate] { gate->get_future().wait(); }, 50ms));
        EXPECT_TRUE(thread.isStuck());
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(thread.run([] {}, 10s));
        thread.post([ran] { *ran = true; });
        EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    }
    gate->set_value();
    EXPECT_TRUE(waitUntil([ran] { return ran->load(); }));
}

TEST(PatientThread, FinishesWhatWasPostedBeforeItGoes)
{
    const auto done = std::make_shared<std::atomic<int>>(0);
    {
        PatientThread thread;
        for (int i = 0; i < 100; ++i)
            thread.post([done] { ++*done; });
    }
    EXPECT_EQ(*done, 100);
}

TEST(PatientThread, HandsOnAnExceptionThatLeavesItsWork)
{
    std::atomic<int> handed = 0;
    Fault::setHandler([&] { ++handed; });
    {
        PatientThread thread;
        EXPECT_TRUE(thread.run([] { throw 7; }, 10s));
        EXPECT_TRUE(thread.run([] {}, 10s)) << "the thread goes on";
    }
    Fault::setHandler({});
    EXPECT_EQ(handed, 1);
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
