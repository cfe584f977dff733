// Imports a file into a database without a window, as a kept mapping says.

#include "database/Database.h"
#include "database/UseOfFile.h"
#include "exchange/DraftGuess.h"
#include "exchange/ImportReport.h"
#include "exchange/ImportWriter.h"
#include "exchange/OpenSource.h"
#include "formats/ReadError.h"
#include "office/Error.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "session/JetCopies.h"
#include "session/MessageAnswer.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Startup.h"
#include "session/Strings.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <optional>
#include <unistd.h>

namespace {

using namespace tessaro;

/// The exit status of the program.
enum Status { Good = 0, Failed = 1, BadUsage = 2, RowsRefused = 3 };

constexpr const char* kDescription =
    "Imports the values of a file (CSV, .xls, .xlsx, .ods, PX, JSON-stat) into a database.\n"
    "Without --mapping the meaning of the columns is found by looking at them; --keep-mapping writes down what was\n"
    "found, as lines of text to be corrected and used again. One of --new, --lists-of, --copy-of and --into says "
    "where\n"
    "the values go. Nothing is changed unless all of it can be.\n\n"
    "Exit status: 0 when all values were taken, 3 when some rows were refused (see --report), 1 when nothing was\n"
    "written, 2 for wrong arguments.";

void Say(const QString& text) {
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

/// The application folder: as given, or where the program is installed or was built.
QString ApplicationFolder(const QString& given) {
    if (!given.isEmpty()) return given;
    const QString own = QCoreApplication::applicationDirPath();
    for (const char* place : {"/../share/tessaro", "/../installation"})
        if (QFileInfo::exists(own + QLatin1String(place) + QStringLiteral("/TS.ini")))
            return own + QLatin1String(place);
    return {};
}

/// The language that a database has as its default one.
QString LanguageOf(const QString& database) {
    const auto connection = CreateTheConnection(database);
    if (!connection) return {};
    const Records rows = Select(QStringLiteral("SELECT LanguageName FROM [Language] WHERE LanguageDefault = True"),
                                jet::CursorType::Static, connection.get());
    return rows.isOpen() && !rows.atEnd() ? rows.Text(std::size_t{0}) : QString();
}

constexpr auto kHomeStem = "tessaro-import-";

/// The folders of runs that were killed; their processes are no more.
void RemoveLeftHomes() {
    for (const QFileInfo& left :
         QDir::temp().entryInfoList({QLatin1String(kHomeStem) + QLatin1Char('*')}, QDir::Dirs)) {
        const int process = left.fileName().section(QLatin1Char('-'), 2, 2).toInt();
        if (process > 0 && left.ownerId() == ::getuid() && ::kill(process, 0) != 0 && errno == ESRCH)
            QDir(left.filePath()).removeRecursively();
    }
}

class Program final {
  public:
    /// `home`: an empty folder for the files of the run.
    explicit Program(QString home) : home_(std::move(home)) {
        parser_.setApplicationDescription(QLatin1String(kDescription));
        parser_.addHelpOption();
        parser_.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The file to be imported."));
        const auto add = [this](const char* name, const char* text, const char* value = nullptr) {
            parser_.addOption({QLatin1String(name), QLatin1String(text), QLatin1String(value != nullptr ? value : "")});
        };
        add("new", "Make a new database with nothing but the values.", "database");
        add("lists-of", "With --to: a new database with the areas and other lists of this one.", "database");
        add("copy-of", "With --to: a copy of this database with the values added.", "database");
        add("into", "Change this database; its state before is kept beside it.", "database");
        add("to", "The database that is made.", "database");
        add("areas", "With --new: take the areas from this table or shapefile.", "file");
        add("make-areas", "Make areas that are not there; a new database without --areas gets them always.");
        add("sheet", "The sheet of a workbook; else the first one with values.", "name");
        add("mapping", "What the columns mean, as it was kept.", "mapping");
        add("keep-mapping", "Write what the columns mean to this file.", "mapping");
        add("report", "Write what was found to this file (.xls, or else CSV).", "file");
        add("language", "Language of names, such as \"English [en]\"; else the database's own.", "language");
        add("application", "The application folder.", "folder");
        add("check", "Only check; write nothing.");
        add("strict", "Write nothing when a row is refused.");
    }

    ~Program() {
        office::SpreadsheetApplication::QuitAll();
        ResetSession();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    int Run() {
        parser_.process(*QCoreApplication::instance());
        if (parser_.positionalArguments().size() != 1 || !ReadTarget()) {
            Say(QStringLiteral("tessaro-import: wrong arguments; see tessaro-import --help"));
            return BadUsage;
        }
        if (!Begin()) return Failed;
        try {
            return Import(parser_.positionalArguments().front());
        } catch (const ReadError& error) {
            Say(error.Text());
        } catch (const office::Error& error) {
            Say(QString::fromUtf8(error.what()));
        } catch (const jet::Error& error) {
            Say(QString::fromUtf8(error.what()));
        }
        return Failed;
    }

  private:
    [[nodiscard]] QString Value(const char* name) const { return parser_.value(QLatin1String(name)); }

    /// Exactly one of the four ways, with the file that it needs.
    bool ReadTarget() {
        const struct {
            const char* option;
            ImportInto into;
        } ways[] = {{"new", ImportInto::Template},
                    {"lists-of", ImportInto::Lists},
                    {"copy-of", ImportInto::Copy},
                    {"into", ImportInto::Itself}};
        int found = 0;
        for (const auto& way : ways) {
            if (!parser_.isSet(QLatin1String(way.option))) continue;
            ++found;
            target_.into = way.into;
            target_.base = Value(way.option);
        }
        const bool makesOther = target_.into == ImportInto::Lists || target_.into == ImportInto::Copy;
        target_.file = makesOther ? Value("to") : target_.base;
        return found == 1 && !target_.file.isEmpty() && (makesOther || !parser_.isSet(QStringLiteral("to")));
    }

    /// A session in a folder of its own, so that a running program is not disturbed.
    bool Begin() {
        RemoveLeftHomes();
        const QString cache = WritableRoot();
        qputenv("TESSARO_HOME", QFile::encodeName(home_));
        SetMessageAnswerer([](const Message& message) {
            Say(message.text);
            return CodeOfClosing(message.type);
        });
        AppPath = ApplicationFolder(Value("application"));
        if (AppPath.isEmpty() || Initialize() == StartResult::EndProgram) {
            Say(QStringLiteral("tessaro-import: there is no application folder; name one with --application"));
            return false;
        }
        target_.mapsFolder = FolderOf(
            WritablePlace(JoinPath({AppPath, QStringLiteral("Maps"), QStringLiteral("New.shp")}), AppPath, cache));
        office::SpreadsheetApplication::SetProfileFolder(JoinPath({CacheFolder, QStringLiteral("Office")}));
        return PrepareBase();
    }

    bool PrepareBase() {
        if (target_.into == ImportInto::Template) {
            target_.base = DatabaseTemplate();
        } else {
            if (InValidFile(target_.base)) return false;
            target_.base = FileToOpen(target_.base);
        }
        target_.language = Value("language");
        if (target_.language.isEmpty() && target_.into != ImportInto::Template)
            target_.language = LanguageOf(target_.base);
        if (target_.language.isEmpty()) target_.language = Language;
        if (FileOfLanguage(target_.language).isEmpty()) return true;
        Language = target_.language;
        ReadTranslateFile();
        return true;
    }

    /// What the columns mean, by looking at them.
    [[nodiscard]] ImportDraft Guessed(const QString& file) const {
        if (parser_.isSet(QStringLiteral("sheet"))) return GuessDraft(file, Value("sheet"));
        return GuessDraftOfSheets(file, KindOf(file) == FileKind::Workbook ? SheetsOf(file) : QStringList());
    }

    std::optional<ImportDraft> Mapping(const QString& file) {
        if (!parser_.isSet(QStringLiteral("mapping"))) return Guessed(file);
        const auto text = ReadWholeFile(Value("mapping"));
        ImportDraft draft;
        if (text && ReadDraft(QString::fromUtf8(*text), draft)) {
            if (parser_.isSet(QStringLiteral("sheet"))) draft.sheet = Value("sheet");
            return draft;
        }
        Say(QStringLiteral("tessaro-import: this is no mapping: ") + Value("mapping"));
        return std::nullopt;
    }

    int Import(const QString& file) {
        std::optional<ImportDraft> draft = Mapping(file);
        if (!draft) return Failed;
        if (parser_.isSet(QStringLiteral("areas"))) draft->areaTree = Value("areas");
        const bool hasNoAreas = target_.into == ImportInto::Template && draft->areaTree.isEmpty();
        if (hasNoAreas || parser_.isSet(QStringLiteral("make-areas"))) draft->makesAreas = true;
        if (parser_.isSet(QStringLiteral("keep-mapping")) &&
            !ReplaceFile(Value("keep-mapping"), WrittenDraft(*draft).toUtf8()))
            return CanNotWrite(Value("keep-mapping"));
        if (const QString problem = ProblemOf(*draft); !problem.isEmpty()) {
            Say(problem);
            return Failed;
        }
        const auto checked = CheckImport(file, *draft, target_);
        for (const QStringList& line : CountsInWords(*checked))
            std::printf("%s\n", line.join(QStringLiteral(": ")).toLocal8Bit().constData());
        if (parser_.isSet(QStringLiteral("report")) && !SaveReport(*checked, Value("report")))
            return CanNotWrite(Value("report"));
        const int status = checked->counts.refused > 0 ? RowsRefused : Good;
        if (parser_.isSet(QStringLiteral("check")) || (status != Good && parser_.isSet(QStringLiteral("strict"))))
            return status;
        const WrittenImport written = WriteImport(*checked);
        if (written.made) return status;
        Say(written.message);
        return Failed;
    }

    static int CanNotWrite(const QString& file) {
        Say(QStringLiteral("tessaro-import: this file can't be written: ") + file);
        return Failed;
    }

    QCommandLineParser parser_;
    QString home_;
    ImportTarget target_;
};

} // namespace

int main(int argc, char** argv) {
    const QTemporaryDir home(
        QDir::temp().filePath(QLatin1String(kHomeStem) + QString::number(::getpid()) + QStringLiteral("-XXXXXX")));
    qputenv("QT_QPA_PLATFORM", "offscreen"); // columns of a report are as wide as their texts in a font
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home.path()));
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessaro-import"));
    return Program(home.path()).Run();
}
