// SPDX-License-Identifier: MIT
#include "recordings/RecordingRun.h"

#include "recordings/ByteSource.h"
#include "recordings/RecordingReader.h"

namespace veldron {

namespace {

/// Tells the console how far the file is read.
class WatchedSource : public ByteSource {
public:
    WatchedSource(const std::string &path, Console &console) : m_file(path), m_console(console) {
        m_console.beginProgress(m_file.size());
    }
    ~WatchedSource() override { m_console.endProgress(); }
    WatchedSource(const WatchedSource &) = delete;
    WatchedSource &operator=(const WatchedSource &) = delete;

    [[nodiscard]] qint64 read(char *target, qint64 most) override {
        const qint64 count = m_file.read(target, most);
        m_done += count;
        m_console.progress(m_done);
        return count;
    }

private:
    FileSource m_file;
    Console &m_console;
    qint64 m_done = 0;
};

/// Passes everything on and notes whether all of the file was understood.
class WatchingVisitor : public RecordingVisitor {
public:
    explicit WatchingVisitor(RecordingVisitor &target) : m_target(target) {}

    void bytes(QByteArrayView bytes) override { m_target.bytes(bytes); }
    void firstLine(QByteArrayView bytes) override { m_target.firstLine(bytes); }
    void scan(const RecordedScan &scan) override { m_target.scan(scan); }
    void block(const RecordedBlock &block) override { m_target.block(block); }
    void finding(const RecordingFinding &finding) override {
        isPartly = isPartly || finding.skipped > 0 ||
                   finding.kind == RecordingFinding::Kind::DateOrderRefuted ||
                   finding.kind == RecordingFinding::Kind::BadDate;
        m_target.finding(finding);
    }

    bool isPartly = false;

private:
    RecordingVisitor &m_target;
};

} // namespace

ExitCode readRecording(const std::string &path, const RecordingDates::Rules &rules,
                       RecordingVisitor &visitor, Console &console) {
    WatchedSource source(path, console);
    WatchingVisitor watching(visitor);
    RecordingReader reader(source, watching, rules);
    reader.read();
    if (!reader.isRecording()) {
        throw CommandError(ExitCode::NotARecording,
                           nameForMessages(path) + QStringLiteral(": this is not a recording"));
    }
    return watching.isPartly ? ExitCode::Partly : ExitCode::Done;
}

} // namespace veldron
