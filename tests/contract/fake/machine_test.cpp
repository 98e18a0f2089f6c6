// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/event_loop_contract.h"
#include "contract/fake/fake_stage.h"
#include "contract/files_contract.h"
#include "contract/pictures_contract.h"
#include "contract/sound_devices_contract.h"
#include "contract/timers_contract.h"

namespace corvane {
namespace {

class FakeTimeStage : public FakeStage<TimeStage> {
public:
    Timers& timers() override { return machine.timers; }
    Clock& clock() override { return machine.clock; }
};

class FakeSoundStage : public FakeStage<SoundStage> {
public:
    explicit FakeSoundStage(bool reached) : reached_(reached) {
        machine.sound.aux = {{AuxCaps{1, 8, "CD"}, 0}, {AuxCaps{1, 2, "Line"}, 0}};
        if (!reached) machine.sound.wave.reset();
    }
    SoundDevices& sound() override { return machine.sound; }
    bool reached() override { return reached_; }
    bool setByAnother(std::uint32_t volume) override {
        machine.sound.setByAnother(volume);
        return true;
    }
    bool useOutput(const std::string& name) override {
        machine.sound.useOutput(name);
        return true;
    }

private:
    bool reached_;
};

class FakeFilesStage : public FilesStage {
public:
    explicit FakeFilesStage(char slash) {
        it_.slash = slash;
        it_.caseSensitive = slash == '/';
        it_.addFolder(root());
        it_.offeredDrives = {{"root", slash == '/' ? "/" : "C:"}};
    }
    Files& files() override { return it_; }
    std::string root() override { return it_.slash == '/' ? "/try" : "C:\\try"; }
    void makeFile(const std::string& path, const std::string& bytes) override { it_.add(path, bytes); }
    void makeHiddenFile(const std::string& path) override { it_.addHidden(path); }
    void makeFolder(const std::string& path) override { it_.addFolder(path); }
    std::string bytesOf(const std::string& path) override { return it_.bytes(path); }
    bool failReplacements() override { return it_.failReplace = true; }
    std::string hiddenName() override { return ".hidden.wav"; }

private:
    CallLog log_;
    FakeFiles it_{log_};
};

class FakePicturesStage : public FakeStage<PicturesStage> {
public:
    FakePicturesStage() {
        std::vector<std::uint32_t> pixels;
        for (int i = 0; i < 40 * 30; ++i) pixels.push_back(i % 40 < 20 ? 0xFF0000 : 0x0000FF);
        machine.pictures.add("/halves.bmp", 40, 30, std::move(pixels));
        machine.pictures.addBroken("/broken.bmp", "not a picture");
        machine.pictures.decodingMs = 5;
    }
    Pictures& pictures() override { return machine.pictures; }
    std::string picture() override { return "/halves.bmp"; }
    std::string broken() override { return "/broken.bmp"; }
    bool isIdle() override { return !machine.pictures.isDecoding(); }
};

std::unique_ptr<Stage> makeLoop() { return std::make_unique<FakeStage<Stage>>(); }
std::unique_ptr<TimeStage> makeTime() { return std::make_unique<FakeTimeStage>(); }
std::unique_ptr<SoundStage> makeSound() { return std::make_unique<FakeSoundStage>(true); }
std::unique_ptr<SoundStage> makeSilence() { return std::make_unique<FakeSoundStage>(false); }
std::unique_ptr<FilesStage> makeSlash() { return std::make_unique<FakeFilesStage>('/'); }
std::unique_ptr<FilesStage> makeBackslash() { return std::make_unique<FakeFilesStage>('\\'); }
std::unique_ptr<PicturesStage> makePictures() { return std::make_unique<FakePicturesStage>(); }

INSTANTIATE_TEST_SUITE_P(Fake, EventLoopContract, ::testing::Values(&makeLoop));
INSTANTIATE_TEST_SUITE_P(Fake, TimersContract, ::testing::Values(&makeTime));
INSTANTIATE_TEST_SUITE_P(Fake, SoundDevicesContract, ::testing::Values(&makeSound, &makeSilence));
INSTANTIATE_TEST_SUITE_P(Fake, FilesContract, ::testing::Values(&makeSlash, &makeBackslash));
INSTANTIATE_TEST_SUITE_P(Fake, PicturesContract, ::testing::Values(&makePictures));

}  // namespace
}  // namespace corvane
