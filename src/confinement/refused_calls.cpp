// SPDX-License-Identifier: GPL-3.0-or-later
#include "confinement/refused_calls.h"

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>

namespace corvane {

namespace {

/// Whatever they are asked with. A call that this machine or its library does not know is left out.
constexpr const char* kNever[] = {
    // Other programs.
    "execve", "execveat", "fork", "vfork", "uselib",
    // Other processes: their memory, their files, their signals.
    "ptrace", "process_vm_readv", "process_vm_writev", "process_madvise", "process_mrelease", "kcmp", "pidfd_open",
    "pidfd_getfd", "pidfd_send_signal", "rt_sigqueueinfo",
    // Owners and users.
    "chown", "lchown", "fchownat", "setuid", "setgid", "setreuid", "setregid", "setresuid", "setresgid", "setfsuid",
    "setfsgid", "setgroups", "capset",
    // What a file has besides its bytes and its mode; cutting a file off by its name.
    "setxattr", "lsetxattr", "fsetxattr", "removexattr", "lremovexattr", "fremovexattr", "utime", "utimes", "futimesat",
    "utimensat", "truncate", "mknod", "mknodat", "open_by_handle_at", "quotactl", "quotactl_fd", "fanotify_init",
    // The place of everything.
    "mount", "umount", "umount2", "pivot_root", "chroot", "fsopen", "fsconfig", "fsmount", "fspick", "move_mount",
    "open_tree", "mount_setattr", "unshare", "setns", "swapon", "swapoff",
    // The kernel, and wide doors into it.
    "init_module", "finit_module", "delete_module", "create_module", "kexec_load", "kexec_file_load", "reboot", "bpf",
    "perf_event_open", "userfaultfd", "io_uring_setup", "io_uring_enter", "io_uring_register", "keyctl", "add_key",
    "request_key", "lookup_dcookie", "nfsservctl", "personality", "modify_ldt", "iopl", "ioperm", "acct", "syslog",
    "vhangup",
    // The machine's clock and names.
    "settimeofday", "stime", "clock_settime", "clock_settime64", "clock_adjtime", "clock_adjtime64", "adjtimex",
    "sethostname", "setdomainname"};

constexpr std::uint64_t kLowHalf = 0xFFFFFFFF;  ///< a call takes no more of an int, and what stands above is not zero

struct Release {
    void operator()(void* filter) const { seccomp_release(filter); }
};

/// The rules of a filter in the making.
class Rules {
public:
    Rules() : filter_(seccomp_init(SCMP_ACT_ALLOW)) {}

    int count() const { return count_; }
    bool good() const { return filter_ != nullptr && good_; }
    void* filter() const { return filter_.get(); }

    void refuse(const char* call, std::initializer_list<scmp_arg_cmp> when = {}, int error = EPERM) {
        const int number = seccomp_syscall_resolve_name(call);
        if (number == __NR_SCMP_ERROR || filter_ == nullptr) return;
        const auto size = static_cast<unsigned>(when.size());
        good_ = seccomp_rule_add_array(filter(), SCMP_ACT_ERRNO(error), number, size, when.begin()) == 0 && good_;
        ++count_;
    }

private:
    std::unique_ptr<void, Release> filter_;
    int count_ = 0;
    bool good_ = true;
};

scmp_arg_cmp has(unsigned argument, std::uint64_t bits, std::uint64_t value) {
    return {argument, SCMP_CMP_MASKED_EQ, bits, value};
}

scmp_arg_cmp isNot(unsigned argument, std::uint64_t value) { return {argument, SCMP_CMP_NE, value, 0}; }

/// Threads may begin, processes and rooms of their own may not.
void refuseProcesses(Rules& rules) {
    rules.refuse("clone", {has(0, CLONE_THREAD, 0)});
    for (const std::uint64_t room :
         {CLONE_NEWNS, CLONE_NEWCGROUP, CLONE_NEWUTS, CLONE_NEWIPC, CLONE_NEWUSER, CLONE_NEWPID, CLONE_NEWNET}) {
        rules.refuse("clone", {has(0, room, room)});
    }
    // Its flags lie in memory, where no filter looks; without it the C library takes the older call.
    rules.refuse("clone3", {}, ENOSYS);
}

/// Signals reach the program itself alone: its own abort() goes this way.
void refuseForeignSignals(Rules& rules) {
    const auto self = static_cast<std::uint64_t>(getpid());
    for (const char* call : {"kill", "tgkill", "rt_tgsigqueueinfo"}) rules.refuse(call, {isNot(0, self)});
    // Valgrind, inside the process, ends threads by this old call, and would wait for them for ever.
    const char* const loadedBefore = std::getenv("LD_PRELOAD");
    const bool underValgrind = loadedBefore != nullptr && std::strstr(loadedBefore, "/vgpreload_") != nullptr;
    if (!underValgrind) rules.refuse("tkill");
}

/// Ways to reach another process that are not named after it: a file that signals its owner when something comes in,
/// limits that end a process, its place on the processors.
void refuseForeignProcesses(Rules& rules) {
    for (const std::uint64_t command : {F_SETOWN, F_SETOWN_EX, F_SETSIG}) {
        for (const char* call : {"fcntl", "fcntl64"}) rules.refuse(call, {has(1, kLowHalf, command)});
    }
    for (const std::uint64_t request : {FIOSETOWN, SIOCSPGRP}) {
        rules.refuse("ioctl", {has(1, kLowHalf, request)});
    }
    // Whoever means itself says 0.
    for (const char* call : {"prlimit64", "sched_setaffinity", "sched_setscheduler", "sched_setparam", "sched_setattr",
                             "migrate_pages", "move_pages"}) {
        rules.refuse(call, {isNot(0, 0)});
    }
    for (const char* call : {"setpriority", "ioprio_set"}) rules.refuse(call, {isNot(1, 0)});
}

void refuseSockets(Rules& rules, bool network) {
    constexpr std::array<int, 4> kOfNetworks{AF_UNIX, AF_INET, AF_INET6, AF_NETLINK};  // the last: finding an address
    const int last = network ? *std::max_element(kOfNetworks.begin(), kOfNetworks.end()) : AF_UNIX;
    for (const char* call : {"socket", "socketpair"}) {
        for (int family = 0; family <= last; ++family) {
            const bool kept = std::find(kOfNetworks.begin(), kOfNetworks.end(), family) != kOfNetworks.end();
            if (!kept) rules.refuse(call, {has(0, kLowHalf, static_cast<std::uint64_t>(family))});
        }
        rules.refuse(call, {{0, SCMP_CMP_GT, static_cast<std::uint64_t>(last), 0}});
    }
}

void refuseSome(Rules& rules) {
    // A file's group may be given on, its owner not.
    rules.refuse("fchown", {isNot(1, kLowHalf)});
    // Typing into the terminal that the program was started from.
    for (const std::uint64_t request : {TIOCSTI, TIOCLINUX}) rules.refuse("ioctl", {has(1, kLowHalf, request)});
}

}  // namespace

RefusedCalls refuseCalls(bool network) {
    Rules rules;
    for (const char* call : kNever) rules.refuse(call);
    refuseProcesses(rules);
    refuseForeignSignals(rules);
    refuseForeignProcesses(rules);
    refuseSockets(rules, network);
    refuseSome(rules);
    if (!rules.good()) return {0, "the rules could not be made"};
    // Calls in the words of another machine (32 bits on 64) would go past the rules; a refusal is never the end.
    seccomp_attr_set(rules.filter(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_ERRNO(EPERM));
    // Also threads that a library began before main().
    seccomp_attr_set(rules.filter(), SCMP_FLTATR_CTL_TSYNC, 1);
    const int failed = seccomp_load(rules.filter());
    if (failed != 0) return {0, std::strerror(-failed)};
    return {rules.count(), ""};
}

}  // namespace corvane
