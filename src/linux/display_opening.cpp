// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/display_opening.h"

#include <unistd.h>

#include <QString>
#include <QtGlobal>
#include <mutex>
#include <utility>
#include <vector>

#include "linux/error_stream.h"

namespace corvane {

namespace {

constexpr std::size_t kMostRemarks = 16;

/// What was said since the opening began. The tool kit's handler is a plain function, and its threads call it too.
struct Said {
    std::mutex mutex;
    std::string chosen;
    std::vector<std::string> remarks;
    std::string ofDisplay;  ///< the first one of the part that opens displays
    QtMessageHandler before = nullptr;
};

Said& said() {
    static auto* const kept =
        new Said;  // never destroyed: threads that outlive the program's end may still say something
    return *kept;
}

std::string variable(const char* name) { return qgetenv(name).toStdString(); }

void keep(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    Said& all = said();
    const std::scoped_lock lock(all.mutex);
    if (type == QtFatalMsg) {
        const std::string why = all.ofDisplay.empty() ? text.section(u'\n', 0, 0).toStdString() : all.ofDisplay;
        tellOnErrors(whyNoDisplay(variable("DISPLAY"), variable("WAYLAND_DISPLAY"), all.chosen, why));
        _exit(1);  // not by the usual way: the tool kit is in the middle of its own beginning
    }
    const std::string part = context.category == nullptr ? "" : context.category;
    if (all.ofDisplay.empty() && part.rfind("qt.qpa", 0) == 0) all.ofDisplay = text.toStdString();
    if (all.remarks.size() < kMostRemarks) all.remarks.push_back(text.toStdString());
}

}  // namespace

Displays displaysOfEnvironment() {
    return {variable("QT_QPA_PLATFORM"), variable("DISPLAY"), variable("WAYLAND_DISPLAY"), variable("SWAYSOCK")};
}

std::string whyNoDisplay(const std::string& display, const std::string& wayland, const std::string& chosen,
                         const std::string& remark) {
    if (display.empty() && wayland.empty() && chosen.empty())
        return "There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set.";
    std::string tried = !chosen.empty()    ? "QT_QPA_PLATFORM=" + chosen
                        : !display.empty() ? "DISPLAY=" + display
                                           : "WAYLAND_DISPLAY=" + wayland;
    return "The display cannot be opened (" + tried + ")" + (remark.empty() ? "." : ": " + remark);
}

DisplayOpening::DisplayOpening(std::string chosen) {
    Said& all = said();
    const std::scoped_lock lock(all.mutex);
    all.chosen = std::move(chosen);
    all.remarks.clear();
    all.ofDisplay.clear();
    all.before = qInstallMessageHandler(&keep);
}

DisplayOpening::~DisplayOpening() {
    std::vector<std::string> remarks;
    {
        Said& all = said();
        const std::scoped_lock lock(all.mutex);
        qInstallMessageHandler(all.before);
        remarks = std::exchange(all.remarks, {});
    }
    for (const std::string& remark : remarks) qWarning("%s", remark.c_str());
}

}  // namespace corvane
