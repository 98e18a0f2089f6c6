// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fake/call_log.h"
#include "fake/fake_loop.h"
#include "fake/schedule.h"
#include "platform/ports.h"

namespace corvane {

/// A picture of the given size; pixels row by row as 0xRRGGBB, or one colour for all when there is only one.
Picture makePicture(int width, int height, std::vector<std::uint32_t> pixels);

/// Pictures declared by path.
class FakePictures : public Pictures {
public:
    FakePictures(FakeLoop& loop, Schedule& schedule, CallLog& log) : loop_(loop), schedule_(schedule), log_(log) {}

    bool shows(const std::string& extension) override { return decodes.count(extension) != 0; }
    Decoded decode(const std::string& path) override;
    std::optional<Decoded> begin(const std::string& path, std::function<void(Decoded)> done) override;
    void giveUp() override;
    void decodeAhead(const std::string& path) override;
    Picture cut(const Picture& whole, const Cell& cell) override;
    int paintStretched(PictureBox& box, float width, float height) override;

    void add(const std::string& path, int width, int height, std::uint32_t colour = 0x808080);
    void add(const std::string& path, int width, int height, std::vector<std::uint32_t> pixels);
    void addBroken(const std::string& path, std::string reason);

    std::unique_ptr<Frames> frames(const std::string& path, std::function<void(Frame)> told) override;
    /// The pictures of a file that moves, in the order in which they are asked for; behind them comes an empty one.
    std::map<std::string, std::vector<Frame>> moving;
    int framesAsked = 0;

    std::set<std::string> decodes;  ///< types of today that are there
    int decodingMs = 0;  ///< how long what is begun takes; 0: it is done at once, as if it had been decoded ahead
    bool isDecoding() const { return begun_.has_value(); }

    /// Whether other pictures hold the memory that the next one needs; never when empty.
    std::function<bool()> roomIsTaken;

    int paintError = 0;  ///< what each stretched drawing returns, 0: it is drawn

private:
    struct Declared {
        int width = 0;
        int height = 0;
        std::vector<std::uint32_t> pixels;
        std::string reason;
    };
    Decoded make(const std::string& path) const;

    /// What is there, be it decoded ahead.
    Decoded take(const std::string& path);
    void forget();
    void finish(const std::string& path, const std::function<void(Decoded)>& done);

    FakeLoop& loop_;
    Schedule& schedule_;
    CallLog& log_;
    std::optional<Schedule::Id> begun_;
    unsigned number_ = 0;  ///< of what was begun last: an answer that is on its way to an older one is dropped
    std::map<std::string, Declared> declared_;
    std::optional<std::pair<std::string, Decoded>> ahead_;
};

}  // namespace corvane
