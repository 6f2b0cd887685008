// SPDX-License-Identifier: MIT
// Holds the manual's chapter on recordings to the program.
#include "recordings/Commands.h"

#include "tests/recordings/HistoryRun.h"

#include <QFile>

namespace veldron {
namespace {

class ManualTest : public HistoryRun {
protected:
    void bring(const char *file) const {
        const QString from = QStringLiteral(VELDRON_DOCS "/") + QLatin1String(file);
        ASSERT_TRUE(QFile::copy(from, path(QFileInfo(from).fileName()))) << file;
    }
};

TEST_F(ManualTest, examples_printWhatTheManualShows) {
    for (const char *file :
         {"manual/manual.adoc", "manual/pictures/band.rec", "history-xarray.py"}) {
        bring(file);
    }
    const Result rerun =
        shell(QStringLiteral("cp manual.adoc before && PATH=$(dirname %1):/usr/bin:"
                             "/bin LC_ALL=C.UTF-8 TZ=UTC " VELDRON_DOCS
                             "/manual/run-examples . manual.adoc")
                  .arg(program()));
    EXPECT_EQ(rerun.code, 0) << rerun.error.constData();
    EXPECT_EQ(shell(QStringLiteral("diff -u before manual.adoc")).out.toStdString(), "");
}

TEST_F(ManualTest, everyCommand_hasAnExample) {
    bring("manual/manual.adoc");
    const QByteArray manual = content("manual.adoc");
    for (const CommandRow &row : commandRows()) {
        EXPECT_TRUE(manual.contains(QByteArray("\n$ veldron-history ") + row.name + ' '))
            << row.name;
    }
    for (const char *form : {"--csv", "--netcdf", "--png"}) {
        EXPECT_TRUE(manual.contains(QByteArray("\n$ veldron-history export ") + form)) << form;
    }
}

} // namespace
} // namespace veldron
