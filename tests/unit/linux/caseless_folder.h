// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <dirent.h>
#include <fcntl.h>
#include <linux/fuse.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "drives/descriptor.h"
#include "types/text.h"

namespace corvane::test {

/// A file system that ignores case and keeps it, as those of cameras and sticks do: a folder of empty files, answered
/// by a thread of ours through the kernel's own door for such. It needs the right to mount.
class CaselessFolder {
public:
    CaselessFolder(const std::string& folder, std::vector<std::string> names)
        : folder_(folder), names_(std::move(names)), kernel_(open("/dev/fuse", O_RDWR | O_CLOEXEC)) {
        const std::string options = "fd=" + std::to_string(kernel_.get()) + ",rootmode=40000,user_id=0,group_id=0";
        mounted_ = kernel_ && mount("corvane-test", folder.c_str(), "fuse", MS_NOSUID | MS_NODEV, options.c_str()) == 0;
        if (mounted_) serving_ = std::thread([this] { serve(); });
    }
    CaselessFolder(const CaselessFolder&) = delete;
    CaselessFolder& operator=(const CaselessFolder&) = delete;
    ~CaselessFolder() {
        if (!mounted_) return;
        umount2(folder_.c_str(), MNT_DETACH);
        serving_.join();
    }

    bool mounted() const { return mounted_; }

private:
    static constexpr std::uint64_t kFirstFile = 2;  ///< its number; the folder's own is FUSE_ROOT_ID

    void serve() {
        std::vector<char> asked(FUSE_MIN_READ_BUFFER + 65536);
        while (true) {
            const ssize_t size = read(kernel_.get(), asked.data(), asked.size());
            if (size < 0 && (errno == EINTR || errno == ENOENT)) continue;
            if (size < static_cast<ssize_t>(sizeof(fuse_in_header))) return;  // unmounted
            fuse_in_header head{};
            std::memcpy(&head, asked.data(), sizeof head);
            asked[static_cast<std::size_t>(size)] = '\0';
            answer(head, asked.data() + sizeof head);
        }
    }

    void answer(const fuse_in_header& head, const char* argument) {
        switch (head.opcode) {
            case FUSE_INIT: {
                fuse_init_out out{};
                out.major = FUSE_KERNEL_VERSION;
                out.minor = FUSE_KERNEL_MINOR_VERSION;
                out.max_write = 4096;
                return reply(head, &out, sizeof out);
            }
            case FUSE_LOOKUP:
                return lookUp(head, argument);
            case FUSE_GETATTR: {
                fuse_attr_out out{};
                out.attr = attributes(head.nodeid);
                return reply(head, &out, sizeof out);
            }
            case FUSE_OPENDIR: {
                const fuse_open_out out{};
                return reply(head, &out, sizeof out);
            }
            case FUSE_READDIR:
                return list(head, argument);
            case FUSE_FORGET:
            case FUSE_BATCH_FORGET:
                return;
            case FUSE_RELEASEDIR:
                return reply(head, nullptr, 0);
            default:
                return refuse(head, ENOSYS);
        }
    }
    void lookUp(const fuse_in_header& head, const std::string& name) {
        for (std::size_t i = 0; i < names_.size(); ++i) {
            if (text::capitals(names_[i]) != text::capitals(name)) continue;
            fuse_entry_out out{};
            out.nodeid = kFirstFile + i;
            out.attr = attributes(out.nodeid);
            return reply(head, &out, sizeof out);
        }
        refuse(head, ENOENT);
    }
    void list(const fuse_in_header& head, const char* argument) {
        fuse_read_in in{};
        std::memcpy(&in, argument, sizeof in);
        std::string out;
        for (std::size_t i = in.offset; i < names_.size(); ++i) {
            const std::size_t length = FUSE_DIRENT_ALIGN(FUSE_NAME_OFFSET + names_[i].size());
            if (out.size() + length > in.size) break;
            fuse_dirent entry{};
            entry.ino = kFirstFile + i;
            entry.off = i + 1;
            entry.namelen = static_cast<std::uint32_t>(names_[i].size());
            entry.type = DT_REG;
            std::string bytes(reinterpret_cast<const char*>(&entry), FUSE_NAME_OFFSET);
            bytes += names_[i];
            bytes.resize(length);
            out += bytes;
        }
        reply(head, out.data(), out.size());
    }

    static fuse_attr attributes(std::uint64_t number) {
        fuse_attr attributes{};
        attributes.ino = number;
        attributes.nlink = 1;
        attributes.mode = number == FUSE_ROOT_ID ? S_IFDIR | 0755 : S_IFREG | 0644;
        return attributes;
    }
    void reply(const fuse_in_header& head, const void* data, std::size_t size) { send(head, 0, data, size); }
    void refuse(const fuse_in_header& head, int error) { send(head, -error, nullptr, 0); }
    void send(const fuse_in_header& head, int error, const void* data, std::size_t size) {
        const fuse_out_header out{static_cast<std::uint32_t>(sizeof(fuse_out_header) + size), error, head.unique};
        std::string bytes(reinterpret_cast<const char*>(&out), sizeof out);
        if (size > 0) bytes.append(static_cast<const char*>(data), size);
        // Whoever asked may have gone meanwhile, which is the only way for this to fail.
        [[maybe_unused]] const ssize_t written = write(kernel_.get(), bytes.data(), bytes.size());
    }

    std::string folder_;
    std::vector<std::string> names_;
    Descriptor kernel_;
    bool mounted_ = false;
    std::thread serving_;
};

}  // namespace corvane::test
