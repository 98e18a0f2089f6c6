// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/bus/bus_probe.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

#include "drives/descriptor.h"

namespace corvane {

namespace {

using Clock = std::chrono::steady_clock;
using Text = std::string_view;

constexpr std::chrono::milliseconds kPatience{500};
constexpr const char* kNowhere = "unix:path=/dev/null";
constexpr std::size_t kMostBytes = 65'536;  ///< of an answer
constexpr std::size_t kHead = 16;           ///< bytes of a message before its fields
constexpr char kOrder = std::endian::native == std::endian::little ? 'l' : 'B';
constexpr char kVersion = 1, kStartNobody = 2;
constexpr char kCall = 1, kReply = 2, kError = 3;  ///< kinds of message

/// A bus address's bytes: %xx stands for one.
std::string unescaped(Text text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%' || i + 2 >= text.size()) {
            plain += text[i];
            continue;
        }
        plain += static_cast<char>(std::strtol(std::string(text.substr(i + 1, 2)).c_str(), nullptr, 16));
        i += 2;
    }
    return plain;
}

/// The name of the socket of the first address of this machine; abstract ones begin with NUL. Empty: there is none.
std::string socketOf(const std::string& addresses) {
    constexpr Text kPath = "path=", kAbstract = "abstract=";
    if (addresses.compare(0, 5, "unix:") != 0) return "";
    Text rest = Text(addresses).substr(5, addresses.find(';') - 5);
    while (!rest.empty()) {
        const Text pair = rest.substr(0, rest.find(','));
        rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
        if (pair.substr(0, kPath.size()) == kPath) return unescaped(pair.substr(kPath.size()));
        if (pair.substr(0, kAbstract.size()) == kAbstract) return '\0' + unescaped(pair.substr(kAbstract.size()));
    }
    return "";
}

/// A message of a bus, with bytes in the machine's own order.
class Message {
public:
    Message(std::uint32_t number, Text to, Text path, Text interface, Text member) {
        bytes_.assign({kOrder, kCall, kStartNobody, kVersion});
        put(0);
        put(number);
        put(0);  // how long the fields are
        field(1, "o", path);
        field(6, "s", to);
        field(2, "s", interface);
        field(3, "s", member);
        const auto length = static_cast<std::uint32_t>(bytes_.size() - kHead);
        std::memcpy(bytes_.data() + 12, &length, sizeof length);
        align(8);
    }
    const std::string& bytes() const { return bytes_; }

private:
    void align(std::size_t to) { bytes_.resize((bytes_.size() + to - 1) / to * to); }
    void put(std::uint32_t value) { bytes_.append(reinterpret_cast<const char*>(&value), sizeof value); }
    void field(char code, Text kind, Text value) {
        align(8);
        bytes_ += code;
        bytes_ += '\1';
        bytes_ += kind;
        bytes_ += '\0';
        put(static_cast<std::uint32_t>(value.size()));
        bytes_ += value;
        bytes_ += '\0';
    }
    std::string bytes_;
};

/// A connection that waits for nothing longer than it may.
class Caller {
public:
    explicit Caller(Clock::time_point due) : due_(due) {}

    /// False: nobody is there, or who is does not greet as a bus does.
    bool connect(const std::string& name) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (name.size() >= sizeof address.sun_path) return false;
        std::memcpy(address.sun_path, name.data(), name.size());
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
        to_ = Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (!to_ || ::connect(to_.get(), reinterpret_cast<const sockaddr*>(&address), length) != 0) return false;
        return greet();
    }
    /// The first text of the answer to a call; none when it does not come in time, or tells of an error.
    std::optional<std::string> call(Text to, Text path, Text interface, Text member) {
        if (!send(Message(++calls_, to, path, interface, member).bytes())) return std::nullopt;
        while (const auto message = receive()) {
            if ((*message)[1] != kReply && (*message)[1] != kError) continue;  // a signal
            if (!answers(*message)) continue;
            return (*message)[1] == kReply ? std::optional(textOf(*message)) : std::nullopt;
        }
        return std::nullopt;
    }
    /// Whether it went away or was silent for too long.
    bool lost() const { return lost_; }

private:
    bool greet() {
        const std::string user = std::to_string(geteuid());
        std::string hex;
        for (const char digit : user) hex += std::string("3") + digit;
        if (!send(std::string(1, '\0') + "AUTH EXTERNAL " + hex + "\r\n")) return false;
        while (received_.find("\r\n") == std::string::npos) {
            if (received_.size() > 1024 || !more()) return false;
        }
        if (received_.compare(0, 3, "OK ") != 0) return false;
        received_.clear();
        return send("BEGIN\r\n") &&
               call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "Hello");
    }
    bool wait(short event) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(due_ - Clock::now()).count();
        pollfd one{to_.get(), event, 0};
        return left > 0 && poll(&one, 1, static_cast<int>(left)) == 1;
    }
    bool send(Text bytes) {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(to_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
            if (sent < 0 && (errno != EAGAIN || !wait(POLLOUT))) return false;
        }
        return true;
    }
    bool more() {
        std::array<char, 4096> piece{};
        const ssize_t got = wait(POLLIN) ? recv(to_.get(), piece.data(), piece.size(), 0) : -1;
        lost_ = got <= 0;
        if (!lost_) received_.append(piece.data(), static_cast<std::size_t>(got));
        return !lost_;
    }
    static std::uint32_t number(Text bytes, std::size_t at) {
        std::uint32_t value = 0;
        if (at + sizeof value <= bytes.size()) std::memcpy(&value, bytes.data() + at, sizeof value);
        return value;
    }
    static std::size_t bodyOf(Text message) { return (kHead + std::size_t{number(message, 12)} + 7) / 8 * 8; }
    bool have(std::size_t count) {
        while (received_.size() < count) {
            if (!more()) return false;
        }
        return true;
    }
    std::optional<std::string> receive() {
        if (!have(kHead) || received_[0] != kOrder || received_[3] != kVersion) return std::nullopt;
        const std::size_t whole = bodyOf(received_) + number(received_, 4);
        if (whole > kMostBytes || !have(whole)) return std::nullopt;
        std::string message = received_.substr(0, whole);
        received_.erase(0, whole);
        return message;
    }
    /// Whether the message is the answer to the last call: its field 5 tells the call's number.
    bool answers(Text message) const {
        for (std::size_t at = kHead; at + 8 <= std::min(bodyOf(message), message.size()); at += 8) {
            if (message.substr(at, 4) == Text("\5\1u\0", 4)) return number(message, at + 4) == calls_;
        }
        return false;
    }
    static std::string textOf(Text message) {
        const std::size_t body = bodyOf(message), length = number(message, body);
        return number(message, 4) > 4 && body + 4 + length < message.size()
                   ? std::string(message.substr(body + 4, length))
                   : std::string();
    }

    Descriptor to_;
    Clock::time_point due_;
    std::string received_;
    std::uint32_t calls_ = 0;
    bool lost_ = false;
};

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

bool busAnswers(const std::string& address, std::chrono::milliseconds patience) {
    const std::string name = socketOf(address);
    return name.empty() || Caller(Clock::now() + patience).connect(name);
}

void leaveSilentBuses() {
    constexpr const char* kUser = "DBUS_SESSION_BUS_ADDRESS";
    constexpr const char* kAssistive = "AT_SPI_BUS_ADDRESS";
    const auto due = Clock::now() + kPatience;
    const auto left = [due] { return std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now()); };
    std::string user = variable(kUser);
    if (user.empty()) user = "unix:path=" + variable("XDG_RUNTIME_DIR") + "/bus";
    const std::string name = socketOf(user);
    std::string assistive = variable(kAssistive);
    Caller bus(due);
    if (!name.empty()) {
        if (!bus.connect(name)) {
            setenv(kUser, kNowhere, 1);
        } else if (assistive.empty()) {
            // Whoever offers it is asked by the tool kit at once, and waited for.
            const auto answer = bus.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
            if (answer) assistive = *answer;
            if (bus.lost()) setenv(kAssistive, kNowhere, 1);
        }
    }
    if (!assistive.empty() && !busAnswers(assistive, left())) setenv(kAssistive, kNowhere, 1);
}

}  // namespace corvane
