// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/form_host.h"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>
#include <vector>

#include "fake/fake_machine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class SampleForm : public Form {
public:
    explicit SampleForm(int& alive) : Form("frmSample", FormStyle::Dialog), alive_(alive) {
        ++alive_;
        tmrSample.Interval = 10;
    }
    ~SampleForm() override { --alive_; }
    CommandButton cmdGo{this, "cmdGo"};
    Timer tmrSample{this, "tmrSample"};

private:
    int& alive_;
};

/// Says that it is registered where SampleForm is.
struct Other : Form {
    static constexpr FormId kId = FormId::Custom;
    Other() : Form("frmOther", FormStyle::Dialog) {}
};

class Host : public ::testing::Test {
protected:
    Host() {
        forms.registerForm(FormId::Custom, [this] {
            ++made;
            auto form = std::make_unique<SampleForm>(alive);
            if (dress) dress(*form);
            return form;
        });
    }
    SampleForm& sample() { return static_cast<SampleForm&>(*forms.find(FormId::Custom)); }

    FakeMachine machine;
    Ports ports = machine.ports();
    int made = 0;
    int alive = 0;
    std::function<void(SampleForm&)> dress;
    FormHost forms{ports};
};

TEST_F(Host, FindingNeverMakesAForm) {
    EXPECT_EQ(forms.find(FormId::Custom), nullptr);
    EXPECT_EQ(made, 0);
}

/// PANEL-22: The panel is built once a run and stays until its end
/// COM-07: A form is made at its first use, found from then on, and made afresh after it was unloaded
TEST_F(Host, LoadsOnceAndAfterAttaching) {
    Texts seen;
    dress = [&](SampleForm& form) {
        form.Load.tie([&] { seen.push_back(machine.windows.isAttached("frmSample") ? "attached" : "detached"); });
    };
    Form& first = forms.load(FormId::Custom);
    Form& second = forms.load(FormId::Custom);
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(&first, forms.find(FormId::Custom));
    EXPECT_EQ(made, 1);
    EXPECT_EQ(seen, Texts{"attached"});
}

TEST_F(Host, UnloadsAfterItsEventAndDetaches) {
    Texts seen;
    dress = [&](SampleForm& form) {
        form.Unload.tie([&] {
            seen.push_back(machine.windows.isAttached("frmSample") ? "attached" : "detached");
            seen.push_back(forms.find(FormId::Custom) != nullptr ? "found" : "gone");
        });
    };
    forms.load(FormId::Custom);
    forms.unload(FormId::Custom);
    EXPECT_EQ(seen, (Texts{"attached", "found"}));
    EXPECT_EQ(forms.find(FormId::Custom), nullptr);
    EXPECT_FALSE(machine.windows.isAttached("frmSample"));
    EXPECT_EQ(alive, 0);
    forms.unload(FormId::Custom);
    EXPECT_EQ(seen.size(), 2U);
}

/// COM-19: A form that its own handler unloads lives until the handlers around it have ended
TEST_F(Host, AFormUnloadedByItsOwnHandlerLivesUntilThatEnds) {
    forms.load(FormId::Custom);
    bool livedOn = false;
    sample().cmdGo.Click.tie([&] {
        SampleForm& self = sample();
        forms.unload(FormId::Custom);
        EXPECT_EQ(forms.find(FormId::Custom), nullptr);
        self.Caption = "still here";
        livedOn = alive == 1;
    });
    machine.loop.enter([&] { sample().cmdGo.Click.raise(); });
    EXPECT_TRUE(livedOn);
    EXPECT_EQ(alive, 0);
}

/// COM-19
TEST_F(Host, AFormUnloadedInsideNestedHandlersLivesUntilAllEnd) {
    forms.load(FormId::Custom);
    machine.loop.enter([&] {
        machine.loop.enter([&] { forms.unload(FormId::Custom); });
        EXPECT_EQ(alive, 1);
    });
    EXPECT_EQ(alive, 0);
}

TEST_F(Host, AFormUnloadedByItsOwnTimerIsGoneAfterTheTick) {
    forms.load(FormId::Custom);
    int ticks = 0;
    sample().tmrSample.Tick.tie([&] {
        ++ticks;
        forms.unload(FormId::Custom);
        EXPECT_EQ(alive, 1);
    });
    sample().tmrSample.Enabled = true;
    machine.advance(100);
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(machine.timers.running(), 0);
}

/// COM-18: A form may unload itself while it loads, and be loaded again by the handler that unloaded it
TEST_F(Host, AFormMayUnloadItselfWhileItLoads) {
    dress = [&](SampleForm& form) { form.Load.tie([&] { forms.unload(FormId::Custom); }); };
    machine.loop.enter([&] {
        Form& form = forms.load(FormId::Custom);
        form.Caption = "valid until the handler ends";
        EXPECT_EQ(forms.find(FormId::Custom), nullptr);
        EXPECT_EQ(alive, 1);
    });
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(machine.windows.isAttached("frmSample"));
}

TEST_F(Host, AFormMayUnloadItselfWhileItLoadsOutsideAnyHandler) {
    dress = [&](SampleForm& form) { form.Load.tie([&] { forms.unload(FormId::Custom); }); };
    Form& form = forms.load(FormId::Custom);
    EXPECT_EQ(forms.find(FormId::Custom), nullptr);
    EXPECT_FALSE(machine.windows.isAttached("frmSample"));
    ASSERT_EQ(alive, 1) << "what load() gave is still there";
    form.Caption = "valid until the next handler ends";
    machine.loop.enter([] {});
    EXPECT_EQ(alive, 0);
}

/// COM-18
TEST_F(Host, AFormThatUnloadedItselfWhileItLoadsOutlivesTheHandlersThatEndMeanwhile) {
    bool livedOn = false;
    dress = [&](SampleForm& form) {
        form.Load.tie([&] {
            forms.unload(FormId::Custom);
            machine.loop.enter([] {});
            livedOn = alive == 1;
        });
    };
    Form& form = forms.load(FormId::Custom);
    EXPECT_TRUE(livedOn);
    ASSERT_EQ(alive, 1) << "what load() gave is still there";
    form.Caption = "valid until the next handler ends";
    machine.loop.enter([] {});
    EXPECT_EQ(alive, 0);
}

TEST_F(Host, UnloadingInsideUnloadDoesNotRepeatIt) {
    int unloads = 0;
    dress = [&](SampleForm& form) {
        form.Unload.tie([&] {
            ++unloads;
            forms.unload(FormId::Custom);
        });
    };
    forms.load(FormId::Custom);
    forms.unload(FormId::Custom);
    EXPECT_EQ(unloads, 1);
    EXPECT_EQ(alive, 0);
}

/// COM-09: The form that is asked for while it unloads is the old one
TEST_F(Host, AskingForAFormWhileItUnloadsFindsTheOldOne) {
    dress = [&](SampleForm& form) {
        form.Unload.tie([&] { EXPECT_EQ(&forms.load(FormId::Custom), forms.find(FormId::Custom)); });
    };
    forms.load(FormId::Custom);
    forms.unload(FormId::Custom);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(forms.find(FormId::Custom), nullptr);
    EXPECT_EQ(alive, 0);
}

/// COM-07
TEST_F(Host, AnUnloadedFormIsMadeAfresh) {
    forms.load(FormId::Custom);
    sample().Caption = "old";
    forms.unload(FormId::Custom);
    forms.load(FormId::Custom);
    EXPECT_EQ(sample().Caption.get(), "");
    EXPECT_EQ(made, 2);
}

/// COM-18
TEST_F(Host, AFormMayBeLoadedAgainByTheHandlerThatUnloadedIt) {
    forms.load(FormId::Custom);
    sample().cmdGo.Click.tie([&] {
        forms.unload(FormId::Custom);
        forms.load(FormId::Custom);
        EXPECT_EQ(alive, 2);
    });
    machine.loop.enter([&] { sample().cmdGo.Click.raise(); });
    EXPECT_EQ(alive, 1);
    EXPECT_NE(forms.find(FormId::Custom), nullptr);
    EXPECT_TRUE(machine.windows.isAttached("frmSample"));
}

TEST_F(Host, AFormOfAnotherClassThanItsIdSaysIsNotFound) {
    forms.load(FormId::Custom);
    EXPECT_EQ(forms.find<Other>(), nullptr);
    EXPECT_THROW(forms.load<Other>(), std::bad_cast);
}

TEST_F(Host, ClearingRaisesNoUnload) {
    int unloads = 0;
    dress = [&](SampleForm& form) { form.Unload.tie([&] { ++unloads; }); };
    forms.load(FormId::Custom);
    forms.clear();
    EXPECT_EQ(unloads, 0);
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(machine.windows.isAttached("frmSample"));
}

TEST_F(Host, ClearingInsideAHandlerWaitsForItsEnd) {
    forms.load(FormId::Custom);
    machine.loop.enter([&] {
        forms.clear();
        EXPECT_EQ(alive, 1);
    });
    EXPECT_EQ(alive, 0);
}

}  // namespace
}  // namespace corvane
