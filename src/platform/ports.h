// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/event.h"
#include "forms/form.h"
#include "forms/menu.h"
#include "platform/event_loop.h"
#include "platform/file_texts.h"
#include "platform/file_work.h"
#include "platform/length_reader.h"
#include "platform/mci_control.h"
#include "platform/movie_control.h"
#include "platform/sound_level.h"

namespace corvane {

/// Makes the media controls. The devices behind them are kept warm while controls come and go.
class Media {
public:
    virtual ~Media() = default;
    virtual std::unique_ptr<MciControl> makeMciControl() = 0;
    /// The control belongs to the form's paint order; the caller owns it.
    virtual std::unique_ptr<MovieControl> makeMovieControl(Form& form) = 0;
    /// Whether the decoders that are there play files of that type of sound or movie; "FLAC", "MKV". Asked once for
    /// each of the types that not every desktop plays.
    virtual bool plays(const std::string& /*extension*/) { return false; }
    /// Hints: this file is likely to be opened next, by the MCI control, by that with "CDAudio", or by the movie
    /// control. Makes ready in workers what it will need and returns at once; a desktop with nothing to make ready
    /// leaves it. The level: as the control will be told.
    virtual void expectSound(const std::string& /*path*/, SoundLevel /*level*/) {}
    virtual void expectDisc(const std::string& /*path*/) {}
    virtual void expectMovie(const std::string& /*path*/) {}
    /// What was expected comes no more, and none of these in its place.
    virtual void expectNothing() {}
};

inline constexpr int kDenseFactor = 2;     ///< a dense picture has so many times the pixels across and down
inline constexpr double kDenseFrom = 1.5;  ///< screen pixels to a form's pixel from which dense pictures are shown
inline constexpr int kOutOfMemoryForPicture = 480;  ///< error number of a drawing that lacks memory

/// Still pictures. All calls are made on the user-interface thread.
class Pictures {
public:
    struct Decoded {
        Picture picture;     ///< empty when it failed
        std::string reason;  ///< why it failed, in words
        /// It failed for want of memory that other pictures hold.
        bool lacksRoom = false;
    };
    struct Cell {
        int x = 0, y = 0, width = 0, height = 0;  ///< pixels of the whole picture
    };

    virtual ~Pictures() = default;
    /// The same of pictures, "WEBP": only files named so are given to decoders of the system.
    virtual bool shows(const std::string& /*extension*/) { return false; }
    /// Decodes a file (BMP, JPEG turned upright, GIF's first picture) and waits for it, for some seconds at most: skins
    /// are read so. A damaged or too large file fails with a reason.
    virtual Decoded decode(const std::string& path) = 0;
    /// Begins to decode a file in a worker. What has been decoded ahead is returned at once. Otherwise nothing is, and
    /// `done` is called with it in a posted event of its own; never, when another file is begun or this one given up
    /// before. However long it takes, nothing waits for it.
    virtual std::optional<Decoded> begin(const std::string& path, std::function<void(Decoded)> done) = 0;
    /// What was begun is not wanted any more. Nothing to give up: nothing happens.
    virtual void giveUp() = 0;
    /// A hint: this file is likely to be begun next. Decodes it in a worker; at most one is kept. Not while what was
    /// begun is on its way.
    virtual void decodeAhead(const std::string& path) = 0;
    /// One of the pictures that a file holds which are shown one after the other.
    struct Frame {
        Picture picture;       ///< as large as the file's first; empty: there is none any more
        int milliseconds = 0;  ///< how long it is seen
        bool isLast = false;   ///< it stays
    };
    /// Such pictures on their way; gone: nothing is told any more.
    class Frames {
    public:
        Frames() = default;
        Frames(const Frames&) = delete;
        Frames& operator=(const Frames&) = delete;
        virtual ~Frames() = default;
        /// Asks for the next one, which is decoded in a worker and told in a posted event. One at a time.
        virtual void next() = 0;
    };
    /// The pictures of a file in their order, from the first on, as often as the file asks for. Nothing is decoded
    /// before next(). A file that holds a single one, or what would take too much, has none. Null: none of any file is
    /// shown so.
    virtual std::unique_ptr<Frames> frames(const std::string& /*path*/, std::function<void(Frame)> /*told*/) {
        return nullptr;
    }
    /// A part of a picture; empty when the cell is not wholly inside it or has no area.
    virtual Picture cut(const Picture& whole, const Cell& cell) = 0;
    /// The plain picture with another one's pixels for dense screens; parts cut out of it have both. `dense` gives a
    /// picture kDenseFactor times as wide and high, or none. It is asked once, by the event loop's thread, when a
    /// screen that is dense shows the picture for the first time: a window can come to such a screen later. A desktop
    /// that shows no picture with more pixels than its form has gives the plain one.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a desktop that pairs them keeps it
    virtual Picture paired(const Picture& plain, std::function<Picture()> /*dense*/) { return plain; }
    /// Draws the box's picture stretched to width by height (the box's unit) over the box's origin, as
    /// PictureBox::setPainted describes. Returns 0, or an error number (kOutOfMemoryForPicture); then nothing was
    /// changed.
    virtual int paintStretched(PictureBox& box, float width, float height) = 0;
};

/// What a device says of itself.
struct AuxCaps {
    std::uint16_t manufacturer = 0;
    std::uint16_t product = 0;
    std::string name;
};

/// Output volume. A volume word holds the left channel in the low 16 bits, the right one in the high 16.
class SoundDevices {
public:
    virtual ~SoundDevices() = default;
    virtual int auxGetNumDevs() = 0;
    virtual std::optional<AuxCaps> auxGetDevCaps(int device) = 0;
    virtual std::optional<std::uint32_t> auxGetVolume(int device) = 0;  ///< empty: cannot be read
    virtual void auxSetVolume(int device, std::uint32_t volume) = 0;
    virtual std::optional<std::uint32_t> waveOutGetVolume() = 0;
    virtual void waveOutSetVolume(std::uint32_t volume) = 0;
    /// The system's own name of the wave output in use, whose volume the two above read and set; empty: cannot be read.
    virtual std::optional<std::string> waveOutName() = 0;
    /// Sets the volume of the wave output of that name, also when another one is in use by now; nothing when it is
    /// gone.
    virtual void waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) = 0;

    /// Posted through the EventLoop: another program has set the volume of the wave output in use, or another output is
    /// in use. What was set here is not read back as an older one meanwhile.
    Event<> WaveOutChanged;
};

/// A drive as the drive box offers it.
struct Drive {
    std::string text;     ///< shown
    std::string path;     ///< its root folder
    bool isHome = false;  ///< the user's own folder, where looking for files begins
};

/// Files and folders. Paths and names are bytes as the file system has them. Looking and reading: any thread.
class Files {
public:
    virtual ~Files() = default;
    virtual char separator() const = 0;  ///< '/' or '\\'
    /// The file's own name as the folder gives it (hidden ones included); empty when there is no such file.
    virtual std::optional<std::string> lookUp(const std::string& path) = 0;
    /// The same of many files, one answer for each: one call for all that one drop or one list names. One that does not
    /// answer keeps no other away; those that there is no time for count as not being there.
    virtual std::vector<std::optional<std::string>> lookUpAll(const std::vector<std::string>& paths) = 0;
    /// Names of plain files of the folder that match one of the patterns (";" between, letters without case), sorted
    /// without case.
    virtual std::vector<std::string> list(const std::string& folder, const std::string& patterns) = 0;
    virtual std::vector<std::string> folders(const std::string& folder) = 0;  ///< names of its folders, sorted
    virtual bool readable(const std::string& folder) = 0;
    virtual std::vector<Drive> drives() = 0;
    /// The whole file; empty when it cannot be read or is longer than limit bytes.
    virtual std::optional<std::string> read(const std::string& path, std::size_t limit) = 0;
    /// Replaces the whole file: written beside it, flushed, renamed. False: failed, and the old file stands whole.
    virtual bool replace(const std::string& path, std::string_view bytes) = 0;
};

/// insertAfter values of SetWindowPos.
inline constexpr int kTopMost = -1;
inline constexpr int kNotTopMost = -2;

/// Windows on the screen. A form is attached when it is loaded and detached when it is unloaded.
class Windows {
public:
    virtual ~Windows() = default;
    virtual void attach(Form& form) = 0;  ///< from now on the form is shown as its properties say
    virtual void detach(Form& form) = 0;  ///< its window goes at once; the form lives on a little
    virtual Twips screenWidth() = 0;      ///< the panel's screen, twips
    virtual Twips screenHeight() = 0;
    virtual int doubleClickTimeMs() = 0;
    /// The user has asked the desktop for less motion. May become known, or change, while the program runs.
    virtual bool prefersReducedMotion() = 0;
    /// Puts the window in the z-order; flags as the platform defines them (0x01 no size, 0x02 no move, 0x10 no
    /// activate, 0x40 show, 0x80 hide).
    virtual void SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) = 0;
    /// The left button is down on the form: moves the window with the pointer until it is released.
    virtual void beginDrag(Form& form) = 0;
    virtual void activate(Form& form) = 0;  ///< gives the window the keyboard focus
    /// Paints what has changed now, so that a step of an animation is seen.
    virtual void refresh(Form& form) = 0;
    virtual int textWidth(Form& form, const std::string& text) = 0;  ///< pixels, in the form's font
};

using TimerId = std::uint64_t;

/// Periodic timers. Ticks come on the user-interface thread, from the desktop's loop, also while a box is up:
/// who arms one posts what must wait.
class Timers {
public:
    virtual ~Timers() = default;
    virtual TimerId start(int intervalMs, std::function<void()> tick) = 0;  ///< intervalMs of at least 1
    virtual void stop(TimerId timer) = 0;  ///< no tick after this; unknown ids do nothing
};

struct LocalTime {
    int year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual LocalTime localTime() = 0;
    virtual std::int64_t milliseconds() = 0;  ///< monotonic
};

enum class Buttons { Ok, OkCancel, AbortRetryIgnore };
enum class Icon { Stop, Question, Exclamation, Information };
enum class Answer { Ok, Cancel, Abort, Retry, Ignore };

/// Boxes, the popup menu and help.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    /// Shows a modal box and waits for the answer. Called through the engine, which holds the EventLoop meanwhile.
    /// Closed without an answer: Cancel, Abort, or Ok where that is the only button. The program's end answers the
    /// same.
    virtual Answer messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) = 0;
    /// Pops the menu up at the pointer and returns at once; the chosen item's Click is raised later.
    virtual void popUp(MenuItem& menu) = 0;
    virtual void help() = 0;  ///< opens the help
};

/// Those of the files named to a start that a list takes, in order; `tell` gets a line for each other one.
using ListTaker = std::function<std::vector<std::string>(const std::vector<std::string>& named,
                                                         const std::function<void(const std::string& line)>& tell)>;

/// The process and its surroundings.
class Process {
public:
    virtual ~Process() = default;
    /// False: another one runs on the same program folder, and was given the files to open that a list takes. Who
    /// started the program is told what none takes.
    virtual bool onlyInstance(const ListTaker& taken) = 0;
    virtual bool startedByDesktop() { return false; }    ///< from its menu, or to open files (--open)
    virtual int platformId() = 0;                        ///< 1: the old family; 2 otherwise
    virtual std::string programFolder() = 0;             ///< without a trailing separator, unless a root
    virtual std::string commandLine() = 0;               ///< arguments joined by blanks
    virtual std::vector<std::string> filesToOpen() = 0;  ///< files given one by one (--open)
    /// Ends the program: no event is delivered after this; the call returns.
    virtual void end() = 0;
    virtual bool ending() const = 0;

    std::string productName = "Corvane";
    int versionMajor = 1;
    int versionMinor = 0;
    std::string comments = "Multimedia Player";
};

/// Numbers for shuffling.
class Random {
public:
    virtual ~Random() = default;
    virtual void seedFromClock() = 0;
    virtual double next() = 0;  ///< uniform in [0, 1)
};

/// All ports of one desktop. Not owned; each outlives the player.
struct Ports {
    EventLoop& loop;
    Media& media;
    Pictures& pictures;
    SoundDevices& sound;
    Files& files;
    Windows& windows;
    Timers& timers;
    Clock& clock;
    Dialogs& dialogs;
    Process& process;
    Random& random;
    TextReader* texts = nullptr;      ///< null: this desktop reads no tags
    LengthReader* lengths = nullptr;  ///< null: this desktop tells lengths only of what plays
    FileWork* work = nullptr;         ///< null: files are asked for while all wait
};

}  // namespace corvane
