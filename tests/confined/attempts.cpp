// SPDX-License-Identifier: GPL-3.0-or-later
#include "confined/attempts.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <linux/userfaultfd.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <thread>

namespace corvane::test {

namespace {

using Places = AttemptPlaces;
constexpr uid_t kSomebody = 65534;
constexpr auto kOwn = static_cast<uid_t>(-1);

/// The refusal in a call's result, 0 for none.
int refusal(long result) {
    const bool refused = result < 0 && (errno == EPERM || errno == EACCES || errno == ENOSYS);
    return refused ? errno : 0;
}

int opened(const std::string& path, int flags) {
    const int file = open(path.c_str(), flags | O_CLOEXEC, 0600);
    const int refused = refusal(file);
    if (file >= 0) close(file);
    return refused;
}

/// The file is executable and no program: the system looks into it, or refuses.
int execute(const Places& places) {
    std::string path = places.outside + "/noprogram";
    std::array<char*, 2> words{path.data(), nullptr};
    return refusal(execve(path.c_str(), words.data(), words.data() + 1));
}

int executeAt(const Places& places) {
    std::string path = places.outside + "/noprogram";
    const int file = open(path.c_str(), O_PATH);
    std::array<char*, 2> words{path.data(), nullptr};
    const int refused = refusal(syscall(SYS_execveat, file, "", words.data(), words.data() + 1, AT_EMPTY_PATH));
    close(file);
    return refused;
}

int forked(long child) {
    if (child == 0) _exit(0);
    if (child > 0) waitpid(static_cast<pid_t>(child), nullptr, 0);
    return refusal(child);
}

/// What pthread_create() and posix_spawn() ask for first, here for a process.
int clone3(const Places&) {
    std::array<std::uint64_t, 8> wishes{};
    wishes[4] = SIGCHLD;
    return forked(syscall(SYS_clone3, wishes.data(), sizeof wishes));
}

int reachHost(const Places& places) {
    const int link = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (link < 0) return refusal(link);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(places.port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int refused = refusal(connect(link, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    close(link);
    return refused;
}

int openSocket(int family, int type) {
    const int made = socket(family, type | SOCK_CLOEXEC, 0);
    if (made >= 0) close(made);
    return refusal(made);
}

int bindSocket(const std::string& path) {
    const int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s", path.c_str());
    const int refused =
        made < 0 ? refusal(made) : refusal(bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    if (made >= 0) close(made);
    return refused;
}

int readOther(const Places&) {
    std::array<char, 8> own{};
    const iovec here{own.data(), own.size()};
    const iovec there{nullptr, own.size()};
    return refusal(process_vm_readv(getppid(), &here, 1, &there, 1, 0));
}

int giveAway(const Places& places, uid_t owner, gid_t group) {
    const int file = open((places.inside + "/file").c_str(), O_RDONLY | O_CLOEXEC);
    const int refused = file < 0 ? EIO : refusal(fchown(file, owner, group));
    close(file);
    return refused;
}

int terminal(unsigned long request) {
    const int none = open("/dev/null", O_RDONLY | O_CLOEXEC);
    char letter = 'x';
    const int refused = refusal(ioctl(none, request, &letter));
    close(none);
    return refused;
}

/// Names another process as the one to be signalled when something comes in.
int ownBy(const std::function<int(int socket, pid_t other)>& name) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return EIO;
    const int refused = refusal(name(ends[0], getppid()));
    for (const int end : ends) close(end);
    return refused;
}

int startThread(const Places&) {
    bool ran = false;
    std::thread([&ran] { ran = true; }).join();
    return ran ? 0 : EPERM;
}

std::string in(const Places& places, const char* name) { return places.inside + '/' + name; }
std::string out(const Places& places, const char* name) { return places.outside + '/' + name; }

template <long call, class... Arguments>
int plain(Arguments... arguments) {
    return refusal(syscall(call, arguments...));
}

std::vector<Attempt> ofCalls() {
    return {
        {"execve", By::Calls, execute},
        {"execveat", By::Calls, executeAt},
        {"fork", By::Calls, [](const Places&) { return forked(syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0)); }},
        {"clone3", By::Calls, clone3},
        {"unshare", By::Calls, [](const Places&) { return refusal(unshare(CLONE_FS)); }},
        {"clone a room", By::Calls,
         [](const Places&) { return forked(syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, 0, 0, 0, 0)); }},
        {"connect", By::Calls, reachHost},
        {"socket AF_INET", By::Calls, [](const Places&) { return openSocket(AF_INET, SOCK_DGRAM); }},
        {"socket AF_INET6", By::Calls, [](const Places&) { return openSocket(AF_INET6, SOCK_STREAM); }},
        {"socket AF_PACKET", By::Calls, [](const Places&) { return openSocket(AF_PACKET, SOCK_RAW); }},
        {"socket AF_NETLINK", By::Calls, [](const Places&) { return openSocket(AF_NETLINK, SOCK_RAW); }},
        {"ptrace", By::Calls, [](const Places&) { return refusal(ptrace(PTRACE_SEIZE, getppid(), 0, 0)); }},
        {"process_vm_readv", By::Calls, readOther},
        {"kill", By::Calls, [](const Places&) { return refusal(kill(getppid(), 0)); }},
        {"tgkill", By::Calls, [](const Places&) { return plain<SYS_tgkill>(getppid(), getppid(), 0); }},
        {"tkill", By::Calls, [](const Places&) { return plain<SYS_tkill>(getppid(), 0); }},
        {"pidfd_open", By::Calls, [](const Places&) { return plain<SYS_pidfd_open>(getppid(), 0); }},
        {"F_SETOWN", By::Calls,
         [](const Places&) { return ownBy([](int link, pid_t other) { return fcntl(link, F_SETOWN, other); }); }},
        {"F_SETOWN_EX", By::Calls,
         [](const Places&) {
             return ownBy([](int link, pid_t other) {
                 f_owner_ex owner{F_OWNER_PID, other};
                 return fcntl(link, F_SETOWN_EX, &owner);
             });
         }},
        {"F_SETSIG", By::Calls,
         [](const Places&) { return ownBy([](int link, pid_t) { return fcntl(link, F_SETSIG, SIGKILL); }); }},
        {"FIOSETOWN", By::Calls,
         [](const Places&) { return ownBy([](int link, pid_t other) { return ioctl(link, FIOSETOWN, &other); }); }},
        {"SIOCSPGRP", By::Calls,
         [](const Places&) { return ownBy([](int link, pid_t other) { return ioctl(link, SIOCSPGRP, &other); }); }},
        {"prlimit64", By::Calls,
         [](const Places&) {
             rlimit before{};
             return refusal(prlimit(getppid(), RLIMIT_CORE, nullptr, &before));
         }},
        {"setpriority", By::Calls,
         [](const Places&) {
             return refusal(setpriority(PRIO_PROCESS, static_cast<id_t>(getppid()),
                                        getpriority(PRIO_PROCESS, static_cast<id_t>(getppid()))));
         }},
        {"sched_setaffinity", By::Calls,
         [](const Places&) {
             cpu_set_t processors;
             return sched_getaffinity(getppid(), sizeof processors, &processors) != 0
                        ? EIO
                        : refusal(sched_setaffinity(getppid(), sizeof processors, &processors));
         }},
        {"chown", By::Calls, [](const Places& p) { return refusal(chown(in(p, "file").c_str(), kSomebody, kOwn)); }},
        {"lchown", By::Calls, [](const Places& p) { return refusal(lchown(in(p, "file").c_str(), kSomebody, kOwn)); }},
        {"fchown", By::Calls, [](const Places& p) { return giveAway(p, kSomebody, kOwn); }},
        {"setuid", By::Calls, [](const Places&) { return plain<SYS_setuid>(getuid()); }},
        {"setresgid", By::Calls, [](const Places&) { return plain<SYS_setresgid>(getgid(), getgid(), getgid()); }},
        {"capset", By::Calls, [](const Places&) { return plain<SYS_capset>(nullptr, nullptr); }},
        {"init_module", By::Calls, [](const Places&) { return plain<SYS_init_module>(nullptr, 0, ""); }},
        {"mount", By::Calls,
         [](const Places& p) { return refusal(mount("none", out(p, "none").c_str(), "tmpfs", 0, nullptr)); }},
        {"bpf", By::Calls, [](const Places&) { return plain<SYS_bpf>(0, nullptr, 0); }},
        {"keyctl", By::Calls, [](const Places&) { return plain<SYS_keyctl>(0, -3, 0); }},
        {"userfaultfd", By::Calls, [](const Places&) { return plain<SYS_userfaultfd>(UFFD_USER_MODE_ONLY); }},
        {"io_uring_setup", By::Calls, [](const Places&) { return plain<SYS_io_uring_setup>(1, nullptr); }},
        {"personality", By::Calls, [](const Places&) { return plain<SYS_personality>(0xFFFFFFFF); }},
        {"setxattr", By::Calls,
         [](const Places& p) { return refusal(setxattr(in(p, "file").c_str(), "user.x", "", 0, 0)); }},
        {"utimensat", By::Calls,
         [](const Places& p) { return refusal(utimensat(AT_FDCWD, in(p, "file").c_str(), nullptr, 0)); }},
        {"truncate", By::Calls, [](const Places& p) { return refusal(truncate(in(p, "file").c_str(), 0)); }},
        {"mknod", By::Calls, [](const Places& p) { return refusal(mknod(in(p, "pipe").c_str(), S_IFIFO | 0600, 0)); }},
        {"TIOCSTI", By::Calls, [](const Places&) { return terminal(TIOCSTI); }},
        {"TIOCLINUX", By::Calls, [](const Places&) { return terminal(TIOCLINUX); }},
    };
}

std::vector<Attempt> ofWriting() {
    return {
        {"create outside", By::Bounds, [](const Places& p) { return opened(out(p, "new"), O_WRONLY | O_CREAT); }},
        {"write outside", By::Bounds, [](const Places& p) { return opened(out(p, "file"), O_WRONLY); }},
        {"append outside", By::Bounds, [](const Places& p) { return opened(out(p, "file"), O_RDWR | O_APPEND); }},
        {"cut off outside", By::Bounds, [](const Places& p) { return opened(out(p, "file"), O_WRONLY | O_TRUNC); }},
        {"remove outside", By::Bounds, [](const Places& p) { return refusal(unlink(out(p, "gone").c_str())); }},
        {"make a folder outside", By::Bounds,
         [](const Places& p) { return refusal(mkdir(out(p, "made").c_str(), 0700)); }},
        {"remove a folder outside", By::Bounds,
         [](const Places& p) { return refusal(rmdir(out(p, "folder").c_str())); }},
        {"rename outside", By::Bounds,
         [](const Places& p) { return refusal(rename(out(p, "named").c_str(), out(p, "other").c_str())); }},
        {"link outside", By::Bounds,
         [](const Places& p) { return refusal(link(out(p, "file").c_str(), out(p, "second").c_str())); }},
        {"socket outside", By::Bounds, [](const Places& p) { return bindSocket(out(p, "socket")); }},
        {"symbolic link inside", By::Bounds,
         [](const Places& p) { return refusal(symlink("/etc", in(p, "symbolic").c_str())); }},
    };
}

std::vector<Attempt> kept() {
    return {
        {"read outside", By::Kept, [](const Places& p) { return opened(out(p, "file"), O_RDONLY); }},
        {"create inside", By::Kept, [](const Places& p) { return opened(in(p, "new"), O_WRONLY | O_CREAT); }},
        {"write inside", By::Kept, [](const Places& p) { return opened(in(p, "file"), O_RDWR | O_TRUNC); }},
        {"rename inside", By::Kept,
         [](const Places& p) { return refusal(rename(in(p, "new").c_str(), in(p, "file").c_str())); }},
        {"make a folder inside", By::Kept, [](const Places& p) { return refusal(mkdir(in(p, "made").c_str(), 0700)); }},
        {"socket inside", By::Kept, [](const Places& p) { return bindSocket(in(p, "socket")); }},
        {"remove inside", By::Kept, [](const Places& p) { return refusal(unlink(in(p, "gone").c_str())); }},
        {"give to a group", By::Kept, [](const Places& p) { return giveAway(p, kOwn, getgid()); }},
        {"thread", By::Kept, startThread},
        {"kill itself", By::Kept, [](const Places&) { return refusal(kill(getpid(), 0)); }},
        {"socket AF_UNIX", By::Kept, [](const Places&) { return openSocket(AF_UNIX, SOCK_STREAM); }},
    };
}

bool layFile(const std::string& path, mode_t mode) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
    const bool laid = file >= 0 && write(file, "no program", 10) == 10;
    return close(file) == 0 && laid;
}

}  // namespace

bool layDown(const AttemptPlaces& places) {
    bool laid = true;
    for (const std::string& folder : {places.inside, places.outside}) {
        mkdir(folder.c_str(), 0700);
        for (const char* name : {"/file", "/gone", "/named"}) laid = layFile(folder + name, 0600) && laid;
    }
    mkdir((places.outside + "/folder").c_str(), 0700);
    return layFile(places.outside + "/noprogram", 0700) && laid;
}

const std::vector<Attempt>& attempts() {
    static const std::vector<Attempt> all = [] {
        std::vector<Attempt> joined = ofCalls();
        for (const auto& more : {ofWriting(), kept()}) joined.insert(joined.end(), more.begin(), more.end());
        return joined;
    }();
    return all;
}

}  // namespace corvane::test
