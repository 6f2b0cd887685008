// SPDX-License-Identifier: MIT
#include "recordings/Commands.h"

#include "recordings/CheckCommand.h"
#include "recordings/CutCommand.h"
#include "recordings/ExportCommand.h"
#include "recordings/InfoCommand.h"
#include "recordings/JoinCommand.h"
#include "recordings/RepairCommand.h"

#include <array>

namespace veldron {

namespace {

template <typename Command>
std::unique_ptr<HistoryCommand> make() {
    return std::make_unique<Command>();
}

constexpr std::array kRows{
    CommandRow{"info", "Tell what is in a recording", "veldron-history info band.rec",
               make<InfoCommand>},
    CommandRow{"export", "Hand a recording on to other programs",
               "veldron-history export --csv band.rec -o band.csv", make<ExportCommand>},
    CommandRow{"check", "Tell whether playback would show a recording to its end",
               "veldron-history check band.rec", make<CheckCommand>},
    CommandRow{"cut", "Make a recording of a part of one",
               "veldron-history cut --from 14:00 --to 15:30 band.rec -o part.rec",
               make<CutCommand>},
    CommandRow{"join", "Make one recording of several",
               "veldron-history join monday.rec tuesday.rec -o both.rec", make<JoinCommand>},
    CommandRow{"repair", "Make a copy that playback shows to its end",
               "veldron-history repair band.rec mended.rec", make<RepairCommand>},
};

} // namespace

std::span<const CommandRow> commandRows() {
    return kRows;
}

} // namespace veldron
