#include "office/ForeignWorkbook.h"

#include "office/CompoundFile.h"
#include "office/Convert.h"
#include "office/Document.h"
#include "office/SpreadsheetApplication.h"

#include <QFileInfo>

#include <com/sun/star/container/XNameReplace.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XChangesBatch.hpp>

namespace tessaro::office {

namespace {

/// What the program may use: enough for itself and for the cells of any file of its size, but not for a small one that
/// unpacks to gigabytes. In bytes.
constexpr qint64 kMemoryToRead = qint64{1200} << 20;
constexpr qint64 kMemoryOfByte = 40; // zipped cells take ten times their size in the file, and then as cells
constexpr qint64 kNoLimit = -1;

const char* FilterOf(const QString& file) {
    if (IsCompoundFile(file)) return Document::kWorkbook;
    const bool isOpenDocument = QFileInfo(file).suffix().startsWith(QLatin1String("od"), Qt::CaseInsensitive);
    return isOpenDocument ? Document::kOpenDocument : Document::kOpenXml;
}

ProcessLink& Process() {
    return *SpreadsheetApplication::Instance().connection();
}

/// Gives the process another locale for numbers ("en-CA") and returns the one that it had.
QString ChangeLocale(const QString& locale) {
    QString before;
    Process().Run([&] {
        const uno::Any path(Property("nodepath", uno::Any(Ascii("/org.openoffice.Setup/L10N"))));
        const auto provider = Need<com::sun::star::lang::XMultiServiceFactory>(
            Process().Service("com.sun.star.configuration.ConfigurationProvider"));
        const auto access = Need<com::sun::star::container::XNameReplace>(provider->createInstanceWithArguments(
            Ascii("com.sun.star.configuration.ConfigurationUpdateAccess"), uno::Sequence<uno::Any>(&path, 1)));
        const rtl::OUString name = Ascii("ooSetupSystemLocale");
        rtl::OUString old;
        access->getByName(name) >>= old;
        before = FromUno(old);
        access->replaceByName(name, uno::Any(ToUno(locale)));
        Need<com::sun::star::util::XChangesBatch>(access)->commitChanges();
    });
    return before;
}

/// Writes numbers with a point and days as 2001-05-01, as Canadian English does, while it lives, whatever the locale of
/// the user.
class PlainNumbers final {
  public:
    PlainNumbers() : before_(ChangeLocale(QStringLiteral("en-CA"))) {}
    ~PlainNumbers() {
        try {
            ChangeLocale(before_);
        } catch (const Error&) {
            // The process is gone; the next one has the user's locale.
        }
    }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

  private:
    QString before_;
};

} // namespace

ForeignWorkbook::ForeignWorkbook(const QString& file) {
    SpreadsheetApplication& application = SpreadsheetApplication::Instance();
    application.Start();
    Process().LimitMemory(kMemoryToRead + kMemoryOfByte * QFileInfo(file).size());
    try {
        document_ = Document::Open(application.connection(), file, FilterOf(file));
    } catch (const Error&) {
        Process().LimitMemory(kNoLimit);
        throw;
    }
}

ForeignWorkbook::~ForeignWorkbook() {
    document_.reset();
    Process().LimitMemory(kNoLimit);
}

QStringList ForeignWorkbook::SheetNames() const {
    QStringList names;
    document_->Run([&](const Document::Model& model) {
        const auto sheets = Need<com::sun::star::sheet::XSpreadsheetDocument>(model)->getSheets();
        for (const rtl::OUString& name : sheets->getElementNames())
            names << FromUno(name);
    });
    return names;
}

void ForeignWorkbook::SaveSheetAsText(int sheet, const QString& file) const {
    const PlainNumbers plain;
    // Comma, quotation mark, UTF-8, from the first line, no column formats, Canadian English, all texts in quotation
    // marks, no special numbers (for reading only), values and not what is shown of them, no formulas, blanks kept, and
    // the sheet: without it the program writes the first one.
    document_->Export(file, "Text - txt - csv (StarCalc)",
                      QStringLiteral("44,34,76,1,,4105,true,false,false,false,false,%1").arg(sheet));
}

void SaveCopyAs(const Workbook& book, const QString& file) {
    const bool isOpenDocument = file.endsWith(QLatin1String(".ods"), Qt::CaseInsensitive);
    Known(book.document()).Export(file, isOpenDocument ? Document::kOpenDocument : Document::kOpenXml);
}

bool IsWorkbookFile(const QString& path) {
    return IsCompoundFile(path) || IsZipFile(path);
}

} // namespace tessaro::office
