#include "Figures.h"
#include "jet/engine/ColumnImages.h"
#include "jet/engine/Connection.h"
#include "session/DatabasePassword.h"

#include <filesystem>

namespace tessaro::bench {

namespace {

/// Makes the column image of the values in an empty folder; gives the bytes on disk.
std::uintmax_t MakeImage(const std::string& database, const std::string& folder) {
    std::filesystem::remove_all(folder);
    jet::ColumnImages::Settings settings;
    settings.folder = folder;
    const auto images = std::make_shared<jet::ColumnImages>(std::move(settings));
    const auto connection = jet::Connection::Open(database, DatabasePassword());
    connection->UseColumnImages(images);
    static_cast<void>(connection->Explain("SELECT IUSNId, Count(*) AS Numbers FROM Data GROUP BY IUSNId"));
    images->Wait();
    std::uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder))
        bytes += file.file_size();
    return bytes;
}

constexpr auto kReadByHand = "SELECT RowNId, TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue FROM "
                             "Data NOT INDEXED";

} // namespace

void MeasureColumns(Report& report, const BenchSession& session) {
    const std::string folder = session.working + ".columns";
    {
        const BenchSession::Copies copies = session.CopyForHand();
        HandWritten hand(session.database, copies.selections, copies.working);
        report.Compare(
            "column image of the values made", [&] { MakeImage(session.database, folder); },
            [&] { hand.Walk(kReadByHand); }, 1.5);
    }
    report.Bound(
        "column image on disk", [&] { return static_cast<double>(MakeImage(session.database, folder)) / 1e6; }, 120,
        "MB");
    std::filesystem::remove_all(folder);
}

} // namespace tessaro::bench
