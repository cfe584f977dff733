#include "jet/engine/DatabaseFile.h"

#include <algorithm>
#include <array>
#include <cryptopp/filters.h>
#include <cryptopp/hex.h>
#include <cryptopp/pwdbased.h>
#include <cryptopp/sha.h>
#include <sys/stat.h>
#include <unistd.h>

namespace jet {

namespace {

// The password keeps people from opening a file by accident; the file itself is not enciphered. Few rounds suffice, and
// every one of the forty links of a database change opens a file.
constexpr unsigned kRounds = 64;

constexpr std::string_view kPasswordTable = "MSysTessaro";

std::string HashOf(const std::string& password, const std::string& salt) {
    std::array<CryptoPP::byte, CryptoPP::SHA256::DIGESTSIZE> hash{};
    const CryptoPP::PKCS5_PBKDF2_HMAC<CryptoPP::SHA256> derive;
    derive.DeriveKey(hash.data(), hash.size(), 0, reinterpret_cast<const CryptoPP::byte*>(password.data()),
                     password.size(), reinterpret_cast<const CryptoPP::byte*>(salt.data()), salt.size(), kRounds);
    std::string text;
    const CryptoPP::StringSource encode(hash.data(), hash.size(), true,
                                        new CryptoPP::HexEncoder(new CryptoPP::StringSink(text)));
    return text;
}

/// True when the hash is that of the password. The last right answer is kept, since the current database is opened
/// again and again.
bool IsHashOf(const std::string& hash, const std::string& password, const std::string& salt) {
    thread_local std::array<std::string, 3> proven;
    const std::array<std::string, 3> asked = {hash, password, salt};
    if (asked == proven) return true;
    if (hash != HashOf(password, salt)) return false;
    proven = asked;
    return true;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool Exists(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0;
}

struct FreeFilename {
    void operator()(const char* name) const { sqlite3_free_filename(name); }
};
using Filename = std::unique_ptr<const char, FreeFilename>;

std::vector<std::vector<Value>> RowsOfPassword(sqlite3* database, const std::string& schema) {
    try {
        return Rows(database, "SELECT Salt, Hash FROM " + schema + "." + std::string(kPasswordTable));
    } catch (const Error& error) {
        if (error.number() == ErrorNumber::NoSuchTable) return {};
        throw;
    }
}

} // namespace

std::string HeadOfFile(const std::string& path, std::size_t bytes) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return {}; // opening a pipe would wait for ever
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const Filename name(sqlite3_create_filename(path.c_str(), "", "", 0, nullptr));
    if (files == nullptr || name == nullptr) return {};
    std::vector<std::max_align_t> room(static_cast<std::size_t>(files->szOsFile) / sizeof(std::max_align_t) + 1);
    auto* const file = reinterpret_cast<sqlite3_file*>(room.data());
    std::string head;
    if (files->xOpen(files, name.get(), file, SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr) == SQLITE_OK) {
        sqlite3_int64 size = 0;
        file->pMethods->xFileSize(file, &size);
        head.resize(std::min(bytes, static_cast<std::size_t>(std::max<sqlite3_int64>(size, 0))));
        if (file->pMethods->xRead(file, head.data(), static_cast<int>(head.size()), 0) != SQLITE_OK) head.clear();
    }
    if (file->pMethods != nullptr) file->pMethods->xClose(file);
    return head;
}

DatabaseFile DatabaseFile::Inspect(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos) throw OpenError(path, OpenFailure::NoSuchFile);
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0) throw OpenError(path, OpenFailure::NoSuchFile);
    if (!S_ISREG(found.st_mode)) throw OpenError(path, OpenFailure::NoPlainFile);
    if (found.st_size < 512) throw OpenError(path, OpenFailure::NoDatabase);
    DatabaseFile file;
    file.path = path;
    file.identity = {found.st_dev, found.st_ino};
    file.writable = ::access(path.c_str(), W_OK) == 0 && ::access(FolderOf(path).c_str(), W_OK) == 0;
    return file;
}

OpenFailure DatabaseFile::Explain(const std::string& path) {
    const std::string text = HeadOfFile(path, 100);
    if (text.empty()) return OpenFailure::MayNotBeRead;
    const std::string_view jet = std::string_view(text).substr(std::min<std::size_t>(text.size(), 4), 15);
    if (jet == "Standard Jet DB" || jet == "Standard ACE DB") return OpenFailure::GenuineJet;
    return text.starts_with("SQLite format 3") ? OpenFailure::Damaged : OpenFailure::NoDatabase;
}

std::string DatabaseFile::options() const {
    if (writable) return "mode=rw";
    const bool pending = Exists(path + "-journal") || Exists(path + "-wal");
    const bool quiet = ::access(path.c_str(), W_OK) != 0 && ::access(FolderOf(path).c_str(), W_OK) != 0;
    return quiet && !pending ? "mode=ro&immutable=1" : "mode=ro";
}

void StorePassword(sqlite3* database, const std::string& password) {
    std::array<unsigned char, 16> random{};
    sqlite3_randomness(static_cast<int>(random.size()), random.data());
    std::string salt;
    const CryptoPP::StringSource encode(random.data(), random.size(), true,
                                        new CryptoPP::HexEncoder(new CryptoPP::StringSink(salt)));
    const std::string table(kPasswordTable);
    Run(database, "CREATE TABLE " + table + " (Salt TEXT, Hash TEXT)");
    Run(database, "INSERT INTO " + table + " VALUES (?, ?)", {salt, password.empty() ? "" : HashOf(password, salt)});
}

void CheckPassword(sqlite3* database, const std::string& schema, const std::string& password) {
    const auto rows = RowsOfPassword(database, schema);
    if (rows.empty()) return;
    const std::string hash = rows[0][1].toText();
    if (hash.empty() || IsHashOf(hash, password, rows[0][0].toText())) return;
    throw Error(ErrorNumber::WrongPassword, "That is not the password of the database.");
}

} // namespace jet
