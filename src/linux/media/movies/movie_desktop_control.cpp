// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/movie_desktop_control.h"

#include <QTransform>
#include <utility>

namespace corvane {

namespace {

/// As it is seen: it is given as it was taken. Null without pixels.
QImage uprightPicture(const PicturePixels& picture, int turned) {
    if (picture.pixels.empty()) return {};
    const auto [width, height] = picture.held;
    const QImage view(reinterpret_cast<const uchar*>(picture.pixels.data()), width, height,
                      qsizetype{width} * static_cast<qsizetype>(sizeof picture.pixels[0]), QImage::Format_RGB32);
    const QSize seen(picture.full.width, picture.full.height);
    const QImage upright = view.transformed(QTransform().rotate(turned));
    if (upright.size() == seen) return upright.copy();
    return upright.scaled(seen, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

DesktopMovieControl::DesktopMovieControl(Form& form, DesktopMovies& movies)
    : MovieStateControl(form, movies.loop(), movies.windows()), movies_(movies), players_(movies.players()) {
    ticks_.setInterval(kProgressMs);
    QObject::connect(&ticks_, &QTimer::timeout, &ticks_, [this] { look(); });
    again_.setSingleShot(true);
    QObject::connect(&again_, &QTimer::timeout, &again_, [this] { goOn(); });
}

DesktopMovieControl::~DesktopMovieControl() {
    post_.stop();
    if (player_) players_.giveBack(std::move(player_));
}

bool DesktopMovieControl::borrowPlayer(std::string& reason) {
    if (player_ && player_->stuck()) players_.giveBack(std::move(player_));
    if (player_) return true;
    player_ = players_.take(reason);
    if (!player_) return false;
    player_->listen({.opened = [this] { playerOpened(); },
                     .failed = [this](const std::string& why) { playerFailed(why); },
                     .ended = [this] { ended(); },
                     .frameReady = [this] { frameReady.raise(); },
                     .says = [this](const std::string& text) { text_.show(text); },
                     .subtitles =
                         [this](const std::string& text) {
                             if (subtitles_.show(text)) frameReady.raise();
                         },
                     .lost = [this] { framesLost(); },
                     .unusable = [this] { again_.start(0); }});
    player_->setRate(wantedRate());
    frames().setTarget(target_);
    return true;
}

/// The movie is opened with another player: for the first time, or to go on where it is.
void DesktopMovieControl::goOn() {
    const std::optional<Moved> moved = moved_;
    openMovie(FileName());
    if (player_) moved_ = moved;
}

/// The driver that showed its frames is of no use any more. Whoever watches sees and hears a moment of nothing.
void DesktopMovieControl::framesLost() {
    players_.leaveGraphics();
    if (!player_->hasFile()) return;
    if (player_->isOpen()) moved_ = {player_->position(), player_->duration(), player_->picture(), isPlayed_};
    player_->pause();
    again_.start(0);
}

void DesktopMovieControl::playerOpened() {
    if (!moved_) return opened();
    const Moved moved = *moved_;
    moved_.reset();
    player_->seek(moved.position);
    if (moved.plays) player_->play();
    frameReady.raise();
}

void DesktopMovieControl::playerFailed(const std::string& reason) {
    moved_.reset();
    failed(reason);
}

void DesktopMovieControl::playMovie() {
    isPlayed_ = true;
    if (moved_) moved_->plays = true;
    player_->play();
}

void DesktopMovieControl::pauseMovie() {
    isPlayed_ = false;
    if (moved_) moved_->plays = false;
    player_->pause();
}

void DesktopMovieControl::seekMovie(double seconds) {
    if (moved_) moved_->position = seconds;
    player_->seek(seconds);
}

bool DesktopMovieControl::openMovie(const std::string& path) {
    again_.stop();
    moved_.reset();
    std::string reason;
    if (borrowPlayer(reason)) {
        player_->open(path);
    } else {
        failed(reason);
    }
    return true;
}

void DesktopMovieControl::closeMovie() {
    again_.stop();
    moved_.reset();
    isPlayed_ = false;
    text_.clear();
    if (player_) player_->close();
}

void DesktopMovieControl::setMovieRate(double rate) {
    if (player_) player_->setRate(rate);
}

void DesktopMovieControl::tick(bool on) {
    if (on) {
        ticks_.start();
    } else {
        ticks_.stop();
    }
}

void DesktopMovieControl::saveFrame(const std::string& name) {
    if (!frames().isShown()) return savePicture(frames().whole(), name);
    player_->whole(
        [this, name](const PicturePixels& picture, int turned) { savePicture(uprightPicture(picture, turned), name); });
}

void DesktopMovieControl::savePicture(QImage picture, const std::string& name) {
    if (saving_) return;
    if (picture.isNull()) return text_.show("There is no picture to be saved");
    QPainter painter(&picture);
    subtitles_.paint(painter, picture.rect());
    painter.end();
    saving_ = true;
    const auto tell = [this, post = post_](const FrameFile& file) { post([this, file] { tellSaved(file); }); };
    const auto save = [tell, picture, name, own = movies_.ownFolder()](const Worker::GiveUp&) {
        tell(corvane::saveFrame(picture, own, name));
    };
    if (!Worker::run(save, [tell] { tell({"", Worker::kBroken}); })) tellSaved({"", Worker::kRefused});
}

void DesktopMovieControl::tellSaved(const FrameFile& file) {
    saving_ = false;
    text_.show(file.path.empty() ? "The picture was not saved: " + file.reason : "Saved as " + file.path);
}

void DesktopMovieControl::look() {
    player_->checkFrames();
    player_->checkEnd();
    if (player_->soundLost() && players_.soundServerAnswers()) player_->findSoundAgain();
    progress();
}

void DesktopMovieControl::setTarget(QSize devicePixels) {
    target_ = devicePixels;
    if (player_) frames().setTarget(devicePixels);
}

/// What is written is painted where it lies beside the picture, and shown on it.
void DesktopMovieControl::showIn(QWidget& window, const QRect& area) {
    if (!player_ || !frames().isShown()) return;
    SeenFrames::Above above;
    if (!subtitles_.empty() || !text_.empty()) {
        above = [this, area](QPainter& painter) {
            subtitles_.paint(painter, area);
            text_.paint(painter, area);
        };
    }
    frames().showIn(window, area, above);
}

QRect DesktopMovieControl::covered(const QRect& area, double ratio) const {
    return player_ ? frames().covered(area, ratio) : QRect();
}

void DesktopMovieControl::leave() {
    if (player_) frames().leave();
}

void DesktopMovieControl::paint(QPainter& painter, const QRect& area) {
    if (player_) frames().paint(painter, area);
    subtitles_.paint(painter, area);
    text_.paint(painter, area);
}

}  // namespace corvane
