#include "controls/ArrowPointer.h"
#include "controls/CancelWatch.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "map/classes/ClassTable.h"
#include "map/output/MapWorkbook.h"
#include "map/output/PagePicture.h"
#include "map/output/SmallMaps.h"
#include "map/project/ProjectFile.h"
#include "map/wizard/MapPane.h"
#include "map/wizard/MapTexts.h"
#include "map/wizard/frmMapWizard.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/FileNames.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"

#include <QDir>
#include <QPushButton>

namespace tessaro {

namespace {

constexpr int kToldMilliseconds = 10000;

/// "Text (*.ending)" of a kind of files.
QString Filter(const char* key, const char* ending) {
    return GetText(QLatin1String(key)) + QStringLiteral(" (*.") + QLatin1String(ending) + QLatin1Char(')');
}

} // namespace

MapPage frmMapWizard::Page() {
    return {Draft(), pane_->Map().Layers(), pane_->Map().Extent(), pane_->Map().size()};
}

QString frmMapWizard::SuggestedName() const {
    const QString title = draft_.title.text.trimmed().isEmpty() ? NameOf(draft_.theme) : draft_.title.text;
    return CutForDisk(MakeFileNameSafe(title.simplified()));
}

QString frmMapWizard::MakeWorkbook(const WizardProgress& progress) {
    if (draft_.smallMaps && theme_.Periods().size() > 1)
        return MakeSmallMaps(Page(), SpreadPeriods(theme_.Periods()), progress);
    return MakeMapWorkbook(Page(), progress);
}

bool frmMapWizard::BuildAndShow() {
    ForgetWorkbook();
    QString file;
    try {
        CancelWatch cancel(*this, findChild<QPushButton*>(QStringLiteral("CmdCancel")));
        file = MakeWorkbook(
            {[this](int percent) { SetMainProgress(percent); }, [this](int percent) { SetChildProgress(percent); },
             [this](const QString& key) { SetStatus(PlainText(key)); }, [&cancel] { return cancel.Asked(); }});
    } catch (const WorkGivenUp&) {
        return false;
    } catch (const office::Error& error) {
        ShowOfficeError(error, "CmdNext_Click");
        return false;
    }
    if (file.isEmpty()) {
        ShowMessage(QStringLiteral("011"));
        return false;
    }
    ShowPreview(file, SuggestedName());
    return true;
}

bool frmMapWizard::Save() {
    if (SaveAs(QLatin1Char('M'), SaveStep)) done(QDialog::Accepted);
    return false; // otherwise the preview stays
}

void frmMapWizard::cmdExport_Click() {
    const ErrorTrap trap("cmdExport_Click");
    const QString chosen =
        AskForNewFile(this, {PlainText(QStringLiteral("Comm_Save")), QDir::homePath(),
                             Filter("TS_FilterProject", "apr"), SuggestedName() + QStringLiteral(".apr")});
    const QString path = chosen.isEmpty() ? QString() : ProjectPathOf(chosen);
    if (path.isEmpty()) return;
    bool written = false;
    {
        const WaitPointer wait;
        written = WriteProjectFile(path, Page());
    }
    if (written)
        ShowMessage(QStringLiteral("021"));
    else
        ShowFilledMessage(QStringLiteral("TS_ExportFailed"), {FileNameOf(path)});
}

void frmMapWizard::cmdPicture_Click() {
    const ErrorTrap trap("cmdPicture_Click");
    const QStringList filters{Filter("TS_FilterPicture", "png"), Filter("TS_FilterPicture", "svg"),
                              Filter("TS_FilterPicture", "pdf")};
    const QString path =
        AskForNewFile(this, {PlainText(QStringLiteral("TS_SavePicture")), QDir::homePath(),
                             filters.join(QStringLiteral(";;")), SuggestedName() + QStringLiteral(".png")});
    if (path.isEmpty()) return;
    bool written = false;
    {
        const WaitPointer wait;
        written = SavePagePicture(path, Page());
    }
    if (written)
        TheFrame().ShowStatusTextFor(FilledText(QStringLiteral("TS_Exported"), {FileNameOf(path)}), kToldMilliseconds);
    else
        ShowFilledMessage(QStringLiteral("TS_ExportFailed"), {FileNameOf(path)});
}

} // namespace tessaro
