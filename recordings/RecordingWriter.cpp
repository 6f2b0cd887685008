// SPDX-License-Identifier: MIT
#include "recordings/RecordingWriter.h"

#include "format/FileKind.h"

namespace veldron {

void RecordingWriter::put(QByteArrayView bytes) {
    m_out.write(bytes);
    if (m_judge != nullptr) {
        m_judge->take(bytes);
    }
}

void RecordingWriter::firstLine(QByteArrayView line) {
    if (m_hasFirstLine) {
        return;
    }
    m_hasFirstLine = true;
    this->line(line.isEmpty() ? QByteArrayView(kHistoryFile.firstLine) : line);
}

void RecordingWriter::line(QByteArrayView bytes) {
    if (m_lineIsOpen) {
        put("\r\n");
    }
    put(bytes);
    m_lineIsOpen = !bytes.isEmpty() && bytes.back() != '\n' && bytes.back() != '\r';
}

void RecordingWriter::scan(QByteArrayView bytes) {
    line(bytes);
    m_out.countScan();
}

} // namespace veldron
