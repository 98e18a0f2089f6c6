// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "forms/form.h"

namespace corvane {

/// The order of a dialog's keys: frames, then each field with its label in front, then what no key reaches.
std::vector<const Control*> tabOrder(const Form& form);

/// What has the keyboard when the dialog is first seen: the first field that can have it; of options the one that is
/// on. Null: none can.
const Control* firstFocused(const Form& form);

/// A label names the field.
bool isLabelled(const Control& field);

}  // namespace corvane
