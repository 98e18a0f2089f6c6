// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// One running player a program folder. The first start takes the folder's place and listens; a later one finds it
/// taken and hands its files over. A desktop says how a place is taken and how a call goes. User-interface thread.
class Instance {
public:
    /// Of a later start: its files, one by one; none: it came without any.
    using CallHandler = std::function<void(const std::vector<std::string>& files)>;

    /// mostBytes: of all paths that one call hands over, each with the byte that ends it.
    explicit Instance(std::size_t mostBytes) : mostBytes_(mostBytes) {}
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;
    virtual ~Instance() = default;

    /// True: this is the only one, or nobody can tell. Repeating it asks nobody again.
    bool acquire();
    std::size_t mostBytes() const { return mostBytes_; }
    /// How many of the files, from the first one on, fit into one call.
    std::size_t fitting(const std::vector<std::string>& files) const;
    /// Calls the instance that runs, also one that has only just begun, and gives it files; without any it only comes
    /// to the front. False: it does not answer in time, or the files do not fit.
    bool call(const std::vector<std::string>& files) const;
    void onCall(CallHandler handler) { handler_ = std::move(handler); }
    /// Where the one that has the place is seen, in words, when that is no place that this start's user sees; "" when
    /// it is, or nobody can tell. After acquire().
    virtual std::string elsewhere() const { return {}; }

protected:
    /// Takes the place and listens. False: another one has it.
    virtual bool takePlace() = 0;
    /// Brings a call's bytes (instance_call.h) to who has the place.
    virtual bool deliver(const std::string& message) const = 0;
    /// A later start has called: from the desktop's own loop.
    void called(const std::vector<std::string>& files) const;

private:
    const std::size_t mostBytes_;
    bool asked_ = false;
    bool only_ = true;
    CallHandler handler_;
};

}  // namespace corvane
