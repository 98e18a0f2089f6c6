// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "engine/open_medium.h"

namespace corvane {

/// The kinds of media that can be played, and the one medium that is open.
class MediaHost {
public:
    /// Makes what plays files of a type. Nothing is asked of a port yet.
    using Factory = std::function<std::shared_ptr<OpenMedium>(MediaType type)>;

    MediaHost(mdlDefinePublic::PlayerState& state, const MediaTypes& types) : state_(state), types_(types) {}

    void registerMedium(std::int16_t kind, Factory factory);
    /// What would play the file; it is not open yet. Every kind that a type has is registered.
    std::shared_ptr<OpenMedium> make(const std::string& path) const;

    /// The open medium; null: nothing is open. Whoever calls it holds it by that meanwhile: it may be closed by what it
    /// does, boxes and the loops in them included.
    std::shared_ptr<OpenMedium> current() const { return current_; }
    bool isOpen() const { return current_ != nullptr; }
    /// That window's medium is the open one.
    bool playsIn(FormId window) const { return isOpen() && current_->window() == window; }
    /// From now on this medium is the open one (null: none), and gMediaKind is its kind.
    void setCurrent(std::shared_ptr<OpenMedium> medium);

private:
    mdlDefinePublic::PlayerState& state_;
    const MediaTypes& types_;
    std::map<std::int16_t, Factory> factories_;
    std::shared_ptr<OpenMedium> current_;
};

}  // namespace corvane
