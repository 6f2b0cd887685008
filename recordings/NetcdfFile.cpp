// SPDX-License-Identifier: MIT
#include "recordings/NetcdfFile.h"

#include "chart/LevelScale.h"
#include "common/UntrappedError.h"

#include <QFile>

#include <hdf5.h>
#include <hdf5_hl.h>
#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <deque>
#include <future>
#include <new>
#include <thread>
#include <utility>

namespace veldron {

namespace {

using Bytes = std::vector<unsigned char>;

constexpr int kDeflateLevel = 1;
/// Chunks that are compressed at a time, at most: each takes its size twice.
constexpr unsigned kMostThreads = 4;
/// A smaller chunk is compressed and written at once: many groups that each keep some under way
/// take more memory than that saves time.
constexpr std::size_t kWorthAThread = 65536;
/// So many attributes of an object stand in its header. Beyond that they need a heap of their own.
constexpr unsigned kHeaderAttributes = 40;
/// Bytes of the file's own structure that the library keeps. In memory they take some twenty times
/// as much, and left alone it would keep 32 MiB of them.
constexpr std::size_t kMetadataCache = 1 << 18;

/// Compressed in the format of the library's own deflate filter, for which it doesn't offer the
/// choice of a strategy. Levels are noise for the most part: a search for repetitions among them
/// finds none that are worth their codes, so that this takes half the time and the result is
/// smaller by some percent.
Bytes deflated(const Bytes &chunk) {
    z_stream stream{};
    if (deflateInit2(&stream, kDeflateLevel, Z_DEFLATED, MAX_WBITS, MAX_MEM_LEVEL, Z_RLE) != Z_OK) {
        throw std::bad_alloc();
    }
    Bytes packed(deflateBound(&stream, chunk.size()));
    stream.next_in = chunk.data();
    stream.avail_in = static_cast<uInt>(chunk.size());
    stream.next_out = packed.data();
    stream.avail_out = static_cast<uInt>(packed.size());
    (void)::deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    (void)deflateEnd(&stream);
    return packed;
}

/// Properties for making a file, a group or a data set: readers see attributes, and a file's
/// groups, in the order in which they were made.
hid_t propertiesFor(hid_t kind) {
    const hid_t properties = H5Pcreate(kind);
    const unsigned order = H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED;
    H5Pset_attr_creation_order(properties, order);
    H5Pset_attr_phase_change(properties, kHeaderAttributes, 0);
    if (kind != H5P_DATASET_CREATE) {
        H5Pset_link_creation_order(properties, order);
    }
    return properties;
}

hid_t accessProperties() {
    const hid_t properties = H5Pcreate(H5P_FILE_ACCESS);
    H5Pset_libver_bounds(properties, H5F_LIBVER_V18, H5F_LIBVER_V18);
    H5AC_cache_config_t cache{};
    cache.version = H5AC__CURR_CACHE_CONFIG_VERSION;
    H5Pget_mdc_config(properties, &cache);
    cache.set_initial_size = true;
    cache.initial_size = kMetadataCache;
    cache.min_size = kMetadataCache;
    cache.max_size = kMetadataCache;
    H5Pset_mdc_config(properties, &cache);
    return properties;
}

} // namespace

/// Compression of a chunk that is under way.
struct NetcdfFile::Packed {
    std::size_t firstRow;
    std::size_t rows;
    std::future<Bytes> bytes;
};

struct NetcdfFile::OpenGroup {
    explicit OpenGroup(const Group &from)
        : frequencies(from.frequencies), levelCount(static_cast<std::size_t>(from.levels)),
          chunkRows(from.chunkRows) {}

    hid_t id = -1;
    hid_t timeVariable = -1;
    hid_t levelsVariable = -1;
    std::optional<std::vector<double>> frequencies;
    std::size_t levelCount;
    std::size_t chunkRows;
    std::size_t begun = 0; ///< rows that stand before those in memory
    std::vector<qint64> times;
    Bytes levels;
    std::deque<Packed> packed;
};

NetcdfFile::NetcdfFile(OutputFile &out) : m_out(out) {
    // A file that was given up stays open: closing it would write again what just failed, at the
    // end of the program too.
    (void)H5dont_atexit();
    (void)H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    const hid_t creation = propertiesFor(H5P_FILE_CREATE);
    const hid_t access = accessProperties();
    m_file = check(H5Fcreate(out.libraryPath().c_str(), H5F_ACC_TRUNC, creation, access));
    H5Pclose(access);
    H5Pclose(creation);
}

NetcdfFile::~NetcdfFile() = default;

qint64 NetcdfFile::check(qint64 result) const {
    if (result >= 0) {
        return result;
    }
    // The library says no more than that it failed; the system knows why.
    const int code = errno;
    throw UntrappedError(UntrappedError::Kind::File,
                         QStringLiteral("%1: %2 (%3 of the scans arrived)")
                             .arg(QFile::decodeName(m_out.path().c_str()),
                                  QString::fromLocal8Bit(std::strerror(code == 0 ? EIO : code)))
                             .arg(m_scansWritten));
}

void NetcdfFile::putText(qint64 object, const char *name, const QByteArray &text) const {
    const hid_t type = H5Tcopy(H5T_C_S1);
    H5Tset_size(type, static_cast<std::size_t>(qMax<qsizetype>(text.size(), 1)));
    H5Tset_cset(type, H5T_CSET_UTF8);
    const hid_t space = H5Screate(text.isEmpty() ? H5S_NULL : H5S_SCALAR);
    const hid_t made = check(H5Acreate2(object, name, type, space, H5P_DEFAULT, H5P_DEFAULT));
    check(H5Awrite(made, type, text.constData()));
    H5Aclose(made);
    H5Sclose(space);
    H5Tclose(type);
}

void NetcdfFile::putNumber(qint64 object, const char *name, qint64 type, const void *value) const {
    const hsize_t one = 1;
    const hid_t space = H5Screate_simple(1, &one, nullptr);
    const hid_t made = check(H5Acreate2(object, name, type, space, H5P_DEFAULT, H5P_DEFAULT));
    check(H5Awrite(made, type, value));
    H5Aclose(made);
    H5Sclose(space);
}

void NetcdfFile::setAttribute(const char *name, const QString &value) {
    putText(m_file, name, value.toUtf8());
}

void NetcdfFile::setAttribute(GroupNumber group, const char *name, const QString &value) {
    putText(m_groups.at(group)->id, name, value.toUtf8());
}

void NetcdfFile::setAttribute(GroupNumber group, const char *name, double value) {
    putNumber(m_groups.at(group)->id, name, H5T_IEEE_F64LE, &value);
}

void NetcdfFile::setAttribute(GroupNumber group, const char *name, qint32 value) {
    putNumber(m_groups.at(group)->id, name, H5T_STD_I32LE, &value);
}

NetcdfFile::GroupNumber NetcdfFile::addGroup(const Group &group) {
    auto made = std::make_unique<OpenGroup>(group);
    const hid_t creation = propertiesFor(H5P_GROUP_CREATE);
    made->id = check(H5Gcreate2(m_file, group.name.c_str(), H5P_DEFAULT, creation, H5P_DEFAULT));
    H5Pclose(creation);
    m_groups[++m_groupsMade] = std::move(made);
    return m_groupsMade;
}

/// \a shape is that of a chunk where the variable \a isUnlimited in time, of the whole otherwise.
qint64 NetcdfFile::addVariable(const OpenGroup &group, const char *name, qint64 type,
                               const std::vector<std::size_t> &shape, bool isUnlimited) const {
    std::vector<hsize_t> size(shape.begin(), shape.end());
    std::vector<hsize_t> most = size;
    const hid_t creation = propertiesFor(H5P_DATASET_CREATE);
    const hid_t access = H5Pcreate(H5P_DATASET_ACCESS);
    if (isUnlimited) {
        H5Pset_chunk(creation, static_cast<int>(size.size()), size.data());
        H5Pset_deflate(creation, kDeflateLevel);
        // Chunks are written whole, so none needs to be kept.
        H5Pset_chunk_cache(access, 0, 0, 1.0);
        size[0] = 0;
        most[0] = H5S_UNLIMITED;
    }
    const hid_t space = H5Screate_simple(static_cast<int>(size.size()), size.data(), most.data());
    const hid_t made =
        check(H5Dcreate2(group.id, name, type, space, H5P_DEFAULT, creation, access));
    H5Sclose(space);
    H5Pclose(access);
    H5Pclose(creation);
    return made;
}

void NetcdfFile::addTime(OpenGroup &group) const {
    group.timeVariable = addVariable(group, "time", H5T_STD_I64LE, {group.chunkRows}, true);
    const auto put = [&](const char *name, const char *text) {
        putText(group.timeVariable, name, text);
    };
    check(H5DSset_scale(group.timeVariable, "time"));
    put("standard_name", "time");
    put("long_name", "local time of the machine that recorded");
    put("units", "seconds since 1970-01-01 00:00:00");
    put("calendar", "proleptic_gregorian");
    put("axis", "T");
}

void NetcdfFile::addLevels(OpenGroup &group) const {
    group.levelsVariable =
        addVariable(group, "levels", H5T_STD_U8LE, {group.chunkRows, group.levelCount}, true);
    putText(group.levelsVariable, "long_name", "level");
    putText(group.levelsVariable, "units", "dB");
    const float offset = LevelScale().offset;
    putNumber(group.levelsVariable, "add_offset", H5T_IEEE_F32LE, &offset);
}

void NetcdfFile::addFrequencies(OpenGroup &group) const {
    hid_t variable = -1;
    if (group.frequencies) {
        variable = addVariable(group, "frequency", H5T_IEEE_F64LE, {group.levelCount}, false);
        check(H5DSset_scale(variable, "frequency"));
        putText(variable, "standard_name", "radiation_frequency");
        putText(variable, "long_name", "frequency");
        putText(variable, "units", "Hz");
        check(H5Dwrite(variable, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT,
                       group.frequencies->data()));
    } else {
        // How netCDF tells a dimension without a variable: by this very name.
        const QByteArray name =
            "This is a netCDF dimension but not a netCDF variable." +
            QByteArray::number(static_cast<qint64>(group.levelCount)).rightJustified(10, ' ');
        variable = addVariable(group, "frequency", H5T_IEEE_F32BE, {group.levelCount}, false);
        check(H5DSset_scale(variable, name.constData()));
    }
    check(H5DSattach_scale(group.levelsVariable, group.timeVariable, 0));
    check(H5DSattach_scale(group.levelsVariable, variable, 1));
    check(H5Dclose(variable));
}

void NetcdfFile::addVariables(OpenGroup &group) const {
    // A stretch that is shorter than a chunk gets a chunk of its own size.
    group.chunkRows = group.times.size();
    addTime(group);
    addLevels(group);
    addFrequencies(group);
}

void NetcdfFile::append(GroupNumber group, qint64 time, QByteArrayView levels) {
    OpenGroup &target = *m_groups.at(group);
    if (target.times.size() == target.chunkRows) {
        flush(target, false);
    }
    target.times.push_back(time);
    target.levels.insert(target.levels.end(), levels.begin(), levels.end());
}

void NetcdfFile::flush(OpenGroup &group, bool isLast) {
    const std::size_t rows = group.times.size();
    if (group.timeVariable < 0) {
        addVariables(group);
    }
    writeTimes(group);
    static const std::size_t kThreads =
        std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
    if (group.packed.size() == kThreads) {
        writeOldest(group);
    }
    const bool isSmall = group.chunkRows * group.levelCount < kWorthAThread;
    // What is waited for right away needs no thread, of which a recording with many short stretches
    // would start thousands.
    const std::launch policy =
        isSmall || (isLast && group.packed.empty()) ? std::launch::deferred : std::launch::async;
    // The last chunk is a whole one too.
    Bytes chunk = std::exchange(group.levels, {});
    chunk.resize(group.chunkRows * group.levelCount);
    group.levels.reserve(chunk.size());
    group.packed.push_back({group.begun, rows, std::async(policy, [chunk = std::move(chunk)] {
                                return deflated(chunk);
                            })});
    group.begun += rows;
    group.times.clear();
    if (isSmall) {
        writeOldest(group);
    }
}

void NetcdfFile::writeTimes(OpenGroup &group) const {
    const hsize_t start = group.begun;
    const hsize_t count = group.times.size();
    const std::array<hsize_t, 2> size{start + count, group.levelCount};
    check(H5Dset_extent(group.timeVariable, size.data()));
    check(H5Dset_extent(group.levelsVariable, size.data()));
    const hid_t memory = H5Screate_simple(1, &count, nullptr);
    const hid_t file = H5Dget_space(group.timeVariable);
    H5Sselect_hyperslab(file, H5S_SELECT_SET, &start, nullptr, &count, nullptr);
    check(H5Dwrite(group.timeVariable, H5T_NATIVE_INT64, memory, file, H5P_DEFAULT,
                   group.times.data()));
    H5Sclose(file);
    H5Sclose(memory);
}

void NetcdfFile::writeOldest(OpenGroup &group) {
    Packed oldest = std::move(group.packed.front());
    group.packed.pop_front();
    const Bytes bytes = oldest.bytes.get();
    const std::array<hsize_t, 2> place{oldest.firstRow, 0};
    check(H5Dwrite_chunk(group.levelsVariable, H5P_DEFAULT, 0, place.data(), bytes.size(),
                         bytes.data()));
    m_scansWritten += static_cast<qint64>(oldest.rows);
}

void NetcdfFile::finishGroup(GroupNumber group) {
    OpenGroup &target = *m_groups.at(group);
    if (!target.times.empty()) {
        flush(target, true);
    }
    while (!target.packed.empty()) {
        writeOldest(target);
    }
    for (const hid_t variable : {target.timeVariable, target.levelsVariable}) {
        check(H5Dclose(variable));
    }
    check(H5Gclose(target.id));
    m_groups.erase(group);
}

void NetcdfFile::close() {
    check(H5Fclose(m_file));
}

} // namespace veldron
