# SPDX-License-Identifier: MIT
# Precompiled headers: what nearly every source of a kind includes, compiled once a build tree and
# reused by all targets of that kind. Sources still include what they use: the linter's build tree
# has precompiled headers switched off, and so finds an include that is missing.

set(VELDRON_PCH_STANDARD <algorithm> <array> <cmath> <functional> <limits> <map> <memory> <optional>
    <span> <string> <utility> <vector>)
set(VELDRON_PCH_core <QByteArray> <QDateTime> <QFile> <QFileInfo> <QLocale> <QString> <QStringList>
    ${VELDRON_PCH_STANDARD})
set(VELDRON_PCH_widgets <QApplication> <QComboBox> <QDialog> <QFrame> <QGridLayout> <QImage> <QLabel>
    <QLineEdit> <QMouseEvent> <QPainter> <QPushButton> <QTimer> ${VELDRON_PCH_core})
set(VELDRON_PCH_unit_test ${VELDRON_PCH_core} <QTemporaryDir> <gtest/gtest.h>)
set(VELDRON_PCH_widget_test ${VELDRON_PCH_widgets} <QTemporaryDir> <QSignalSpy> <QTest>
    <gtest/gtest.h>)
set(VELDRON_PCH_program_test ${VELDRON_PCH_core} <QImage> <QProcess> <QTemporaryDir> <gtest/gtest.h>)

# veldron_precompile(<target> <kind>): the first target of a kind compiles the header, the others
# reuse it; all of them must have the same flags and definitions.
function(veldron_precompile target kind)
    get_property(owner GLOBAL PROPERTY VELDRON_PCH_OWNER_${kind})
    if(owner)
        target_precompile_headers(${target} REUSE_FROM ${owner})
    else()
        target_precompile_headers(${target} PRIVATE ${VELDRON_PCH_${kind}})
        set_property(GLOBAL PROPERTY VELDRON_PCH_OWNER_${kind} ${target})
    endif()
endfunction()
