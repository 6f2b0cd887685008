// SPDX-License-Identifier: MIT
#include "recordings/Console.h"

#include <QElapsedTimer>
#include <QFile>

#include <memory>
#include <unistd.h>
#include <utility>

namespace veldron {

namespace {

constexpr qint64 kPatience = 1000;
constexpr qint64 kDrawEvery = 100;

Console::Milliseconds steadyClock() {
    auto timer = std::make_shared<QElapsedTimer>();
    timer->start();
    return [timer] {
        return timer->elapsed();
    };
}

QString barText(double share, qint64 remaining) {
    constexpr int kWidth = 40;
    const int filled = static_cast<int>(share * kWidth);
    const qint64 seconds = (remaining + 999) / 1000;
    return QStringLiteral("[%1%2] %3 %, %4:%5 left")
        .arg(QString(filled, QLatin1Char('#')), QString(kWidth - filled, QLatin1Char('.')))
        .arg(static_cast<int>(share * 100.0))
        .arg(seconds / 60)
        .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

QString nameForMessages(const std::string &path) {
    return path == "-" ? QStringLiteral("standard input") : QFile::decodeName(path.c_str());
}

Console::Console() : Console(STDERR_FILENO, ::isatty(STDERR_FILENO) == 1, steadyClock()) {}

Console::Console(int descriptor, bool isTerminal, Milliseconds clock)
    : m_descriptor(descriptor), m_isTerminal(isTerminal), m_clock(std::move(clock)) {}

void Console::write(const QString &text) {
    const QByteArray bytes = text.toLocal8Bit();
    // Nobody can be told that standard error fails.
    (void)!::write(m_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void Console::complain(const std::string &file, qint64 line, const QString &what) {
    say(QStringLiteral("%1:%2: %3").arg(nameForMessages(file), QString::number(line), what));
}

void Console::say(const QString &text) {
    wipe();
    write(text + QLatin1Char('\n'));
}

void Console::beginProgress(std::optional<qint64> total) {
    m_total = total;
    m_begun = m_clock();
    m_nextDrawing = m_begun + kPatience;
}

void Console::progress(qint64 done) {
    if (!m_isTerminal) {
        return;
    }
    if (const qint64 now = m_clock(); now >= m_nextDrawing) {
        m_nextDrawing = now + kDrawEvery;
        draw(done, now);
    }
}

void Console::draw(qint64 done, qint64 now) {
    QString text = QStringLiteral("%1 MB").arg(done / 1000000);
    if (m_total && *m_total > 0 && done > 0) {
        const double share = qMin(1.0, static_cast<double>(done) / static_cast<double>(*m_total));
        const double spent = static_cast<double>(now - m_begun);
        text = barText(share, static_cast<qint64>(spent / share - spent));
    }
    write(QLatin1Char('\r') + text + QStringLiteral("\033[K"));
    m_isDrawn = true;
}

void Console::wipe() {
    if (std::exchange(m_isDrawn, false)) {
        write(QStringLiteral("\r\033[K"));
    }
}

void Console::endProgress() {
    wipe();
}

} // namespace veldron
