// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/left_out.h"

#include "engine/mdlPublicFunction.h"

namespace corvane {

std::string whyLeftOut(Files& files, const std::string& name) {
    if (name.empty()) return {};
    if (!mdlPublicFunction::isAcceptedExtension(mdlPublicFunction::GetExtension(name))) {
        return name + ": left out, because it is none of the kinds that are played";
    }
    return files.lookUp(name) ? std::string() : name + ": left out, because there is no such file";
}

}  // namespace corvane
