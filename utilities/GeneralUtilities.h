// SPDX-License-Identifier: MIT
// The free functions behind the panels, the chart and the files, under the one name that they
// share. Whoever needs one topic alone includes that topic's header.
#pragma once

#include "utilities/NumberTexts.h"
#include "utilities/Palette.h"
#include "utilities/Receivers.h"
#include "utilities/TimesOfDay.h"
