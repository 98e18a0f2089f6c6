// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/started_program.h"

#include <gtest/gtest.h>

#include "fake/fake_files.h"
#include "program/instance_call.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A place that a test says to be taken or free, and a way that it says to lead to somebody.
class TriedInstance : public Instance {
public:
    explicit TriedInstance(std::size_t mostBytes) : Instance(mostBytes) {}
    using Instance::called;

    std::string elsewhere() const override { return free ? std::string() : place; }

    bool free = true;
    bool answers = true;
    std::string place;
    int asked = 0;
    mutable std::vector<Texts> delivered;

protected:
    bool takePlace() override {
        ++asked;
        return free;
    }
    bool deliver(const std::string& message) const override {
        CallReader reader(mostBytes());
        if (answers && reader.take(message)) delivered.push_back(reader.files());
        return answers;
    }
};

struct StartedPrograms : ::testing::Test {
    StartedPrograms() {
        for (const char* each : {"/a.mid", "/b.mid", "/c.mid"}) files.add(each);
    }
    bool start(CommandLine given) {
        StartedProgram program(std::move(given), "/folder", system);
        return program.onlyInstance([this](const Texts& named, const auto& tell) {
            Texts taken;
            for (const std::string& name : named) {
                if (files.lookUp(name)) {
                    taken.push_back(name);
                } else {
                    tell(name + ": left out");
                }
            }
            return taken;
        });
    }
    CommandLine line(std::string names, Texts opened) {
        CommandLine given;
        given.names = std::move(names);
        given.files = std::move(opened);
        return given;
    }

    CallLog log;
    FakeFiles files{log};
    TriedInstance instance{24};
    Texts told, cleaned;
    StartedProgram::System system{files, instance, [this](const std::string& text) { told.push_back(text); },
                                  [this](const std::string& folder) { cleaned.push_back(folder); }};
};

TEST_F(StartedPrograms, AskForTheirPlaceOnce) {
    instance.free = false;
    EXPECT_FALSE(instance.acquire());
    instance.free = true;
    EXPECT_FALSE(instance.acquire());
    EXPECT_EQ(instance.asked, 1);
}

TEST_F(StartedPrograms, TheOnlyOneClearsUpBehindAKilledOne) {
    EXPECT_TRUE(start({}));
    EXPECT_EQ(cleaned, (Texts{"/folder", "/folder/PANELSET"}));
    EXPECT_TRUE(told.empty());
}

TEST_F(StartedPrograms, TheOnlyOneTellsOfWhatIsLeftOut) {
    EXPECT_TRUE(start(line("/a.mid /gone.mid", {"/b.mid", "/lost.mid"})));
    ASSERT_EQ(told.size(), 2U);
    EXPECT_NE(told[0].find("/gone.mid"), std::string::npos);
    EXPECT_NE(told[1].find("/lost.mid"), std::string::npos);
}

TEST_F(StartedPrograms, ALaterOneHandsItsFilesOverAndClearsNothingUp) {
    instance.free = false;
    EXPECT_FALSE(start(line("", {"/a.mid", "/b.mid"})));
    EXPECT_EQ(instance.delivered, std::vector<Texts>{(Texts{"/a.mid", "/b.mid"})});
    EXPECT_TRUE(cleaned.empty() && told.empty());
}

/// DESK-08: A start that finds the player running in another session of the user hands nothing over, and says where
/// it
///     runs
TEST_F(StartedPrograms, ALaterOneInAnotherSessionCallsNobodyAndSaysWhere) {
    instance.free = false;
    instance.place = ":7";
    StartedProgram program(line("", {"/a.mid"}), "/folder", system);
    EXPECT_FALSE(program.onlyInstance([](const Texts& named, const auto&) { return named; }));
    EXPECT_TRUE(instance.delivered.empty());
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("on :7"), std::string::npos);
    EXPECT_EQ(program.seenElsewhere(), told[0]);
}

TEST_F(StartedPrograms, ALaterOneWithoutFilesIsACallAllTheSame) {
    instance.free = false;
    EXPECT_FALSE(start({}));
    EXPECT_EQ(instance.delivered, std::vector<Texts>{Texts{}});
}

TEST_F(StartedPrograms, OfALaterOneNamesAloneAreToldAndStayWithIt) {
    instance.free = false;
    EXPECT_FALSE(start(line("/a.mid", {})));
    EXPECT_EQ(instance.delivered, std::vector<Texts>{Texts{}});
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("--open: /a.mid"), std::string::npos);
}

/// DROP-21
TEST_F(StartedPrograms, FilesThatAllAreLeftOutAreHandedOverToBeTold) {
    instance.free = false;
    EXPECT_FALSE(start(line("", {"/gone.mid"})));
    EXPECT_EQ(instance.delivered, std::vector<Texts>{Texts{"/gone.mid"}});
    EXPECT_EQ(told.size(), 1U);
    EXPECT_FALSE(start(line("", {"/gone.mid", "/a.mid"})));
    EXPECT_EQ(instance.delivered.back(), (Texts{"/a.mid", "/gone.mid"}));
    told.clear();
    Texts many(40, "");
    many.insert(many.end(), 40, "x");
    many.emplace_back("/a.mid");
    EXPECT_FALSE(start(line("", many)));
    EXPECT_EQ(instance.delivered.back().front(), "/a.mid");
    EXPECT_EQ(instance.delivered.back().size(), 9U) << "they take no room from the others";
}

TEST_F(StartedPrograms, WhatDoesNotFitIsCounted) {
    instance.free = false;
    EXPECT_FALSE(start(line("", {"/a.mid", "/b.mid", "/c.mid", "/a.mid"})));
    ASSERT_EQ(instance.delivered.size(), 1U);
    EXPECT_EQ(instance.delivered[0].size(), 3U);
    EXPECT_EQ(told, Texts{"More files than can be handed over; the last 1 are left out."});
    EXPECT_FALSE(instance.call({"/a.mid", "/b.mid", "/c.mid", "/a.mid"}));
    EXPECT_EQ(instance.delivered.size(), 1U) << "nothing is sent of what does not fit";
}

TEST_F(StartedPrograms, ASilentFirstOneIsTold) {
    instance.free = instance.answers = false;
    EXPECT_FALSE(start(line("", {"/a.mid"})));
    EXPECT_EQ(told, Texts{"The player that runs does not answer."});
}

TEST_F(StartedPrograms, OptionsThatThereAreNotAreTold) {
    CommandLine given;
    given.unknown = {"--opne"};
    EXPECT_TRUE(start(given));
    EXPECT_EQ(told, Texts{"--opne: there is no such option"});
}

TEST_F(StartedPrograms, ACallReachesWhoListensAndNobodyElse) {
    instance.called({"/a.mid"});
    std::vector<Texts> got;
    instance.onCall([&](const Texts& call) { got.push_back(call); });
    instance.called({"/b.mid"});
    instance.called({});
    EXPECT_EQ(got, (std::vector<Texts>{{"/b.mid"}, {}}));
}

TEST_F(StartedPrograms, EndOnce) {
    StartedProgram program({}, "/folder", system);
    int ends = 0;
    program.onEnd([&] {
        ++ends;
        program.end();
    });
    EXPECT_FALSE(program.ending());
    program.end();
    program.end();
    EXPECT_TRUE(program.ending());
    EXPECT_EQ(ends, 1);
}

}  // namespace
}  // namespace corvane
