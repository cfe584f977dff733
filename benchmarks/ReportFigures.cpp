#include "Figures.h"
#include "database/Database.h"
#include "office/Error.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "shell/SummaryReport.h"

#include <QTemporaryDir>

#include <cstdio>
#include <limits>

namespace tessaro::bench {

void MeasureSummary(Report& report, const QString& installation) {
    const auto write = [&] {
        const QTemporaryDir folder;
        office::SpreadsheetApplication::SetProfileFolder(folder.filePath(QStringLiteral("Office")));
        if (!OpenDatabaseFile(JoinPath({installation, QStringLiteral("Data/Tessaro World.mdb")})))
            return std::numeric_limits<double>::infinity();
        double time = std::numeric_limits<double>::infinity();
        try {
            QString file;
            const double once = Milliseconds([&] { file = WriteSummaryReport({}); });
            if (!file.isEmpty()) time = once;
        } catch (const office::Error& error) {
            std::fprintf(stderr, "bench: no summary report: %s\n", error.what());
        }
        office::SpreadsheetApplication::QuitAll();
        Connection.reset();
        return time;
    };
    report.Bound("summary report of the sample database, new profile", write, 15000, "ms");
}

} // namespace tessaro::bench
