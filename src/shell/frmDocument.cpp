#include "shell/frmDocument.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/LanguageName.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/OpenOutside.h"
#include "shell/SystemInfo.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace tessaro {

namespace {

constexpr qint64 kLargestDocument = 4 * 1024 * 1024;
const QString CloseKey = QStringLiteral("TS_Close");

/// The parts that each of these forms has: a text browser above a row of buttons.
struct Parts {
    QTextBrowser* text;
    QHBoxLayout* buttons;
};

Parts MakeParts(QDialog& form, const QString& browserName) {
    auto* column = new QVBoxLayout(&form);
    column->setSpacing(2 * theme::kGrid);
    column->setContentsMargins(2 * theme::kGrid, 2 * theme::kGrid, 2 * theme::kGrid, 2 * theme::kGrid);
    auto* text = new QTextBrowser(&form);
    text->setObjectName(browserName);
    text->setOpenExternalLinks(true);
    text->document()->setDocumentMargin(2 * theme::kGrid);
    column->addWidget(text);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(theme::kGrid);
    buttons->addStretch();
    column->addLayout(buttons);
    form.setModal(true);
    return {text, buttons};
}

QPushButton* AddButton(QDialog& form, QHBoxLayout& row, const QString& name, const QString& key) {
    auto* button = new QPushButton(&form);
    button->setObjectName(name);
    SetCaption(button, key);
    row.addWidget(button);
    return button;
}

void AddOK(QDialog& form, QHBoxLayout& row) {
    QPushButton* ok = AddButton(form, row, QStringLiteral("cmdOK"), QStringLiteral("OK BUTTON"));
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
    ok->setFocus();
}

/// The style of pages in our windows. Their own style sheets are made for web browsers.
QString PageStyle() {
    return QStringLiteral("h1 { font-size: xx-large; } h2 { color: %1; font-size: large; margin-top: 20px; }"
                          ".lead { color: %2; } a { color: %1; } li, p { margin-bottom: 4px; }"
                          "kbd { background-color: %3; } td, th { padding: 4px; } th { color: %2; }")
        .arg(theme::Accent().name(), theme::MutedText().name(), theme::SurfaceRaised().name());
}

/// The page without its style sheet. QTextDocument does not mirror tables, so in right-to-left languages the cells of
/// tables with two columns are exchanged.
QString PageText(QString text) {
    text.remove(
        QRegularExpression(QStringLiteral("<style>.*?</style>"), QRegularExpression::DotMatchesEverythingOption));
    text.replace(QLatin1String("<table>"), QLatin1String("<table width=\"100%\">"));
    if (!LanguageIsRightToLeft()) return text;
    text.replace(QRegularExpression(QStringLiteral("<tr><(t[dh])>(.*?)</t[dh]><t[dh]>(.*?)</t[dh]></tr>")),
                 QStringLiteral("<tr><\\1 align=\"right\">\\3</\\1><\\1 align=\"right\">\\2</\\1></tr>"));
    return text;
}

/// Loads a document, which may be a web page or plain text.
void LoadDocument(QTextBrowser& browser, const QString& path) {
    const auto contents = ReadWholeFile(FindPath(path), kLargestDocument);
    if (!contents) {
        LogNote(QStringLiteral("there is no disclaimer at ") + path);
        return;
    }
    const QString text = QString::fromUtf8(*contents);
    if (Qt::mightBeRichText(text))
        browser.setHtml(text);
    else
        browser.setPlainText(text);
}

} // namespace

frmDisclaimer::frmDisclaimer(QWidget* parent) : QDialog(parent) {
    const ErrorTrap trap("frmDisclaimer_Load");
    setObjectName(QStringLiteral("frmDisclaimer"));
    const Parts parts = MakeParts(*this, QStringLiteral("TXTextControl1"));
    AddOK(*this, *parts.buttons);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("Disclaimer")).remove(QStringLiteral("...")));
    parts.text->setAccessibleName(windowTitle());
    LoadDocument(*parts.text, JoinPath({AppPath, QStringLiteral("Bin/Disclaimer.Doc")}));
    // Scrolls to the part in the current language, once the text has been laid out.
    QTimer::singleShot(0, parts.text, [text = parts.text] { text->scrollToAnchor(CodeOfLanguage(Language)); });
    resize(70 * theme::kGrid, 56 * theme::kGrid);
}

frmDocument::frmDocument(std::function<QString()> find, QWidget* parent) : QDialog(parent), find_(std::move(find)) {
    const ErrorTrap trap("frmDocument_Load");
    setObjectName(QStringLiteral("frmDocument"));
    setAttribute(Qt::WA_DeleteOnClose);
    const Parts parts = MakeParts(*this, QStringLiteral("txtPage"));
    setModal(false);
    page_ = parts.text;
    page_->setOpenLinks(false);
    connect(page_, &QTextBrowser::anchorClicked, this, &frmDocument::Follow);
    close_ = AddButton(*this, *parts.buttons, QStringLiteral("cmdClose"), CloseKey);
    close_->setAutoDefault(false);
    connect(close_, &QPushButton::clicked, this, &QWidget::close);
    resize(90 * theme::kGrid, 76 * theme::kGrid);
    SetFormCaptions();
    page_->setFocus();
}

void frmDocument::SetFormCaptions() {
    SetFormFonts(this);
    SetCaption(close_, CloseKey);
    Load(find_());
}

void frmDocument::Load(const QString& path) {
    const auto contents = ReadWholeFile(FindPath(path), kLargestDocument);
    if (!contents) {
        LogNote(QStringLiteral("can't read the page ") + path);
        return;
    }
    path_ = path;
    page_->setSearchPaths({FolderOf(FindPath(path))});
    page_->document()->setDefaultStyleSheet(PageStyle());
    page_->setHtml(PageText(QString::fromUtf8(*contents)));
    setWindowTitle(page_->documentTitle());
    page_->setAccessibleName(windowTitle());
}

void frmDocument::Follow(const QUrl& link) {
    if (link.isRelative() && link.path().isEmpty())
        page_->scrollToAnchor(link.fragment());
    else if (link.isRelative())
        Load(FolderOf(path_) + QLatin1Char('/') + link.path());
    else
        OpenOutside(link.toString());
}

void ShowPage(std::function<QString()> find) {
    auto* form = new frmDocument(std::move(find), QApplication::activeWindow());
    form->show();
    form->raise();
}

void ShowPagesInLanguage() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* page = qobject_cast<frmDocument*>(window)) page->SetFormCaptions();
}

frmSystemInfo::frmSystemInfo(QWidget* parent) : QDialog(parent) {
    const ErrorTrap trap("StartSysInfo");
    setObjectName(QStringLiteral("frmSystemInfo"));
    const Parts parts = MakeParts(*this, QStringLiteral("txtSystemInfo"));
    QPushButton* copy = AddButton(*this, *parts.buttons, QStringLiteral("cmdCopy"), QStringLiteral("mnu_Edit_Copy"));
    copy->setAutoDefault(false);
    connect(copy, &QPushButton::clicked, this, [] { QApplication::clipboard()->setText(SystemInfoText()); });
    AddOK(*this, *parts.buttons);
    SetFormFonts(this);
    setWindowTitle(PlainText(QStringLiteral("SYSTEM INFO")).remove(QStringLiteral("...")));
    parts.text->setAccessibleName(windowTitle());
    // QTextDocument does not mirror tables. The values (versions, paths) run from left to right in every language.
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const QString row = mirrored
                            ? QStringLiteral("<tr><td dir=\"ltr\" align=\"right\" style=\"padding:3px\">%2</td>"
                                             "<td align=\"right\" style=\"padding:3px 0 3px 24px\"><b>%1</b></td></tr>")
                            : QStringLiteral("<tr><td style=\"padding:3px 24px 3px 0\"><b>%1</b></td><td "
                                             "style=\"padding:3px 0\">%2</td></tr>");
    QString rows;
    for (const auto& [name, value] : SystemInfo())
        rows += row.arg(name.toHtmlEscaped(), value.toHtmlEscaped());
    parts.text->setHtml(
        QStringLiteral("<table%1>%2</table>").arg(mirrored ? QStringLiteral(" width=\"100%\"") : QString(), rows));
    resize(80 * theme::kGrid, (mirrored ? 64 : 50) * theme::kGrid);
}

} // namespace tessaro
