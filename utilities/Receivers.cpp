// SPDX-License-Identifier: MIT
#include "utilities/Receivers.h"

#include "utilities/MagicStatics.h"

#include <cstddef>

namespace veldron::GeneralUtilities {

namespace {

const MagicStatics::Receiver *findReceiver(qint16 code) {
    if (code < 1 || static_cast<std::size_t>(code) > MagicStatics::kReceivers.size()) {
        return nullptr;
    }
    return &MagicStatics::kReceivers[static_cast<std::size_t>(code) - 1];
}

} // namespace

QString ModeName(qint16 Code) {
    if (Code < 1 || static_cast<std::size_t>(Code) > MagicStatics::kModeNames.size()) {
        return QString::fromUtf16(MagicStatics::kNoName);
    }
    return QString::fromUtf16(MagicStatics::kModeNames[static_cast<std::size_t>(Code) - 1]);
}

qint16 ModeCode(const QString &Name) {
    for (std::size_t i = 0; i < MagicStatics::kModeNames.size(); ++i) {
        if (Name == QStringView(MagicStatics::kModeNames[i])) {
            return static_cast<qint16>(i + 1);
        }
    }
    return 0;
}

QString ReceiverName(qint16 Code) {
    const MagicStatics::Receiver *receiver = findReceiver(Code);
    return QString::fromUtf16(receiver != nullptr ? receiver->name : MagicStatics::kNoName);
}

qint16 ReceiverCode(const QString &Name) {
    for (std::size_t i = 0; i < MagicStatics::kReceivers.size(); ++i) {
        if (Name == QStringView(MagicStatics::kReceivers[i].name)) {
            return static_cast<qint16>(i + 1);
        }
    }
    return 0;
}

QVariantList ReceiverTable(qint16 Code) {
    QVariantList table = {ReceiverName(Code)};
    if (const MagicStatics::Receiver *receiver = findReceiver(Code)) {
        for (const qint16 mode : receiver->modes) {
            table.append(QVariant::fromValue(mode));
        }
    }
    return table;
}

bool HasAttenuator(qint16 Code) {
    const MagicStatics::Receiver *receiver = findReceiver(Code);
    return receiver != nullptr && receiver->hasAttenuator;
}

} // namespace veldron::GeneralUtilities
