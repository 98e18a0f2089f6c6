// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/graphics_display.h"

#define EGL_NO_X11  // its names are our own's as well
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <X11/Xlib.h>
#include <dlfcn.h>

#include <array>
#include <vector>

namespace corvane {

namespace {

#define CORVANE_EGL(X)        \
    X(eglGetPlatformDisplay)  \
    X(eglInitialize)          \
    X(eglTerminate)           \
    X(eglBindAPI)             \
    X(eglGetConfigs)          \
    X(eglChooseConfig)        \
    X(eglGetConfigAttrib)     \
    X(eglCreateContext)       \
    X(eglDestroyContext)      \
    X(eglCreateWindowSurface) \
    X(eglDestroySurface)      \
    X(eglMakeCurrent)         \
    X(eglSwapInterval)        \
    X(eglSwapBuffers)         \
    X(eglReleaseThread)       \
    X(eglGetProcAddress)

#define CORVANE_XLIB(X)    \
    X(XOpenDisplay)        \
    X(XCloseDisplay)       \
    X(XSelectInput)        \
    X(XConnectionNumber)   \
    X(XDefaultScreen)      \
    X(XDefaultVisual)      \
    X(XVisualIDFromVisual) \
    X(XPending)            \
    X(XNextEvent)

/// The driver's entry and the display's library, loaded when a movie comes for the first time.
struct Functions {
#define CORVANE_DECLARE(name) decltype(&::name) name = nullptr;
    CORVANE_EGL(CORVANE_DECLARE)
    CORVANE_XLIB(CORVANE_DECLARE)
#undef CORVANE_DECLARE
    bool complete = false;

    Functions() {
        // Never unloaded, and among the names of the whole program: a driver may be watched from a library before it.
        const bool there = dlopen("libEGL.so.1", RTLD_LAZY | RTLD_GLOBAL) != nullptr &&
                           dlopen("libX11.so.6", RTLD_LAZY | RTLD_GLOBAL) != nullptr;
        complete = there;
#define CORVANE_FIND(name)                                                                 \
    name = there ? reinterpret_cast<decltype(name)>(dlsym(RTLD_DEFAULT, #name)) : nullptr; \
    complete = complete && name != nullptr;
        CORVANE_EGL(CORVANE_FIND)
        CORVANE_XLIB(CORVANE_FIND)
#undef CORVANE_FIND
    }
};

const Functions& functions() {
    static const Functions once;
    return once;
}

constexpr unsigned kRenderer = 0x1F01;  // GL_RENDERER
using GetString = const unsigned char* (*)(unsigned name);
using GetResetStatus = unsigned (*)();

struct Kind {
    EGLenum api;
    EGLint drawn;  ///< EGL_RENDERABLE_TYPE
    EGLint major, minor;
};

// What the movie library draws with, the best first.
constexpr std::array<Kind, 3> kKinds{{{EGL_OPENGL_API, EGL_OPENGL_BIT, 3, 2},
                                      {EGL_OPENGL_ES_API, EGL_OPENGL_ES3_BIT, 3, 0},
                                      {EGL_OPENGL_ES_API, EGL_OPENGL_ES2_BIT, 2, 0}}};

}  // namespace

struct GraphicsDisplay::Parts {
    Display* connection = nullptr;
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLConfig config = nullptr;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    GetResetStatus resetStatus = nullptr;  ///< null: the driver does not tell

    /// Windows of the tool kit have the screen's own kind of pixels: a surface fits them by the same.
    bool chooseConfig(EGLint drawn) {
        const Functions& f = functions();
        const std::array<EGLint, 11> wanted{EGL_SURFACE_TYPE,
                                            EGL_WINDOW_BIT,
                                            EGL_RENDERABLE_TYPE,
                                            drawn,
                                            EGL_RED_SIZE,
                                            8,
                                            EGL_GREEN_SIZE,
                                            8,
                                            EGL_BLUE_SIZE,
                                            8,
                                            EGL_NONE};
        constexpr EGLint kMost = 256;
        std::vector<EGLConfig> found(kMost);
        EGLint count = 0;
        if (f.eglChooseConfig(display, wanted.data(), found.data(), kMost, &count) == EGL_FALSE) return false;
        const auto visual = f.XVisualIDFromVisual(f.XDefaultVisual(connection, f.XDefaultScreen(connection)));
        for (EGLint i = 0; i < count; ++i) {
            EGLint own = 0;
            config = found[static_cast<std::size_t>(i)];
            if (f.eglGetConfigAttrib(display, config, EGL_NATIVE_VISUAL_ID, &own) != EGL_FALSE &&
                static_cast<unsigned long>(own) == visual)
                return true;
        }
        return false;
    }

    bool makeContext(const Kind& kind) {
        const Functions& f = functions();
        if (f.eglBindAPI(kind.api) == EGL_FALSE || !chooseConfig(kind.drawn)) return false;
        // A driver that tells when it has lost what it had, where there is one.
        const std::array<EGLint, 7> telling{EGL_CONTEXT_MAJOR_VERSION,
                                            kind.major,
                                            EGL_CONTEXT_MINOR_VERSION,
                                            kind.minor,
                                            EGL_CONTEXT_OPENGL_RESET_NOTIFICATION_STRATEGY,
                                            EGL_LOSE_CONTEXT_ON_RESET,
                                            EGL_NONE};
        context = f.eglCreateContext(display, config, EGL_NO_CONTEXT, telling.data());
        const bool tells = context != EGL_NO_CONTEXT;
        const std::array<EGLint, 5> plain{EGL_CONTEXT_MAJOR_VERSION, kind.major, EGL_CONTEXT_MINOR_VERSION, kind.minor,
                                          EGL_NONE};
        if (!tells) context = f.eglCreateContext(display, config, EGL_NO_CONTEXT, plain.data());
        if (context == EGL_NO_CONTEXT) return false;
        if (f.eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_FALSE) {
            f.eglDestroyContext(display, context);
            context = EGL_NO_CONTEXT;
            return false;
        }
        if (tells) resetStatus = reinterpret_cast<GetResetStatus>(f.eglGetProcAddress("glGetGraphicsResetStatus"));
        return true;
    }

    void dropSurface() {
        if (surface == EGL_NO_SURFACE) return;
        functions().eglDestroySurface(display, surface);
        surface = EGL_NO_SURFACE;
    }
};

GraphicsDisplay::GraphicsDisplay() : parts_(std::make_unique<Parts>()) {}

std::unique_ptr<GraphicsDisplay> GraphicsDisplay::open(std::string& reason) {
    reason = "the system has no EGL";
    if (!functions().complete) return nullptr;
    std::unique_ptr<GraphicsDisplay> made(new GraphicsDisplay);
    return made->start(reason) ? std::move(made) : nullptr;
}

bool GraphicsDisplay::start(std::string& reason) {
    const Functions& f = functions();
    reason = "the display cannot be opened";
    parts_->connection = f.XOpenDisplay(nullptr);
    if (parts_->connection == nullptr) return false;
    reason = "the graphics driver does not start";
    parts_->display = f.eglGetPlatformDisplay(EGL_PLATFORM_X11_KHR, parts_->connection, nullptr);
    if (parts_->display == EGL_NO_DISPLAY || f.eglInitialize(parts_->display, nullptr, nullptr) == EGL_FALSE)
        return false;
    if (!makeContext()) return false;
    const auto getString = reinterpret_cast<GetString>(f.eglGetProcAddress("glGetString"));
    const unsigned char* const name = getString == nullptr ? nullptr : getString(kRenderer);
    if (name == nullptr) return false;
    renderer_ = reinterpret_cast<const char*>(name);
    reason.clear();
    return true;
}

bool GraphicsDisplay::makeContext() {
    for (const Kind& kind : kKinds) {
        if (parts_->makeContext(kind)) return true;
    }
    return false;
}

GraphicsDisplay::~GraphicsDisplay() {
    const Functions& f = functions();
    if (parts_->display != EGL_NO_DISPLAY) {
        f.eglMakeCurrent(parts_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        parts_->dropSurface();
        if (parts_->context != EGL_NO_CONTEXT) f.eglDestroyContext(parts_->display, parts_->context);
        f.eglTerminate(parts_->display);
        f.eglReleaseThread();
    }
    if (parts_->connection != nullptr) f.XCloseDisplay(parts_->connection);
}

bool GraphicsDisplay::attach(unsigned long window) {
    const Functions& f = functions();
    if (f.eglMakeCurrent(parts_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, parts_->context) == EGL_FALSE) return false;
    parts_->dropSurface();
    if (window == 0) return true;
    f.XSelectInput(parts_->connection, window, ExposureMask);
    parts_->surface = f.eglCreateWindowSurface(parts_->display, parts_->config, window, nullptr);
    if (parts_->surface == EGL_NO_SURFACE) return false;
    if (f.eglMakeCurrent(parts_->display, parts_->surface, parts_->surface, parts_->context) == EGL_FALSE) return false;
    f.eglSwapInterval(parts_->display, 1);
    return true;
}

bool GraphicsDisplay::show() {
    return parts_->surface == EGL_NO_SURFACE ||
           functions().eglSwapBuffers(parts_->display, parts_->surface) != EGL_FALSE;
}

bool GraphicsDisplay::lost() const { return parts_->resetStatus != nullptr && parts_->resetStatus() != 0; }

int GraphicsDisplay::descriptor() const { return functions().XConnectionNumber(parts_->connection); }

bool GraphicsDisplay::wasUncovered() {
    bool uncovered = false;
    while (functions().XPending(parts_->connection) > 0) {
        XEvent event;
        functions().XNextEvent(parts_->connection, &event);
        uncovered = uncovered || event.type == Expose;
    }
    return uncovered;
}

void* GraphicsDisplay::connection() const { return parts_->connection; }

void* GraphicsDisplay::function(const char* name) {
    return reinterpret_cast<void*>(functions().eglGetProcAddress(name));
}

}  // namespace corvane
