// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/native_dialog_contract.h"

#include "contract/fake/fake_stage.h"
#include "fake/fake_native.h"
#include "shell/native/native_form.h"

namespace corvane {
namespace {

class FakeNativeStage : public FakeStage<NativeStage>, private ControlObserver {
public:
    void attach(Form& form) override {
        form_ = &form;
        form.addObserver(this);
        for (Control* each : form.controls()) each->addObserver(this);
        native_.bind(form);
        form.Show();
    }
    void detach() override { native_.unbind(); }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        surface_.runLater();
        const bool held = FakeStage::waitFor(condition, atMostMs);
        surface_.runLater();
        return held;
    }

    void press(const CommandButton& button) override { surface_.of<FakeButton>(button).events.pressed(); }
    void toggle(const Control& control) override {
        auto& shown = surface_.of<FakeButton>(control);
        shown.toggle(control.kind() == ControlKind::OptionButton || !shown.on);
    }
    void type(const Control& control, const std::string& letters) override {
        for (const char each : letters) {
            if (control.kind() == ControlKind::TextBox) {
                auto& field = surface_.of<FakeField>(control);
                const int end = static_cast<int>(field.held.text.size());
                field.selected = {end, end};
                field.type(std::u16string(1, static_cast<char16_t>(each)));
            } else {
                surface_.of<FakeChoice>(control).type(text(control) + each);
            }
        }
    }
    void choose(const ItemsControl& box, int row) override { surface_.of<FakeChoice>(box).choose(row); }
    void click(const ItemsControl& list, int row) override {
        auto& shown = surface_.of<FakeList>(list);
        shown.select({{row, row}}, row);
        shown.events.rowsSelected({{row, row}}, row);
    }
    void doubleClick(const ItemsControl& list, int row) override {
        click(list, row);
        surface_.of<FakeList>(list).events.opened(row);
    }
    void stepRight(const ScrollBar& bar) override { surface_.of<FakeStepper>(bar).events.stepBy(1); }

    std::string text(const Control& control) override {
        if (control.kind() == ControlKind::CommandButton) {
            std::string shown = surface_.of<FakeButton>(control).text;
            for (std::size_t at = shown.find('&'); at != std::string::npos; at = shown.find('&', at + 1)) {
                shown.erase(at, 1);
            }
            return shown;
        }
        const std::u16string held = control.kind() == ControlKind::TextBox ? surface_.of<FakeField>(control).held.text
                                                                           : surface_.of<FakeChoice>(control).held.text;
        return {held.begin(), held.end()};
    }
    bool isOn(const Control& control) override { return surface_.of<FakeButton>(control).on; }
    bool isUsable(const Control& control) override {
        const auto& shown = surface_.of<FakeControl>(control);
        return shown.shown && shown.enabled;
    }
    std::vector<int> selected(const ItemsControl& list) override {
        std::vector<int> rows;
        for (const RowRange& each : surface_.of<FakeList>(list).selected) {
            for (int row = each.first; row <= each.last; ++row) rows.push_back(row);
        }
        return rows;
    }
    int value(const ScrollBar& bar) override { return surface_.of<FakeStepper>(bar).value; }
    int left(const Control& control) override { return surface_.of<FakeControl>(control).at.left; }

private:
    void propertyChanged(Control& control, PropertyId property) override {
        if (native_.bound()) native_.changed(control, property);
    }

    FakeSurface surface_;
    NativeForm native_{machine.loop, surface_};
    Form* form_ = nullptr;
};

std::unique_ptr<NativeStage> makeNative() { return std::make_unique<FakeNativeStage>(); }

INSTANTIATE_TEST_SUITE_P(Fake, NativeDialogContract, ::testing::Values(&makeNative));

}  // namespace
}  // namespace corvane
