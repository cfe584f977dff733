#include "Walker.h"

#include "controls/OfficeHost.h"
#include "dataview/frmData.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "shell/DatabaseOpener.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTextStream>
#include <QToolTip>

namespace tessaro {

namespace {

constexpr int kTipsOfAView = 12; ///< the first rows of each view; those below are made alike
constexpr const char* kScreens[] = {"frmIndicators", "frmTime", "frmAreas", "frmData"};

} // namespace

Walker::Walker(frmMain& frame) : frame_(frame) {
    QObject::connect(&dialogs_, &QTimer::timeout, &dialogs_, [this] { LookAtDialog(); });
    dialogs_.start(60);
}

void Walker::Reached(const QString& what) {
    if (reached_.contains(what)) return;
    reached_.insert(what);
    QTextStream(stdout) << "reached " << what << '\n';
}

bool Walker::Start(const QString& application) {
    heartbeat_.Doing(QStringLiteral("start"));
    QString path = application;
    frame_.resize(1280, 800);
    const bool started =
        frame_.MDIForm_Load(QStringLiteral("tessaro /a") + path.replace(QLatin1Char('/'), QLatin1Char('\\')));
    if (started) Reached(QStringLiteral("home"));
    return started;
}

bool Walker::Open(const QString& file) {
    heartbeat_.Doing(QStringLiteral("open ") + file);
    QTextStream(stdout) << "opening " << file << '\n' << Qt::flush;
    frame_.Databases().LoadNewMDB(file);
    QTest::qWait(50);
    const bool taken = DatabaseOpen && SamePath(CurrentDatabase, file);
    QTextStream(stdout) << (taken ? "taken\n" : "refused\n");
    return taken;
}

void Walker::Close() {
    heartbeat_.Doing(QStringLiteral("exit"));
    frame_.close();
    QTextStream(stdout) << "longest " << heartbeat_.Longest() << '\n';
}

bool Walker::Press(const QString& name) {
    auto* control = frame_.findChild<QWidget*>(name);
    if (!control || !control->isEnabled() || !control->isVisible()) return false;
    QTest::mouseClick(control, Qt::LeftButton);
    QTest::qWait(30);
    return true;
}

void Walker::Trigger(const QString& name) {
    auto* action = frame_.findChild<QAction*>(name);
    if (action && action->isEnabled()) action->trigger();
}

void Walker::SelectAllOn(int stage, const QString& screen) {
    heartbeat_.Doing(screen);
    if (CurrentStage != stage) Press(QStringLiteral("picBannerButtons_%1").arg(stage));
    const auto* form = frame_.findChild<QWidget*>(screen);
    if (!form || CurrentStage != stage) return;
    Reached(screen);
    auto* all = form->findChild<QWidget*>(QStringLiteral("cmdAllFilter"));
    if (all && all->isEnabled()) QTest::mouseClick(all, Qt::LeftButton);
    QTest::qWait(30);
}

void Walker::Funnel() {
    for (int stage = 0; stage < 3; ++stage)
        SelectAllOn(stage, QLatin1String(kScreens[stage]));
    heartbeat_.Doing(QStringLiteral("frmData"));
    Press(QStringLiteral("picBannerButtons_3"));
    if (CurrentStage != 3) return;
    Reached(QStringLiteral("frmData"));
    const auto* screen = frame_.findChild<frmData*>(QStringLiteral("frmData"));
    if (screen && QTest::qWaitFor([&] { return screen->grid().ValueRows() > 0; }, 3000))
        Reached(QStringLiteral("rows"));
}

void Walker::ShowTips(QAbstractItemView& view) const {
    const QAbstractItemModel* model = view.model();
    if (!model) return;
    for (int row = 0; row < std::min(model->rowCount(view.rootIndex()), kTipsOfAView); ++row) {
        for (int column = 0; column < std::min(model->columnCount(view.rootIndex()), kTipsOfAView); ++column) {
            const QPoint place = view.visualRect(model->index(row, column, view.rootIndex())).center();
            QHelpEvent event(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
            QApplication::sendEvent(view.viewport(), &event);
        }
    }
    QToolTip::hideText();
}

void Walker::ShowAllTips(const QWidget& parent) const {
    for (QAbstractItemView* view : parent.findChildren<QAbstractItemView*>())
        if (view->isVisible()) ShowTips(*view);
}

void Walker::LookAtIndicatorViews() {
    heartbeat_.Doing(QStringLiteral("indicator views"));
    Press(QStringLiteral("picBannerButtons_0"));
    const auto* form = frame_.findChild<QWidget*>(QStringLiteral("frmIndicators"));
    if (!form) return;
    for (QAbstractButton* button : form->findChildren<QAbstractButton*>()) {
        if (!button->objectName().startsWith(QLatin1String("INDICATOR_")) || !button->isEnabled()) continue;
        button->click();
        QTest::qWait(30);
        ShowAllTips(*form);
        Reached(button->objectName());
    }
}

void Walker::LookAtData(const QString& folder) {
    auto* screen = frame_.findChild<frmData*>(QStringLiteral("frmData"));
    if (!screen || CurrentStage != 3) return;
    for (const char* option : {"DATA_STATS", "DATA_SOURCES", "DATA_UNITS", "DATA_SUBPOPS", "DATA_SORT", "DATA_VIEW"}) {
        heartbeat_.Doing(QLatin1String(option));
        if (!Press(QLatin1String(option))) continue;
        ShowAllTips(*screen);
        Reached(QLatin1String(option));
    }
    for (const char* name : {"DataView.htm", "DataView.txt"}) {
        heartbeat_.Doing(QLatin1String(name));
        if (screen->SaveDataView(folder + QLatin1Char('/') + QLatin1String(name))) Reached(QLatin1String(name));
    }
}

void Walker::LookAtAll(const QString& folder) {
    LookAtIndicatorViews();
    for (int stage = 1; stage < 3; ++stage) {
        Press(QStringLiteral("picBannerButtons_%1").arg(stage));
        ShowAllTips(frame_);
    }
    Press(QStringLiteral("picBannerButtons_3"));
    LookAtData(folder);
    for (const char* entry : {"mnuInfoSheets_0", "mnuInfoSheets_1", "mnuInfoSheets_3", "mnuInfoSheets_4",
                              "mnumnu_Favoritesmnu_AddFavorites"}) {
        heartbeat_.Doing(QLatin1String(entry));
        Trigger(QLatin1String(entry));
    }
}

void Walker::LookAtDialog() {
    // A menu that a button has opened waits for an answer as a dialog does.
    if (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    dialogs_.stop(); // pressing in the dialog lets events through
    // What is pressed may open a further dialog, which waits until it is answered.
    QTimer further;
    QObject::connect(&further, &QTimer::timeout, dialog, [this, dialog] {
        auto* inner = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!inner || inner == dialog) return;
        Reached(inner->objectName().isEmpty() ? QStringLiteral("dialog") : inner->objectName());
        inner->reject();
    });
    further.start(100);
    Reached(dialog->objectName().isEmpty() ? QStringLiteral("dialog") : dialog->objectName());
    ShowAllTips(*dialog);
    for (QAbstractItemView* view : dialog->findChildren<QAbstractItemView*>()) {
        if (!view->isVisible() || !view->model()) continue;
        view->setCurrentIndex(view->model()->index(0, 0));
        QTest::keyClick(view, Qt::Key_Return);
        QTest::qWait(30);
    }
    for (QTabWidget* tabs : dialog->findChildren<QTabWidget*>())
        for (int tab = 0; tab < tabs->count(); ++tab)
            tabs->setCurrentIndex(tab);
    if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("txtFavoriteAddress"))) {
        name->setText(QStringLiteral("Kept"));
        if (auto* ok = dialog->findChild<QAbstractButton*>(QStringLiteral("cmdOK"))) ok->click();
    }
    QTest::qWait(20);
    if (QApplication::activeModalWidget() == dialog) dialog->reject();
    dialogs_.start();
}

} // namespace tessaro
