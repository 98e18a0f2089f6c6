// SPDX-License-Identifier: GPL-3.0-or-later
// How loud a sound file is to be played by its tags, and where its sound truly begins and ends: coders put silence
// before and behind it, which is left out to the sample, so that an album plays without a seam.
#include <cstdlib>

#include "media/sound/file_sound.h"
#include "media/sound/saturate.h"
#include "types/coder_ends.h"
#include "types/loudness.h"

namespace corvane {

namespace {

/// Lists of edits count in units of the whole file, of which the longest in use is a 600th of a second.
constexpr int kEditUnits = 500;

}  // namespace

void FileSound::takeLevel() {
    LoudnessTags tags;
    input_->eachTag([&](const char* name, const char* value) { takeLoudnessTag(tags, name, value); });
    factor_ = loudnessFactor(tags, level_ == SoundLevel::OfAlbum);
    if (places_ != Places::Stamped || !known_) return;
    if (input_->isFormat("ogg")) endOgg();
    if (input_->isFormat("mov")) endEdited();
}

/// The stated length counts what is dropped at the beginning. In a file of one page the decoder's time stamps are ahead
/// by half a block, and so much too much would be cut off its end.
void FileSound::endOgg() {
    frames_ = std::max<std::int64_t>(frames_ - fromSource(lead_), 0);
    wholeBlocks_ = input_->codec().codec_id == AV_CODEC_ID_VORBIS && lead_ == 0;
}

/// The list of edits rounds the end. The table of all packets does not, and is believed where the two say the same but
/// for that: somebody who has cut the sound means it.
void FileSound::endEdited() {
    std::string reason;
    const auto whole = AvInput::open(file_->again(), &abandoned, reason, AvInput::Edits::BeginAlone);
    const AVPacket* const first = whole ? whole->nextPacket() : nullptr;
    if (first == nullptr) return;
    const std::int64_t stated = toFrames(input_->stream().duration);
    const std::int64_t table = toFrames(whole->stream().duration);
    const std::int64_t lead = leftOutOf(*first).start;
    std::int64_t length = saturatedDifference(table, fromSource(lead));
    if (length <= 0 || (stated != table && std::abs(saturatedDifference(stated, length)) > format_.rate / kEditUnits))
        return;
    whole->eachTag([&](const char* name, const char* value) {
        const auto ends = coderEndsOf(name, value);
        if (ends && ends->before == lead) length = std::min(length, fromSource(ends->samples));
    });
    edits_ = AvInput::Edits::BeginAlone;
    frames_ = std::min(length, mostFrames());
}

}  // namespace corvane
