// SPDX-License-Identifier: GPL-3.0-or-later
// The keys that a field of a dialog leaves to its form.
#include "unit/shell/native_rig.h"

namespace corvane {
namespace {

using FieldKeys = test::NativeFormRig;

/// FIND-13
TEST_F(FieldKeys, AFieldHandsArrowsToAFormThatWantsThem) {
    TextBox plain(&form, "txtPlain");
    TextBox box(&form, "txtTried");
    std::vector<int> keys;
    box.KeyDown.tie([&](const KeyArgs& key) { keys.push_back(key.keyCode); });
    bind();
    EXPECT_FALSE(surface.of<FakeField>(plain).events.fieldKey({kKeyDown, 0})) << "nobody wants them there";
    EXPECT_TRUE(surface.of<FakeField>(box).events.fieldKey({kKeyDown, 0}));
    EXPECT_EQ(keys, std::vector<int>{kKeyDown});
    auto& shown = surface.of<FakeField>(box);
    unbind();
    EXPECT_FALSE(shown.events.fieldKey({kKeyUp, 0}));
    EXPECT_EQ(keys.size(), 1U);
}

}  // namespace
}  // namespace corvane
