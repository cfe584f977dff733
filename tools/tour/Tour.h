#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace tessaro {

class frmCalculates;
class frmMain;

/// Answers every question with Yes and closes every message, since nobody is there; each is told on the output.
void AgreeToQuestions();

/// Walks the main job on the program's own window as a user would, with mouse and keys on controls that are found by
/// their names, and leaves a picture and a line in the summary for each station.
class Tour final {
  public:
    /// `language` is its name in the menu without the code; empty for that of a first start.
    Tour(frmMain& frame, QDir folder, QString language = {});

    /// Starts the program, visits all stations and closes it. True when each showed what it should.
    bool Walk(const QString& commandLine);

  private:
    /// What a station found: whether it is right, and the figure to tell.
    struct Finding {
        bool good = false;
        QString text;
    };

    void Visit(const QString& name, const std::function<Finding()>& station, bool picture = true);
    void TakePicture(const QString& name) const;
    /// The whole screen, where a window of another program is seen too.
    void TakeScreenPicture(const QString& name) const;
    bool WriteSummary() const;

    Finding Home(const QString& commandLine);
    bool ChooseLanguage() const;
    Finding Indicators();
    Finding Time();
    Finding Areas();
    /// A country's states on the map of the areas, one of them chosen with a click.
    Finding AreaMap();
    Finding Data();
    Finding Sorted();
    /// The view as a workbook in the hosted spreadsheet, as it is shown before printing.
    Finding Host();
    Finding RightToLeft();
    // Stations of the data view and of the workbooks (TourWorkbooks.cpp).
    Finding Statistics();
    Finding Filters();
    Finding Exports();
    Finding SelectionSheet();
    Finding SummaryReport();
    Finding Properties();
    Finding Favourites();
    // Stations of the presentation wizards (TourPresentations.cpp).
    /// The data as a table with colours, saved to the gallery; and as a chart.
    Finding Table();
    Finding Graph();
    // Stations of the maps (TourMaps.cpp).
    /// The classes of the data in view, with their palette as a file.
    Finding Classes();
    /// What a station of the map wizard walks: an indicator by its GId, the button of the page's form, and whether its
    /// totals become sized points.
    struct MapWalk {
        const char* name; ///< of the pictures
        const char* indicator;
        int layout;
        bool points;
    };
    Finding Map(const MapWalk& walk);
    // Stations of the calculations (TourCalculations.cpp).
    /// Each calculation from the data view to a database of its own, with its log and its data-entry sheet.
    Finding Calculation(int row);
    // Stations of the gallery (TourGallery.cpp).
    Finding Gallery();
    /// Every presentation of the gallery on a slide, saved as slides.ppt.
    Finding Slides();
    /// A table of one's own becomes a database, which is opened (TourImport.cpp).
    Finding Import();
    Finding BackAndForward();
    Finding Closing();

    /// The press of a control by its name; false when there is none that can be pressed.
    bool Click(const QString& name) const;
    /// Presses an automatic selection's button and says OK to its question.
    bool ClickAutoSelect(const QString& screen, const QString& button) const;
    /// Chooses a menu entry that opens a dialog; while the dialog is up and `ready` of it, takes its picture (of the
    /// whole screen with `screen`), lets `inspect` look and closes it. False when it doesn't come.
    bool WithDialog(const QString& entry, const QString& dialog, const QString& picture, bool screen,
                    const std::function<bool(QWidget&)>& ready, const std::function<void(QWidget&)>& inspect);
    /// Copies the workbook that frmPrint shows to `name` in the tour's folder.
    bool KeepWorkbook(const QString& entry, const QString& name, const QString& picture);
    /// What stays selected on the screen of a stage: so many, those with the least keys, or those at the end of the
    /// list.
    struct Kept {
        int stage;
        const char* screen;
        const char* list;
        int count;
        bool last = false;
    };
    bool Keep(const Kept& kept);
    /// Makes the selection as small as that of a printed table, with the last ten periods, and goes to the data.
    bool KeepOnly(int indicators, int areas);
    /// Selects one indicator alone, with the periods and areas that have data for it, and goes to the data.
    bool SelectOnly(const QString& indicator);
    void DriveMap(QWidget& wizard, const MapWalk& walk, qint64& preview, QString& saved);
    /// Starts a presentation wizard from the data view and calls `drive` when it is up. False when it doesn't come.
    bool Present(int kind, const QString& wizard, const std::function<void(QWidget&)>& drive);
    /// The same from a list of an option of the data view.
    bool StartWizard(const char* option, const char* list, int row, const QString& wizard,
                     const std::function<void(QWidget&)>& drive);
    /// Walks a calculation's wizard to its end, with a picture of each step; the database goes to `target`.
    void DriveCalculation(frmCalculates& wizard, const QString& target);
    /// Walks the wizard of the import from its file to its end, with a picture of each step.
    void DriveImport(QWidget& wizard, const QString& target) const;
    /// Goes on to the preview and takes its picture; milliseconds from the click to the workbook in its place, or -1.
    [[nodiscard]] qint64 ShowPreview(QWidget& wizard, const QString& name) const;
    /// Goes on from the preview and saves under the suggested name; the copy of the saved workbook in the tour's
    /// folder, or nothing.
    [[nodiscard]] QString SaveToGallery(QWidget& wizard, const QString& picture);
    [[nodiscard]] QWidget* Find(const QString& name) const;
    /// Lets events through until the condition holds; false after the limit.
    [[nodiscard]] static bool WaitUntil(const std::function<bool()>& condition, int milliseconds = 20000);
    [[nodiscard]] static qint64 RowsOf(const char* table);
    /// Chooses the first indicators of the tree's second branch.
    bool ChooseIndicators(int wanted) const;

    frmMain& frame_;
    QDir folder_;
    QString language_;
    QStringList summary_;
    int calculationPictures_ = 0;
    bool good_ = true;
};

} // namespace tessaro
