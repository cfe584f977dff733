#include "Sum.h"
#include "Tour.h"
#include "calculate/DataEntryWorkbook.h"
#include "calculate/FillGrid.h"
#include "calculate/frmCalculates.h"
#include "controls/FileDialogs.h"
#include "controls/KeyedList.h"
#include "controls/OfficeHost.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/MessageAnswer.h"
#include "session/Query.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QMap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <set>

namespace tessaro {

namespace {

constexpr double kFactor = 1000;   ///< from a unit of the data to the target unit
constexpr double kRounding = 1e-5; ///< more than that of the decimals that results are written with

template <class Control> Control* Shown(const QWidget& form, const char* name) {
    for (auto* control : form.findChildren<Control*>(QLatin1String(name)))
        if (control->isVisible()) return control;
    return nullptr;
}

/// Puts so many rows of the list in, from this one on, each with Return.
void TakeRows(KeyedList& list, int rows, int first = 0) {
    list.setFocus();
    for (int i = 0; i < rows && list.model()->rowCount() > first; ++i) {
        list.setCurrentIndex(list.model()->index(first, 0));
        QTest::keyClick(&list, Qt::Key_Return);
    }
}

void TypeInto(QLineEdit& field, const QString& text) {
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, text);
}

void TypeInto(QComboBox& box, const QString& text) {
    TypeInto(*box.lineEdit(), text);
}

void TypeFactors(FillGrid& grid) {
    for (int row = 0; row < grid.rowCount(); ++row) {
        grid.setFocus();
        grid.setCurrentCell(row, 1);
        QTest::keyClick(&grid, Qt::Key_F2);
        if (auto* field = grid.findChild<QLineEdit*>(QStringLiteral("txtFill"))) {
            QTest::keyClicks(field, QString::number(kFactor));
            QTest::keyClick(field, Qt::Key_Return);
            QTest::qWait(20);
        }
    }
}

void NameResult(const QWidget& wizard, const QString& name) {
    TypeInto(*Shown<QComboBox>(wizard, "cmbIndicator"), name);
    for (const char* box : {"cmbSector", "cmbClass"})
        if (auto* field = Shown<QComboBox>(wizard, box); field->currentText().isEmpty()) TypeInto(*field, name);
    TypeInto(*Shown<QLineEdit>(wizard, "txtDecimals"), QStringLiteral("6"));
}

/// Fills the page in front as a user would.
void FillPage(const frmCalculates& wizard, CalcType type, const QString& name) {
    if (auto* formula = Shown<QPlainTextEdit>(wizard, "txtFormula")) {
        TakeRows(*Shown<KeyedList>(wizard, "lstAvailable_Step1"), 1);
        QTest::keyClicks(formula, QStringLiteral(" * 2 + 1"));
        QTest::qWait(600); // the results come after a pause
    } else if (auto* list = Shown<KeyedList>(wizard, "lstAvailable_Step1")) {
        TakeRows(*list, type == CalcType::CompositeIndex ? 3 : 1, wizard.CurrentStep() == SelectionStep ? 0 : 1);
    } else if (auto* share = Shown<QPushButton>(wizard, "cmdShare")) {
        QTest::mouseClick(share, Qt::LeftButton);
    } else if (auto* grid = Shown<FillGrid>(wizard, "grdUnit")) {
        TypeInto(*Shown<QLineEdit>(wizard, "rtbTUnit"), QStringLiteral("Thousandths"));
        TypeFactors(*grid);
    } else if (Shown<QCheckBox>(wizard, "chkLevel_0")) {
        for (int level = 0; level < kAreaLevels; ++level)
            if (auto* box = Shown<QCheckBox>(wizard, qPrintable(QStringLiteral("chkLevel_%1").arg(level)));
                box->isEnabled())
                box->click();
    } else if (Shown<QComboBox>(wizard, "cmbIndicator")) {
        NameResult(wizard, name);
    }
}

Sum ValuesOf(const DataEntrySheet& sheet) {
    Sum values;
    for (const DataEntryRow& row : sheet.rows)
        values.Add(row.value.toDouble());
    return values;
}

/// The one value of each area, indicator and subgroup that calculations work on: of the latest time, then of the last
/// source and unit by name. By area and item; an item without a subgroup has the sum of all.
class Picked final {
  public:
    Picked() {
        for (Records rows = Select(QStringLiteral("SELECT AreaId, [Indicator], Subpop, Datavalue FROM _Data ORDER BY "
                                                  "TimePeriod, Source, Unit"));
             !rows.atEnd(); rows.MoveNext())
            values_[{rows.Text(std::size_t{0}), rows.Text(std::size_t{1})}][rows.Text(std::size_t{2})] =
                rows.Text(std::size_t{3}).toDouble();
    }
    [[nodiscard]] std::set<QString> Areas() const {
        std::set<QString> areas;
        for (auto it = values_.constBegin(); it != values_.constEnd(); ++it)
            areas.insert(it.key().first);
        return areas;
    }
    [[nodiscard]] std::optional<double> Of(const QString& area, const CalculationItem& item) const {
        const QMap<QString, double> groups = values_.value({area, item.indicator});
        if (!item.subpop.isEmpty())
            return groups.contains(item.subpop) ? std::optional(groups.value(item.subpop)) : std::nullopt;
        std::optional<double> sum;
        for (const double value : groups)
            sum = sum.value_or(0) + value;
        return sum;
    }

  private:
    QMap<std::pair<QString, QString>, QMap<QString, double>> values_;
};

/// The results of a calculation by SQL and plain arithmetic; nothing where that would be the calculation over again.
std::optional<Sum> Expected(const CalculationDraft& draft) {
    Sum sum;
    const Picked picked;
    const CalculationItem& item = draft.items.front();
    switch (draft.type) {
    case CalcType::HundredMinus:
    case CalcType::TransformUnit:
        for (Records rows =
                 Select(QStringLiteral("SELECT Datavalue FROM _Data WHERE [Indicator] = ") + Quoted(item.indicator));
             !rows.atEnd(); rows.MoveNext()) {
            const double value = rows.Text(std::size_t{0}).toDouble();
            sum.Add(draft.type == CalcType::HundredMinus ? 100 - value : value * kFactor);
        }
        return sum;
    case CalcType::PerCent:
        for (const QString& area : picked.Areas())
            if (const auto above = picked.Of(area, item), below = picked.Of(area, draft.denominators.front());
                above.value_or(0) != 0 && below.value_or(0) != 0)
                sum.Add(100 * *above / *below);
        return sum;
    case CalcType::Formula:
        for (const QString& area : picked.Areas())
            if (const auto value = picked.Of(area, item)) sum.Add(*value * 2 + 1);
        return sum;
    case CalcType::CompositeIndex:
    case CalcType::Subtotal:
        break;
    }
    return std::nullopt;
}

} // namespace

Sum ValuesOf(const QString& database) {
    Sum values;
    const auto connection = CreateTheConnection(database);
    if (!connection) return values;
    for (Records rows =
             Select(QStringLiteral("SELECT Datavalue FROM Data"), jet::CursorType::ForwardOnly, connection.get());
         !rows.atEnd(); rows.MoveNext())
        values.Add(rows.Text(std::size_t{0}).toDouble());
    return values;
}

void Tour::DriveCalculation(frmCalculates& wizard, const QString& target) {
    const auto button = [&](int index) {
        return wizard.findChild<QPushButton*>(QStringLiteral("cmdNavigators_%1").arg(index));
    };
    SetFileAnswerer([target](const FileQuestion&) { return target; });
    SetMessageAnswerer([](const Message& message) { return CodeOfClosing(message.type); });
    QTest::qWait(500); // the first page is filled once it has been seen
    const CalcType type = wizard.Draft().type;
    for (int step = 0; step < kCalculationSteps; ++step) {
        FillPage(wizard, type, QFileInfo(target).completeBaseName());
        QTest::qWait(wizard.CurrentStep() >= LogStep ? 1500 : 100); // a sheet draws itself, in a process of its own
        TakeScreenPicture(QStringLiteral("calculate-%1").arg(++calculationPictures_));
        if (!button(2)->isEnabled()) break;
        QTest::mouseClick(button(2), Qt::LeftButton);
    }
    for (const QString& file : {wizard.LogFile(), wizard.DataEntryFile()})
        if (file.isEmpty() || !CopyFileOver(file, folder_.filePath(FileNameOf(file)))) good_ = false;
    QTest::mouseClick(button(3), Qt::LeftButton);
    SetFileAnswerer({});
    AgreeToQuestions();
}

Tour::Finding Tour::Calculation(int row) {
    if (row == 0 && !KeepOnly(4, 200)) return {false, QStringLiteral("the selection could not be made smaller")};
    const QString target = folder_.filePath(QStringLiteral("calculated-%1.mdb").arg(row + 1));
    QFile::remove(target);
    CalculationDraft draft;
    QString log;
    QString sheet;
    const bool driven =
        StartWizard("DATA_CALC", "lstCalculate", row, QStringLiteral("frmCalculates"), [&](QWidget& form) {
            auto* wizard = qobject_cast<frmCalculates*>(&form);
            if (!wizard) return;
            DriveCalculation(*wizard, target);
            draft = wizard->Draft();
            log = wizard->LogFile();
            sheet = wizard->DataEntryFile();
        });
    if (!driven || sheet.isEmpty() || !FileExists(target)) return {false, QStringLiteral("no database was made")};
    const Sum entered = ValuesOf(ReadDataEntrySheet(office::SpreadsheetApplication::Instance().OpenWorkbook(sheet)));
    const auto expected = Expected(draft);
    const bool right =
        entered.Matches(ValuesOf(target), kRounding) && (!expected || entered.Matches(*expected, kRounding));
    return {right,
            QStringLiteral("%1, %2 results, %3")
                .arg(FileNameOf(log))
                .arg(entered.count)
                .arg(expected ? QStringLiteral("as in the database") : QStringLiteral("the same in its database"))};
}

} // namespace tessaro
