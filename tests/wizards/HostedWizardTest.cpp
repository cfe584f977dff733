#include "wizards/HostedWizard.h"

#include "controls/OfficeHost.h"
#include "support/GallerySession.h"
#include "wizards/frmSaveGalleryAdvance.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace tessaro {

namespace {

/// A step, the workbook, and the save step of the product.
class Wizard final : public HostedWizard {
  public:
    explicit Wizard(QString file) : HostedWizard(SaveToGallery, nullptr), file_(std::move(file)) {
        SetTitle(QStringLiteral("Test"));
        AddStep(new QWidget, QStringLiteral("One"));
        AddStep(&fraExcel(), QStringLiteral("TS_PagePreview"));
        AddStep(nullptr, QStringLiteral("TS_PageSaveAs"));
        Begin();
    }
    using HostedWizard::ForgetWorkbook;
    void Press(const char* button) const { findChild<QPushButton*>(QLatin1String(button))->click(); }

  protected:
    bool GoForward(int step) override {
        if (step == 2) ShowPreview(file_);
        if (step == 3 && SaveAs(QLatin1Char('M'), step)) done(QDialog::Accepted);
        return step == 2;
    }

  private:
    QString file_;
};

class HostedWizardTest : public test::GallerySession {
  protected:
    /// Presses a button of the save form when it has come; gives the name that it suggests.
    QString Answer(const Wizard& wizard, const char* button) {
        QString suggested;
        QTimer::singleShot(0, &wizard, [&] {
            auto* form = qobject_cast<frmSaveGalleryAdvance*>(QApplication::activeModalWidget());
            ASSERT_TRUE(form);
            EXPECT_EQ(form->windowTitle(), wizard.windowTitle());
            suggested = form->findChild<QLineEdit*>(QStringLiteral("txtPresentationName"))->text();
            form->findChild<QPushButton*>(QLatin1String(button))->click();
        });
        wizard.Press("CmdNext");
        return suggested;
    }
};

} // namespace

TEST_F(HostedWizardTest, AWorkbookOfAnyPathGoesToTheGallery) {
    QDir().mkpath(Folder() + QStringLiteral("/some where"));
    const QString file = Folder() + QStringLiteral("/some where/ 1.5 percent .XLS"); // no name that is repaired
    ASSERT_TRUE(ReplaceFile(file, "rows"));
    Wizard wizard(file);
    wizard.show();
    wizard.Press("CmdNext");
    ASSERT_EQ(wizard.Step(), 2);
    EXPECT_EQ(wizard.WorkbookFile(), file);
    EXPECT_EQ(Answer(wizard, "CmdBack"), QStringLiteral(" 1.5 percent "));
    EXPECT_EQ(wizard.Step(), 2);
    EXPECT_TRUE(PresentationsOf(Gallery()).isEmpty());
    Answer(wizard, "CmdFinish");
    EXPECT_EQ(wizard.Step(), WizardFrame::kDoneStep);
    EXPECT_EQ(*ReadWholeFile(Gallery() + QStringLiteral("/Map - 1.5 percent.Xls")), QByteArray("rows"));
    EXPECT_TRUE(frame.calls.filter(QStringLiteral("status for a while")).size() == 1);
    wizard.ForgetWorkbook();
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(wizard.WorkbookFile().isEmpty());
}

} // namespace tessaro
