#include "calculate/frmCalculates.h"

#include "WizardTest.h"
#include "calculate/FormulaEdit.h"
#include "controls/OfficeHost.h"
#include "support/ReadXls.h"

#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextLayout>

namespace tessaro {

namespace {

using frmCalculatesTest = test::WizardTest;
using test::Q;

} // namespace

TEST_F(frmCalculatesTest, PerCentGoesFromTheIndicatorsToTheDataEntrySheet) {
    frmCalculates form(CalcType::PerCent);
    Open(form);
    EXPECT_EQ(
        form.windowTitle(),
        Q("Calculate Per cent Wizard - Step %1 of %2 - Numerator").arg(QLocale().toString(1), QLocale().toString(5)));
    EXPECT_EQ(Buttons(form), (QStringList{Q("2")}));
    Picture(form, "percent-1");
    FillPerCent(form);
    EXPECT_EQ(OnPage<QComboBox>(form, "cmbIndicator")->currentText(), Q("Per cent"));
    Picture(form, "percent-3");
    Next(form);
    ASSERT_EQ(form.CurrentStep(), LogStep) << messages.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(Buttons(form), (QStringList{Q("1"), Q("2")}));
    Next(form);
    ASSERT_EQ(form.CurrentStep(), DataEntryStep) << messages.join(QLatin1Char(' ')).toStdString();
    const test::ReadSheet log = test::ReadXls(form.LogFile()).front();
    EXPECT_DOUBLE_EQ(log.At(14, 7).toDouble(), 12.5) << "after the area without a denominator";
    EXPECT_EQ(Buttons(form), (QStringList{Q("1"), Q("3")}));
    const test::ReadSheet entry = test::ReadXls(form.DataEntryFile()).front();
    EXPECT_EQ(entry.Text(3, 2), Q("Income"));
    EXPECT_EQ(entry.Text(11, 2), Q("ASICHN"));
    EXPECT_DOUBLE_EQ(entry.At(11, 4).toDouble(), 12.5);
    EXPECT_EQ(entry.rows.size(), 13);
    EXPECT_EQ(frame.busy, 0);
    Back(form);
    EXPECT_EQ(form.CurrentStep(), LogStep);
    EXPECT_EQ(messages, QStringList());
}

TEST_F(frmCalculatesTest, LettersOfAccessDifferOnEachPageInEveryLanguage) {
    for (const char* language : {"en", "fr", "es", "ar", "ru"}) {
        UseLanguage(Q(language));
        for (int type = 0; type < kCalculations; ++type) {
            const frmCalculates form(static_cast<CalcType>(type));
            const auto* pages = Named<QStackedWidget>(form, "pages");
            for (int page = 0; page < pages->count(); ++page) {
                QStringList letters;
                for (const auto* button : form.findChildren<QAbstractButton*>()) {
                    const bool elsewhere = pages->isAncestorOf(button) && !pages->widget(page)->isAncestorOf(button);
                    const QKeySequence letter = QKeySequence::mnemonic(button->text());
                    if (!elsewhere && !button->isHidden() && !letter.isEmpty()) letters << letter.toString();
                }
                EXPECT_GE(letters.size(), 3) << "Back, Next and Finish";
                EXPECT_EQ(letters.removeDuplicates(), 0)
                    << language << " " << form.windowTitle().toStdString() << " " << page << ": "
                    << letters.join(QLatin1Char(' ')).toStdString();
            }
        }
    }
}

TEST_F(frmCalculatesTest, AccessKeysAndArrowsFollowTheLanguage) {
    for (const char* language : {"fr", "ar"}) {
        UseLanguage(Q(language));
        const bool fromRight = LanguageIsRightToLeft();
        QApplication::setLayoutDirection(fromRight ? Qt::RightToLeft : Qt::LeftToRight);
        frmCalculates form(CalcType::HundredMinus);
        Open(form);
        form.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        auto* available = OnPage<KeyedList>(form, "lstAvailable_Step1");
        QTest::keyClick(available, Qt::Key_Return);
        EXPECT_EQ(form.Draft().items.size(), 1U);
        QTest::keyClick(available, fromRight ? Qt::Key_Left : Qt::Key_Right);
        EXPECT_TRUE(OnPage<KeyedList>(form, "lstSelected_Step1_0")->hasFocus()) << language;
        QTest::keyClick(QApplication::focusWidget(), fromRight ? Qt::Key_Right : Qt::Key_Left);
        EXPECT_TRUE(available->hasFocus()) << language;
        const auto press = [&form](const char* button) {
            const Qt::Key key = QKeySequence::mnemonic(Named<QPushButton>(form, button)->text())[0].key();
            QTest::sendKeyEvent(QTest::Click, form.windowHandle(), key, QString(QChar(key)), Qt::AltModifier);
        };
        // The button is seen to go down before its click counts.
        press("cmdNavigators_2");
        EXPECT_TRUE(QTest::qWaitFor([&form] { return form.CurrentStep() == SaveAsStep; })) << language;
        press("cmdNavigators_1");
        EXPECT_TRUE(QTest::qWaitFor([&form] { return form.CurrentStep() == SelectionStep; })) << language;
    }
    QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(frmCalculatesTest, TabGoesOverTheFormulaPageAsItReads) {
    frmCalculates form(CalcType::Formula);
    Open(form);
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    OnPage<QLineEdit>(form, "txtFilter")->setFocus();
    OnPage<FormulaEdit>(form, "txtFormula")->setPlainText(Q("1"));
    QStringList order;
    for (int key = 0; key < 13 && QApplication::focusWidget(); ++key) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QStringList expected{Q("txtFilter"), Q("lstAvailable_Step1"), Q("txtFormula")};
    for (int button = 0; button < 8; ++button)
        expected << Q("cmdOperators_%1").arg(button);
    EXPECT_EQ(order, expected + QStringList({Q("cmdValidate"), Q("grdDummy")}));
}

TEST_F(frmCalculatesTest, OffersTheDataInViewAndNotThatOfBefore) {
    bDataChanged = true; // and nothing is selected any more
    frmCalculates form(CalcType::PerCent);
    Open(form);
    EXPECT_EQ(OnPage<KeyedList>(form, "lstAvailable_Step1")->Items().Count(), 0);
    EXPECT_FALSE(bDataChanged);
    Next(form);
    EXPECT_EQ(messages, QStringList{Q("016")});
}

TEST_F(frmCalculatesTest, AValueChangedInTheLogComesThrough) {
    frmCalculates form(CalcType::PerCent);
    Open(form);
    FillPerCent(form);
    Next(form);
    ASSERT_EQ(form.CurrentStep(), LogStep);
    auto* host = form.findChild<OfficeHost*>();
    if (!host->IsOpen()) GTEST_SKIP() << "no display that hosts";
    host->xlBook().Sheet(1).Cells(14, 3).SetValue(50.0); // the numerator of the first area with a result
    host->xlBook().Sheet(1).Cells(13, 5).SetValue(14.0); // the denominator that was missing
    for (int round = 0; round < 2; ++round) {
        Next(form);
        ASSERT_EQ(form.CurrentStep(), DataEntryStep);
        EXPECT_TRUE(host->IsOpen());
        EXPECT_EQ(host->parentWidget()->objectName(), Q("picXLSContainer"));
        const test::ReadSheet entry = test::ReadXls(form.DataEntryFile()).front();
        EXPECT_EQ(entry.Text(11, 2), Q("AFR"));
        EXPECT_DOUBLE_EQ(entry.At(11, 4).toDouble(), 50);
        EXPECT_DOUBLE_EQ(entry.At(12, 4).toDouble(), 25);
        Back(form);
        EXPECT_EQ(host->parentWidget()->objectName(), Q("picXLS_LOG_Container"));
        EXPECT_EQ(form.CurrentStep(), LogStep);
        EXPECT_EQ(std::get<double>(host->xlBook().Sheet(1).Cells(14, 3).Value()), 50) << "the edit stays";
    }
}

TEST_F(frmCalculatesTest, EachFaultIsToldAtItsControl) {
    frmCalculates form(CalcType::PerCent);
    Open(form);
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    Next(form);
    EXPECT_EQ(messages, QStringList{Q("016")});
    EXPECT_EQ(form.CurrentStep(), SelectionStep);
    FillPerCent(form);
    const std::pair<const char*, const char*> fields[] = {
        {"cmbSector", "014"}, {"cmbClass", "015"}, {"cmbIndicator", "016"}, {"cmbSubpop", "020"}};
    for (const auto& [name, key] : fields) {
        messages.clear();
        auto* box = OnPage<QComboBox>(form, name);
        const QString before = box->currentText();
        box->setCurrentText({});
        Next(form);
        EXPECT_EQ(messages, QStringList{Q(key)});
        EXPECT_TRUE(box->hasFocus() || box->lineEdit()->hasFocus()) << name;
        EXPECT_EQ(form.CurrentStep(), SaveAsStep);
        box->setCurrentText(before);
    }
}

TEST_F(frmCalculatesTest, WeightsAreTypedSharedAndSummed) {
    frmCalculates form(CalcType::CompositeIndex);
    Open(form);
    for (const char* name : {"Poor", "Population", "Literacy"})
        Choose(form, Q(name));
    Next(form);
    ASSERT_EQ(form.CurrentStep(), SecondStep);
    auto* grid = OnPage<FillGrid>(form, "grdW");
    ASSERT_EQ(grid->rowCount(), 3);
    Next(form);
    EXPECT_EQ(messages, QStringList{Q("102")});
    grid->setCurrentCell(0, 1);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_F2);
    auto* field = grid->findChild<QLineEdit*>(Q("txtFill"));
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, Q("30"));
    QTest::keyClick(field, Qt::Key_Return);
    QTest::qWait(10);
    EXPECT_EQ(grid->item(0, 1)->text(), Q("30"));
    EXPECT_EQ(grid->currentRow(), 1);
    EXPECT_EQ(form.CurrentStep(), SecondStep) << "Return is the cell's";
    EXPECT_TRUE(OnPage<QLabel>(form, "lblSum")->text().contains(QLocale().toString(30)));
    OnPage<QCheckBox>(form, "chkHighAll")->click();
    for (int row = 0; row < 3; ++row)
        EXPECT_EQ(grid->item(row, 2)->checkState(), Qt::Unchecked);
    grid->item(1, 2)->setCheckState(Qt::Checked);
    Click(form, "cmdShare");
    Picture(form, "index-2");
    Next(form);
    EXPECT_EQ(form.CurrentStep(), SaveAsStep);
    EXPECT_EQ(
        form.Draft().weights,
        (std::vector<IndexWeight>{{EvenWeights(3)[0], false}, {EvenWeights(3)[1], true}, {EvenWeights(3)[2], false}}));
    Picture(form, "index-3");
    Back(form);
    EXPECT_EQ(grid->item(1, 2)->checkState(), Qt::Checked);
}

TEST_F(frmCalculatesTest, TheOtherCalculationsPassOverTheirSteps) {
    struct Case {
        CalcType type;
        QList<CalculationStep> steps;
    };
    const Case cases[] = {{CalcType::HundredMinus, {SelectionStep, SaveAsStep, LogStep, DataEntryStep}},
                          {CalcType::TransformUnit, {SelectionStep, SecondStep, SaveAsStep, LogStep, DataEntryStep}},
                          {CalcType::Subtotal, {SelectionStep, SecondStep, LogStep, DataEntryStep}}};
    for (const Case& c : cases) {
        frmCalculates form(c.type);
        Open(form);
        Choose(form, Q("Poor"));
        Choose(form, Q("Literacy")); // takes the place of the other
        EXPECT_EQ(form.Draft().items, (std::vector<CalculationItem>{{Q("Literacy"), {}}}));
        QList<CalculationStep> steps{form.CurrentStep()};
        const QString name = Q("type%1-").arg(static_cast<int>(c.type));
        for (int i = 1; i < c.steps.size(); ++i) {
            Next(form);
            steps << form.CurrentStep();
            Picture(form, qPrintable(name + QString::number(i + 1)));
            if (form.CurrentStep() == SecondStep && c.type == CalcType::TransformUnit) {
                OnPage<QLineEdit>(form, "rtbTUnit")->setText(Q("Share"));
                auto* grid = OnPage<FillGrid>(form, "grdUnit");
                ASSERT_EQ(grid->rowCount(), 1);
                grid->item(0, 1)->setText(Q("2"));
            }
            if (form.CurrentStep() == SecondStep && c.type == CalcType::Subtotal) Click(form, "chkLevel_0");
            if (form.CurrentStep() == SaveAsStep) {
                OnPage<QComboBox>(form, "cmbSector")->setCurrentText(Q("S"));
                OnPage<QComboBox>(form, "cmbClass")->setCurrentText(Q("C"));
                OnPage<QComboBox>(form, "cmbIndicator")->setCurrentText(Q("I"));
            }
        }
        EXPECT_EQ(steps, c.steps) << messages.join(QLatin1Char(' ')).toStdString();
        QList<CalculationStep> back{form.CurrentStep()};
        while (Buttons(form).contains(Q("1"))) {
            Back(form);
            back.prepend(form.CurrentStep());
        }
        EXPECT_EQ(back, c.steps);
    }
}

TEST(FormulaEditTest, NumbersBehindArabicNamesStayInOrder) {
    FormulaEdit edit;
    const QString reference = Q("{نسبة  ~  المجموع}");
    edit.InsertAtCaret(reference);
    QTest::keyClicks(&edit, Q(" * 2 + 1"));
    EXPECT_EQ(edit.Formula(), reference + Q(" * 2 + 1"));
    edit.grab(); // lays the text out
    const QString text = edit.toPlainText();
    const QTextLine line = edit.document()->firstBlock().layout()->lineAt(0);
    const auto place = [&](char digit) { return line.cursorToX(static_cast<int>(text.indexOf(QLatin1Char(digit)))); };
    EXPECT_LT(place('2'), place('1'));
    for (int n = 0; n < 9; ++n)
        QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(edit.Formula(), reference.chopped(1)) << "a brace goes with its mark";
}

TEST_F(frmCalculatesTest, AFormulaIsWrittenCheckedAndCalculated) {
    frmCalculates form(CalcType::Formula);
    Open(form);
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    EXPECT_EQ(Buttons(form), QStringList()) << "nothing is written yet";
    auto* formula = OnPage<QPlainTextEdit>(form, "txtFormula");
    auto* list = OnPage<KeyedList>(form, "lstAvailable_Step1");
    list->HighlightKey(Q("{Poor  ~  Total}"));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(formula->toPlainText(), Q("{Poor  ~  Total}"));
    EXPECT_EQ(Buttons(form), QStringList{Q("2")});
    Click(form, "cmdOperators_2");
    EXPECT_EQ(formula->toPlainText(), Q("{Poor  ~  Total} / "));
    QTest::keyClicks(formula, Q("popul")); // the name is offered and taken
    QWidget* names = QApplication::activePopupWidget();
    ASSERT_NE(names, nullptr);
    EXPECT_EQ(names->objectName(), Q("lstNames"));
    QTest::keyClick(names, Qt::Key_Return);
    EXPECT_EQ(formula->toPlainText(), Q("{Poor  ~  Total} / {Population  ~  Total}"));
    EXPECT_EQ(form.CurrentStep(), SelectionStep) << "Return chose the name";
    QTest::keyClicks(formula, Q(" * ("));
    auto* results = OnPage<QTableWidget>(form, "grdDummy");
    Click(form, "cmdValidate");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_FALSE(formula->extraSelections().isEmpty()) << "the fault is marked";
    EXPECT_FALSE(OnPage<QLabel>(form, "lblProblem")->text().isEmpty());
    Next(form);
    EXPECT_EQ(form.CurrentStep(), SelectionStep);
    EXPECT_TRUE(formula->hasFocus());
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(formula, Qt::Key_Backspace);
    QTest::keyClicks(formula, Q(" * 100"));
    EXPECT_TRUE(formula->extraSelections().isEmpty());
    QTest::qWait(500);
    ASSERT_EQ(results->rowCount(), 4);
    Picture(form, "formula-1");
    messages.clear();
    Click(form, "cmdValidate");
    EXPECT_EQ(messages, QStringList{Q("108")});
    messages.clear();
    Next(form);
    ASSERT_EQ(form.CurrentStep(), SaveAsStep);
    for (const char* box : {"cmbSector", "cmbClass", "cmbIndicator"})
        OnPage<QComboBox>(form, box)->setCurrentText(Q("F"));
    Next(form);
    ASSERT_EQ(form.CurrentStep(), LogStep) << messages.join(QLatin1Char(' ')).toStdString();
    Next(form);
    ASSERT_EQ(form.CurrentStep(), DataEntryStep) << messages.join(QLatin1Char(' ')).toStdString();
    const test::ReadSheet entry = test::ReadXls(form.DataEntryFile()).front();
    EXPECT_EQ(entry.rows.size(), 13) << "the area without a population stays out";
    EXPECT_DOUBLE_EQ(entry.At(11, 4).toDouble(), 13); // 12.5 without decimals
    EXPECT_EQ(messages, QStringList());
}

TEST_F(frmCalculatesTest, AMissingTemplateIsTold) {
    const std::pair<const char*, CalculationStep> templates[] = {{"Log_Calculate.xls", SaveAsStep},
                                                                 {"Data_DataEntry.xls", LogStep}};
    frmCalculates form(CalcType::PerCent);
    Open(form);
    FillPerCent(form);
    for (const auto& [name, step] : templates) {
        messages.clear();
        const QString file = JoinPath({FindPath(AppPath + Q("/Bin/Template")), Q(name)});
        ASSERT_TRUE(QFile::rename(file, file + Q(".away")));
        Next(form);
        EXPECT_EQ(messages, QStringList{Q("011")});
        EXPECT_EQ(form.CurrentStep(), step);
        ASSERT_TRUE(QFile::rename(file + Q(".away"), file));
        Next(form);
        ASSERT_EQ(form.CurrentStep(), step + 1);
    }
}

TEST_F(frmCalculatesTest, FinishSavesTheResultAndOffersToOpenIt) {
    frmCalculates form(CalcType::PerCent);
    Open(form);
    FillPerCent(form);
    Next(form);
    Next(form);
    ASSERT_EQ(form.CurrentStep(), DataEntryStep);
    QString target;
    FileQuestion asked;
    SetFileAnswerer([&](const FileQuestion& question) {
        asked = question;
        return target;
    });
    QTest::keyClick(&form, Qt::Key_Return); // the dialog is cancelled
    EXPECT_EQ(asked.title, Q("Save to Database"));
    EXPECT_EQ(asked.filter, Q("Microsoft Access (*.mdb)"));
    EXPECT_TRUE(form.isVisible());
    target = CurrentDatabase;
    Named<QPushButton>(form, "cmdNavigators_3")->click();
    EXPECT_EQ(messages, QStringList{Q("012")});
    EXPECT_TRUE(form.isVisible());
    messages.clear();
    target = Folder() + Q("/result.mdb");
    answers = {MessageCode::Yes};
    Named<QPushButton>(form, "cmdNavigators_3")->click();
    EXPECT_FALSE(form.isVisible()) << messages.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(form.BuiltFile(), target);
    EXPECT_TRUE(form.OpensResult());
    const auto built = CreateTheConnection(target);
    ASSERT_NE(built, nullptr);
    Records rows = Select(Q("SELECT Count(*) FROM Data"), jet::CursorType::Static, built.get());
    EXPECT_EQ(rows.Number(std::size_t{0}), 3);
    EXPECT_EQ(TablesLeft(), QStringList());
}

} // namespace tessaro
