// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/error_stream.h"

#include <poll.h>
#include <unistd.h>

#include <climits>

#include "types/printable.h"

namespace corvane {

void tellOnErrors(const std::string& text) {
    std::string line = "corvane: " + printable(text);
    if (line.size() > PIPE_BUF - 1) line.resize(PIPE_BUF - 1);  // what a pipe takes at once or not at all
    line += '\n';
    pollfd stream{STDERR_FILENO, POLLOUT, 0};
    if (poll(&stream, 1, 0) != 1 || (stream.revents & POLLOUT) == 0) return;
    if (write(STDERR_FILENO, line.data(), line.size()) < 0) return;
}

}  // namespace corvane
