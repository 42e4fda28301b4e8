#include "Base/Mailbox.h"

#include "Base/Fault.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <thread>
#include <vector>

TEST(MailboxTest, RunsLettersInOrderOnItsOwnThread)
{
    Mailbox mailbox;
    std::vector<int> got;
    const std::thread::id here = std::this_thread::get_id();
    std::jthread worker([&] {
        for (int i = 0; i < 1000; ++i) {
            mailbox.post([&got, i, here] {
                EXPECT_EQ(std::this_thread::get_id(), here);
                got.push_back(i);
            });
        }
    });
    EXPECT_TRUE(waitUntil([&] { return got.size() == 1000; }));
    EXPECT_TRUE(std::is_sorted(got.begin(), got.end()));
}

TEST(MailboxTest, TakesLettersFromManyThreads)
{
    Mailbox mailbox;
    int got = 0;
    std::vector<std::jthread> workers;
    for (int w = 0; w < 4; ++w)
        workers.emplace_back([&] {
            for (int i = 0; i < 500; ++i)
                mailbox.post([&got] { ++got; });
        });
    EXPECT_TRUE(waitUntil([&] { return got == 2000; }));
}

TEST(MailboxTest, DeliversWhatALetterPosts)
{
    Mailbox mailbox;
    int got = 0;
    mailbox.post([&] { mailbox.post([&] { got = 7; }); });
    EXPECT_TRUE(waitUntil([&] { return got == 7; }));
}

TEST(MailboxTest, DropsWhatIsNotDelivered)
{
    int got = 0;
    {
        Mailbox mailbox;
        mailbox.post([&] { ++got; });
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(got, 0);
}

TEST(MailboxTest, DeliversWhatStandsBehindALetterThatThrows)
{
    int faults = 0;
    Fault::setHandler([&] { ++faults; });
    Mailbox mailbox;
    std::vector<int> got;
    for (int i = 0; i < 6; ++i) {
        mailbox.post([&got, i] {
            got.push_back(i);
            if (i % 2 == 0)
                throw std::runtime_error("letter");
        });
    }
    EXPECT_TRUE(waitUntil([&] { return got.size() == 6; }));
    Fault::setHandler({});
    EXPECT_EQ(got, std::vector<int>({0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(faults, 3);
}

TEST(MailboxTest, KeepsWhatStandsBehindALetterWhoseFaultNobodyShows)
{
    Mailbox mailbox;
    std::vector<int> got;
    mailbox.post([] { throw std::runtime_error("letter"); });
    for (int i = 0; i < 3; ++i)
        mailbox.post([&got, i] { got.push_back(i); });
    EXPECT_THROW(QCoreApplication::sendPostedEvents(), std::runtime_error);
    mailbox.post([&got] { got.push_back(3); });
    EXPECT_TRUE(waitUntil([&] { return got.size() == 4; }));
    EXPECT_EQ(got, std::vector<int>({0, 1, 2, 3}));
}
