#include "WizardTest.h"
#include "calculate/CalculationSteps.h"
#include "controls/OfficeHost.h"
#include "support/DataChanges.h"

#include <QDir>

#include <csignal>

namespace tessaro {

namespace {

class WizardFailuresTest : public test::WizardTest {
  protected:
    void SetUp() override {
        WizardTest::SetUp();
        // Sub-totals take sector and class from their indicator.
        test::ChangeData(
            test::Q("INSERT INTO Indicator_Sector (IndicatorGId, SectorLabel2GId) VALUES ('-Poor', '-S1A')"));
    }
    /// Fills the page in front with what lets the wizard go on; a page with a workbook needs nothing.
    static void FillPage(const frmCalculates& form, CalcType type) {
        if (form.CurrentStep() == SelectionStep) return ChooseItems(form, type);
        if (form.CurrentStep() == SecondStep) return FillSecondPage(form, type);
        if (form.CurrentStep() != SaveAsStep) return;
        for (const char* box : {"cmbSector", "cmbClass", "cmbIndicator"})
            OnPage<QComboBox>(form, box)->setCurrentText(test::Q("Result"));
    }
    /// To a step, filling the pages before it. False when the wizard stays on one of them.
    static bool GoTo(const frmCalculates& form, CalcType type, CalculationStep step) {
        while (form.CurrentStep() < step) {
            const CalculationStep before = form.CurrentStep();
            FillPage(form, type);
            Next(form);
            if (form.CurrentStep() == before) return false;
        }
        return form.CurrentStep() == step;
    }
    /// Ends the spreadsheet programs as a crash would.
    static void KillSpreadsheet() {
        for (office::SpreadsheetApplication* application :
             {&office::SpreadsheetApplication::Hosted(), &office::SpreadsheetApplication::Instance()})
            if (application->ProcessId() > 0) ::kill(static_cast<pid_t>(application->ProcessId()), SIGKILL);
        QTest::qWait(200);
    }
    /// Clicks until the step is left: at once, or with the second click after a message.
    void GoOnAfterKill(const frmCalculates& form, CalculationStep expected) {
        const CalculationStep before = form.CurrentStep();
        const CalculationDraft draft = form.Draft();
        KillSpreadsheet();
        messages.clear();
        Next(form);
        if (form.CurrentStep() == before) {
            EXPECT_FALSE(messages.isEmpty()) << "nothing was told";
            EXPECT_EQ(form.Draft(), draft);
            Next(form);
        }
        EXPECT_EQ(form.CurrentStep(), expected) << messages.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(frame.busy, 0);
    }
    static void ExpectNothingLeft(const frmCalculates& form) {
        EXPECT_EQ(FilesOf(TempFolder), QStringList());
        EXPECT_EQ(TablesLeft(), QStringList());
        EXPECT_FALSE(form.findChild<OfficeHost*>()->IsOpen());
    }
    static std::string NameOf(int type, int step) {
        return std::string(NamesOf(static_cast<CalcType>(type)).moduleKey) + ", step " + std::to_string(step);
    }

  private:
    static void ChooseItems(const frmCalculates& form, CalcType type) {
        if (type == CalcType::Formula)
            return OnPage<QPlainTextEdit>(form, "txtFormula")
                ->setPlainText(test::Q("{Poor  ~  Total} / {Population  ~  Total} * 100"));
        Choose(form, test::Q("Poor"));
        if (type == CalcType::CompositeIndex) Choose(form, test::Q("Population"));
    }
    static void FillSecondPage(const frmCalculates& form, CalcType type) {
        if (type == CalcType::PerCent) Choose(form, test::Q("Population"));
        if (type == CalcType::CompositeIndex) Click(form, "cmdShare");
        if (type == CalcType::Subtotal) Click(form, "chkLevel_0");
        if (type != CalcType::TransformUnit) return;
        OnPage<QLineEdit>(form, "rtbTUnit")->setText(test::Q("Halves"));
        OnPage<FillGrid>(form, "grdUnit")->item(0, 1)->setText(test::Q("2"));
    }
};

} // namespace

TEST_F(WizardFailuresTest, CancelAndBackLeaveNothingAtAnyStepOfAnyCalculation) {
    for (int type = 0; type < kCalculations; ++type) {
        const auto calculation = static_cast<CalcType>(type);
        for (int step = SelectionStep; step < kCalculationSteps; ++step) {
            if (StepsOf(calculation)[static_cast<std::size_t>(step)].page == PageKind::None) continue;
            SCOPED_TRACE(NameOf(type, step));
            messages.clear();
            answers = {MessageCode::No, MessageCode::Yes};
            frmCalculates form(calculation);
            Open(form);
            ASSERT_TRUE(GoTo(form, calculation, static_cast<CalculationStep>(step)))
                << messages.join(QLatin1Char(' ')).toStdString();
            if (Buttons(form).contains(test::Q("1"))) {
                Back(form);
                EXPECT_LT(form.CurrentStep(), step);
                Next(form); // with what was chosen before
                ASSERT_EQ(form.CurrentStep(), step) << messages.join(QLatin1Char(' ')).toStdString();
            }
            Named<QPushButton>(form, "cmdNavigators_0")->click();
            EXPECT_TRUE(form.isVisible()) << "the question was answered with No";
            QTest::keyClick(&form, Qt::Key_Escape);
            EXPECT_FALSE(form.isVisible());
            EXPECT_EQ(messages, QStringList(2, step == DataEntryStep ? test::Q("006") : test::Q("007")));
            ExpectNothingLeft(form);
        }
    }
}

TEST_F(WizardFailuresTest, ADeadSpreadsheetProgramStopsNoStepOfAnyCalculation) {
    constexpr qint64 kResults[kCalculations] = {3, 4, 3, 4, 4, 1};
    for (int type = 0; type < kCalculations; ++type) {
        SCOPED_TRACE(NameOf(type, 0));
        const auto calculation = static_cast<CalcType>(type);
        frmCalculates form(calculation);
        Open(form);
        const CalculationStep last = calculation == CalcType::Subtotal ? SecondStep : SaveAsStep;
        ASSERT_TRUE(GoTo(form, calculation, last));
        FillPage(form, calculation);
        GoOnAfterKill(form, LogStep);
        GoOnAfterKill(form, DataEntryStep);
        const QString gone = Folder() + test::Q("/gone/result.mdb");
        const QString target = Folder() + test::Q("/result%1.mdb").arg(type);
        QStringList targets{gone, target, target};
        SetFileAnswerer([&](const FileQuestion&) { return targets.takeFirst(); });
        KillSpreadsheet();
        messages.clear();
        for (int click = 0; click < 3 && form.isVisible(); ++click) {
            Named<QPushButton>(form, "cmdNavigators_3")->click();
            EXPECT_FALSE(messages.isEmpty()) << "a folder that isn't there, or the question at the end";
        }
        EXPECT_FALSE(form.isVisible()) << messages.join(QLatin1Char(' ')).toStdString();
        const auto built = CreateTheConnection(target);
        ASSERT_NE(built, nullptr);
        Records rows = Select(test::Q("SELECT Count(*) FROM Data"), jet::CursorType::Static, built.get());
        EXPECT_EQ(rows.Number(std::size_t{0}), kResults[type]);
        EXPECT_EQ(TablesLeft(), QStringList());
        EXPECT_FALSE(QFileInfo::exists(gone));
    }
}

TEST_F(WizardFailuresTest, AFolderForTheLogsThatIsGoneIsToldOrMadeAgain) {
    for (const CalculationStep from : {SaveAsStep, LogStep}) {
        frmCalculates form(CalcType::HundredMinus);
        Open(form);
        ASSERT_TRUE(GoTo(form, CalcType::HundredMinus, from));
        FillPage(form, CalcType::HundredMinus);
        ASSERT_TRUE(QDir(TempFolder).removeRecursively());
        messages.clear();
        Next(form);
        EXPECT_TRUE(form.CurrentStep() == from + 1 || !messages.isEmpty());
        EXPECT_EQ(frame.busy, 0);
        ASSERT_TRUE(QDir().mkpath(TempFolder));
        Back(form);
        while (form.CurrentStep() < DataEntryStep) {
            const CalculationStep before = form.CurrentStep();
            Next(form);
            ASSERT_GT(form.CurrentStep(), before) << messages.join(QLatin1Char(' ')).toStdString();
        }
    }
}

} // namespace tessaro
