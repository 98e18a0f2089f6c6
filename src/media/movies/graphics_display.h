// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

namespace corvane {

/// The graphics driver, with a connection to the display of its own: what happens there holds up nobody else. Belongs
/// to the thread that opened it. Each call may take as long as the driver does, and hangs where that hangs.
class GraphicsDisplay {
public:
    /// Null: `reason` says why, in words. Loads the driver.
    static std::unique_ptr<GraphicsDisplay> open(std::string& reason);
    GraphicsDisplay(const GraphicsDisplay&) = delete;
    GraphicsDisplay& operator=(const GraphicsDisplay&) = delete;
    ~GraphicsDisplay();

    /// The driver's name of itself.
    const std::string& renderer() const { return renderer_; }
    /// What is drawn goes to that window (a number of X11) from now on, in its size; 0: nowhere.
    bool attach(unsigned long window);
    /// Shows what was drawn, when the screen takes it.
    bool show();
    /// The driver has given up what it had.
    bool lost() const;
    /// Readable when wasUncovered() has something to say.
    int descriptor() const;
    /// A part of the window was uncovered since the last call.
    bool wasUncovered();
    /// The connection, as the movie library takes it.
    void* connection() const;
    /// A function of the driver; null: it has none of that name.
    static void* function(const char* name);

private:
    struct Parts;
    GraphicsDisplay();
    bool start(std::string& reason);
    bool makeContext();

    std::unique_ptr<Parts> parts_;
    std::string renderer_;
};

}  // namespace corvane
