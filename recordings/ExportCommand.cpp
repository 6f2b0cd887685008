// SPDX-License-Identifier: MIT
#include "recordings/ExportCommand.h"

#include "recordings/CsvExport.h"
#include "recordings/NetcdfExport.h"
#include "recordings/OutputFile.h"
#include "recordings/RepeatableInput.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace veldron {

namespace {

/// \a file with \a ending instead of its own.
std::string besideRecording(const std::string &file, const std::string &ending) {
    const std::string own = ".rec";
    const bool isOwn =
        file.size() > own.size() && file.compare(file.size() - own.size(), own.size(), own) == 0;
    return (isOwn ? file.substr(0, file.size() - own.size()) : file) + ending;
}

/// The colour schemes in the order of their codes.
constexpr std::array<const char *, 6> kSchemes{"black-to-white", "white-to-black", "hot-metal",
                                               "rainbow",        "spectrum-5",     "spectrum-6"};
/// More pixels take more memory than most machines have.
constexpr int kLongestSide = 20000;

[[noreturn]] void refuse(const std::string &text, const QString &what) {
    throw CommandError(
        ExitCode::WrongUsage,
        QStringLiteral("\"%1\" is no %2").arg(QString::fromLocal8Bit(text.c_str()), what));
}

QSize sizeOf(const std::string &text) {
    const QStringList sides = QString::fromStdString(text).split(QLatin1Char('x'));
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    if (sides.size() != 2 || size.isEmpty() || qMax(size.width(), size.height()) > kLongestSide) {
        refuse(text, QStringLiteral("size such as 1280x800"));
    }
    return size;
}

std::optional<Hertz> frequencyOf(const std::string &text) {
    if (text.empty()) {
        return std::nullopt;
    }
    QString number = QString::fromStdString(text);
    qint64 factor = 1;
    if (number.endsWith(QLatin1Char('k'))) {
        factor = 1000;
    } else if (number.endsWith(QLatin1Char('M'))) {
        factor = 1000000;
    } else if (number.endsWith(QLatin1Char('G'))) {
        factor = 1000000000;
    }
    if (factor > 1) {
        number.chop(1);
    }
    bool isNumber = false;
    const double value = number.toDouble(&isNumber) * static_cast<double>(factor);
    if (!isNumber || std::abs(value) > 1e11) {
        refuse(text, QStringLiteral("frequency such as 145500000 or 145.5M"));
    }
    return Hertz::fromDouble(value);
}

} // namespace

void ExportCommand::addTo(CommandLine &options) {
    options.option("FILE", m_file, "The recording, - for standard input").required();
    CommandLine form = options.choice("Form");
    const DeclaredOption csv = form.flag(
        "--csv", m_csv, "A row a scan: date, time, low Hz, high Hz, Hz step, samples, dB, dB, ...");
    form.flag("--netcdf", m_netcdf, "netCDF-4 for xarray and others, beside the recording");
    const DeclaredOption png =
        form.flag("--png", m_png, "The waterfall as a picture, beside the recording");
    options.flag("--long", m_long, "With --csv, a row a level: local time, frequency, level")
        .needs(csv);
    addPictureOptions(options, png);
    m_window.addTo(options);
    m_output.addTo(options);
    m_dates.addTo(options);
}

void ExportCommand::addPictureOptions(CommandLine &options, const DeclaredOption &png) {
    options.option("--size", m_size, "With --png, width and height in pixels")
        .called("WxH")
        .showDefault()
        .needs(png);
    options.option("--low", m_low, "With --png, frequency at the left: 145500000 or 145.5M")
        .called("HZ")
        .needs(png);
    options.option("--high", m_high, "With --png, frequency at the right").called("HZ").needs(png);
    options
        .option("--colours", m_colours,
                "With --png, the colour scheme; otherwise that of the recording")
        .oneOf(std::vector<std::string>(kSchemes.begin(), kSchemes.end()))
        .needs(png);
    options
        .flag("--trace", m_trace,
              "With --png, the strongest, median and weakest level over the time")
        .needs(png);
    options.flag("--no-axes", m_noAxes, "With --png, nothing but the waterfall").needs(png);
}

std::string ExportCommand::outputByDefault() const {
    if (m_csv) {
        return "-";
    }
    if (m_file == "-" && m_output.path.empty()) {
        throw CommandError(ExitCode::WrongUsage,
                           QStringLiteral("standard input has no name for the output: give -o"));
    }
    return besideRecording(m_file, m_png ? ".png" : ".nc");
}

std::unique_ptr<RecordingExport> ExportCommand::makeExport(Console &console, OutputFile &out) {
    if (m_netcdf) {
        return std::make_unique<NetcdfExport>(m_file, m_window, console, out);
    }
    using Layout = CsvExport::Layout;
    return std::make_unique<CsvExport>(m_file, m_window, console, out,
                                       m_long ? Layout::Columns : Layout::Rows);
}

PictureOptions ExportCommand::pictureOptions() const {
    PictureOptions picture;
    picture.size = sizeOf(m_size);
    picture.low = frequencyOf(m_low);
    picture.high = frequencyOf(m_high);
    if (!m_colours.empty()) {
        picture.palette = static_cast<qint16>(
            std::find(kSchemes.begin(), kSchemes.end(), m_colours) - kSchemes.begin());
    }
    picture.hasTrace = m_trace;
    picture.hasAxes = !m_noAxes;
    return picture;
}

ExitCode ExportCommand::run(Console &console) {
    m_window.parse();
    return m_png ? exportPicture(console) : exportInOnePass(console);
}

ExitCode ExportCommand::exportPicture(Console &console) {
    const PictureOptions options = pictureOptions();
    const std::unique_ptr<OutputFile> out = m_output.open(outputByDefault(), m_file);
    const RepeatableInput input(m_file, console);
    RecordingExtent extent(m_file, m_window, console);
    const ExitCode code = readRecording(m_file, m_dates.rules(), extent, console);
    extent.finish();
    if (!extent.hasScans()) {
        throw CommandError(ExitCode::Partly,
                           nameForMessages(m_file) + QStringLiteral(": nothing to draw"));
    }
    input.rewind();
    PngExport picture(m_file, m_window, console, *out, options, extent);
    (void)readRecording(m_file, m_dates.rules(), picture, console);
    picture.writePicture();
    out->commit();
    return code;
}

ExitCode ExportCommand::exportInOnePass(Console &console) {
    const std::unique_ptr<OutputFile> out = m_output.open(outputByDefault(), m_file);
    const std::unique_ptr<RecordingExport> target = makeExport(console, *out);
    const ExitCode code = readRecording(m_file, m_dates.rules(), *target, console);
    target->finish();
    out->commit();
    return code;
}

} // namespace veldron
