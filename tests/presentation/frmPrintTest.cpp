#include "presentation/frmPrint.h"

#include "OfficeHostTest.h"
#include "controls/FileDialogs.h"
#include "controls/Printing.h"
#include "platform/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QPushButton>
#include <QTest>

namespace tessaro {

namespace {

/// The form with a workbook on show.
class frmPrintTest : public HostedTest {
  protected:
    void SetUp() override {
        HostedTest::SetUp();
        if (IsSkipped()) return;
        form_.SetFileName(file_);
        form_.open();
        ASSERT_TRUE(QTest::qWaitFor([this] { return Button("cmdPdf")->isEnabled(); }, 20000));
    }
    void TearDown() override {
        form_.reject();
        SetFileAnswerer({});
        SetPrinterAnswerer({});
        HostedTest::TearDown();
    }

    [[nodiscard]] QPushButton* Button(const char* name) const {
        return form_.findChild<QPushButton*>(QLatin1String(name));
    }
    [[nodiscard]] static QString TextOfPdf(const QString& file) {
        QProcess reader;
        reader.start(QStringLiteral("pdftotext"), {file, QStringLiteral("-")});
        reader.waitForFinished();
        return QString::fromUtf8(reader.readAllStandardOutput());
    }
    [[nodiscard]] QString Named(const char* name) const { return Folder() + QLatin1Char('/') + QLatin1String(name); }

    frmPrint form_;
};

} // namespace

TEST_F(frmPrintTest, SavesWhatItShowsAsPdf) {
    QString suggested;
    SetFileAnswerer([&](const FileQuestion& question) {
        suggested = question.name;
        return Named("kept.pdf");
    });
    form_.findChild<OfficeHost*>()->xlBook().Sheet(1).Cells(2, 1).SetValue(QStringLiteral("typed later"));
    Button("cmdPdf")->click();
    EXPECT_EQ(suggested, QStringLiteral("Shown.pdf"));
    const QString text = TextOfPdf(Named("kept.pdf"));
    EXPECT_TRUE(text.contains(QLatin1String("Findable words"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("typed later")));
    EXPECT_EQ(messages, QStringList());
}

TEST_F(frmPrintTest, SaysWhenThePdfCanNotBeWrittenAndGoesOn) {
    ASSERT_TRUE(QDir().mkpath(Named("way.pdf/x")));
    SetFileAnswerer([&](const FileQuestion&) { return Named("way.pdf"); });
    Button("cmdPdf")->click();
    EXPECT_EQ(messages.size(), 1);
    SetFileAnswerer([&](const FileQuestion&) { return QString(); });
    Button("cmdPdf")->click();
    EXPECT_EQ(messages.size(), 1) << "giving up the question is no failure";
    SetFileAnswerer([&](const FileQuestion&) { return Named("after.pdf"); });
    Button("cmdPdf")->click();
    EXPECT_TRUE(TextOfPdf(Named("after.pdf")).contains(QLatin1String("Findable words")));
}

TEST_F(frmPrintTest, PrintsIntoAFileWhereThereIsNoPrinter) {
    SetPrinterAnswerer([&] { return PrintPlace{{}, Named("printed.pdf")}; });
    Button("cmdPrint")->click();
    EXPECT_TRUE(TextOfPdf(Named("printed.pdf")).contains(QLatin1String("Findable words")));
    EXPECT_EQ(messages, QStringList());
}

TEST_F(frmPrintTest, SaysThatAPrinterIsGoneAndLosesNothing) {
    SetPrinterAnswerer([] { return std::nullopt; });
    Button("cmdPrint")->click();
    EXPECT_EQ(messages, QStringList()) << "cancelled";
    form_.findChild<OfficeHost*>()->xlBook().Sheet(1).Cells(2, 1).SetValue(QStringLiteral("typed before"));
    SetPrinterAnswerer([] { return PrintPlace{QStringLiteral("a printer that was taken away"), {}}; });
    Button("cmdPrint")->click();
    EXPECT_EQ(messages.size(), 1);
    EXPECT_TRUE(Button("cmdPrint")->isEnabled());
    form_.accept();
    EXPECT_EQ(test::ReadXls(file_).front().Text(2, 1), QStringLiteral("typed before"));
}

TEST_F(frmPrintTest, ThePreviewMayBeLeftByTheProgramsOwnMenu) {
    auto* host = form_.findChild<OfficeHost*>();
    Button("cmdPreview")->click();
    EXPECT_TRUE(host->IsPrintPreview() && Button("cmdPreview")->isChecked());
    ASSERT_TRUE(host->SetPrintPreview(false));
    Button("cmdPreview")->click();
    EXPECT_TRUE(host->IsPrintPreview() && Button("cmdPreview")->isChecked());
    Button("cmdPreview")->click();
    EXPECT_FALSE(host->IsPrintPreview() || Button("cmdPreview")->isChecked());
}

TEST_F(frmPrintTest, OffersNothingForAWorkbookThatCanNotBeShown) {
    ASSERT_TRUE(ReplaceFile(Named("damaged.xls"), "no workbook"));
    frmPrint other;
    other.SetFileName(Named("damaged.xls"));
    other.open();
    auto* host = other.findChild<OfficeHost*>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !host->ErrorText().isEmpty(); }, 20000));
    for (const char* name : {"cmdPrint", "cmdPreview", "cmdPdf"})
        EXPECT_FALSE(other.findChild<QPushButton*>(QLatin1String(name))->isEnabled()) << name;
    other.reject();
}

} // namespace tessaro
