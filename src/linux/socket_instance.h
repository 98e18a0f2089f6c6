// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <string>

#include "drives/descriptor.h"
#include "linux/private_folder.h"
#include "shell/program/instance.h"

namespace corvane {

/// The player's place is a lock that the system gives up with its process; calls come through a socket. Both lie in a
/// folder of the user's alone (PrivateFolder), named by the folder they stand for. Without a place for them every start
/// is the only one. A call gives up who does not answer within a second or takes nothing for two.
class SocketInstance : public QObject, public Instance {
public:
    /// folder: the program folder. Nothing is touched before acquire().
    SocketInstance(std::string folder, std::string runtimeFolder);
    ~SocketInstance() override;

    /// Name of the lock (".lock") or the socket (".socket").
    std::string fileName(const char* ending) const;

protected:
    bool takePlace() override;
    bool deliver(const std::string& message) const override;

private:
    class Receiver;
    void listen();
    void accept();
    Descriptor connectPatiently() const;

    std::string folder_;
    std::string runtimeFolder_;
    PrivateFolder place_;  ///< once it was asked for
    Descriptor lock_;
    Descriptor socket_;
    int receivers_ = 0;
};

/// The first that is, or can be made, a folder of this user's alone: "corvane" in XDG_RUNTIME_DIR, where that is one as
/// well, /tmp/corvane-UID, a hidden one in the program folder. "" when none is: then there is no lock.
std::string runtimeFolder(const std::string& programFolder);

}  // namespace corvane
