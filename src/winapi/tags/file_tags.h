// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/file_texts.h"
#include "platform/mci_control.h"

namespace corvane {

/// What a file on a disk says of itself, by our own readers; no cover is looked for. For workers.
FileTexts textsOfFile(const std::wstring& path);

/// By what a sound's samples are multiplied, by its tags; 1 where they say nothing.
float levelOfFile(const std::wstring& path, SoundLevel level);

}  // namespace corvane
