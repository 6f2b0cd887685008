// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron::ProgramFolder {

/// The folder that holds the default settings file and that file dialogs start in: the folder of
/// the executable if the user may write there, otherwise the user's application data folder, which
/// is made if it is missing. Needs a QCoreApplication.
[[nodiscard]] QString path();

/// The rule behind path(), with both candidates given.
[[nodiscard]] QString choose(const QString &executableFolder, const QString &userFolder);

} // namespace veldron::ProgramFolder
