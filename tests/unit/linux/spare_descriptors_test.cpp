// SPDX-License-Identifier: GPL-3.0-or-later
#include "drives/spare_descriptors.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <optional>
#include <vector>

#include "drives/plain_file.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

/// A process whose table of descriptors is full.
class FullTable {
public:
    FullTable() {
        EXPECT_TRUE(SpareDescriptors::keep());
        getrlimit(RLIMIT_NOFILE, &before_);
        rlimit low = before_;
        low.rlim_cur = 128;
        setrlimit(RLIMIT_NOFILE, &low);
        for (int one = dup(STDERR_FILENO); one >= 0; one = dup(STDERR_FILENO)) taken_.emplace_back(one);
    }
    FullTable(const FullTable&) = delete;
    FullTable& operator=(const FullTable&) = delete;
    ~FullTable() { setrlimit(RLIMIT_NOFILE, &before_); }

    bool hasRoom() const { return static_cast<bool>(Descriptor(dup(STDERR_FILENO))); }
    void giveUpOne() { taken_.pop_back(); }

private:
    rlimit before_{};
    std::vector<Descriptor> taken_;
};

TEST(SpareDescriptors, AreLentWhereNoneIsLeftAndTakenBack) {
    FullTable table;
    ASSERT_FALSE(table.hasRoom());
    EXPECT_FALSE(SpareDescriptors::lent());
    {
        const SpareDescriptors::Loan loan;
        EXPECT_TRUE(table.hasRoom());
        EXPECT_TRUE(SpareDescriptors::lent());
        {
            const SpareDescriptors::Loan inside;
            EXPECT_TRUE(table.hasRoom());
        }
        EXPECT_TRUE(table.hasRoom()) << "the outer loan goes on";
    }
    EXPECT_FALSE(table.hasRoom());
    EXPECT_FALSE(SpareDescriptors::lent());
}

/// FAULT-69: With few descriptors left a window has its own, whatever another thread takes while it is drawn
TEST(SpareDescriptors, AreLentWhereTheLastOnesMayBeTakenByAnother) {
    FullTable table;
    table.giveUpOne();
    {
        const SpareDescriptors::Loan loan;
        EXPECT_TRUE(SpareDescriptors::lent());
        const Descriptor another(dup(STDERR_FILENO));
        EXPECT_TRUE(table.hasRoom());
    }
    EXPECT_FALSE(SpareDescriptors::lent());
    EXPECT_TRUE(table.hasRoom()) << "the one that was free before";
}

TEST(SpareDescriptors, WhatWasKeptInTheMeantimeComesBackWithRoom) {
    FullTable table;
    std::vector<Descriptor> leaked;
    {
        const SpareDescriptors::Loan loan;
        for (int one = dup(STDERR_FILENO); one >= 0; one = dup(STDERR_FILENO)) leaked.emplace_back(one);
    }
    { const SpareDescriptors::Loan loan; }  // there is nothing to lend
    leaked.clear();
    { const SpareDescriptors::Loan loan; }
    {
        Descriptor last;
        for (int one = dup(STDERR_FILENO); one >= 0; one = dup(STDERR_FILENO)) leaked.emplace_back(one);
        const SpareDescriptors::Loan loan;
        EXPECT_TRUE(table.hasRoom()) << "they were taken again";
    }
}

TEST(SpareDescriptors, NoFileIsOpenedWithThem) {
    test::TemporaryFolder folder;
    folder.write("file", "bytes");
    FullTable table;
    EXPECT_EQ(openPlainFile(folder.in("file")).reason, SpareDescriptors::kNoneLeft);
    {
        const SpareDescriptors::Loan loan;
        const PlainFile refused = openPlainFile(folder.in("file"));
        EXPECT_FALSE(refused.descriptor);
        EXPECT_EQ(refused.reason, SpareDescriptors::kNoneLeft);
        EXPECT_TRUE(table.hasRoom()) << "it is closed again";
    }
    table.giveUpOne();
    EXPECT_TRUE(openPlainFile(folder.in("file")).descriptor) << "one is left, and nothing is drawn";
    for (int more = 0; more < 6; ++more) table.giveUpOne();
    const SpareDescriptors::Loan loan;
    EXPECT_TRUE(openPlainFile(folder.in("file")).descriptor) << "enough are left: nothing needs to be lent";
}

TEST(SpareDescriptors, AReasonIsNotTrueWhereNoneIsLeft) {
    EXPECT_STREQ(SpareDescriptors::reason("It is not there."), "It is not there.");
    const FullTable table;
    EXPECT_STREQ(SpareDescriptors::reason("It is not there."), SpareDescriptors::kNoneLeft);
}

}  // namespace
}  // namespace corvane
