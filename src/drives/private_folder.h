// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "drives/descriptor.h"

namespace corvane {

/// A folder of this user's that nobody else can look into or change, held open: what is looked up through it cannot be
/// led elsewhere by a neighbour on the machine.
class PrivateFolder {
public:
    PrivateFolder() = default;  ///< none
    /// None when it is no folder but a link, belongs to somebody else or lets others in.
    static PrivateFolder open(std::string path);
    /// Makes it first where it is not there.
    static PrivateFolder make(std::string path);

    explicit operator bool() const { return static_cast<bool>(handle_); }
    int handle() const { return handle_.get(); }
    /// The way to a name in it for calls that take nothing but a path; short, whatever the folder's own path is.
    std::string within(const std::string& name) const;

private:
    Descriptor handle_;
};

}  // namespace corvane
