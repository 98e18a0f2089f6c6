// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/fake/fake_stage.h"
#include "contract/mci_control_contract.h"
#include "contract/movie_control_contract.h"

namespace corvane {
namespace {

class FakeMciStage : public FakeStage<MciStage> {
public:
    FakeMciStage() {
        machine.addSound("/sound.wav", 3000);
        machine.addSound("/tune.mid", 2500);
        machine.addBrokenSound("/broken.wav", "not a sound");
        machine.addDisc("/disc", {3, 4, 2});
    }
    Media& media() override { return machine.media; }
    std::string sound() override { return "/sound.wav"; }
    int soundMs() override { return 3000; }
    std::string sequence() override { return "/tune.mid"; }
    int sequenceMs() override { return 2500; }
    std::string broken() override { return "/broken.wav"; }
    std::string disc() override { return "/disc/Track02.cda"; }
    int trackSeconds(int track) override { return track == 1 ? 3 : 4; }
    int toleranceMs() override { return 0; }
};

class FakeMovieStage : public FakeStage<MovieStage> {
public:
    FakeMovieStage() {
        machine.addMovie("/movie.avi", 3.5, 320, 240);
        machine.addBrokenMovie("/broken.avi", "not a movie");
    }
    Media& media() override { return machine.media; }
    Windows& windows() override { return machine.windows; }
    std::string movie() override { return "/movie.avi"; }
    double movieSeconds() override { return 3.5; }
    int movieWidth() override { return 320; }
    int movieHeight() override { return 240; }
    std::string broken() override { return "/broken.avi"; }
    double toleranceSeconds() override { return 0; }
};

template <class S, class F>
std::unique_ptr<S> make() {
    return std::make_unique<F>();
}

INSTANTIATE_TEST_SUITE_P(Fake, MciControlContract, ::testing::Values(&make<MciStage, FakeMciStage>));
INSTANTIATE_TEST_SUITE_P(Fake, DiscContract, ::testing::Values(&make<MciStage, FakeMciStage>));
INSTANTIATE_TEST_SUITE_P(Fake, MovieControlContract, ::testing::Values(&make<MovieStage, FakeMovieStage>));

}  // namespace
}  // namespace corvane
