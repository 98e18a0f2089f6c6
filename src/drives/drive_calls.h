// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// Asks drives for what may never come back: a drive that hangs (a server that is gone, a disc that cannot be read)
/// holds its caller in the system for minutes. Each question is put by a thread of its own and waited for a while;
/// while one is overdue, further ones to the same drive are not put at all. A link counts as the drive that it leads
/// to. Any thread.
class DriveCalls {
public:
    using Patience = std::chrono::milliseconds;
    static constexpr Patience kPatience{2'000};       ///< of the user-interface thread, with one look or one piece
    static constexpr Patience kLongPatience{10'000};  ///< with a whole folder, a disc that starts turning, in workers
    /// What is told of a file on a drive that does not answer in time.
    static constexpr const char* kNoAnswer = "The drive does not answer.";

    /// How long one waits for an answer.
    struct Wait {
        // NOLINTNEXTLINE(google-explicit-constructor): a patience alone is a wait that nothing ends
        Wait(Patience longest, const std::atomic<bool>* stop = nullptr) : patience(longest), giveUp(stop) {}
        Patience patience;
        const std::atomic<bool>* giveUp;  ///< may be null; when it is set, the wait ends at once
    };

    /// The drives are the whole program's: what one place waits for in vain, no other asks again. Never destroyed,
    /// because a question may be answered at any time.
    static DriveCalls& all();

    /// What `question` about `path` returns; empty when it took too long, when it threw, or when the system has no
    /// thread for it. It may run on after that: it must hold what it uses.
    template <class Answer>
    std::optional<Answer> ask(const std::string& path, Wait wait, std::function<Answer()> question) {
        const auto answer = std::make_shared<std::optional<Answer>>();
        const bool answered =
            run(path, wait, [answer, question = std::move(question)] { answer->emplace(question()); });
        return answered ? std::move(*answer) : std::nullopt;
    }

    /// A path to be asked about, and how long for.
    struct Each {
        std::string path;
        Patience patience;
    };
    /// The same about many paths, one after the other on one thread; one that is not answered in time keeps no other
    /// back. All together are waited for no longer than `longest`: what is left over then has no answer.
    template <class Answer>
    std::vector<std::optional<Answer>> askEach(const std::vector<Each>& paths, Wait longest,
                                               std::function<Answer(const std::string& path)> question) {
        const auto answers = std::make_shared<std::vector<std::optional<Answer>>>(paths.size());
        const std::vector<bool> answered =
            runEach(paths, longest, [answers, paths, question = std::move(question)](std::size_t at) {
                (*answers)[at].emplace(question(paths[at].path));
            });
        std::vector<std::optional<Answer>> result(paths.size());
        for (std::size_t i = 0; i < paths.size(); ++i) {
            if (answered[i]) result[i] = std::move((*answers)[i]);
        }
        return result;
    }

    /// On from a signal that asks the program to end until that is heard: ends a wait that takes it as its flag, which
    /// none does that reads or saves.
    static inline std::atomic<bool> hurried{false};
    static_assert(std::atomic<bool>::is_always_lock_free);

    /// Lets go of what may ask a drive when it goes, such as an open file; nobody waits for that.
    static void release(std::shared_ptr<void> last);

private:
    using Clock = std::chrono::steady_clock;
    struct Call;
    struct Place {
        std::string mount;   ///< "" on the drive of the system itself
        std::string folder;  ///< of the path
    };
    struct Unanswered {
        Place place;                     ///< behind all links: a folder that holds a link to it is another one
        std::string asked;               ///< the folder in whose name it was asked for
        std::vector<std::string> links;  ///< that led to it
        std::shared_ptr<Call> call;
        Clock::time_point due;
    };
    class Row;
    bool run(const std::string& path, Wait wait, std::function<void()> question);
    std::vector<bool> runEach(const std::vector<Each>& paths, Wait longest, std::function<void(std::size_t)> question);
    bool settle(const std::string& path, const std::shared_ptr<Call>& call, bool answered, Clock::time_point due);
    bool follow(const std::string& path, Call& call);
    bool mayAsk(const std::string& path, Clock::time_point due, const std::atomic<bool>* giveUp);
    std::optional<Unanswered> unansweredOf(const std::string& path);

    std::mutex mutex_;                    ///< guards what follows
    std::vector<Unanswered> unanswered_;  ///< calls that are no longer waited for
};

}  // namespace corvane
