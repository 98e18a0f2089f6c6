// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "platform/event_loop.h"

namespace corvane {

/// Where windows and menus wait that are shown no more. A handler of theirs, or the tool kit's own code behind it, may
/// still run further up, under an event loop of a box or of a drag that has been entered since: they are destroyed from
/// the outermost event loop, when no handler runs. (The tool kit's own delayed deletion is no such promise: asked for
/// from within a hide or a close event it comes true in the next nested loop.)
class Graveyard : public QObject {
public:
    /// Made after the application; `loop` outlives it. What still waits at its end is destroyed with it.
    explicit Graveyard(EventLoop& loop);
    ~Graveyard() override;

    void lay(std::shared_ptr<void> gone);

private:
    bool isQuiet() const;
    void burySoon();
    void bury();

    EventLoop& loop_;
    std::vector<std::shared_ptr<void>> gone_;
};

}  // namespace corvane
