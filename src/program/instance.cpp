// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/instance.h"

#include "program/instance_call.h"

namespace corvane {

bool Instance::acquire() {
    if (!std::exchange(asked_, true)) only_ = takePlace();
    return only_;
}

std::size_t Instance::fitting(const std::vector<std::string>& files) const { return fittingInCall(files, mostBytes_); }

bool Instance::call(const std::vector<std::string>& files) const {
    return fitting(files) == files.size() && deliver(callOf(files));
}

void Instance::called(const std::vector<std::string>& files) const {
    if (handler_) handler_(files);
}

}  // namespace corvane
