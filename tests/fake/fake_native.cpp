// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_native.h"

#include <cstdint>
#include <utility>

#include "fake/fake_pictures.h"

namespace corvane {

namespace {

std::u16string wide(const std::string& text) { return {text.begin(), text.end()}; }

}  // namespace

void FakeControl::focus() {
    surface_.focused = &control_;
    events.focused(true);
}

void FakeField::setText(const std::string& text) {
    if (held.text != wide(text)) held = {wide(text), 0};
}

void FakeField::type(const std::u16string& text) {
    FieldText given = held;
    const auto from = static_cast<std::size_t>(selected.first);
    given.text.replace(from, static_cast<std::size_t>(selected.second) - from, text);
    given.cursor = selected.first + static_cast<int>(text.size());
    held = events.filtered(std::move(given));
    selected = {held.cursor, held.cursor};
    events.typed(std::string(held.text.begin(), held.text.end()));
}

void FakeField::drag(int from, int to) {
    selected = {from, to};
    events.selectionMoved(from, to);
}

void FakeChoice::setItems(const std::vector<std::string>& texts) {
    items = texts;
    current = -1;
    ++filled;
}

void FakeChoice::setCurrent(int row) {
    if (std::exchange(current, row) != row) held = {row < 0 ? u"" : wide(items.at(static_cast<std::size_t>(row))), 0};
}

void FakeChoice::setField(const std::string& text) {
    if (held.text != wide(text)) held = {wide(text), 0};
}

void FakeChoice::choose(int row) {
    setCurrent(row);
    events.chosen(row);
}

void FakeChoice::type(const std::string& text) {
    held = {wide(text), static_cast<int>(text.size())};
    events.typed(text);
}

void FakeList::refresh(bool keep) {
    ++refreshed;
    keptPlace = keep;
    selected.clear();
}

void FakeList::select(const std::vector<RowRange>& rows, int row) {
    selected = rows;
    if (row >= 0) current = row;
}

template <class N>
std::unique_ptr<N> FakeSurface::kept(const Control& control, NativeEvents& events) {
    auto made = std::make_unique<N>(*this, control, events);
    controls_[&control] = made.get();
    return made;
}

std::unique_ptr<NativeButton> FakeSurface::makeButton(const Control& control, NativeEvents& events) {
    return kept<FakeButton>(control, events);
}

std::unique_ptr<NativeLabel> FakeSurface::makeLabel(const Label& label, NativeEvents& events) {
    return kept<FakeLabel>(label, events);
}

std::unique_ptr<NativeMark> FakeSurface::makeMark(const Image& image, NativeEvents& events) {
    return kept<FakeMark>(image, events);
}

std::unique_ptr<NativeField> FakeSurface::makeField(const TextBox& box, NativeEvents& events) {
    return kept<FakeField>(box, events);
}

std::unique_ptr<NativeStepper> FakeSurface::makeStepper(const ScrollBar& bar, NativeEvents& events) {
    return kept<FakeStepper>(bar, events);
}

std::unique_ptr<NativeChoice> FakeSurface::makeChoice(const ItemsControl& control, NativeEvents& events) {
    return kept<FakeChoice>(control, events);
}

Picture FakeThumbnails::answer() {
    Picture picture = makePicture(3, 2, std::vector<std::uint32_t>(6, 0x804020));
    std::exchange(done_, {})(picture);
    return picture;
}

std::unique_ptr<NativeList> FakeSurface::makeList(const ItemsControl& control, NativeEvents& events) {
    return kept<FakeList>(control, events);
}

PixelPoint FakeSurface::onScreen(Twips left, Twips top) const {
    return {static_cast<int>(left / kTwipsPerPixel), static_cast<int>(top / kTwipsPerPixel)};
}

void FakeSurface::runLater() {
    for (const EventLoop::Handler& each : std::exchange(later, {})) each();
}

}  // namespace corvane
