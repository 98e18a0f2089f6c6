// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <string>

#include "drives/descriptor.h"
#include "drives/private_folder.h"
#include "linux/session_display.h"
#include "program/instance.h"

namespace corvane {

/// The player's place is a lock that the system gives up with its process; calls come through a socket. Both lie in a
/// folder of the user's alone (PrivateFolder), named by the folder they stand for. Without a place for them every start
/// is the only one. A call gives up who does not answer within a second or takes nothing for two.
class SocketInstance : public QObject, public Instance {
public:
    /// folder: the program folder; display: where the player is seen, which the lock says to those who come later.
    /// Nothing is touched before acquire().
    SocketInstance(std::string folder, std::string runtimeFolder, SessionDisplay display = {});
    ~SocketInstance() override;

    std::string elsewhere() const override;

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
    SessionDisplay display_;
    SessionDisplay other_;  ///< of the player that has the place
    PrivateFolder place_;   ///< once it was asked for
    Descriptor lock_;
    Descriptor socket_;
    int receivers_ = 0;
};

/// The first that is, or can be made, a folder of this user's alone: "corvane" in XDG_RUNTIME_DIR, where that is one as
/// well, /tmp/corvane-UID, a hidden one in the program folder. "" when none is: then there is no lock.
std::string runtimeFolder(const std::string& programFolder);

}  // namespace corvane
