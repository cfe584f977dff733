// Runs statements of the dialect on a database file, for builders and data administrators.

#include "jet/engine/ColumnImages.h"
#include "jet/engine/Connection.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::string_view kUsage =
    "usage: jetsql [--create] [--password PASSWORD | --password-file PATH] [--explain] [--no=STEP]... "
    "[--images=FOLDER] FILE 'statement'...\n"
    "Runs the statements in order on one connection. Rows are printed as tab-separated\n"
    "text below a line of column names. --create makes FILE when it isn't there.\n"
    "Others of the machine can read a command line: the password is better given by\n"
    "--password-file (its first line) or in the environment as JETSQL_PASSWORD.\n"
    "--explain runs nothing: it prints the rewriting steps that changed each statement and\n"
    "its text for SQLite. --no=STEP leaves a step out. --images=FOLDER reads large tables\n"
    "from column images in FOLDER, which are made first where they are missing.\n";

struct Request {
    bool create = false;
    bool help = false;
    bool explain = false;
    std::vector<std::string> leftOutSteps;
    std::string images; ///< folder; empty for none
    bool good = false;
    std::string password;
    std::string file;
    std::vector<std::string> statements;
};

/// The first line of a file; nothing when it can't be read.
std::optional<std::string> FirstLine(const char* path) {
    std::ifstream file(path);
    std::string line;
    if (!file || (!std::getline(file, line) && !file.eof())) return std::nullopt;
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

Request ReadArguments(std::span<char*> arguments) {
    Request request;
    if (const char* const given = std::getenv("JETSQL_PASSWORD")) request.password = given;
    std::size_t i = 1;
    for (; i < arguments.size() && std::string_view(arguments[i]).starts_with("--"); ++i) {
        const std::string_view option = arguments[i];
        if (option == "--create") {
            request.create = true;
        } else if (option == "--help") {
            request.help = true;
        } else if (option == "--explain") {
            request.explain = true;
        } else if (option.starts_with("--no=")) {
            request.leftOutSteps.emplace_back(option.substr(5));
        } else if (option.starts_with("--images=")) {
            request.images = option.substr(9);
        } else if (option == "--password" && i + 1 < arguments.size()) {
            request.password = arguments[++i];
        } else if (option == "--password-file" && i + 1 < arguments.size()) {
            const auto line = FirstLine(arguments[++i]);
            if (!line) std::fprintf(stderr, "The password file '%s' can't be read.\n", arguments[i]);
            if (!line) return request;
            request.password = *line;
        } else if (option == "--") {
            ++i;
            break;
        } else {
            return request;
        }
    }
    if (i < arguments.size()) request.file = arguments[i++];
    for (; i < arguments.size(); ++i)
        request.statements.emplace_back(arguments[i]);
    request.good = request.help || (!request.file.empty() && (request.create || !request.statements.empty()));
    return request;
}

// One row stays one line and one field one column, whatever the text holds.
std::string Cell(const jet::Value& value) {
    std::string text = value.toText();
    for (char& c : text)
        if (c == '\t' || c == '\n' || c == '\r') c = ' ';
    return text;
}

void PrintRows(jet::Recordset rows) {
    std::string line;
    for (std::size_t i = 0; i < rows.FieldCount(); ++i)
        line += (i > 0 ? "\t" : "") + rows.Field(i).name;
    std::cout << line << '\n';
    for (; !rows.atEnd(); rows.MoveNext()) {
        line.clear();
        for (std::size_t i = 0; i < rows.FieldCount(); ++i) {
            if (i > 0) line += '\t';
            line += Cell(rows.Get(i));
        }
        std::cout << line << '\n';
    }
}

// Only a statement that gives no rows is executed; asking for them runs nothing of it.
void Run(jet::Connection& connection, const std::string& statement) {
    try {
        PrintRows(connection.OpenRecordset(statement, jet::CursorType::ForwardOnly));
    } catch (const jet::Error& error) {
        if (error.number() != jet::ErrorNumber::NoRows) throw;
        connection.Execute(statement);
    }
}

void Explain(jet::Connection& connection, const std::string& statement) {
    const jet::Explanation explained = connection.Explain(statement);
    std::string steps;
    for (const std::string& each : explained.steps)
        steps += (steps.empty() ? "" : ", ") + each;
    std::cout << "steps: " << (steps.empty() ? "none" : steps) << '\n';
    for (const std::string& each : explained.texts)
        std::cout << each << '\n';
}

std::shared_ptr<jet::ColumnImages> Images(const Request& request) {
    if (request.images.empty()) return nullptr;
    jet::ColumnImages::Settings settings;
    settings.folder = request.images;
    settings.log = [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
    return std::make_shared<jet::ColumnImages>(std::move(settings));
}

/// Waits for the images that the statement reads, which are made when they are first asked for.
void MakeImages(jet::Connection& connection, jet::ColumnImages& images, const std::string& statement) {
    static_cast<void>(connection.Explain(statement));
    images.Wait();
}

} // namespace

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    const Request request = ReadArguments({arguments, static_cast<std::size_t>(count)});
    if (!request.good || request.help) {
        (request.help ? std::cout : std::cerr) << kUsage;
        return request.help ? 0 : 2;
    }
    try {
        if (request.create && ::access(request.file.c_str(), F_OK) != 0)
            jet::Database::Create(request.file, request.password);
        const auto connection = jet::Connection::Open(request.file, request.password);
        for (const std::string& step : request.leftOutSteps)
            connection->LeaveOutStep(step);
        const auto images = Images(request);
        if (images != nullptr) connection->UseColumnImages(images);
        for (const std::string& statement : request.statements) {
            if (images != nullptr) MakeImages(*connection, *images, statement);
            request.explain ? Explain(*connection, statement) : Run(*connection, statement);
        }
    } catch (const jet::Error& error) {
        std::cout.flush();
        std::fprintf(stderr, "0x%08X %s\n", static_cast<unsigned>(error.number()), error.what());
        return 1;
    } catch (const std::exception& error) {
        std::cout.flush();
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::cout.flush();
    return std::cout ? 0 : 1;
}
