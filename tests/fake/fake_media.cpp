// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_media.h"

#include "fake/fake_mci_control.h"
#include "fake/fake_movie_control.h"

namespace corvane {

std::unique_ptr<MciControl> FakeMedia::makeMciControl() {
    log.did("media.makeMciControl");
    return std::make_unique<FakeMciControl>(*this);
}

std::unique_ptr<MovieControl> FakeMedia::makeMovieControl(Form& form) {
    log.did("media.makeMovieControl");
    return std::make_unique<FakeMovieControl>(*this, form);
}

const FakeDisc* FakeMedia::discAt(const std::string& place) const {
    for (const std::string& folder : {place, place.substr(0, place.find_last_of("/\\") + 1), std::string()}) {
        std::string name = folder;
        while (name.size() > 1 && (name.back() == '/' || name.back() == '\\')) name.pop_back();
        const auto found = discs.find(name);
        if (found != discs.end()) return &found->second;
    }
    return nullptr;
}

}  // namespace corvane
