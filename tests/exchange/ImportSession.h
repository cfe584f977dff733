#pragma once

#include "database/Database.h"
#include "database/UseOfFile.h"
#include "exchange/DraftGuess.h"
#include "exchange/ImportUndo.h"
#include "exchange/ImportWriter.h"
#include "formats/ReadError.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/PlainReader.h"
#include "support/SampleApplication.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <string>
#include <vector>

namespace tessaro::test {

/// A session on a copy of the sample database, and files to be imported.
class ImportSession : public SessionTest {
  protected:
    void SetUp() override {
        StartInstallation();
        MakeSampleDatabase(base_);
        Language = QStringLiteral("English [en]");
        ASSERT_TRUE(OpenDatabaseFile(base_));
        ASSERT_TRUE(QDir().mkpath(Folder() + QStringLiteral("/Out")));
    }

    [[nodiscard]] QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("Values.csv")) const {
        const QString path = Folder() + QLatin1Char('/') + name;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }

    [[nodiscard]] ImportTarget Into(ImportInto into) const {
        return {into, into == ImportInto::Template ? FindPath(DatabaseTemplate()) : base_,
                into == ImportInto::Itself ? base_ : Target(), Language};
    }
    [[nodiscard]] QString Target() const { return Folder() + QStringLiteral("/Out/New.mdb"); }
    [[nodiscard]] QStringList Out() const {
        return QDir(Folder() + QStringLiteral("/Out"))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
    /// What is left in TempFolder of files that wait to be written.
    [[nodiscard]] static QStringList Stages() {
        return QDir(TempFolder).entryList({QStringLiteral("Import_*"), QStringLiteral("Sheet_*")});
    }
    [[nodiscard]] static QByteArray Bytes(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    /// The values of a database in words, in order.
    [[nodiscard]] static std::vector<std::string> Values(const QString& path, const std::string& code = "en") {
        return PlainReader(path.toStdString())
            .Rows("SELECT A.AreaName, T.TimePeriod, I.Indicator, U.Unit, P.Subpop, S.Source, D.Datavalue, F.FootNote "
                  "FROM "
                  "Data D JOIN Area_" +
                  code +
                  " A ON A.AreaNId = D.AreaNId JOIN TimePeriod T ON T.TimePeriodNId = "
                  "D.TimePeriodNId JOIN Indicator_Unit_Subpop C ON C.IUSNId = D.IUSNId JOIN Indicator_" +
                  code + " I ON I.IndicatorGId = C.IndicatorGId JOIN Unit_" + code +
                  " U ON U.UnitGId = C.UnitGId JOIN Subpop_" + code + " P ON P.SubpopGId = C.SubpopGId JOIN Source_" +
                  code +
                  " S ON S.SourceNId = D.SourceNId LEFT "
                  "JOIN Footnote_" +
                  code + " F ON F.FootNoteNId = D.FootnoteNId ORDER BY 1, 2, 3, 4, 5, 6, 7");
    }

    const QString base_ = Folder() + QStringLiteral("/Base.mdb");
};

/// The counts of a check: "new 1, same 2, changed 3, empty 4, refused 5".
[[nodiscard]] inline std::string CountsOf(const CheckedImport& checked) {
    const ImportCounts& counts = checked.counts;
    return "new " + std::to_string(counts.fresh) + ", same " + std::to_string(counts.same) + ", changed " +
           std::to_string(counts.changed) + ", empty " + std::to_string(counts.empty) + ", refused " +
           std::to_string(counts.refused);
}

} // namespace tessaro::test
