// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <dlfcn.h>

#include <string>

namespace corvane {

/// A library of the system, loaded when it is first needed and never unloaded.
class SharedLibrary {
public:
    /// `name` as the loader knows it, with its version: "libfoo.so.3".
    explicit SharedLibrary(const std::string& name) : handle_(dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL)) {}

    /// Fetches a function. False: the library or the function is not there.
    template <class Function>
    bool find(const char* name, Function& function) const {
        function = handle_ ? reinterpret_cast<Function>(dlsym(handle_, name)) : nullptr;
        return function != nullptr;
    }

private:
    void* handle_;
};

}  // namespace corvane
