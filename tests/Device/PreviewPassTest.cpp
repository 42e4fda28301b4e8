#include "Device/PreviewPass.h"

#include "Base/Exception.h"
#include "Device/Photo.h"

#include <gtest/gtest.h>

#include <deque>
#include <new>
#include <semaphore>

namespace
{
class Previews : public testing::Test
{
protected:
    explicit Previews(int count = 5)
    {
        for (int i = 0; i < count; ++i) {
            _owned.emplace_back().photoId = i;
            photos.push_back(&_owned.back());
        }
    }

    static double plenty() { return 100000; }

    std::vector<Photo*> photos;

private:
    std::deque<Photo> _owned;
};
} // namespace

TEST_F(Previews, AreMadeInOrder)
{
    std::vector<int> order;
    PreviewPass pass(
        photos, [&](Photo& photo) { order.push_back(photo.photoId); }, plenty);
    pass.wait();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(pass.done(), 5U);
    EXPECT_TRUE(pass.finished());
}

TEST_F(Previews, AreOverAtOnceForNoPhotos)
{
    const std::vector<Photo*> none;
    const PreviewPass pass(
        none, [](Photo&) { FAIL(); }, plenty);
    EXPECT_TRUE(pass.finished());
    EXPECT_EQ(pass.done(), 0U);
}

TEST_F(Previews, AreNotBegunUnder200MiBOfFreeMemory)
{
    PreviewPass pass(
        photos, [](Photo&) { FAIL(); }, [] { return 199.9; });
    pass.wait();
    EXPECT_EQ(pass.done(), 0U);
    EXPECT_TRUE(pass.finished());
    PreviewPass enough(
        photos, [](Photo&) {}, [] { return 200.0; });
    enough.wait();
    EXPECT_EQ(enough.done(), 5U);
}

TEST_F(Previews, StopWhenMemoryRunsOutMeanwhile)
{
    std::atomic<double> memory = 500;
    PreviewPass pass(
        photos,
        [&](Photo& photo) {
            if (photo.photoId == 2) {
                memory = 100;
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        },
        [&] { return memory.load(); });
    pass.wait();
    EXPECT_EQ(pass.done(), 3U);
}

TEST_F(Previews, EndWithThePhotoTheyAreAtWhenStopped)
{
    std::binary_semaphore begun{0};
    std::binary_semaphore goOn{0};
    PreviewPass pass(
        photos,
        [&](Photo&) {
            begun.release();
            goOn.acquire();
        },
        plenty);
    begun.acquire();
    pass.stop();
    EXPECT_FALSE(pass.finished());
    goOn.release();
    pass.wait();
    EXPECT_EQ(pass.done(), 1U);
    EXPECT_TRUE(pass.finished());
}

TEST_F(Previews, AreOverBeforeTheirPassIsGone)
{
    std::atomic<int> running = 0;
    std::binary_semaphore begun{0};
    {
        const PreviewPass pass(
            photos,
            [&](Photo&) {
                running = 1;
                begun.release();
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                running = 0;
            },
            plenty);
        begun.acquire();
    }
    EXPECT_EQ(running, 0);
}

TEST_F(Previews, MayBeLookedAtWhileTheyAreMade)
{
    PreviewPass pass(
        photos, [](Photo& photo) { photo.setSmallImage(QImage(10, 10, QImage::Format_RGB32)); },
        plenty);
    while (!pass.finished()) {
        for (const Photo* photo : photos)
            EXPECT_FALSE(photo->smallImage().isNull());
    }
    EXPECT_EQ(photos.back()->smallImage().size(), QSize(10, 10));
}

TEST_F(Previews, GoOnBehindOneThatThrows)
{
    PreviewPass pass(
        photos,
        [](Photo& photo) {
            if (photo.photoId == 1)
                throw std::bad_alloc();
            if (photo.photoId == 2)
                throw Exception("NSRangeException", "beyond the end");
            photo.setSmallImage(QImage(10, 10, QImage::Format_RGB32));
        },
        plenty);
    pass.wait();
    EXPECT_EQ(pass.done(), 5U);
    EXPECT_EQ(photos[1]->smallImage(), Photo::placeHolder());
    EXPECT_EQ(photos[4]->smallImage().size(), QSize(10, 10));
}
