// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ports.h"

namespace corvane {

struct FoundFiles;
struct OpeningRules;

/// Looks for the files that names stand for (folders, lists, files) where nobody waits for it, and tells how far it has
/// come. What was asked for behind another one comes behind it.
class ListReading {
public:
    using Taken = std::function<void(FoundFiles found)>;

    /// `changed` is called when more was found, when a reading begins to be worth telling and when it has ended, in an
    /// event of its own or by stop(). The ports outlive it.
    ListReading(Ports& ports, std::function<void()> changed);
    ListReading(const ListReading&) = delete;
    ListReading& operator=(const ListReading&) = delete;
    ~ListReading();

    /// `taken` is called in an event of its own when all was found, at most `room` files; never once it was stopped.
    /// False: there is nobody to do it, or too much waits already.
    bool begin(OpeningRules rules, std::vector<std::string> named, std::size_t room, Taken taken);
    /// Nothing is wanted any more, and nothing that has been found is taken.
    void stop();
    bool isReading() const { return !asked_.empty(); }
    /// It takes so long that a person is told.
    bool isTold() const { return isReading() && told_; }
    std::size_t found() const;

    static constexpr std::size_t kMostAsked = 32;
    static constexpr int kTellMs = 250;  ///< from then on, and so often, it is told

private:
    struct Asked;
    void next();
    void end(bool ended);
    void startTelling();
    void stopTelling();

    Ports& ports_;
    std::function<void()> changed_;
    std::deque<std::unique_ptr<Asked>> asked_;  ///< the first one is being read
    std::unique_ptr<FileWork::Run> run_;
    TimerId timer_ = 0;
    bool told_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
