#pragma once

#include "BenchSession.h"
#include "HandWritten.h"
#include "Report.h"

/// The groups of figures, each on the session that is open.
namespace tessaro::bench {

/// Every form of the automatic selections. Expects half of everything to be selected.
void MeasureCrossFilters(Report& report, const BenchSession& session);
/// The identifier statement, and its pages in the grid. Expects everything to be selected, and selects less.
void MeasureGrid(Report& report, const BenchSession& session);
/// Statistics and row filters of the data view, to their first rows. Expects everything to be selected, and selects
/// less.
void MeasureDataOptions(Report& report, const BenchSession& session);
/// Making the column image of the values, and what runs on it: counts of the filters, questions of the wizards. Expects
/// everything to be selected.
void MeasureColumns(Report& report, const BenchSession& session);
/// Whether values that share a cell differ in each of the seven fields, in a table of areas and indicators by periods.
void AskSeven();
/// How long statements go on that the user has stopped, those on the image and others. Expects everything to be
/// selected.
void MeasureStops(Report& report, const BenchSession& session);
/// What the column images' step costs where there are none: the installation's own database with fewer values. Opens a
/// copy of it.
void MeasureSmallDatabase(Report& report, const QString& installation);
/// Until the image that the session's connection uses is there; it is made while the program goes on.
void WaitForColumns();
/// A row filter that lets everything pass, each time another one, so that no answer is one that was kept.
[[nodiscard]] QString AnotherFilter();
/// The crosstab of the values in view: areas on the rows, periods and subpopulations on the columns.
[[nodiscard]] QString CrosstabStatement();
/// Selects a million values and reads the crosstab of them.
void ReadMillionAsCrosstab();
/// The crosstab of the table and graph wizards, and the ranges of their colours. Selects what it needs.
void MeasureCrosstabs(Report& report, const BenchSession& session);
/// The working tables of the calculations against plain SQLite, and three calculations up to their logs. Selects what
/// it needs. Needs an X11 display.
void MeasureCalculations(Report& report, const BenchSession& session);
/// The values of a map and their classes. Selects what it needs.
void MeasureMapData(Report& report, const BenchSession& session);
/// A map of all counties of the installation's own database, which it opens.
void MeasureCountyMap(Report& report, const QString& installation);
/// The wizard of maps from the click on its icon to the painted map, in processor time. Opens the installation's own
/// database.
void MeasureFirstMap(Report& report, const QString& installation);
/// The project of a map of all counties, and its table. Opens the installation's own database.
void MeasureProject(Report& report, const QString& installation);
/// The workbook of that map, from the click to the preview. Needs an X11 display.
void MeasureMapWorkbook(Report& report, const QString& installation);
/// Marking what has data, translating statements, opening the database.
void MeasureDatabase(Report& report, const BenchSession& session);
/// The table and the graph wizard, from the click on their options to the preview. Expects everything to be selected,
/// and selects less. Needs an X11 display.
void MeasurePresentations(Report& report);
/// A workbook shown inside a window of ours, with and without the process running. Needs an X11 display.
void MeasureHost(Report& report);
/// The list of a large gallery folder. Needs a session.
void MeasureGallery(Report& report);
/// Drawing and asking layers of the installation, in pictures of 1280 x 800, with outlines.
void MeasureLayers(Report& report, const QString& installation);
/// The labels of a layer of the installation, in such pictures, with rims around the letters.
void MeasureLabels(Report& report, const QString& installation);
/// The summary report of the installation's own database, the start of the spreadsheet program included. Opens that
/// database.
void MeasureSummary(Report& report, const QString& installation);
/// The data view's workbook against a bare conversion of the same rows.
void MeasureExport(Report& report);
/// The program itself: start to first painted frame, the click on the statistics of the installation's own database,
/// and its resident size with the data view open. `self` is this program, which plays it.
void MeasureProgram(Report& report, const QString& self, const QString& database, const QString& installation);
/// The database that a calculation ends with, made by a process of its own, which `self` is.
void MeasureNewDatabase(Report& report, const QString& self, const QString& database, const QString& installation);
/// That process's part: true when the arguments ask for it; the exit status is in `status`.
bool PlayNewDatabase(int argc, char** argv, int& status);
/// A CSV of a million values, checked and written by a process of its own, which `self` is.
void MeasureImport(Report& report, const QString& self, const QString& database, const QString& installation);
/// That process's part: true when the arguments ask for it; the exit status is in `status`.
bool PlayImport(int argc, char** argv, int& status);
/// A whole database written as CSV, and a workbook checked as an import, by processes of their own, which `self` is.
void MeasureExchange(Report& report, const QString& self, const QString& database, const QString& installation);
/// Those processes' part: true when the arguments ask for it; the exit status is in `status`.
bool PlayExchange(int argc, char** argv, int& status);

/// The program's part in MeasureProgram: true when the arguments ask for it; the exit status is in `status`.
bool PlayProgram(int argc, char** argv, int& status);

} // namespace tessaro::bench
