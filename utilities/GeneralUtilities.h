// SPDX-License-Identifier: MIT
// The free functions behind the panels, the chart and the files, under the one name that they
// share. A source that needs one topic includes that topic's header alone.
#pragma once

#include "utilities/NumberTexts.h"
#include "utilities/Palette.h"
#include "utilities/Receivers.h"
#include "utilities/TimesOfDay.h"
