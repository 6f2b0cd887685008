// SPDX-License-Identifier: MIT
#include "recordings/NetcdfFile.h"

#include "chart/LevelScale.h"
#include "common/UntrappedError.h"

#include <QFile>

#include <netcdf.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace veldron {

namespace {

/// Higher levels take several times as long for a few percent: levels are noise for the most part.
constexpr int kDeflateLevel = 1;

/// The library takes a path with "://" for an address, and drops blanks in front.
std::string plainPath(const std::string &path) {
    return path.front() == '/' ? path : "./" + path;
}

} // namespace

NetcdfFile::NetcdfFile(const OutputFile &out) : m_out(out) {
    // Chunks are written whole: the library needs no room for them, and as many groups as there
    // are would each take it until the file is closed.
    check(nc_set_chunk_cache(0, 1, 0.0F));
    check(nc_create(plainPath(out.libraryPath()).c_str(), NC_NETCDF4 | NC_CLOBBER, &m_file));
    m_isOpen = true;
}

NetcdfFile::~NetcdfFile() {
    if (m_isOpen) {
        (void)nc_abort(m_file);
    }
}

void NetcdfFile::check(int status) {
    if (status == NC_NOERR) {
        return;
    }
    // After a write that failed, closing the file crashes within the library (4.9.0), at the end of
    // the program too.
    m_isOpen = false;
    (void)::on_exit([](int code, void * /*unused*/) { ::_exit(code); }, nullptr);
    // The library says no more than that its own lower library failed; the system knows why.
    const int code = errno;
    const bool isSystem =
        status > 0 || code == ENOSPC || code == EFBIG || code == EDQUOT || code == EIO;
    const char *const reason =
        isSystem ? std::strerror(status > 0 ? status : code) : nc_strerror(status);
    throw UntrappedError(
        UntrappedError::Kind::File,
        QStringLiteral("%1: %2 (%3 of the scans arrived)")
            .arg(QFile::decodeName(m_out.path().c_str()), QString::fromLocal8Bit(reason))
            .arg(m_scansWritten));
}

void NetcdfFile::putText(int group, int variable, const char *name, const QByteArray &text) {
    check(nc_put_att_text(group, variable, name, static_cast<std::size_t>(text.size()),
                          text.constData()));
}

void NetcdfFile::setAttribute(const char *name, const QString &value) {
    putText(m_file, NC_GLOBAL, name, value.toUtf8());
}

void NetcdfFile::setAttribute(GroupNumber group, const char *name, const QString &value) {
    putText(m_groups[group].id, NC_GLOBAL, name, value.toUtf8());
}

void NetcdfFile::setAttribute(GroupNumber group, const char *name, double value) {
    check(nc_put_att_double(m_groups[group].id, NC_GLOBAL, name, NC_DOUBLE, 1, &value));
}

void NetcdfFile::setAttribute(GroupNumber group, const char *name, qint32 value) {
    check(nc_put_att_int(m_groups[group].id, NC_GLOBAL, name, NC_INT, 1, &value));
}

int NetcdfFile::addVariable(int group, const char *name, int type,
                            const std::vector<int> &dimensions) {
    int variable = 0;
    check(nc_def_var(group, name, type, static_cast<int>(dimensions.size()), dimensions.data(),
                     &variable));
    return variable;
}

void NetcdfFile::compress(int group, int variable, const std::vector<std::size_t> &chunk) {
    check(nc_def_var_chunking(group, variable, NC_CHUNKED, chunk.data()));
    check(nc_def_var_deflate(group, variable, NC_SHUFFLE, 1, kDeflateLevel));
}

void NetcdfFile::addTime(OpenGroup &group, int dimension) {
    group.timeVariable = addVariable(group.id, "time", NC_INT64, {dimension});
    compress(group.id, group.timeVariable, {group.chunkRows});
    const auto put = [&](const char *name, const char *text) {
        putText(group.id, group.timeVariable, name, text);
    };
    put("standard_name", "time");
    put("long_name", "local time of the machine that recorded");
    put("units", "seconds since 1970-01-01 00:00:00");
    put("calendar", "proleptic_gregorian");
    put("axis", "T");
}

void NetcdfFile::addFrequencies(int group, int dimension, const std::vector<double> &frequencies) {
    const int variable = addVariable(group, "frequency", NC_DOUBLE, {dimension});
    putText(group, variable, "standard_name", "radiation_frequency");
    putText(group, variable, "long_name", "frequency");
    putText(group, variable, "units", "Hz");
    check(nc_put_var_double(group, variable, frequencies.data()));
}

void NetcdfFile::addLevels(OpenGroup &group, int timeDimension, int frequencyDimension) {
    group.levelsVariable =
        addVariable(group.id, "levels", NC_UBYTE, {timeDimension, frequencyDimension});
    compress(group.id, group.levelsVariable, {group.chunkRows, group.levelCount});
    putText(group.id, group.levelsVariable, "long_name", "level");
    putText(group.id, group.levelsVariable, "units", "dB");
    const float offset = LevelScale().offset;
    check(nc_put_att_float(group.id, group.levelsVariable, "add_offset", NC_FLOAT, 1, &offset));
}

NetcdfFile::GroupNumber NetcdfFile::addGroup(const Group &group) {
    OpenGroup made{};
    made.levelCount = static_cast<std::size_t>(group.levels);
    made.chunkRows = group.chunkRows;
    int timeDimension = 0;
    int frequencyDimension = 0;
    check(nc_def_grp(m_file, group.name.c_str(), &made.id));
    check(nc_def_dim(made.id, "time", NC_UNLIMITED, &timeDimension));
    check(nc_def_dim(made.id, "frequency", made.levelCount, &frequencyDimension));
    addTime(made, timeDimension);
    addLevels(made, timeDimension, frequencyDimension);
    if (group.frequencies) {
        addFrequencies(made.id, frequencyDimension, *group.frequencies);
    }
    m_groups.push_back(std::move(made));
    return m_groups.size() - 1;
}

void NetcdfFile::append(GroupNumber group, qint64 time, QByteArrayView levels) {
    OpenGroup &target = m_groups[group];
    target.times.push_back(time);
    target.levels.insert(target.levels.end(), levels.begin(), levels.end());
    if (target.times.size() == target.chunkRows) {
        flush(target);
    }
}

void NetcdfFile::flush(OpenGroup &group) {
    const std::array<std::size_t, 2> start{group.written, 0};
    const std::array<std::size_t, 2> count{group.times.size(), group.levelCount};
    check(nc_put_vara_longlong(group.id, group.timeVariable, start.data(), count.data(),
                               group.times.data()));
    check(nc_put_vara_uchar(group.id, group.levelsVariable, start.data(), count.data(),
                            group.levels.data()));
    group.written += group.times.size();
    m_scansWritten += static_cast<qint64>(group.times.size());
    group.times.clear();
    group.levels.clear();
}

void NetcdfFile::finishGroup(GroupNumber group) {
    OpenGroup &target = m_groups[group];
    if (!target.times.empty()) {
        flush(target);
    }
    target.times.shrink_to_fit();
    target.levels.shrink_to_fit();
}

void NetcdfFile::close() {
    // So that nothing is left for the close to write: see check().
    check(nc_sync(m_file));
    m_isOpen = false;
    check(nc_close(m_file));
}

} // namespace veldron
