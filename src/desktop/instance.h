// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "desktop/descriptor.h"

namespace corvane {

/// One running player a program folder. The first start holds a lock and listens; a later one hands its files over.
/// Lock and socket lie in the user's runtime folder (or a private one under /tmp), named by the folder they stand for.
class Instance : public QObject {
public:
    using FilesHandler = std::function<void(const std::vector<std::string>&)>;

    /// folder: the program folder. Nothing is touched before acquire().
    Instance(std::string folder, std::string runtimeFolder);
    ~Instance() override;

    /// True: this is the only one. When locking is impossible at all (no place for it), also true. Repeating it asks
    /// nobody again.
    bool acquire();
    /// Gives files to the instance that runs, also to one that has only just begun; false: it does not answer within
    /// a second or takes nothing for two.
    bool handOver(const std::vector<std::string>& files) const;
    void onFiles(FilesHandler handler) { handler_ = std::move(handler); }

private:
    void listen();
    void accept();
    Descriptor connectPatiently() const;
    std::string base() const;  ///< path of lock and socket without their endings; "" when there is no place

    std::string folder_;
    std::string runtimeFolder_;
    Descriptor lock_;
    Descriptor socket_;
    bool asked_ = false;
    bool only_ = true;
    FilesHandler handler_;
};

/// XDG_RUNTIME_DIR, or /tmp/corvane-UID made private; "" when neither can be used.
std::string runtimeFolder();

}  // namespace corvane
