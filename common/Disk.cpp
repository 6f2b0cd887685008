// SPDX-License-Identifier: MIT
#include "common/Disk.h"

#include <QFileDevice>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <io.h>
#include <qt_windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#endif

namespace veldron {

namespace {

#ifdef Q_OS_WIN

class SystemDisk final : public Disk {
public:
    QString force(QFileDevice &file) override {
        const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
        return FlushFileBuffers(handle) != 0 ? QString() : qt_error_string();
    }
    /// The system forces the entry together with the file.
    QString forceName(QFileDevice & /*file*/) override { return {}; }
};

#else

/// What is left of the last call's error: a target that knows no forcing is as good as forced.
QString lastError() {
    if (errno == EINVAL || errno == ENOTSUP || errno == EROFS) {
        return {};
    }
    return QString::fromStdString(std::generic_category().message(errno));
}

class SystemDisk final : public Disk {
public:
    QString force(QFileDevice &file) override {
        return ::fdatasync(file.handle()) == 0 ? QString() : lastError();
    }

    QString forceName(QFileDevice &file) override {
        // Behind a link it is the target's name that was made or replaced.
        const QFileInfo named(file);
        const QFileInfo target(named.isSymLink() ? named.symLinkTarget() : file.fileName());
        const QByteArray folder = QFile::encodeName(target.absolutePath());
        const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (descriptor < 0) {
            // A folder that may be written but not read: the system's own time must do.
            return {};
        }
        const QString why = ::fsync(descriptor) == 0 ? QString() : lastError();
        ::close(descriptor);
        return why;
    }
};

#endif

} // namespace

Disk &systemDisk() {
    static SystemDisk disk;
    return disk;
}

} // namespace veldron
