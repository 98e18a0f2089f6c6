// SPDX-License-Identifier: GPL-3.0-or-later
// Eyes and a hand on a private X server: x_watch FRAMEBUFFER, where FRAMEBUFFER is the file of an Xvfb with -fbdir.
//
// Commands on standard input, one a line:
//   watch X Y WIDTH HEIGHT   reports changes of these pixels from now on
//   unwatch                  reports no more of them
//   key KEYSYM               presses and releases a key, by the hexadecimal number of its symbol
// Events on standard output, each with the monotonic clock's seconds in front:
//   T watching | T key | T map WINDOW | T unmap WINDOW | T configure WINDOW X Y WIDTH HEIGHT
//   T changed RRGGBB         the watched pixels differ; the colour is that of their middle
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kLookEveryMs = 1;
constexpr xcb_keysym_t kShift = 0xFFE1;

double now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

template <typename... Values>
void tell(double at, const char* format, Values... values) {
    std::printf("%.6f ", at);
    std::printf(format, values...);
    std::putchar('\n');
    std::fflush(stdout);
}

/// The server's screen: an XWD file of 32 bits a pixel that follows what is shown.
class Screen {
public:
    explicit Screen(const char* path) {
        const int file = open(path, O_RDONLY | O_CLOEXEC);
        struct stat info {};
        if (file < 0 || fstat(file, &info) != 0) return;
        size_ = static_cast<std::size_t>(info.st_size);
        void* map = mmap(nullptr, size_, PROT_READ, MAP_SHARED, file, 0);
        close(file);
        if (map == MAP_FAILED) return;
        bytes_ = static_cast<const std::uint8_t*>(map);
        stride_ = word(12);
        start_ = word(0) + 12 * word(19);
        width_ = word(4);
        height_ = word(5);
    }
    bool usable() const { return bytes_ != nullptr; }

    /// Keeps inside the screen and remembers what is there.
    void watch(std::uint32_t x, std::uint32_t y, std::uint32_t width, std::uint32_t height) {
        left_ = std::min(x, width_ - 1);
        top_ = std::min(y, height_ - 1);
        columns_ = std::min(width, width_ - left_);
        rows_ = std::min(height, height_ - top_);
        seen_.assign(std::size_t{4} * columns_ * rows_, 0);
        (void)look();
    }
    void forget() { rows_ = 0; }
    bool watching() const { return rows_ > 0; }

    /// Whether the watched pixels differ from what was seen last.
    bool look() {
        bool differs = false;
        const std::size_t length = std::size_t{4} * columns_;
        for (std::uint32_t row = 0; row < rows_; ++row) {
            const std::uint8_t* line = bytes_ + start_ + std::size_t{top_ + row} * stride_ + std::size_t{4} * left_;
            std::uint8_t* last = seen_.data() + row * length;
            if (std::memcmp(line, last, length) == 0) continue;
            std::memcpy(last, line, length);
            differs = true;
        }
        return differs;
    }

    /// Red, green, blue of the middle, as it was seen last.
    std::uint32_t middle() const {
        const std::uint8_t* pixel = seen_.data() + std::size_t{4} * (std::size_t{rows_ / 2} * columns_ + columns_ / 2);
        return static_cast<std::uint32_t>(pixel[2]) << 16U | static_cast<std::uint32_t>(pixel[1]) << 8U | pixel[0];
    }

private:
    /// A word of the file's header, which is big-endian.
    std::uint32_t word(std::size_t index) const {
        const std::uint8_t* at = bytes_ + 4 * index;
        return static_cast<std::uint32_t>(at[0]) << 24U | static_cast<std::uint32_t>(at[1]) << 16U |
               static_cast<std::uint32_t>(at[2]) << 8U | at[3];
    }

    const std::uint8_t* bytes_ = nullptr;
    std::size_t size_ = 0, stride_ = 0, start_ = 0;
    std::uint32_t width_ = 0, height_ = 0;
    std::uint32_t left_ = 0, top_ = 0, columns_ = 0, rows_ = 0;
    std::vector<std::uint8_t> seen_;
};

/// Windows that come and change on the root window, and keys pressed through the XTEST extension.
class Display {
public:
    Display() : connection_(xcb_connect(nullptr, nullptr)) {
        if (!usable()) return;
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
        xcb_flush(connection_);
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() { xcb_disconnect(connection_); }
    bool usable() const { return xcb_connection_has_error(connection_) == 0; }
    int descriptor() const { return xcb_get_file_descriptor(connection_); }

    void tellEvents() {
        while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
            tellEvent(*event);
            std::free(event);  // NOLINT: the library hands out malloc's memory
        }
    }

    void pressAndRelease(xcb_keysym_t symbol) {
        const auto [code, shifted] = keyOf(symbol);
        const std::uint8_t shift = keyOf(kShift).first;
        if (code == 0) return;
        const double at = now();
        if (shifted) fake(XCB_KEY_PRESS, shift);
        fake(XCB_KEY_PRESS, code);
        fake(XCB_KEY_RELEASE, code);
        if (shifted) fake(XCB_KEY_RELEASE, shift);
        xcb_flush(connection_);
        tell(at, "key");
    }

private:
    static void tellEvent(const xcb_generic_event_t& event) {
        const double at = now();
        const void* data = &event;
        switch (event.response_type & 0x7FU) {
            case XCB_MAP_NOTIFY:
                tell(at, "map %u", static_cast<const xcb_map_notify_event_t*>(data)->window);
                break;
            case XCB_UNMAP_NOTIFY:
                tell(at, "unmap %u", static_cast<const xcb_unmap_notify_event_t*>(data)->window);
                break;
            case XCB_CONFIGURE_NOTIFY: {
                const auto* change = static_cast<const xcb_configure_notify_event_t*>(data);
                tell(at, "configure %u %d %d %d %d", change->window, int{change->x}, int{change->y}, int{change->width},
                     int{change->height});
                break;
            }
            default:
                break;
        }
    }

    /// The key that gives a symbol, and whether it takes shift; key 0: none.
    std::pair<std::uint8_t, bool> keyOf(xcb_keysym_t symbol) {
        const xcb_setup_t* setup = xcb_get_setup(connection_);
        const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
        const auto cookie = xcb_get_keyboard_mapping(connection_, setup->min_keycode, count);
        const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> map(
            xcb_get_keyboard_mapping_reply(connection_, cookie, nullptr), &std::free);
        if (!map) return {0, false};
        const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
        for (int key = 0; key < count; ++key) {
            for (int column = 0; column < 2 && column < map->keysyms_per_keycode; ++column) {
                if (symbols[key * map->keysyms_per_keycode + column] == symbol) {
                    return {static_cast<std::uint8_t>(setup->min_keycode + key), column == 1};
                }
            }
        }
        return {0, false};
    }

    void fake(std::uint8_t type, std::uint8_t detail) {
        static xcb_extension_t extension{"XTEST", 0};
        constexpr std::uint8_t kFakeInput = 2;
        const xcb_protocol_request_t request{1, &extension, kFakeInput, 1};
        std::array<std::uint8_t, 36> body{};
        body[4] = type;
        body[5] = detail;
        std::array<iovec, 3> parts{};  // the library uses the two in front
        parts[2].iov_base = body.data();
        parts[2].iov_len = body.size();
        xcb_send_request(connection_, 0, &parts[2], &request);
    }

    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
};

void obey(const std::string& line, Screen& screen, Display& display) {
    std::uint32_t x = 0, y = 0, width = 0, height = 0;
    if (std::sscanf(line.c_str(), "watch %u %u %u %u", &x, &y, &width, &height) == 4) {
        screen.watch(x, y, width, height);
        tell(now(), "watching");
    } else if (std::sscanf(line.c_str(), "key %x", &x) == 1) {
        display.pressAndRelease(x);
    } else if (line == "unwatch") {
        screen.forget();
    }
}

/// Obeys what has come in; false at the end of the commands.
bool readCommands(std::string& pending, Screen& screen, Display& display) {
    std::array<char, 512> part{};
    const ssize_t length = read(STDIN_FILENO, part.data(), part.size());
    if (length <= 0) return length < 0 && errno == EINTR;
    pending.append(part.data(), static_cast<std::size_t>(length));
    for (std::size_t end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
        obey(pending.substr(0, end), screen, display);
        pending.erase(0, end + 1);
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    Screen screen(argc == 2 ? argv[1] : "");
    Display display;
    if (!screen.usable() || !display.usable()) {
        std::fputs("x_watch: no frame buffer or no display\n", stderr);
        return 1;
    }
    std::string pending;
    for (;;) {
        std::array<pollfd, 2> waits{{{STDIN_FILENO, POLLIN, 0}, {display.descriptor(), POLLIN, 0}}};
        poll(waits.data(), waits.size(), screen.watching() ? kLookEveryMs : -1);
        if (screen.watching() && screen.look()) tell(now(), "changed %06X", screen.middle());
        display.tellEvents();
        if (waits[0].revents != 0 && !readCommands(pending, screen, display)) return 0;
        if (!display.usable()) return 0;
    }
}
