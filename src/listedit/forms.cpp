// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/forms.h"

#include <memory>

#include "listedit/frmFileList.h"

namespace corvane {

void registerListEditForms(Player& player) {
    player.forms.registerForm(FormId::FileList, [&player] { return std::make_unique<frmFileList>(player); });
}

}  // namespace corvane
