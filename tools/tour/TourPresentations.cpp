#include "Rows.h"
#include "Sum.h"
#include "Tour.h"
#include "controls/KeyedList.h"
#include "controls/OfficeHost.h"
#include "dataview/frmData.h"
#include "gallery/GalleryFolder.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "presentation/TableWorkbook.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/frmMain.h"
#include "wizards/WizardFrame.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tessaro {

namespace {

constexpr int kWizardLimit = 60000; ///< milliseconds

void Press(QWidget& form, const char* button) {
    if (auto* control = form.findChild<QPushButton*>(QLatin1String(button))) QTest::mouseClick(control, Qt::LeftButton);
}

/// Calls `drive` with the window of this name as soon as it is the one that takes input.
QTimer* WhenUp(const QString& window, const std::function<void(QWidget&)>& drive) {
    auto* look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, look, [look, window, drive] {
        QWidget* shown = QApplication::activeModalWidget();
        if (!shown || shown->objectName() != window || !shown->isVisible()) return;
        look->stop();
        look->deleteLater();
        drive(*shown);
    });
    QTimer::singleShot(kWizardLimit, look, &QObject::deleteLater);
    look->start(20);
    return look;
}

std::vector<int> RowsFromTheEnd(const KeyedListModel& items) {
    std::vector<int> rows;
    for (int row = items.rowCount(); row-- > 0;)
        rows.push_back(row);
    return rows;
}

/// All numbers of the selection, straight from the data.
Sum ValuesOfDatabase() {
    Sum values;
    for (Records rows =
             Select(QStringLiteral("SELECT D.Datavalue FROM _SelTimePeriod AS T, _SelArea AS A, _SelIUSNId AS "
                                   "IUS, Data AS D WHERE D.TimePeriodNId = T.TimePeriodNId AND D.AreaNId = "
                                   "A.AreaNId AND D.IUSNId = IUS.IUSNId AND D.SourceNId = IUS.SourceNId"),
                    jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext()) {
        bool isNumber = false;
        const double value = rows.Text(std::size_t{0}).toDouble(&isNumber);
        if (isNumber) values.Add(value);
    }
    return values;
}

/// All numbers of a sheet's rows from the first data row on. A value with a footnote's mark is a text.
Sum ValuesOfSheet(const office::Worksheet& sheet, int firstRow) {
    Sum values;
    const office::Block cells = sheet.UsedRange().Values();
    for (std::size_t row = static_cast<std::size_t>(firstRow - 1); row < cells.size(); ++row)
        for (const office::Cell& cell : cells[row])
            if (const auto* number = std::get_if<double>(&cell)) values.Add(*number);
    return values;
}

} // namespace

bool Tour::Keep(const Kept& kept) {
    if (!Click(QStringLiteral("picBannerButtons_%1").arg(kept.stage)) ||
        !WaitUntil([&] { return CurrentStage == kept.stage && Find(QLatin1String(kept.screen)); }))
        return false;
    QWidget* screen = Find(QLatin1String(kept.screen));
    auto* list = screen->findChild<KeyedList*>(QLatin1String(kept.list));
    std::vector<int> rows = kept.last ? RowsFromTheEnd(list->Items()) : RowsByKey(list->Items());
    if (rows.size() <= static_cast<std::size_t>(kept.count)) return true;
    rows.erase(rows.begin(), rows.begin() + kept.count);
    SelectRows(*list, rows);
    auto* remove = screen->findChild<QWidget*>(QStringLiteral("cmdRemove"));
    QTest::mouseClick(remove, Qt::LeftButton);
    return WaitUntil([&] { return list->model()->rowCount() == kept.count; });
}

bool Tour::KeepOnly(int indicators, int areas) {
    bool kept = Keep({0, "frmIndicators", "lstSelected", indicators}) &&
                Keep({1, "frmTime", "lstSelected", 10, true}) && Keep({2, "frmAreas", "lstSelected1", 0});
    // Areas that have data for what is selected now.
    kept = kept && ClickAutoSelect(QStringLiteral("frmAreas"), QStringLiteral("cmdAllFilter")) &&
           WaitUntil([] { return RowsOf("_SelArea") > 0; }) && Keep({2, "frmAreas", "lstSelected1", areas});
    if (!kept || !Click(QStringLiteral("picBannerButtons_3"))) return false;
    auto* screen = qobject_cast<frmData*>(Find(QStringLiteral("frmData")));
    return screen && WaitUntil([&] { return screen->grid().ValueRows() > 0; });
}

bool Tour::Present(int kind, const QString& wizard, const std::function<void(QWidget&)>& drive) {
    return StartWizard("DATA_PRESENT", "picPresentationOptions", kind, wizard, drive);
}

bool Tour::StartWizard(const char* option, const char* list, int row, const QString& wizard,
                       const std::function<void(QWidget&)>& drive) {
    if (!Click(QLatin1String(option))) return false;
    auto* kinds = frame_.findChild<QListWidget*>(QLatin1String(list));
    if (!kinds || !WaitUntil([&] { return kinds->isVisible() && kinds->count() > row; })) return false;
    kinds->setCurrentRow(row);
    kinds->setFocus();
    bool driven = false;
    const std::unique_ptr<QObject> life = std::make_unique<QObject>();
    WhenUp(wizard, [&](QWidget& form) {
        drive(form);
        driven = true;
        if (auto* dialog = qobject_cast<QDialog*>(&form); dialog && dialog->isVisible()) dialog->reject();
    })->setParent(life.get());
    QTest::keyClick(kinds, Qt::Key_Return);
    return driven;
}

qint64 Tour::ShowPreview(QWidget& wizard, const QString& name) const {
    auto* host = wizard.findChild<OfficeHost*>(QStringLiteral("fraExcel"));
    QElapsedTimer clock;
    clock.start();
    Press(wizard, "CmdNext");
    if (!host || !host->IsOpen()) return -1;
    const qint64 took = clock.elapsed();
    QTest::qWait(1500); // the sheet draws itself, in a process of its own
    TakeScreenPicture(name);
    return took;
}

QString Tour::SaveToGallery(QWidget& wizard, const QString& picture) {
    QString saved;
    WhenUp(QStringLiteral("frmSaveGalleryAdvance"), [&](QWidget& form) {
        const QString title = form.findChild<QLineEdit*>(QStringLiteral("txtPresentationName"))->text();
        const QString name = wizard.objectName();
        const QLatin1Char type(name == QLatin1String("frmGraphWizard") ? 'G'
                               : name == QLatin1String("frmMapWizard") ? 'M'
                                                                       : 'T');
        saved = PresentationFile(GalleryFolder(), type, title);
        QTest::qWait(100);
        form.grab().save(folder_.filePath(picture + QLatin1String(".png")));
        Press(form, "CmdFinish");
    });
    Press(wizard, "CmdNext");
    const QString copy = folder_.filePath(QFileInfo(saved).fileName());
    return !saved.isEmpty() && CopyFileOver(saved, copy) ? copy : QString();
}

Tour::Finding Tour::Table() {
    if (!KeepOnly(3, 20)) return {false, QStringLiteral("the selection could not be made smaller")};
    qint64 took = -1;
    QString saved;
    const bool driven = Present(0, QStringLiteral("frmTableWizard"), [&](QWidget& wizard) {
        const auto picture = [&](const char* name) {
            QTest::qWait(100);
            wizard.grab().save(folder_.filePath(QLatin1String(name) + QLatin1String(".png")));
        };
        picture("table-1-rows-columns");
        Press(wizard, "CmdNext");
        wizard.findChild<QCheckBox*>(QStringLiteral("chkAddColor"))->click();
        picture("table-2-options");
        Press(wizard, "cmdAddColor");
        picture("table-2-colors");
        Press(wizard, "cmdAddOK");
        took = ShowPreview(wizard, QStringLiteral("table"));
        saved = SaveToGallery(wizard, QStringLiteral("table-4-save"));
    });
    if (!driven || saved.isEmpty()) return {false, QStringLiteral("no table was saved")};
    const office::Workbook book = office::SpreadsheetApplication::Instance().OpenWorkbook(saved);
    const Sum wanted = ValuesOfDatabase();
    const Sum list = ValuesOfSheet(book.Sheet(2), 2);
    const Sum table = ValuesOfSheet(book.Sheet(1), TableLayout::FirstDataRow);
    return {took > 0 && list.Matches(wanted) && table.Matches(wanted),
            QStringLiteral("%1, %2 values as in the database, preview after %3 ms")
                .arg(QFileInfo(saved).fileName())
                .arg(table.count)
                .arg(took)};
}

Tour::Finding Tour::Graph() {
    if (!KeepOnly(1, 6)) return {false, QStringLiteral("the selection could not be made smaller")};
    qint64 took = -1;
    QString saved;
    const bool driven = Present(1, QStringLiteral("frmGraphWizard"), [&](QWidget& wizard) {
        QTest::qWait(100);
        wizard.grab().save(folder_.filePath(QStringLiteral("graph-1-axes.png")));
        Press(wizard, "CmdNext");
        QTest::qWait(100);
        wizard.grab().save(folder_.filePath(QStringLiteral("graph-2-options.png")));
        took = ShowPreview(wizard, QStringLiteral("graph"));
        saved = SaveToGallery(wizard, QStringLiteral("graph-4-save"));
    });
    if (!driven || saved.isEmpty()) return {false, QStringLiteral("no graph was saved")};
    const office::Workbook book = office::SpreadsheetApplication::Instance().OpenWorkbook(saved);
    const office::Worksheet sheet = book.Sheet(1);
    const int series = sheet.ChartCount() == 1 ? sheet.ChartAt(1).SeriesCount() : 0;
    const bool listed = ValuesOfSheet(book.Sheet(3), 2).Matches(ValuesOfDatabase());
    return {took > 0 && series > 0 && sheet.Name() == QLatin1String("Graph") && listed,
            QStringLiteral("%1, a chart of %2 series, preview after %3 ms")
                .arg(QFileInfo(saved).fileName())
                .arg(series)
                .arg(took)};
}

} // namespace tessaro
