#pragma once

#include "CalculationTest.h"
#include "TestPlaces.h"
#include "calculate/FillGrid.h"
#include "calculate/frmCalculates.h"
#include "controls/FileDialogs.h"
#include "controls/KeyedList.h"
#include "office/SpreadsheetApplication.h"
#include "support/SelectionTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace tessaro::test {

[[nodiscard]] inline QString Q(const char* text) {
    return QString::fromUtf8(text);
}

/// The wizard driven by its controls. On X11 its workbooks are hosted; elsewhere they are there all the same.
class WizardTest : public CalculationTest {
  protected:
    void SetUp() override {
        CalculationTest::SetUp();
        UseSpreadsheet();
        for (const char* name : {"Log_Calculate.xls", "Data_DataEntry.xls", "dbTemp.mdb"})
            ASSERT_TRUE(CopyFileOver(FindPath(Q(TESSARO_INSTALLATION "/Bin/Template/") + Q(name)),
                                     JoinPath({FindPath(AppPath + Q("/Bin/Template")), Q(name)})));
        bDataChanged = false; // the test fills _Data
        for (const char* area : {"ASIIND", "ASICHN", "EUR"}) {
            Put({{Q(area), Q("Poor"), Q("25"), Q("2000"), Q("Total")},
                 {Q(area), Q("Population"), Q("200"), Q("2000"), Q("Total")},
                 {Q(area), Q("Literacy"), Q("60"), Q("2000"), Q("Female"), Q("Census"), Q("Percent")}});
        }
        Put({{Q("AFR"), Q("Poor"), Q("7")}});
    }
    void TearDown() override {
        SetFileAnswerer({});
        CalculationTest::TearDown();
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    template <class Control> static Control* Named(const QWidget& form, const char* name) {
        auto* control = form.findChild<Control*>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    /// The control of this name on the page in front.
    template <class Control> static Control* OnPage(const QWidget& form, const char* name) {
        for (auto* control : form.findChildren<Control*>(QLatin1String(name)))
            if (control->isVisible()) return control;
        ADD_FAILURE() << name;
        return nullptr;
    }
    static void Click(const QWidget& form, const char* name) { OnPage<QAbstractButton>(form, name)->click(); }
    static void Next(const QWidget& form) { Named<QPushButton>(form, "cmdNavigators_2")->click(); }
    static void Back(const QWidget& form) { Named<QPushButton>(form, "cmdNavigators_1")->click(); }
    static void Choose(const QWidget& form, const QString& indicator) {
        auto* list = OnPage<KeyedList>(form, "lstAvailable_Step1");
        for (const KeyedItem& item : list->Items().Items())
            if (item.cells.first() == indicator) {
                Q_EMIT list->ItemActivated(QString(item.key));
                return;
            }
        ADD_FAILURE() << indicator.toStdString();
    }
    static void Open(frmCalculates& form) {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
        QTest::qWait(100); // the first page is filled after the first paint
    }
    /// From the first step to the names.
    static void FillPerCent(frmCalculates& form) {
        Choose(form, Q("Poor"));
        Next(form);
        Choose(form, Q("Population"));
        Next(form);
        ASSERT_EQ(form.CurrentStep(), SaveAsStep);
        OnPage<QComboBox>(form, "cmbSector")->setCurrentText(Q("Income"));
        OnPage<QComboBox>(form, "cmbClass")->setCurrentText(Q("Poverty"));
        OnPage<QLineEdit>(form, "txtDecimals")->setText(Q("1"));
    }
    static void Picture(QWidget& form, const char* name) {
        const QString folder = qEnvironmentVariable("TESSARO_PICTURES");
        if (folder.isEmpty()) return;
        QTest::qWait(50);
        form.grab().save(folder + QLatin1Char('/') + QLatin1String(name) + Q(".png"));
    }
    [[nodiscard]] static QStringList Buttons(const QWidget& form) {
        QStringList on;
        for (int index = 1; index <= 3; ++index)
            if (form.findChild<QPushButton*>(Q("cmdNavigators_%1").arg(index))->isEnabled())
                on << QString::number(index);
        return on;
    }
};

} // namespace tessaro::test
