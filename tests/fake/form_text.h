// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "forms/form.h"

namespace corvane {

/// All that a form says of itself and of its controls, a line each in paint order: place, size, texts, states. What a
/// control has by default is left out.
std::string formText(const Form& form);

/// Fails when the text is not the one kept in tests/data/forms/NAME.txt, and says the first line that differs. With
/// CORVANE_ACCEPT set in the environment the text is kept instead.
void expectKeptText(const std::string& name, const std::string& text);

}  // namespace corvane
