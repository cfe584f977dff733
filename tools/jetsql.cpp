// Runs statements of the dialect on a database file, for builders and data administrators.

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

constexpr std::string_view Usage =
    "usage: jetsql [--create] [--password PASSWORD | --password-file PATH] FILE 'statement'...\n"
    "Runs the statements in order on one connection. Rows are printed as tab-separated\n"
    "text below a line of column names. --create makes FILE when it isn't there.\n"
    "Others of the machine can read a command line: the password is better given by\n"
    "--password-file (its first line) or in the environment as JETSQL_PASSWORD.\n";

struct Request {
    bool create = false;
    bool help = false;
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

bool GivesRows(std::string_view statement) {
    const std::size_t start = statement.find_first_not_of(" \t\r\n(");
    std::string word;
    for (std::size_t i = start; i < statement.size() && word.size() < 9; ++i)
        word += static_cast<char>(std::toupper(static_cast<unsigned char>(statement[i])));
    return word.starts_with("SELECT") || word.starts_with("TRANSFORM");
}

void Run(jet::Connection& connection, const std::string& statement) {
    if (!GivesRows(statement)) {
        connection.Execute(statement);
        return;
    }
    try {
        PrintRows(connection.OpenRecordset(statement, jet::CursorType::ForwardOnly));
    } catch (const jet::Error& error) {
        // SELECT … INTO makes a table and gives no rows
        if (error.number() != jet::ErrorNumber::NoRows) throw;
        connection.Execute(statement);
    }
}

} // namespace

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    const Request request = ReadArguments({arguments, static_cast<std::size_t>(count)});
    if (!request.good || request.help) {
        (request.help ? std::cout : std::cerr) << Usage;
        return request.help ? 0 : 2;
    }
    try {
        if (request.create && ::access(request.file.c_str(), F_OK) != 0)
            jet::Database::Create(request.file, request.password);
        const auto connection = jet::Connection::Open(request.file, request.password);
        for (const std::string& statement : request.statements)
            Run(*connection, statement);
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
