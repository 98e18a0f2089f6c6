// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/x_settings.h"

#include <QGuiApplication>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace corvane {

namespace {

constexpr std::uint32_t kMostBytes = 256 * 1024;
constexpr std::uint32_t kMostSettings = 1000;

/// A reply of the display's library, which its caller frees.
struct Free {
    void operator()(void* reply) const { std::free(reply); }  // NOLINT: the library's own allocation
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

xcb_atom_t atom(xcb_connection_t* display, const std::string& name) {
    const auto cookie = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(display, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// Numbers in the order of bytes that the manager's machine has; behind the end all are 0.
class Reader {
public:
    explicit Reader(const QByteArray& bytes) : bytes_(bytes), swapped_(!bytes.isEmpty() && bytes[0] == 1) {}

    bool good() const { return good_; }
    std::uint32_t number(int bytes) {
        std::uint32_t value = 0;
        if (!has(bytes)) return 0;
        for (int i = 0; i < bytes; ++i) {
            const auto byte = static_cast<unsigned char>(bytes_[at_ + (swapped_ ? i : bytes - 1 - i)]);
            value = value << 8U | byte;
        }
        at_ += bytes;
        return value;
    }
    /// With what fills it up to a whole number of four.
    QByteArray text(std::uint32_t length) {
        good_ = good_ && length <= kMostBytes;
        if (!has(static_cast<qsizetype>(length))) return {};
        const QByteArray found = bytes_.mid(at_, static_cast<qsizetype>(length));
        skip(static_cast<qsizetype>((length + 3) / 4 * 4));
        return found;
    }
    void skip(qsizetype count) {
        if (has(count)) at_ += count;
    }

private:
    bool has(qsizetype count) {
        good_ = good_ && count <= bytes_.size() - at_;
        return good_;
    }

    const QByteArray& bytes_;
    bool swapped_;  ///< the highest byte first
    qsizetype at_ = 0;
    bool good_ = true;
};

}  // namespace

QVariantMap readXSettings(const QByteArray& bytes) {
    enum : std::uint32_t { kNumber = 0, kText = 1, kColour = 2 };
    QVariantMap settings;
    Reader reader(bytes);
    reader.skip(8);  // order of bytes, serial
    const std::uint32_t count = std::min(reader.number(4), kMostSettings);
    for (std::uint32_t i = 0; i < count && reader.good(); ++i) {
        const std::uint32_t kind = reader.number(1);
        reader.skip(1);
        const QString name = QString::fromLatin1(reader.text(reader.number(2)));
        reader.skip(4);  // serial
        QVariant value;
        if (kind == kNumber) {
            value = static_cast<int>(reader.number(4));
        } else if (kind == kText) {
            value = QString::fromUtf8(reader.text(reader.number(4)));
        } else if (kind == kColour) {
            reader.skip(8);
        } else {
            break;
        }
        if (reader.good() && value.isValid()) settings[name] = value;
    }
    return settings;
}

std::unique_ptr<XSettings> XSettings::ofDisplay(Told told) {
    const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr) return nullptr;
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(x11->connection()));
    if (screens.rem == 0) return nullptr;
    return std::make_unique<XSettings>(x11->connection(), screens.data->root, std::move(told));
}

XSettings::XSettings(xcb_connection_t* display, xcb_window_t root, Told told)
    : display_(display),
      root_(root),
      selection_(atom(display, "_XSETTINGS_S0")),
      settings_(atom(display, "_XSETTINGS_SETTINGS")),
      manager_(atom(display, "MANAGER")),
      told_(std::move(told)) {
    qApp->installNativeEventFilter(this);
    findManager();
}

XSettings::~XSettings() { qApp->removeNativeEventFilter(this); }

/// Whoever has the selection tells the settings on its window; one that comes says so on the root window, whose
/// messages the tool kit takes already.
void XSettings::findManager() {
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(display_, xcb_get_selection_owner(display_, selection_), nullptr));
    owner_ = reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    if (owner_ != XCB_WINDOW_NONE) {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(display_, owner_, XCB_CW_EVENT_MASK, &events);
    }
    read();
}

void XSettings::read() {
    QByteArray bytes;
    if (owner_ != XCB_WINDOW_NONE) {
        const auto cookie = xcb_get_property(display_, 0, owner_, settings_, settings_, 0, kMostBytes / 4);
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(display_, cookie, nullptr));
        if (reply && reply->format == 8) {
            bytes = QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               xcb_get_property_value_length(reply.get()));
        }
    }
    told_(readXSettings(bytes));
}

bool XSettings::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t") return false;
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    const int kind = event->response_type & 0x7F;
    if (kind == XCB_PROPERTY_NOTIFY) {
        const auto& changed = *reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (changed.window == owner_ && owner_ != XCB_WINDOW_NONE && changed.atom == settings_) read();
    } else if (kind == XCB_DESTROY_NOTIFY) {
        const auto& gone = *reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
        if (gone.window == owner_ && owner_ != XCB_WINDOW_NONE) findManager();
    } else if (kind == XCB_CLIENT_MESSAGE) {
        const auto& said = *reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (said.window == root_ && said.type == manager_ && said.data.data32[1] == selection_) findManager();
    }
    return false;
}

}  // namespace corvane
