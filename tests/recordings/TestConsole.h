// SPDX-License-Identifier: MIT
// A console whose messages a test can read.
#pragma once

#include "recordings/Console.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryFile>

namespace veldron {

/// The file that stands for standard error.
class ConsoleText {
protected:
    ConsoleText() { (void)m_file.open(); }
    QTemporaryFile m_file;
};

class TestConsole : private ConsoleText, public Console {
public:
    TestConsole() : Console(m_file.handle(), false, [] { return qint64{0}; }) {}

    /// All that was said so far.
    [[nodiscard]] QByteArray said() const {
        QFile file(m_file.fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
};

} // namespace veldron
