#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tessaro::test {

/// An object of a project as a reader sees it; strings are unescaped, without quotes.
struct ReadObject {
    std::string className;
    int id = 0;
    std::vector<std::pair<std::string, QString>> attributes;

    /// The values of an attribute, in order.
    [[nodiscard]] std::vector<QString> All(const std::string& name) const;
    [[nodiscard]] QString One(const std::string& name) const; ///< empty unless there is one
};

/// A project read by rules of the format only: white space is free, lines of 512 bytes go on in the next, strings are
/// escaped as in C.
struct ReadProject {
    std::vector<ReadObject> objects;
    std::string faults; ///< what is wrong: lines, numbers, references; one a line

    [[nodiscard]] const ReadObject& At(int id) const { return objects.at(static_cast<std::size_t>(id) - 1); }
    [[nodiscard]] std::vector<const ReadObject*> Of(const std::string& className) const;
    /// The object that an attribute refers to.
    [[nodiscard]] const ReadObject& Target(const ReadObject& from, const std::string& name) const;
};
[[nodiscard]] ReadProject Read(const QByteArray& bytes, const char* page);

} // namespace tessaro::test
