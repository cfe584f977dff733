#include "TestPlaces.h"
#include "exchange/DatabaseRows.h"
#include "exchange/ImportSession.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

/// A session on the database that the program comes with.
class DatabaseRoundTripTest : public ImportSession {
  protected:
    void SetUp() override {
        ImportSession::SetUp();
        ASSERT_TRUE(OpenDatabaseFile(sample_));
    }
    const QString sample_ = FindPath(QStringLiteral(TESSARO_INSTALLATION "/Data/Tessaro World.mdb"));
};

// Every form that is also read brings each value of a whole database back, with its footnote where it holds these.
TEST_F(DatabaseRoundTripTest, EveryFormBringsAllValuesBack) {
    const std::int64_t values = PlainReader(sample_.toStdString()).Number("SELECT Count(*) FROM Data");
    ASSERT_GT(values, 350'000);
    for (const char* name : {"All.csv", "All.wide.csv", "All.sdmx.csv", "All.json", "All.px"}) {
        const QString file = Folder() + QLatin1Char('/') + QLatin1String(name);
        DatabaseRows rows;
        ValueLosses losses;
        const ValueTable table{rows.Count(), [&rows](int number) { return rows.At(number); },
                               [&losses](const ValueLosses& told) { losses = told; }};
        ASSERT_EQ(rows.Count(), values);
        ASSERT_TRUE(ValueFormOf(file)->save(file, table)) << name;
        EXPECT_EQ(losses.texts + losses.doubles, 0) << name;
        ImportTarget target = Into(ImportInto::Copy);
        target.base = sample_;
        const ImportDraft draft = GuessDraft(file);
        ASSERT_EQ(ProblemOf(draft), QString()) << name;
        const auto checked = CheckImport(file, draft, target);
        EXPECT_EQ(checked->counts.same, values) << name;
        EXPECT_EQ(checked->counts.fresh + checked->counts.changed + checked->counts.refused, 0)
            << name << ": " << CountsOf(*checked);
        QFile::remove(file);
    }
}

} // namespace
} // namespace tessaro::test
