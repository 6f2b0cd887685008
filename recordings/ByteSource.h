// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>
#include <string>

namespace veldron {

/// Where a recording's bytes come from, strictly forward.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource &) = delete;
    ByteSource &operator=(const ByteSource &) = delete;
    virtual ~ByteSource() = default;

    /// Up to \a most bytes to \a target, with the count as the result: 0 at the end only, and fewer
    /// than asked for at any time. Waits where the source is a pipe. UntrappedError(File) when they
    /// can't be read.
    [[nodiscard]] virtual qint64 read(char *target, qint64 most) = 0;
};

/// A file, a pipe or the standard input.
class FileSource : public ByteSource {
public:
    /// Opens \a path, whose bytes are the system's; "-" is the standard input.
    /// UntrappedError(File) where that can't be read.
    explicit FileSource(const std::string &path);
    ~FileSource() override;

    [[nodiscard]] qint64 read(char *target, qint64 most) override;
    /// Bytes in all; nothing of a pipe or a terminal.
    [[nodiscard]] std::optional<qint64> size() const { return m_size; }
    /// Whether it is the file that stands under \a path now.
    [[nodiscard]] bool isFile(const std::string &path) const;

private:
    std::string m_path;
    int m_descriptor = -1;
    std::optional<qint64> m_size;
};

} // namespace veldron
