// SPDX-License-Identifier: MIT
#include "common/Disk.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace veldron {

namespace {

/// The error of the last call. A target that knows no flushing counts as flushed: pipes and devices
/// (EINVAL, EROFS) and some file systems (ENOTSUP).
QString lastError() {
    if (errno == EINVAL || errno == ENOTSUP || errno == EROFS) {
        return {};
    }
    return QString::fromStdString(std::generic_category().message(errno));
}

class SystemDisk final : public Disk {
public:
    QString force(QFileDevice &file) override {
        // Bytes and length are enough. fsync would wait for a second write, of the times of the
        // file.
        return ::fdatasync(file.handle()) == 0 ? QString() : lastError();
    }

    QString forceName(const QString &path) override {
        const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
        const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (descriptor < 0) {
            // A folder that may be written but not read can't be opened for a flush.
            return {};
        }
        const QString why = ::fsync(descriptor) == 0 ? QString() : lastError();
        ::close(descriptor);
        return why;
    }
};

} // namespace

Disk &systemDisk() {
    // Never destroyed: settings are saved by an exit handler too, when the display server is gone,
    // and that one runs behind the destructors of whatever was made after it was set.
    static SystemDisk &disk = *new SystemDisk;
    return disk;
}

} // namespace veldron
