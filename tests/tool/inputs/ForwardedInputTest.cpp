#include "inputs/AttendedInput.h"
#include "inputs/MeasuredInput.h"
#include "inputs/WatchedInput.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

/// A live input that nothing comes on.
class Live : public Input {
public:
    const std::string& name() const override { return m_name; }
    std::size_t read(std::uint8_t* /*target*/, std::size_t /*room*/) override { return 0; }
    bool isLive() const override { return true; }
    std::optional<Arrival> arrival() const override { return Arrival{5.5, 1750000000123}; }
    std::vector<Loss> losses() const override { return {{"datagram", "datagrams", 3}}; }

private:
    std::string m_name = "udp://127.0.0.1:5000";
};

void expectForwarded(const Input& input) {
    EXPECT_EQ(input.name(), "udp://127.0.0.1:5000");
    EXPECT_TRUE(input.isLive());
    EXPECT_FALSE(input.interrupted());
    ASSERT_TRUE(input.arrival());
    EXPECT_EQ(input.arrival()->milliseconds, 1750000000123);
    ASSERT_EQ(input.losses().size(), 1U);
    EXPECT_EQ(input.losses().front().count, 3U);
}

TEST(ForwardedInput, IsAsTheOther) {
    Live live;
    expectForwarded(ForwardedInput(live));
    expectForwarded(AttendedInput(live, [] { return true; }));
    expectForwarded(MeasuredInput(std::make_unique<Live>(), [](std::size_t) {}));
    expectForwarded(WatchedInput(std::make_unique<Live>(), 1, [](const Silence&) {}));
}

} // namespace
