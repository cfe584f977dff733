#include "Installation.h"

#include "DatabaseFile.h"
#include "Languages.h"
#include "Maps.h"
#include "Pages.h"
#include "Pictures.h"
#include "SampleDatabase.h"
#include "Sounds.h"
#include "jet/engine/BulkLoad.h"

#include <fstream>
#include <stdexcept>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

// Where the program looks; the names are those that TS.ini gives.
constexpr const char* kSampleDatabase = "Data/Tessaro World.mdb";
constexpr const char* kLanguageFolder = "Languages";
constexpr const char* kEmptyFolders[] = {"Gallery/Presentations", "Favorites", "AppData",
                                         "Spreadsheets",          "Maps",      "Presentations"};

class Builder {
  public:
    Builder(fs::path content, fs::path target) : content_(std::move(content)), target_(std::move(target)) {}

    std::vector<std::string> Build() {
        for (const char* folder : kEmptyFolders)
            fs::create_directories(target_ / folder);
        CopyFile("TS.ini", "TS.ini");
        CopyFile("Pref.ini", "Bin/Template/Pref.ini");
        BuildTemplates();
        BuildLanguageFiles(content_, target_ / kLanguageFolder);
        BuildMaps(content_ / "data", target_ / "Maps");
        CopyDocuments();
        DrawPictures();
        BuildSounds(target_ / "Sounds");
        WriteRegistry();
        BuildSampleDatabase(content_, target_ / kSampleDatabase);
        return std::move(passedOver_);
    }

  private:
    void CopyFile(const char* source, const char* target) {
        if (!fs::exists(content_ / source)) {
            passedOver_.push_back("no " + (content_ / source).string());
            return;
        }
        fs::create_directories((target_ / target).parent_path());
        fs::copy_file(content_ / source, target_ / target, fs::copy_options::overwrite_existing);
    }

    void BuildTemplates() {
        const fs::path folder = target_ / "Bin" / "Template";
        MakeDatabase(folder / "UserSelections.mdb",
                     [](const std::string& file) { schema::CreateUserSelections(*OpenWorkFile(file)); });
        MakeDatabase(folder / "InfoSel.mdb",
                     [](const std::string& file) { schema::CreateInfoSel(*OpenWorkFile(file)); });
        // An empty database for results: tables in every language, and none yet listed as its own.
        MakeDatabase(folder / "dbTemp.mdb", [this](const std::string& file) {
            const auto connection = OpenWorkFile(file);
            schema::CreateDataDatabase(*connection, {});
            for (const ContentLanguage& language : ReadLanguages(content_))
                schema::CreateLanguageTables(*connection, language.code);
            schema::IndexData(*connection);
        });
    }

    void CopyDocuments() {
        const fs::path documents = content_ / "documents";
        if (!fs::exists(documents)) {
            passedOver_.push_back("no " + documents.string());
            return;
        }
        BuildPages(content_, target_);
        fs::create_directories(target_ / "Bin" / "Template");
        // Without "recursive" a folder copied with any other option is passed over in silence.
        fs::copy(content_ / "templates", target_ / "Bin" / "Template",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        if (fs::exists(content_ / "samples"))
            fs::copy(content_ / "samples", target_ / "Gallery" / "Samples",
                     fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }

    void DrawPictures() {
        if (!fs::exists(content_ / "pictures" / "manifest.csv")) {
            passedOver_.push_back("no " + (content_ / "pictures" / "manifest.csv").string());
            return;
        }
        for (std::string& line : BuildPictures(content_, target_ / "Graphics"))
            passedOver_.push_back(std::move(line));
    }

    void WriteRegistry() {
        std::ofstream file(target_ / "registry.ini", std::ios::binary | std::ios::trunc);
        file << "[HKEY_LOCAL_MACHINE\\Software\\TESSARO]\nLanguage Path=" << kLanguageFolder << "\n";
        if (!file.flush()) throw std::runtime_error("can't write registry.ini");
    }

    fs::path content_;
    fs::path target_;
    std::vector<std::string> passedOver_;
};

} // namespace

std::vector<std::string> BuildInstallation(const fs::path& content, const fs::path& target) {
    return Builder(content, target).Build();
}

} // namespace tessaro::content
