// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fluidsynth.h>

namespace corvane {

// The functions in use.
#define CORVANE_FLUIDSYNTH(X)       \
    X(fluid_version_str)            \
    X(new_fluid_settings)           \
    X(delete_fluid_settings)        \
    X(fluid_settings_setnum)        \
    X(fluid_settings_setint)        \
    X(fluid_set_log_function)       \
    X(new_fluid_defsfloader)        \
    X(delete_fluid_sfloader)        \
    X(fluid_sfloader_set_callbacks) \
    X(new_fluid_synth)              \
    X(delete_fluid_synth)           \
    X(fluid_synth_add_sfloader)     \
    X(fluid_synth_sfload)           \
    X(fluid_synth_system_reset)     \
    X(fluid_synth_noteon)           \
    X(fluid_synth_noteoff)          \
    X(fluid_synth_key_pressure)     \
    X(fluid_synth_cc)               \
    X(fluid_synth_program_change)   \
    X(fluid_synth_channel_pressure) \
    X(fluid_synth_pitch_bend)       \
    X(fluid_synth_sysex)            \
    X(fluid_synth_write_float)

/// The synthesizer's library, loaded when the first sequence is opened.
struct FluidLibrary {
#define CORVANE_DECLARE(name) decltype(&::name) name = nullptr;
    CORVANE_FLUIDSYNTH(CORVANE_DECLARE)
#undef CORVANE_DECLARE
};

/// Loads the library at the first call, and tries again while it could not; any thread. False: it is not there.
bool loadFluid();
/// Its functions, after loadFluid() succeeded.
const FluidLibrary& fluid();

}  // namespace corvane
