#include "inputs/ByteQueue.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace {

bool put(inspect::ByteQueue& queue, const std::string& bytes) {
    return queue.put(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

std::string take(inspect::ByteQueue& queue, std::size_t room) {
    std::array<std::uint8_t, 100> target{};
    const std::size_t count = queue.take(target.data(), room);
    return std::string(target.begin(), target.begin() + static_cast<std::ptrdiff_t>(count));
}

} // namespace

TEST(ByteQueue, GivesWhatItTookInOrder) {
    inspect::ByteQueue queue(100);
    put(queue, "abc");
    put(queue, "defg");
    EXPECT_EQ(take(queue, 2), "ab");
    EXPECT_EQ(take(queue, 3), "cde");
    put(queue, "h");
    EXPECT_EQ(take(queue, 100), "fgh");
}

TEST(ByteQueue, TakesNoMoreThanItHasRoomFor) {
    inspect::ByteQueue queue(5);
    EXPECT_TRUE(put(queue, "abc"));
    EXPECT_FALSE(put(queue, "def"));
    EXPECT_TRUE(put(queue, "gh"));
    EXPECT_EQ(take(queue, 1), "a");
    EXPECT_FALSE(put(queue, "ij"));
    EXPECT_TRUE(put(queue, "k"));
    EXPECT_EQ(take(queue, 100), "bcghk");
}

TEST(ByteQueue, EndsWhenItIsClosedAndEmpty) {
    inspect::ByteQueue queue(100);
    put(queue, "abc");
    queue.close();
    EXPECT_EQ(take(queue, 2), "ab");
    EXPECT_EQ(take(queue, 2), "c");
    EXPECT_EQ(take(queue, 2), "");
    EXPECT_EQ(take(queue, 2), "");
}

TEST(ByteQueue, WaitsForTheOtherThread) {
    inspect::ByteQueue queue(100);
    std::string taken;
    std::thread reader([&queue, &taken] {
        for (std::string bytes = take(queue, 100); !bytes.empty(); bytes = take(queue, 100)) {
            taken += bytes;
        }
    });
    std::string given;
    for (int count = 0; count < 1000; ++count) {
        const std::string bytes = std::to_string(count);
        while (!put(queue, bytes)) {
            std::this_thread::yield();
        }
        given += bytes;
    }
    queue.close();
    reader.join();
    EXPECT_EQ(taken, given);
}
