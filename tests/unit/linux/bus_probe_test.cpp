// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/bus_probe.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "drives/descriptor.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;
constexpr milliseconds kPatience{300};

/// Takes connections and says to each what it was told to; closes it then, if so told.
class FalseBus {
public:
    FalseBus(const std::string& path, std::string says, bool closes) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        listening_ = Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(bind(listening_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listening_.get(), 8), 0);
        serving_ = std::thread([this, says = std::move(says), closes] {
            std::vector<Descriptor> kept;
            for (Descriptor from(accept(listening_.get(), nullptr, nullptr)); from && !ends_;
                 from = Descriptor(accept(listening_.get(), nullptr, nullptr))) {
                if (send(from.get(), says.data(), says.size(), MSG_NOSIGNAL) >= 0 && !closes)
                    kept.push_back(std::move(from));
            }
        });
    }
    FalseBus(const FalseBus&) = delete;
    FalseBus& operator=(const FalseBus&) = delete;
    ~FalseBus() {
        ends_ = true;
        shutdown(listening_.get(), SHUT_RDWR);
        serving_.join();
    }

private:
    Descriptor listening_;
    std::atomic<bool> ends_{false};
    std::thread serving_;
};

struct Case {
    const char* name;
    std::string says;
    bool closes;
};

class FalseBuses : public testing::TestWithParam<Case> {};

TEST_P(FalseBuses, AreFoundOutInTime) {
    const test::TemporaryFolder folder;
    const FalseBus bus(folder.in("bus"), GetParam().says, GetParam().closes);
    const test::Stopwatch clock;
    EXPECT_FALSE(busAnswers("unix:path=" + folder.in("bus"), kPatience));
    EXPECT_LT(clock.own(), 2 * kPatience);
}

const std::string kGreeting = "OK 0123456789abcdef0123456789abcdef\r\n";

INSTANTIATE_TEST_SUITE_P(
    That, FalseBuses,
    testing::Values(Case{"AreSilent", "", false}, Case{"Close", "", true},
                    Case{"Refuse", "REJECTED EXTERNAL\r\n", false},
                    Case{"SayGarbage", std::string(5000, '\xA5'), false}, Case{"SayLinesOnly", "\r\n\r\n\r\n", false},
                    Case{"GreetAndAreSilent", kGreeting, false},
                    Case{"GreetAndSayGarbage", kGreeting + std::string(5000, '\xFF'), false},
                    Case{"SendMuch", kGreeting + std::string("l\2\0\1\xFF\xFF\xFF\xFF\1\0\0\0\xFF\xFF\xFF\xFF", 16),
                         false},
                    Case{"AnswerAnotherCall",
                         kGreeting + std::string("l\2\0\1\0\0\0\0\1\0\0\0\10\0\0\0\5\1u\0\7\0\0\0", 24), false}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(BusProbe, ARealBusAnswers) {
    const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    ASSERT_NE(address, nullptr) << "to be run on a private desktop";
    EXPECT_TRUE(busAnswers(address, milliseconds(2'000)));
}

TEST(BusProbe, NobodyThereIsNoBus) {
    EXPECT_FALSE(busAnswers("unix:path=/dev/null", kPatience));
    EXPECT_FALSE(busAnswers("unix:path=/nowhere/bus", kPatience));
    EXPECT_FALSE(busAnswers("unix:path=" + std::string(4000, 'x'), kPatience));
    EXPECT_FALSE(busAnswers("unix:abstract=corvane-nobody,guid=12", kPatience));
}

TEST(BusProbe, AnotherKindOfAddressIsBelieved) { EXPECT_TRUE(busAnswers("tcp:host=localhost,port=1", kPatience)); }

}  // namespace
}  // namespace corvane
