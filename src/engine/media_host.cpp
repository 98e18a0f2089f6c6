// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/media_host.h"

#include <utility>

#include "engine/mdlPublicFunction.h"

namespace corvane {

void MediaHost::registerMedium(std::int16_t kind, Factory factory) { factories_[kind] = std::move(factory); }

std::shared_ptr<OpenMedium> MediaHost::make(const std::string& path) const {
    MediaType type = types_.toOpen(mdlPublicFunction::typeOf(state_.conveniences, path));
    const Factory& factory = factories_.at(type.kind);
    return factory(std::move(type));
}

void MediaHost::setCurrent(std::shared_ptr<OpenMedium> medium) {
    state_.gMediaKind = medium ? medium->type().kind : mdlDefinePublic::mkNone;
    current_ = std::move(medium);
}

}  // namespace corvane
