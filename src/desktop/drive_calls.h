// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// Asks drives for what may never come back: a drive that hangs (a server that is gone, a disc that cannot be read)
/// holds its caller in the system for minutes. Each question is put by a thread of its own and waited for a while;
/// while one is unanswered, further ones to the same drive are not put at all. Used from one thread.
class DriveCalls {
public:
    using Patience = std::chrono::milliseconds;

    /// What `question` about `path` returns; empty when it took too long. It may run on after that: it must hold what
    /// it uses.
    template <class Answer>
    std::optional<Answer> ask(const std::string& path, Patience patience, std::function<Answer()> question) {
        const auto answer = std::make_shared<std::optional<Answer>>();
        const bool answered =
            run(path, patience, [answer, question = std::move(question)] { answer->emplace(question()); });
        return answered ? std::move(*answer) : std::nullopt;
    }

private:
    struct Call;
    struct Unanswered {
        std::string drive;
        std::shared_ptr<Call> call;
    };
    bool run(const std::string& path, Patience patience, std::function<void()> question);

    std::vector<Unanswered> unanswered_;
};

}  // namespace corvane
