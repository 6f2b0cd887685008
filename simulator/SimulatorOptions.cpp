// SPDX-License-Identifier: MIT
#include "simulator/SimulatorOptions.h"

#include "simulator/UnitConsole.h"

#include <algorithm>
#include <array>

namespace veldron {

namespace {

bool takePort(SimulatorOptions &options, const QString &value) {
    options.port = value;
    return !value.isEmpty();
}

bool takePace(SimulatorOptions &options, const QString &value) {
    bool good = value == QLatin1String("none");
    options.baud = good ? 0 : value.toInt(&good);
    return good && (options.baud > 0 || value == QLatin1String("none"));
}

bool takeBunch(SimulatorOptions &options, const QString &value) {
    bool good = false;
    options.bunch = value.toInt(&good);
    return good && options.bunch > 0;
}

bool takeSeed(SimulatorOptions &options, const QString &value) {
    bool good = false;
    options.seed = value.toULongLong(&good);
    return good;
}

bool takeLog(SimulatorOptions &options, const QString &value) {
    options.logFile = value;
    return !value.isEmpty();
}

struct ValueOption {
    const char *name;
    bool (*take)(SimulatorOptions &, const QString &);
};

constexpr std::array kValueOptions = {
    ValueOption{"--port", takePort},   ValueOption{"--pace", takePace},
    ValueOption{"--bunch", takeBunch}, ValueOption{"--seed", takeSeed},
    ValueOption{"--log", takeLog},
};

struct Switch {
    const char *name;
    bool SimulatorOptions::*flag;
};

constexpr std::array kSwitches = {
    Switch{"--any-byte", &SimulatorOptions::anyByte},
    Switch{"--log-scans", &SimulatorOptions::logScans},
    Switch{"--exit-on-eof", &SimulatorOptions::exitOnEof},
    Switch{"--help", &SimulatorOptions::help},
    Switch{"-h", &SimulatorOptions::help},
};

template <typename Table>
const typename Table::value_type *findNamed(const Table &table, const QString &name) {
    const auto *found = std::find_if(table.begin(), table.end(), [&name](const auto &row) {
        return name == QLatin1String(row.name);
    });
    return found == table.end() ? nullptr : found;
}

} // namespace

std::optional<SimulatorOptions> SimulatorOptions::read(const QStringList &arguments,
                                                       QString &error) {
    SimulatorOptions options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &name = arguments.at(i);
        if (const Switch *found = findNamed(kSwitches, name)) {
            options.*(found->flag) = true;
            continue;
        }
        const ValueOption *found = findNamed(kValueOptions, name);
        if (found == nullptr) {
            error = QStringLiteral("unknown option ") + name;
            return std::nullopt;
        }
        ++i;
        if (i >= arguments.size() || !found->take(options, arguments.at(i))) {
            error = name + QStringLiteral(" needs another value");
            return std::nullopt;
        }
    }
    if (options.port.isEmpty() && !options.help) {
        error = QStringLiteral("--port is missing");
        return std::nullopt;
    }
    return options;
}

QByteArray SimulatorOptions::helpText() {
    return "veldron-simulator --port PATH [options]\n"
           "\n"
           "A simulated unit on a pseudo-terminal, with a symbolic link to it at PATH. Prints\n"
           "\"ready PATH\" once it can be opened; ends on SIGTERM, SIGINT or the line quit.\n"
           "\n"
           "  --port PATH      where to make the link; it is taken away at the end\n"
           "  --pace N         line speed in baud, 11 bits a byte (9600), or none: no waiting\n"
           "  --bunch N        hands bytes over N at a time (1); USB adapters do so with 16\n"
           "  --seed N         another scene (1)\n"
           "  --any-byte       scans hold any byte, also blank, CR and LF\n"
           "  --log FILE       appends each exchange to FILE, with the time\n"
           "  --log-scans      with --log: the samples of each scan too, in hex\n"
           "  --exit-on-eof    ends when standard input does\n"
           "  --help           this text\n"
           "\n"
           "Lines on standard input, each answered on standard output by \"ok\" or\n"
           "\"error: ...\":\n"
           "\n" +
           UnitConsole::helpText();
}

} // namespace veldron
