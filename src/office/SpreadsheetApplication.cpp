#include "office/SpreadsheetApplication.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/ProcessLink.h"
#include "office/Profile.h"
#include "office/WorkFile.h"

#include <QFile>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <cstdlib>

namespace tessaro::office {

namespace {

/// Without its own font the file would name whatever the machine has.
constexpr auto kDefaultFont = "Arial";
constexpr double kDefaultFontSize = 10;

/// A new document prints its sheet's name above and "Page 1" below.
void ClearHeaderAndFooter(Document& document) {
    document.Run([](const Document::Model& model) {
        const auto families = Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies();
        com::sun::star::uno::Reference<com::sun::star::container::XNameAccess> styles;
        families->getByName("PageStyles") >>= styles;
        com::sun::star::uno::Reference<com::sun::star::beans::XPropertySet> style;
        styles->getByName("Default") >>= style;
        style->setPropertyValue("HeaderIsOn", com::sun::star::uno::Any(false));
        style->setPropertyValue("FooterIsOn", com::sun::star::uno::Any(false));
    });
}

} // namespace

SpreadsheetApplication& SpreadsheetApplication::Instance() {
    static auto* application = new SpreadsheetApplication(false);
    return *application;
}

SpreadsheetApplication& SpreadsheetApplication::Hosted() {
    static auto* application = new SpreadsheetApplication(true);
    return *application;
}

SpreadsheetApplication::SpreadsheetApplication(bool shown) : connection_(std::make_shared<ProcessLink>(shown)) {
    connect(connection_.get(), &ProcessLink::Lost, this, &SpreadsheetApplication::Lost);
    // What is still to be done is done before the program's libraries are taken down; they have come up by now.
    connect(connection_.get(), &ProcessLink::Connected, this, [] {
        static const int registered = std::atexit(&QuitAll);
        static_cast<void>(registered);
    });
}

SpreadsheetApplication::~SpreadsheetApplication() = default;

void SpreadsheetApplication::SetProfileFolder(const QString& folder) {
    Instance().connection_->SetProfileFolder(folder + QStringLiteral("/Writer"));
    Hosted().connection_->SetProfileFolder(folder + QStringLiteral("/Host"));
}

bool SpreadsheetApplication::IsInstalled() {
    return !ProgramFolder().isEmpty();
}

QString SpreadsheetApplication::Version() {
    QFile file(ProgramFolder() + QStringLiteral("/bootstraprc"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray key = "ProductKey=";
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(1024).trimmed();
        if (line.startsWith(key)) return QString::fromUtf8(line.mid(key.size()));
    }
    return {};
}

bool SpreadsheetApplication::IsRunning() const {
    return connection_->IsRunning();
}

qint64 SpreadsheetApplication::ProcessId() const {
    return connection_->ProcessId();
}

void SpreadsheetApplication::Start() {
    connection_->Start();
}

void SpreadsheetApplication::StartInAdvance() {
    connection_->StartInAdvance();
}

void SpreadsheetApplication::Quit() {
    connection_->Quit();
}

void SpreadsheetApplication::QuitAll() {
    Instance().Quit();
    Hosted().Quit();
}

Workbook SpreadsheetApplication::NewWorkbook(int sheets) {
    Workbook book(Document::New(connection_, "private:factory/scalc", Document::kWorkbook));
    ClearHeaderAndFooter(*book.document());
    book.SetDefaultFont(QLatin1String(kDefaultFont), kDefaultFontSize);
    while (book.SheetCount() < sheets)
        static_cast<void>(book.AddSheet(QStringLiteral("Sheet%1").arg(book.SheetCount() + 1)));
    return book;
}

Workbook SpreadsheetApplication::OpenWorkbook(const QString& file) {
    return Workbook(Document::Open(connection_, file, Document::kWorkbook));
}

Workbook SpreadsheetApplication::OpenCopy(const QString& templateFile, const QString& file) {
    QFile source(templateFile);
    if (!source.open(QIODevice::ReadOnly))
        throw Error(Failure::File, QStringLiteral("there is no template \"%1\"").arg(templateFile));
    const QByteArray contents = source.readAll();
    connection_->Start(); // a process that can't be started leaves no copy behind
    // The template may be read-only where the program is installed; the copy isn't.
    WorkFile copy(file);
    QFile target(copy.Name());
    if (!target.open(QIODevice::WriteOnly) || target.write(contents) != contents.size() || !target.flush())
        throw Error(Failure::File, QStringLiteral("\"%1\" can't be written").arg(file));
    target.close();
    const bool isNew = !QFile::exists(file);
    copy.Replace();
    try {
        return OpenWorkbook(file);
    } catch (const Error&) {
        if (isNew) QFile::remove(file);
        throw;
    }
}

SlideShow SpreadsheetApplication::NewSlideShow() {
    SlideShow slides(Document::New(connection_, "private:factory/simpress", Document::kSlides));
    slides.SetFourToThree();
    return slides;
}

SlideShow SpreadsheetApplication::OpenSlideShow(const QString& file) {
    return SlideShow(Document::Open(connection_, file, Document::kSlides));
}

void SpreadsheetApplication::SetTimeLimit(std::chrono::milliseconds limit) {
    connection_->SetTimeLimit(limit);
}

void SpreadsheetApplication::Probe() {
    connection_->Probe();
}

void SpreadsheetApplication::SetPatience(std::chrono::milliseconds patience) {
    connection_->SetPatience(patience);
}

} // namespace tessaro::office
