// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/socket_instance.h"

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
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "drives/spare_descriptors.h"
#include "program/instance_call.h"

namespace corvane {

namespace {

constexpr int kMessageMs = 2000;  ///< who is silent for so long is dropped, on both sides
constexpr int kConnectMs = 1000;  ///< a first start holds its lock a moment before it listens
constexpr int kConnectPauseMs = 10;
constexpr int kMostReceivers = 4;  ///< calls that are read at a time
constexpr const char* kOwnPlace = ".corvane-run";

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

/// A lock that says nothing keeps nobody out, so that a full disk is no matter.
void writeDisplay(int lock, const SessionDisplay& display) {
    const std::string text = display.text();
    const bool written =
        ftruncate(lock, 0) == 0 && pwrite(lock, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
    if (!written && ftruncate(lock, 0) != 0) return;
}

SessionDisplay readDisplay(int lock) {
    std::array<char, 512> text{};
    const ssize_t got = pread(lock, text.data(), text.size(), 0);
    return SessionDisplay::read({text.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0))});
}

}  // namespace

/// One sender: reads until it closes, then tells its files.
class SocketInstance::Receiver : public QObject {
public:
    Receiver(Descriptor from, SocketInstance& instance)
        : QObject(&instance), from_(std::move(from)), instance_(instance), ready_(from_.get(), QSocketNotifier::Read) {
        ++instance_.receivers_;
        connect(&ready_, &QSocketNotifier::activated, this, [this] { receive(); });
        QTimer::singleShot(kMessageMs, this, &QObject::deleteLater);
    }
    ~Receiver() override { --instance_.receivers_; }

private:
    void receive() {
        std::array<char, 4096> buffer{};
        const ssize_t got = read(from_.get(), buffer.data(), buffer.size());
        if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
        if (got > 0 && reader_.take(std::string_view(buffer.data(), static_cast<std::size_t>(got)))) return;
        ready_.setEnabled(false);
        if (got == 0) instance_.called(reader_.files());
        deleteLater();
    }

    Descriptor from_;
    SocketInstance& instance_;
    QSocketNotifier ready_;
    CallReader reader_{kMostInCall};
};

SocketInstance::SocketInstance(std::string folder, std::string runtimeFolder, SessionDisplay display)
    : Instance(kMostInCall),
      folder_(std::move(folder)),
      runtimeFolder_(std::move(runtimeFolder)),
      display_(std::move(display)) {}

SocketInstance::~SocketInstance() {
    if (socket_) unlinkat(place_.handle(), fileName(".socket").c_str(), 0);
    qDeleteAll(children());  // they count themselves out
}

std::string SocketInstance::fileName(const char* ending) const {
    std::error_code failed;
    std::string real = std::filesystem::weakly_canonical(folder_, failed).string();
    if (failed) real = folder_;
    while (real.size() > 1 && real.back() == '/') real.pop_back();
    const QByteArray hash = QCryptographicHash::hash(QByteArray::fromStdString(real), QCryptographicHash::Sha256);
    return "corvane-" + hash.toHex().left(16).toStdString() + ending;
}

bool SocketInstance::takePlace() {
    place_ = PrivateFolder::open(runtimeFolder_);
    if (!place_) return true;
    lock_ = Descriptor(openat(place_.handle(), fileName(".lock").c_str(),
                              O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600));
    if (!lock_) return true;
    const bool only = flock(lock_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (only) {
        writeDisplay(lock_.get(), display_);
        listen();
    } else {
        other_ = readDisplay(lock_.get());
    }
    return only;
}

std::string SocketInstance::elsewhere() const { return display_.isOther(other_) ? other_.name() : std::string(); }

void SocketInstance::listen() {
    const std::string socketName = fileName(".socket");
    unlinkat(place_.handle(), socketName.c_str(),
             0);  // left by a player that was killed: the lock says that it is gone
    Descriptor listening(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!listening) return;
    const int descriptor = listening.get();
    const auto bindIt = [&](const sockaddr* address, socklen_t size) { return ::bind(descriptor, address, size); };
    if (!withAddress(place_.within(socketName), bindIt)) return;
    if (fchmodat(place_.handle(), socketName.c_str(), 0600, 0) != 0 || ::listen(descriptor, 8) != 0) return;
    socket_ = std::move(listening);
    auto* const ready = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
    connect(ready, &QSocketNotifier::activated, this, [this] { accept(); });
}

void SocketInstance::accept() {
    const auto next = [this] {
        return Descriptor(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    };
    Descriptor from = next();
    if (!from && SpareDescriptors::refused()) {
        // It must be answered, or it would be told again and again. It is turned away.
        const SpareDescriptors::Loan loan;
        next();
        return;
    }
    if (from && receivers_ < kMostReceivers) new Receiver(std::move(from), *this);
}

/// Connects to a player that may be about to listen; no descriptor when it does not in time.
Descriptor SocketInstance::connectPatiently() const {
    const PrivateFolder place = PrivateFolder::open(runtimeFolder_);
    const timeval patience{kMessageMs / 1000, kMessageMs % 1000 * 1000L};
    QElapsedTimer passed;
    passed.start();
    do {
        Descriptor to(place ? socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0) : -1);
        if (!to) break;
        setsockopt(to.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        const auto connectIt = [&](const sockaddr* address, socklen_t size) {
            return ::connect(to.get(), address, size);
        };
        if (withAddress(place.within(fileName(".socket")), connectIt)) return to;
        poll(nullptr, 0, kConnectPauseMs);
    } while (passed.elapsed() < kConnectMs);
    return {};
}

bool SocketInstance::deliver(const std::string& message) const {
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

std::string runtimeFolder(const std::string& programFolder) {
    const char* const given = std::getenv("XDG_RUNTIME_DIR");
    const bool isGiven = given != nullptr && PrivateFolder::open(given);
    // One of its own there: nothing else in it needs to be written.
    const std::string within = isGiven ? std::string(given) + "/corvane" : std::string();
    for (const std::string& own :
         {within, "/tmp/corvane-" + std::to_string(geteuid()), programFolder + '/' + kOwnPlace}) {
        if (!own.empty() && PrivateFolder::make(own)) return own;
    }
    return {};
}

}  // namespace corvane
