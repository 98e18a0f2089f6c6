// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "workers/ui_post.h"

namespace corvane {

/// The way to the user-interface thread by the tool kit's queue, where the thread sanitizer does not see who hands what
/// to whom: the events themselves stand in the UiPost's.
class QtPost : public UiPost {
public:
    QtPost();                          ///< its events run as they come
    explicit QtPost(EventLoop& loop);  ///< they are queued in that loop
};

}  // namespace corvane
