#include "Base/Mailbox.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
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
