// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>

namespace corvane::test {

/// Listens on a port of this machine, for connections and for single messages, and notices both.
class Listener {
public:
    Listener() {
        for (int tries = 0; tries < 20 && !listens_; ++tries) {
            close();
            listens_ = open(stream_, SOCK_STREAM, 0) && ::listen(stream_, 5) == 0 && findPort() &&
                       open(datagrams_, SOCK_DGRAM, port_);  // the same port: another's now and then
        }
        EXPECT_TRUE(listens_) << "nothing can be noticed";
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { close(); }

    /// Nobody listens any more; who had called is told so.
    void hangUp() { close(); }
    std::string port() const { return std::to_string(port_); }
    /// Somebody connected, or sent something.
    bool wasReached(int waitMs) const {
        pollfd wanted[] = {{stream_, POLLIN, 0}, {datagrams_, POLLIN, 0}};
        return ::poll(wanted, 2, waitMs) > 0;
    }

private:
    static bool open(int& socket, int type, int port) {
        socket = ::socket(AF_INET, type | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        return socket >= 0 && ::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    bool findPort() {
        sockaddr_in address{};
        socklen_t length = sizeof address;
        if (::getsockname(stream_, reinterpret_cast<sockaddr*>(&address), &length) != 0) return false;
        port_ = ntohs(address.sin_port);
        return port_ != 0;
    }
    void close() {
        for (int* const socket : {&stream_, &datagrams_}) {
            if (*socket >= 0) ::close(*socket);
            *socket = -1;
        }
    }

    int stream_ = -1, datagrams_ = -1;
    int port_ = 0;
    bool listens_ = false;
};

/// How many sockets of the internet this program has, be they connected or not.
inline int internetSockets() {
    int count = 0;
    for (int handle = 0; handle < 1024; ++handle) {
        sockaddr_storage address{};
        socklen_t length = sizeof address;
        if (::getsockname(handle, reinterpret_cast<sockaddr*>(&address), &length) != 0) continue;
        count += address.ss_family == AF_INET || address.ss_family == AF_INET6 ? 1 : 0;
    }
    return count;
}

inline std::string bigBytes(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

/// An atom of a QuickTime movie.
inline std::string atom(std::string_view name, const std::string& content) {
    return bigBytes(content.size() + 8, 4) + std::string(name) + content;
}

/// A movie that says: the movie is at that address.
inline std::string movieElsewhere(const std::string& address) {
    const std::string place =
        bigBytes(0, 4) + "url " + bigBytes(address.size() + 1, 4) + address + std::string(1, '\0');
    return atom("ftyp", "qt  " + bigBytes(0, 4) + "qt  ") +
           atom("moov", atom("rmra", atom("rmda", atom("rdrf", place))));
}

/// The movie with its sounds and pictures at that address: each of its lists of where the data is names it.
inline std::string movieWithDataElsewhere(std::string movie, const std::string& address) {
    for (std::size_t at = movie.find("dref"); at != std::string::npos; at = movie.find("dref", at + 4)) {
        // The list takes the room of what it said before and of its track's other tables, so that no place moves.
        const std::size_t minf = movie.rfind("minf", at);
        const std::size_t table = movie.find("stbl", at);
        if (minf == std::string::npos || table == std::string::npos) break;
        const std::string entry = atom("url ", bigBytes(0, 4) + address + std::string(1, '\0'));
        const std::string list = atom("dinf", atom("dref", bigBytes(0, 4) + bigBytes(1, 4) + entry));
        movie.insert(table - 4, list);
        for (const char* const holder : {"minf", "mdia", "trak", "moov"}) {
            const std::size_t name = movie.rfind(holder, at);
            const std::uint32_t size = (static_cast<std::uint8_t>(movie[name - 4]) << 24U) |
                                       (static_cast<std::uint8_t>(movie[name - 3]) << 16U) |
                                       (static_cast<std::uint8_t>(movie[name - 2]) << 8U) |
                                       static_cast<std::uint8_t>(movie[name - 1]);
            movie.replace(name - 4, 4, bigBytes(size + list.size(), 4));
        }
        movie.replace(movie.rfind("dinf", at), 4, "free");
        at = movie.find("dref", at + 4);
    }
    return movie;
}

/// An element of a Matroska file.
inline std::string element(std::uint64_t name, const std::string& content) {
    int bytes = 1;
    while (name >> (8 * bytes) != 0) ++bytes;
    return bigBytes(name, bytes) + bigBytes(content.size() | std::uint64_t{1} << 56U, 8) + content;
}

/// A second of silence that goes on in a file at that address, by its name and by its chapters.
inline std::string linkedSegments(const std::string& address) {
    const auto number = [](std::uint64_t value) { return bigBytes(value, 4); };
    const std::string own(16, 'a'), next(16, 'b');
    const std::string header =
        element(0x1A45DFA3, element(0x4286, number(1)) + element(0x42F7, number(1)) + element(0x4282, "matroska") +
                                element(0x4287, number(4)) + element(0x4285, number(2)));
    const std::string info = element(0x1549A966, element(0x73A4, own) + element(0x3EB923, next) +
                                                     element(0x3E83BB, address) + element(0x2AD7B1, number(1'000'000)) +
                                                     element(0x4489, std::string("\x44\x7A\0\0", 4)));  // 1000.0
    const std::string sound = element(0xB5, std::string("\x45\xFA\0\0", 4)) + element(0x9F, number(1)) +
                              element(0x6264, number(16));  // 8000.0 hertz, one channel, 16 bits
    const std::string track = element(
        0x1654AE6B, element(0xAE, element(0xD7, number(1)) + element(0x73C5, number(1)) + element(0x83, number(2)) +
                                      element(0x86, "A_PCM/INT/LIT") + element(0xE1, sound)));
    const auto chapter = [&](std::uint64_t from, std::uint64_t to, const std::string& segment) {
        return element(0xB6, element(0x73C4, number(from / 1000 + 1)) + element(0x91, bigBytes(from * 1'000'000, 8)) +
                                 element(0x92, bigBytes(to * 1'000'000, 8)) +
                                 (segment.empty() ? "" : element(0x6E67, segment)));
    };
    const std::string chapters = element(
        0x1043A770, element(0x45B9, element(0x45DD, number(1)) + chapter(0, 1000, "") + chapter(0, 1000, next)));
    std::string cluster = element(0xE7, number(0));
    for (int piece = 0; piece < 10; ++piece)
        cluster += element(
            0xA3, "\x81" + bigBytes(static_cast<std::uint64_t>(piece) * 100, 2) + "\x80" + std::string(1600, '\0'));
    return header + element(0x18538067, info + track + chapters + element(0x1F43B675, cluster));
}

}  // namespace corvane::test
