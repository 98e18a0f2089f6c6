// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/known_texts.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "types/kind_facts.h"
#include "types/tag_text.h"

namespace corvane {

using mdlPublicFunction::setPanelCaption;
using mdlPublicFunction::typeOf;

namespace {

std::string titleOf(const FileTexts* texts, const std::string& name) {
    if (texts == nullptr || texts->title.empty()) return name;
    return texts->artist.empty() ? texts->title : texts->title + " - " + texts->artist;
}

}  // namespace

bool KnownTexts::isRead(const std::string& path) const {
    if (!player_.conveniences.texts || player_.ports.texts == nullptr) return false;
    return !isPicture(player_.types.toOpen(typeOf(player_.conveniences, path)).kind);
}

KnownTexts::Known* KnownTexts::known(const std::string& path) {
    const auto found = std::find_if(known_.begin(), known_.end(), [&](const Known& one) { return one.path == path; });
    return found == known_.end() ? nullptr : &*found;
}

const FileTexts* KnownTexts::find(const std::string& path) const {
    if (!player_.conveniences.texts) return nullptr;
    const auto found = std::find_if(known_.begin(), known_.end(), [&](const Known& one) { return one.path == path; });
    return found == known_.end() ? nullptr : &found->texts;
}

void KnownTexts::expect(const std::string& path) {
    const Known* const one = known(path);
    if (one == nullptr || one->wasShown) ask(path);
}

std::string KnownTexts::show(const std::string& path, const std::string& name) {
    shown_ = path;
    shownName_ = name;
    Known* const one = known(path);
    if (one == nullptr || std::exchange(one->wasShown, true)) ask(path);
    return titleOf(find(path), name);
}

void KnownTexts::ask(const std::string& path) {
    if (!isRead(path) || reading_ == path) return;
    std::erase(waiting_, path);
    waiting_.push_front(path);
    if (waiting_.size() > kMostWaiting) waiting_.pop_back();
    readNext();
}

void KnownTexts::readNext() {
    if (!reading_.empty() || !gathering_.empty()) return;
    if (waiting_.empty()) return gatherNext();
    reading_ = std::move(waiting_.front());
    waiting_.pop_front();
    player_.ports.texts->read(reading_, TextReader::What::All,
                              [this, alive = std::weak_ptr(alive_), path = reading_](FileTexts texts) {
                                  if (!alive.expired()) take(path, std::move(texts));
                              });
}

namespace {

void makeHarmless(FileTexts& texts) {
    for (std::string* const text : {&texts.title, &texts.artist, &texts.album}) *text = tagText(*text);
}

std::string wordsOf(const FileTexts& texts) {
    std::string words;
    for (const std::string* const each : {&texts.title, &texts.artist, &texts.album}) {
        if (!each->empty()) words += (words.empty() ? "" : "\n") + *each;
    }
    return words;
}

/// To kMostWords, at a character's edge.
std::string cut(std::string words) {
    constexpr unsigned kFollows = 0x80, kMask = 0xC0;
    if (words.size() <= KnownTexts::kMostWords) return words;
    std::size_t end = KnownTexts::kMostWords;
    while (end > 0 && (static_cast<unsigned char>(words[end]) & kMask) == kFollows) --end;
    words.resize(end);
    return words;
}

}  // namespace

void KnownTexts::gather(const std::vector<std::string>& paths, std::function<void(const std::string& path)> more) {
    more_ = std::move(more);
    toGather_.clear();
    std::unordered_map<std::string, std::string> before = std::exchange(words_, {});
    std::unordered_set<std::string> asked;
    for (const std::string& each : paths) {
        if (const auto known = before.find(each); known != before.end()) {
            words_.insert(before.extract(known));
        } else if (words_.count(each) == 0 && find(each) == nullptr && isRead(each) && asked.insert(each).second) {
            toGather_.push_back(each);
        }
    }
    readNext();
}

void KnownTexts::stopGathering() {
    more_ = {};
    toGather_.clear();
}

std::string KnownTexts::words(const std::string& path) const {
    if (const FileTexts* const texts = find(path)) return wordsOf(*texts);
    const auto found = words_.find(path);
    return found == words_.end() ? std::string() : found->second;
}

void KnownTexts::gatherNext() {
    if (toGather_.empty()) return;
    gathering_ = std::move(toGather_.front());
    toGather_.pop_front();
    player_.ports.texts->read(gathering_, TextReader::What::Words,
                              [this, alive = std::weak_ptr(alive_)](FileTexts texts) {
                                  if (alive.expired()) return;
                                  makeHarmless(texts);
                                  const std::string path = std::exchange(gathering_, {});
                                  words_[path] = cut(wordsOf(texts));
                                  readNext();
                                  if (more_) more_(path);
                              });
}

void KnownTexts::take(const std::string& path, FileTexts texts) {
    reading_.clear();
    makeHarmless(texts);
    texts.track = std::max(texts.track, 0);
    const bool isShown = path == shown_;
    std::erase_if(known_, [&](const Known& one) { return one.path == path; });
    known_.push_front({path, std::move(texts), isShown});
    if (known_.size() > kMostKnown) known_.pop_back();
    if (isShown) setPanelCaption(player_, kTitleLabel, titleOf(find(path), shownName_));
    readNext();
}

}  // namespace corvane
