// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/SceneSignal.h"

#include <vector>

namespace veldron {

/// All transmitters between 0 and 3.5 GHz, in ascending frequency: what a listener expects in each
/// band, with the places and strengths that \a seed deals out, and something everywhere.
[[nodiscard]] std::vector<SceneSignal> sceneSignals(quint64 seed);

} // namespace veldron
