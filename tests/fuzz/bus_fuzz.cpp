// SPDX-License-Identifier: GPL-3.0-or-later
// What comes over the message bus, with the types that the bus has made of it, down to what the player then does.
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <cmath>
#include <cstring>
#include <optional>

#include "fake/player_fixture.h"
#include "fuzz.h"
#include "linux/bus/mpris_call.h"

namespace corvane {
namespace {

using fuzz::Input;
using fuzz::require;
using Answer = MediaSession::Answer;

constexpr int kMostCalls = 30;
constexpr const char* kMembers[] = {"Next",   "Previous",   "Pause",   "PlayPause", "Stop",
                                    "Play",   "Seek",       "OpenUri", "Raise",     "Quit",
                                    "Volume", "LoopStatus", "Rate",    "Shuffle",   "SetPosition"};
constexpr const char* kSignatures[] = {"", "x", "s", "ox", "b", "d", "v", "sx", "xo"};

/// A player with sounds, a movie and a picture, on a machine in memory.
class Stage : public PlayerFixture {
public:
    Stage() {
        for (const char* name : {"/m/a.wav", "/m/b.mid"}) machine.addSound(name, 60'000);
        machine.addMovie("/m/c.avi", 40, 320, 240);
        machine.addPicture("/m/d.bmp", 100, 80);
        machine.addBrokenSound("/m/e.wav", "It is broken.");
        setUpPanel();
        setList({"/m/a.wav", "/m/b.mid", "/m/c.avi", "/m/d.bmp", "/m/e.wav", "/m/gone.wav"});
        machine.settle();
    }
    void run(const MprisCommand& command) {
        require(static_cast<bool>(command.run) == command.refusal.isEmpty(), "it runs, or is refused in words");
        if (!command.run) return;
        std::optional<Answer> answer;
        machine.loop.post([&] { answer = command.run(session); });
        machine.settle();
        check();
    }
    void wait(int milliseconds) {
        machine.advance(milliseconds);
        check();
    }

private:
    void TestBody() override {}
    void check() const {
        const MediaState& state = session.state();
        require(state.volume >= 0 && state.volume <= mdlDefinePublic::kFullVolume, "a level that there is");
        require(session.positionUs() >= 0 && state.lengthUs >= 0, "no time is below 0");
        require(player.gFileIndex >= 0 && player.gFileCount <= mdlDefinePublic::kMaxFiles, "a place in the list");
        require(state.track != 0 || state.path.empty(), "what has a path has a number");
    }
    MediaSession session{player};
};

QString textOf(Input& input) { return QString::fromUtf8(QByteArray::fromStdString(input.until('\0'))); }

double fraction(Input& input) {
    const std::uint64_t high = static_cast<std::uint32_t>(input.number());
    const std::uint64_t bits = high << 32U | static_cast<std::uint32_t>(input.number());
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QVariant valueOf(Input& input, char type) {
    switch (type) {
        case 'x': {
            constexpr qlonglong kUnits[] = {1, 1'000, 1'000'000, 4'000'000'000};
            return input.number() * kUnits[input.byte() % 4];
        }
        case 'd':
            return fraction(input);
        case 'b':
            return input.byte() % 2 == 1;
        case 'o':
            return QVariant::fromValue(QDBusObjectPath(kMprisTrackPath + QString::number(input.number())));
        case 'v':
            return QVariant::fromValue(QDBusVariant(textOf(input)));
        default:
            return textOf(input);
    }
}

QString nameOf(Input& input) {
    const std::size_t which = input.byte();
    return which < std::size(kMembers) ? QString::fromLatin1(kMembers[which]) : textOf(input);
}

void callOf(Input& input, Stage& stage) {
    const QString member = nameOf(input);
    const QString interface = input.byte() % 3 == 0 ? kMprisRoot : input.byte() % 3 == 0 ? QString() : kMprisPlayer;
    const QString signature = QString::fromLatin1(kSignatures[input.byte() % std::size(kSignatures)]);
    QVariantList given;
    for (const QChar type : signature) given.push_back(valueOf(input, type.toLatin1()));
    if (const auto command = commandOfCall(interface, member, signature, given)) stage.run(*command);
}

void propertyOf(Input& input, Stage& stage) {
    const QString property = nameOf(input);
    const QVariant value = valueOf(input, "xdbosv"[input.byte() % 6]);
    if (const auto command = commandOfProperty(property, value)) stage.run(*command);
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    Stage stage;
    for (int i = 0; i < kMostCalls && !input.empty(); ++i) {
        const std::uint8_t kind = input.byte() % 4;
        if (kind <= 1) callOf(input, stage);
        if (kind == 2) propertyOf(input, stage);
        if (kind == 3) stage.wait(input.byte() * 40);
    }
    return 0;
}
