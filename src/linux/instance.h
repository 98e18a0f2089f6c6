// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "drives/descriptor.h"
#include "linux/private_folder.h"

namespace corvane {

/// One running player a program folder. The first start holds a lock and listens; a later one hands its files over.
/// Lock and socket lie in a folder of the user's alone (PrivateFolder), named by the folder they stand for.
class Instance : public QObject {
public:
    /// Of a later start: its files, one by one; none: it came without any.
    using CallHandler = std::function<void(const std::vector<std::string>& files)>;

    /// Bytes of all paths that are handed over, each with the byte that ends it.
    static constexpr std::size_t kMostBytes = std::size_t{4} << 20U;
    /// How many of the files, from the first one on, fit into one call.
    static std::size_t fitting(const std::vector<std::string>& files);

    /// folder: the program folder. Nothing is touched before acquire().
    Instance(std::string folder, std::string runtimeFolder);
    ~Instance() override;

    /// True: this is the only one. When locking is impossible at all (no place for it), also true. Repeating it asks
    /// nobody again.
    bool acquire();
    /// Calls the instance that runs, also one that has only just begun, and gives it files; false: it does not answer
    /// within a second or takes nothing for two, or the files do not fit.
    bool call(const std::vector<std::string>& files) const;
    /// Name of the lock (".lock") or the socket (".socket").
    std::string fileName(const char* ending) const;
    void onCall(CallHandler handler) { handler_ = std::move(handler); }

private:
    void listen();
    void accept();
    Descriptor connectPatiently() const;

    std::string folder_;
    std::string runtimeFolder_;
    PrivateFolder place_;  ///< once it was asked for
    Descriptor lock_;
    Descriptor socket_;
    int receivers_ = 0;
    bool asked_ = false;
    bool only_ = true;
    CallHandler handler_;
};

/// The first that is, or can be made, a folder of this user's alone: "corvane" in XDG_RUNTIME_DIR, where that is one as
/// well, /tmp/corvane-UID, a hidden one in the program folder. "" when none is: then there is no lock.
std::string runtimeFolder(const std::string& programFolder);

}  // namespace corvane
