// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

namespace corvane {

namespace {

constexpr std::size_t kMaxMessage = 1U << 20U;  ///< bytes of all paths handed over
constexpr int kMessageMs = 2000;                ///< who is silent for so long is dropped, on both sides
constexpr int kConnectMs = 1000;                ///< a first start holds its lock a moment before it listens
constexpr int kConnectPauseMs = 10;

sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    return address;
}

template <class Call>
bool withAddress(const std::string& path, const Call& call) {
    const sockaddr_un address = addressOf(path);
    if (path.size() >= sizeof address.sun_path) return false;
    return call(reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(sizeof address)) == 0;
}

std::vector<std::string> split(const std::string& message) {
    std::vector<std::string> files;
    std::size_t from = 0;
    for (std::size_t end = message.find('\0'); end != std::string::npos; end = message.find('\0', from)) {
        files.push_back(message.substr(from, end - from));
        from = end + 1;
    }
    return files;
}

/// One sender: reads until it closes, then tells its files.
class Receiver : public QObject {
public:
    Receiver(Descriptor from, const Instance::FilesHandler& handler, QObject* parent)
        : QObject(parent), from_(std::move(from)), handler_(handler), ready_(from_.get(), QSocketNotifier::Read) {
        connect(&ready_, &QSocketNotifier::activated, this, [this] { receive(); });
        QTimer::singleShot(kMessageMs, this, &QObject::deleteLater);
    }

private:
    void receive() {
        std::array<char, 4096> buffer{};
        const ssize_t got = read(from_.get(), buffer.data(), buffer.size());
        if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
        if (got > 0 && message_.size() + static_cast<std::size_t>(got) <= kMaxMessage) {
            message_.append(buffer.data(), static_cast<std::size_t>(got));
            return;
        }
        ready_.setEnabled(false);
        if (got == 0 && !message_.empty() && handler_) handler_(split(message_));
        deleteLater();
    }

    Descriptor from_;
    const Instance::FilesHandler& handler_;
    QSocketNotifier ready_;
    std::string message_;
};

}  // namespace

Instance::Instance(std::string folder, std::string runtimeFolder)
    : folder_(std::move(folder)), runtimeFolder_(std::move(runtimeFolder)) {}

Instance::~Instance() {
    if (socket_) unlink((base() + ".socket").c_str());
}

std::string Instance::base() const {
    if (runtimeFolder_.empty()) return {};
    std::error_code failed;
    std::string real = std::filesystem::weakly_canonical(folder_, failed).string();
    if (failed) real = folder_;
    while (real.size() > 1 && real.back() == '/') real.pop_back();
    const QByteArray hash = QCryptographicHash::hash(QByteArray::fromStdString(real), QCryptographicHash::Sha256);
    return runtimeFolder_ + "/corvane-" + hash.toHex().left(16).toStdString();
}

bool Instance::acquire() {
    if (asked_) return only_;
    asked_ = true;
    const std::string place = base();
    if (place.empty()) return only_;
    lock_ = Descriptor(open((place + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock_) return only_;
    only_ = flock(lock_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (only_) listen();
    return only_;
}

void Instance::listen() {
    const std::string path = base() + ".socket";
    unlink(path.c_str());  // left by a player that was killed: the lock says that it is gone
    Descriptor listening(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!listening) return;
    const int descriptor = listening.get();
    if (!withAddress(path, [&](const sockaddr* a, socklen_t size) { return ::bind(descriptor, a, size); })) return;
    chmod(path.c_str(), 0600);
    if (::listen(descriptor, 8) != 0) return;
    socket_ = std::move(listening);
    auto* const ready = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
    connect(ready, &QSocketNotifier::activated, this, [this] { accept(); });
}

void Instance::accept() {
    Descriptor from(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (from) new Receiver(std::move(from), handler_, this);
}

/// Connects to a player that may be about to listen; no descriptor when it does not in time.
Descriptor Instance::connectPatiently() const {
    const std::string path = base() + ".socket";
    const timeval patience{kMessageMs / 1000, kMessageMs % 1000 * 1000L};
    QElapsedTimer passed;
    passed.start();
    do {
        Descriptor to(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (!to) break;
        setsockopt(to.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        if (withAddress(path, [&](const sockaddr* a, socklen_t size) { return ::connect(to.get(), a, size); })) {
            return to;
        }
        poll(nullptr, 0, kConnectPauseMs);
    } while (passed.elapsed() < kConnectMs);
    return {};
}

bool Instance::handOver(const std::vector<std::string>& files) const {
    std::string message;
    for (const std::string& file : files) message += file + '\0';
    if (message.size() > kMaxMessage) return false;
    const Descriptor to = connectPatiently();
    if (!to) return false;
    std::size_t sent = 0;
    while (sent < message.size()) {
        const ssize_t done = send(to.get(), message.data() + sent, message.size() - sent, MSG_NOSIGNAL);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        sent += static_cast<std::size_t>(done);
    }
    return true;
}

std::string runtimeFolder() {
    struct stat status {};
    const auto isOwn = [&](const std::string& folder) {
        return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid();
    };
    if (const char* given = std::getenv("XDG_RUNTIME_DIR"); given != nullptr && isOwn(given)) return given;
    const std::string own = "/tmp/corvane-" + std::to_string(getuid());
    mkdir(own.c_str(), 0700);
    return isOwn(own) && (status.st_mode & 0077U) == 0 ? own : std::string();
}

}  // namespace corvane
