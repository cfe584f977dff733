#pragma once

struct sqlite3;

namespace jet {

class WorkWatch;

/// Registers the table-valued function jet_scan(plan), whose rows are the groups of a ScanPlan in the order of their
/// codes: their numbers g0 … and their figures a0 …, and the functions that put the figures of several groups together:
/// jet_scansum, jet_scanavg, jet_scanstdev, jet_scanstdevp, jet_scanvar and jet_scanvarp. A statement fails as
/// ColumnsUnfit when the image doesn't stand for the rows of the database any more, or when another way to run it is
/// better; no row has been given then. The watch, which must live as long as the database, can stop it.
void RegisterScans(sqlite3* database, WorkWatch& watch);

} // namespace jet
