// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/form_text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "forms/controls.h"
#include "forms/lists.h"
#include "forms/menu.h"

namespace corvane {

namespace {

std::string called(const Control& control) {
    return control.index() < 0 ? control.name() : control.name() + '(' + std::to_string(control.index()) + ')';
}

/// Writes " name=value" for what is not as it is by default.
class Line {
public:
    template <class T>
    void add(const char* name, const T& value, const T& usual) {
        if (!(value == usual)) out_ << ' ' << name << '=' << value;
    }
    void text(const char* name, const std::string& value) {
        if (!value.empty()) out_ << ' ' << name << "=\"" << value << '"';
    }
    void flag(const char* name, bool on) {
        if (on) out_ << ' ' << name;
    }
    std::ostringstream& out() { return out_; }

private:
    std::ostringstream out_;
};

template <class T, class Work>
void when(const Control& control, Work work) {
    if (const auto* one = dynamic_cast<const T*>(&control)) work(*one);
}

void addCommon(Line& line, const Control& control) {
    line.out() << called(control) << " kind " << static_cast<int>(control.kind()) << " at " << control.Left << ','
               << control.Top << ' ' << control.Width << 'x' << control.Height;
    line.flag("hidden", !control.Visible);
    line.flag("disabled", !control.Enabled);
    line.add("tab", control.TabIndex, -1);
    if (control.Container != nullptr) line.text("in", called(*control.Container));
    line.text("tip", control.ToolTipText);
    line.text("accessible", control.AccessibleName);
}

void addMouse(Line& line, const Control& control) {
    when<MouseControl>(control, [&](const MouseControl& mouse) {
        line.flag("checkable", mouse.Checkable);
        line.flag("checked", mouse.Checked);
        line.flag("takesFiles", mouse.OLEDragDrop.isTied());
    });
    when<CommandButton>(control, [&](const CommandButton& button) {
        line.text("caption", button.Caption);
        line.flag("default", button.Default);
        line.flag("cancel", button.Cancel);
    });
    when<Label>(control, [&](const Label& label) {
        line.text("caption", label.Caption);
        line.add("colour", label.ForeColor.get(), kBlack);
        if (label.Labels != nullptr) line.text("labels", called(*label.Labels));
    });
    when<PictureBox>(control, [&](const PictureBox& box) {
        line.add("colour", box.BackColor.get(), kBlack);
        line.flag("pixels", box.Scale == ScaleMode::InPixels);
        line.add("hitWidth", box.hitWidth, 0.0F);
    });
    when<Shape>(control, [&](const Shape& shape) { line.add("colour", shape.FillColor.get(), kBlack); });
    when<Frame>(control, [&](const Frame& frame) { line.text("caption", frame.Caption); });
}

void addFields(Line& line, const Control& control) {
    when<Timer>(control, [&](const Timer& timer) { line.add("interval", timer.Interval.get(), 0); });
    when<CheckBox>(control, [&](const CheckBox& box) {
        line.text("caption", box.Caption);
        line.flag("on", box.Value);
    });
    when<OptionButton>(control, [&](const OptionButton& option) {
        line.text("caption", option.Caption);
        line.flag("on", option.Value);
    });
    when<TextBox>(control, [&](const TextBox& box) {
        line.text("text", box.Text);
        line.add("most", box.MaxLength, 0);
    });
    when<ItemsControl>(control, [&](const ItemsControl& list) {
        for (const std::string& item : list.items()) line.text("item", item);
        line.add("current", list.ListIndex.get(), -1);
        line.flag("multi", list.MultiSelect);
    });
    when<ListBox>(control, [&](const ListBox& list) { line.add("extent", list.HorizontalExtent.get(), 0); });
    when<ComboBox>(control, [&](const ComboBox& box) {
        line.text("text", box.Text);
        line.flag("editable", box.Editable);
    });
    when<ScrollBar>(control, [&](const ScrollBar& bar) {
        line.add("from", bar.Min.get(), 0);
        line.add("to", bar.Max.get(), 100);
        line.add("value", bar.Value.get(), 0);
    });
    when<FolderBox>(control, [&](const FolderBox& box) { line.text("path", box.Path); });
    when<DriveBox>(control, [&](const DriveBox& box) { line.text("drive", box.Drive); });
    when<FileBox>(control, [&](const FileBox& box) {
        line.text("path", box.Path);
        line.text("pattern", box.Pattern);
    });
    when<MenuItem>(control, [&](const MenuItem& item) {
        line.text("caption", item.Caption);
        line.flag("checkable", item.Checkable);
        line.flag("checked", item.Checked);
        for (const MenuItem* child : item.children) line.text("child", called(*child));
    });
}

}  // namespace

std::string formText(const Form& form) {
    Line first;
    addCommon(first, form);
    first.out() << " style " << static_cast<int>(form.style());
    first.text("caption", form.Caption);
    first.flag("resizable", form.Resizable);
    first.add("minWidth", form.MinWidth, 0.0F);
    first.add("minHeight", form.MinHeight, 0.0F);
    first.flag("noKeyPreview", !form.KeyPreview);
    first.flag("takesFiles", form.OLEDragDrop.isTied());
    std::string text = first.out().str() + '\n';
    for (const Control* control : form.controls()) {
        Line line;
        addCommon(line, *control);
        addMouse(line, *control);
        addFields(line, *control);
        text += line.out().str() + '\n';
    }
    return text;
}

void expectKeptText(const std::string& name, const std::string& text) {
    const std::string path = std::string(CORVANE_SOURCE_DIR) + "/tests/data/forms/" + name + ".txt";
    if (std::getenv("CORVANE_ACCEPT") != nullptr) {
        std::ofstream(path) << text;
        return;
    }
    std::ifstream in(path);
    const std::string kept{std::istreambuf_iterator<char>(in), {}};
    std::istringstream keptLines(kept);
    std::istringstream lines(text);
    std::string keptLine;
    std::string line;
    while (std::getline(keptLines, keptLine) && std::getline(lines, line)) EXPECT_EQ(line, keptLine) << name;
    EXPECT_EQ(text.size(), kept.size()) << name;
}

}  // namespace corvane
