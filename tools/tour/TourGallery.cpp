#include "Tour.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeHost.h"
#include "gallery/PresentationList.h"
#include "gallery/frmGALMain.h"
#include "gallery/frmGalPPT.h"
#include "platform/Files.h"
#include "shell/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tessaro {

namespace {

/// Clicks a workbook's line and waits until it is on show.
bool ShowLine(const frmGALMain& gallery, int row) {
    auto* list = gallery.findChild<PresentationList*>(QStringLiteral("lstPresentations"));
    const auto* place = gallery.findChild<OfficeHost*>(QStringLiteral("PicExcel"));
    const QModelIndex index = list->model()->index(row, 0);
    list->scrollTo(index);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
    return QTest::qWaitFor(
        [&] { return place->IsOpen() && gallery.CurrentPresentation().startsWith(index.data().toString()); }, 30000);
}

/// Says OK to the question about the slides as soon as it is up.
void AnswerWithNewSlides() {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        auto* question = qobject_cast<frmGalPPT*>(QApplication::activeModalWidget());
        if (!question) return;
        timer->stop();
        timer->deleteLater();
        QTest::mouseClick(question->findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    QTimer::singleShot(15000, timer, [timer] { timer->deleteLater(); });
    timer->start(20);
}

} // namespace

Tour::Finding Tour::Gallery() {
    // Where no wizard has been before, the data itself is a presentation.
    if (PresentationsOf(GalleryFolder()).isEmpty())
        static_cast<void>(CopyFileOver(folder_.filePath(QStringLiteral("DataView.xls")),
                                       PresentationFile(GalleryFolder(), QLatin1Char('T'), QStringLiteral("Data"))));
    auto* entry = frame_.findChild<QAction*>(QStringLiteral("mnu_Gallery_Options_0"));
    if (!entry || !entry->isEnabled()) return {false, QStringLiteral("no entry in the menu")};
    entry->trigger();
    const auto* gallery = frame_.findChild<frmGALMain*>();
    if (!gallery) return {false, QStringLiteral("the screen did not come")};
    const auto* list = gallery->findChild<PresentationList*>(QStringLiteral("lstPresentations"));
    const int count = list->model()->rowCount();
    const auto* place = gallery->findChild<OfficeHost*>(QStringLiteral("PicExcel"));
    const bool shown = WaitUntil([&] { return place->IsOpen(); }, 30000);
    QTest::qWait(5000); // the small pictures are drawn beside everything else
    TakeScreenPicture(QStringLiteral("gallery"));
    return {count > 0 && shown,
            QStringLiteral("%1 presentations, %2 on show").arg(count).arg(gallery->CurrentPresentation())};
}

Tour::Finding Tour::Slides() {
    auto* gallery = frame_.findChild<frmGALMain*>();
    if (!gallery) return {false, QStringLiteral("no gallery")};
    const auto* list = gallery->findChild<PresentationList*>(QStringLiteral("lstPresentations"));
    auto* slides = gallery->findChild<OfficeHost*>(QStringLiteral("PicPPT"));
    int copied = 0;
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        if (!ShowLine(*gallery, row)) continue;
        if (!slides->IsOpen()) AnswerWithNewSlides();
        if (Click(QStringLiteral("cmdCopyToPPT")) && slides->IsOpen()) ++copied;
    }
    QTest::qWait(2000); // until both programs have drawn themselves
    TakeScreenPicture(QStringLiteral("slides"));
    const QString file = folder_.filePath(QStringLiteral("slides.ppt"));
    SetFileAnswerer([&](const FileQuestion&) { return file; });
    const bool saved = Click(QStringLiteral("cmdSavePPT"));
    SetFileAnswerer({});
    const int made = slides->IsOpen() ? slides->Slides().SlideCount() : 0;
    Click(QStringLiteral("cmdClosePPT"));
    const QByteArray mark = QByteArray::fromHex("d0cf11e0a1b11ae1");
    const bool good = ReadWholeFile(file).value_or(QByteArray()).startsWith(mark);
    Click(QStringLiteral("Toolbar1_0"));
    const bool left = WaitUntil([this] { return !frame_.findChild<frmGALMain*>(); });
    return {
        copied > 0 && made >= copied && saved && good && left,
        QStringLiteral("%1 presentations on %2 slides, %3 bytes").arg(copied).arg(made).arg(QFileInfo(file).size())};
}

} // namespace tessaro
