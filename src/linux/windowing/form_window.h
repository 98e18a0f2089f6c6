// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>

#include "linux/graveyard.h"
#include "shell/windowing/bound_window.h"
#include "shell/windowing/screens.h"

class QScreen;

namespace corvane {

/// What every window of this desktop needs besides its form. Not owned; outlives the windows.
struct DesktopContext final : Screens {
    explicit DesktopContext(EventLoop& ownLoop, double ownScale = 1.0, QWidget* shownPanel = nullptr)
        : loop(ownLoop), scale(ownScale), panel(shownPanel) {}

    double factor() const override { return scale; }
    Rectangle ofPanel() const override;
    Rectangle primary() const override;
    std::vector<ScreenArea> areas() const override;

    QScreen* screen() const;  ///< the panel's; the primary one before it is shown

    EventLoop& loop;
    double scale;  ///< logical screen pixels to a form's pixel (15 twips), 0.5 to 4; from CORVANE_SCALE

    QPointer<QWidget> panel;    ///< the window of the painted form that was attached last
    QPointer<QWidget> box;      ///< the message box that is up; null: none is
    Graveyard graveyard{loop};  ///< for windows and menus that are shown no more
};

/// A widget as the frame of a form.
class QtFrame : public WindowFrame {
public:
    /// widget: the top-level widget, of which this object is a part.
    QtFrame(QWidget& widget, DesktopContext& context) : widget_(widget), context_(context) {}
    QtFrame(const QtFrame&) = delete;
    QtFrame& operator=(const QtFrame&) = delete;

    QWidget* widget() const { return &widget_; }
    DesktopContext& context() const { return context_; }

    void activate() override;
    void putAway() override { widget_.hide(); }
    bool isShown() const override { return widget_.isVisible(); }
    void refresh() override { widget_.repaint(); }
    int textWidth(const std::string& text) override;
    void stack(int insertAfter, std::uint32_t flags) override;

protected:
    ~QtFrame() = default;

private:
    QWidget& widget_;
    DesktopContext& context_;
};

/// Text as the form has it: UTF-8 where it is valid, else byte by byte (so that nothing is lost from sight).
QString toQString(const std::string& text);

}  // namespace corvane
