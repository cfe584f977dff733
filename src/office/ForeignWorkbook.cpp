#include "office/ForeignWorkbook.h"

#include "office/CompoundFile.h"
#include "office/Convert.h"
#include "office/Document.h"
#include "office/SpreadsheetApplication.h"

#include <QFileInfo>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameReplace.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XChangesBatch.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

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

/// Gives the process another locale for numbers ("en-US") and returns the one that it had.
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

/// Gives the days of a sheet the form 2001-05-01: others go by the language of each cell, and their parts by it.
void WriteDaysInOrder(const Document::Model& model, int sheet) {
    const auto formats = Need<com::sun::star::util::XNumberFormatsSupplier>(model)->getNumberFormats();
    // Of a language of its own: the letters of one without would be read anew in that of PlainNumbers.
    const com::sun::star::lang::Locale english("en", "US", "");
    const rtl::OUString code = Ascii("YYYY-MM-DD");
    sal_Int32 inOrder = formats->queryKey(code, english, false);
    if (inOrder < 0) inOrder = formats->addNew(code, english);
    const auto sheets = Need<com::sun::star::container::XIndexAccess>(
        Need<com::sun::star::sheet::XSpreadsheetDocument>(model)->getSheets());
    uno::Reference<com::sun::star::sheet::XUniqueCellFormatRangesSupplier> cellsOfSheet;
    sheets->getByIndex(sheet - 1) >>= cellsOfSheet;
    if (!cellsOfSheet.is()) return;
    const auto groups = cellsOfSheet->getUniqueCellFormatRanges();
    for (sal_Int32 i = 0; i < groups->getCount(); ++i) {
        uno::Reference<com::sun::star::beans::XPropertySet> cells;
        groups->getByIndex(i) >>= cells;
        sal_Int32 key = 0;
        sal_Int16 type = 0;
        cells->getPropertyValue("NumberFormat") >>= key;
        formats->getByKey(key)->getPropertyValue("Type") >>= type;
        if ((type & com::sun::star::util::NumberFormat::DATE) != 0)
            cells->setPropertyValue("NumberFormat", uno::Any(inOrder));
    }
}

/// Writes numbers as American English does while it lives, whatever the locale of the user.
class PlainNumbers final {
  public:
    PlainNumbers() : before_(ChangeLocale(QStringLiteral("en-US"))) {}
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
    document_->Run([sheet](const Document::Model& model) { WriteDaysInOrder(model, sheet); });
    // Comma, quotation mark, UTF-8, from the first line, no column formats, American English, all texts in quotation
    // marks, no special numbers (for reading only), values and not what is shown of them, no formulas, blanks kept, and
    // the sheet: without it the program writes the first one.
    document_->Export(file, "Text - txt - csv (StarCalc)",
                      QStringLiteral("44,34,76,1,,1033,true,false,false,false,false,%1").arg(sheet));
}

void SaveCopyAs(const Workbook& book, const QString& file) {
    const bool isOpenDocument = file.endsWith(QLatin1String(".ods"), Qt::CaseInsensitive);
    Known(book.document()).Export(file, isOpenDocument ? Document::kOpenDocument : Document::kOpenXml);
}

bool IsWorkbookFile(const QString& path) {
    return IsCompoundFile(path) || IsZipFile(path);
}

} // namespace tessaro::office
